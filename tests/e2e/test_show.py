"""A show on two displays: the first window, one movie after the other, files that do not play."""

import os

from case import CLIP_NAMES, CLIPS, CONSOLE, LOGO, MONITOR, NO_TIME, Case, desks, seen
from desk import clips
from desk.clips import FRAMES_PER_SECOND
from desk.processes import held
from desk.show import RIGHT

IN_STEP = FRAMES_PER_SECOND // 3  # frames between the twins, on a loaded machine without a graphics card
MISSED = 2  # frames of a second, by who looks or who decodes, on such a machine


class Show(Case):
    def assert_at_rest(self, show):
        show.until_text("PlayModeLabel", "")
        self.assert_curtain(show, CONSOLE, 160)
        self.assert_curtain(show, MONITOR, 157)
        self.assertEqual(show.text("MaxTime"), NO_TIME)

    def test_from_the_first_window_to_a_closed_movie(self):
        show = self.start()
        show.until_rows(CLIP_NAMES)
        self.until_monitor(show, RIGHT)
        left, top, width, _ = self.desk.screen.windows()[CONSOLE]
        self.assertEqual(width, 800)
        self.assertLess(max(left, top), 100)
        self.until_in_front(show, CONSOLE)
        self.assert_at_rest(show)
        icon = desks.pixels(LOGO.with_name("Kirolane.png"), "bgra", "crop=112:1:8:64")  # without its soft edges
        self.assertTrue(icon in b"".join(word.to_bytes(4, "little") for word in self.desk.screen.icon(CONSOLE)))
        self.assertTrue(show.text("DirLabel").endswith(":program:"))

        show.press("Return")
        show.until_playing(1, frame=5)
        show.click_row(1, times=2)
        seen_between = set()

        def next_clip():
            code = show.codes()[1]
            # The audience sees neither the curtain nor black: the middle of the logo's place tells.
            middle = [self.desk.screen.picture.pixel(RIGHT[0] + x, RIGHT[1] + 800) for x in range(20, 1920, 120)]
            seen_between.add("black" if not any(map(any, middle)) else code and code[0])
            return code and code[0] == 2 and code[1] >= 5
        show.until(next_clip, "the second clip")
        self.assertLessEqual(seen_between, {1, 2, None}, "something else than the two clips was seen")
        show.until_text("MediaType", "MP4")
        show.until_text("FileNumberLabel", f"2 / {len(CLIP_NAMES)}")
        self.assertEqual(show.rows(3, column=0), ["", "●", ""])
        self.assertEqual(show.rows(3, column=2), ["00：00：20", "00：00：20", ""])
        preview, stage = show.until_playing(2, frame=FRAMES_PER_SECOND)
        self.assertLessEqual(abs(preview[1] - stage[1]), IN_STEP)
        self.shoot("playing")
        show.press("Shift_L", "n")
        self.assert_at_rest(show)
        self.assertEqual(show.rows(3, column=0), ["", "", ""])

    def test_the_main_thread_may_hang(self):
        show = self.start_playing()
        areas = {window: show.picture_area(window) for window in (CONSOLE, MONITOR)}
        first = show.codes()[1][1] + 5
        wanted = set(range(first, first + FRAMES_PER_SECOND))
        shown = {window: set() for window in areas}

        def second_over():
            for window, area in areas.items():
                code = clips.read_code(self.desk.screen.picture, area)
                shown[window].add(code and code[1])
            return max(filter(None, shown[MONITOR]), default=0) > max(wanted)
        with held(show.program.process.pid):
            self.desk.waiter.until(second_over, f"a second of pictures, not {shown}", 5)
            self.shoot("held")
        for window, frames in shown.items():
            self.assertLessEqual(len(wanted - frames), MISSED, f"{window}: {sorted(wanted - frames)}")

    def test_bad_files_do_not_stop_the_show(self):
        whole = (CLIPS / CLIP_NAMES[0]).read_bytes()
        bad = {
            "a 文.mov": "映画ではありません\n".encode(),
            "b 一覧.mp4": f"#EXTM3U\n{CLIPS / CLIP_NAMES[0]}\n".encode(),
            "c 消.mp4": whole,
        }
        for name, content in bad.items():
            (self.desk.media / name).write_bytes(content)
        os.mkfifo(self.desk.media / "d 管.mov")
        names = [*bad, "d 管.mov"]
        show = self.start(lines=len(names))
        show.until_rows([*CLIP_NAMES, *names])
        (self.desk.media / "c 消.mp4").unlink()
        for row, name in enumerate(names, len(CLIP_NAMES)):
            show.click_row(row)
            show.until(lambda: seen.selected(seen.cell(show.control("StrGrid"), row, 1)), f"the row of {name} selected")
            show.press("Return")
            show.until(lambda: show.rows(row + 1, column=2)[-1] == "  ???", f"??? beside {name}")
            show.until(lambda: any(name in line for line in show.program.errors), f"a line about {name}")
        self.assert_curtain(show, MONITOR, 157)
        show.click_row(0, times=2)
        show.until_playing(1, frame=5)
