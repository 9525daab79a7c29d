"""Movies of odd lengths, and keys that do not wait for a movie to open."""

from case import CLIP_NAMES, CLIPS, CONSOLE, NO_TIME, Case, seen, unittest
from desk import keys
from desk.clips import FRAMES_PER_SECOND, make
from desk.show import LEFT

HOURS = 61
SHORT, LONG, CUT = "a 短.mp4", "b 長.mov", "c 切.mp4"


class OddMovies(Case):
    monitors = (LEFT,)

    def start_in_front(self):
        self.desk.settings({2: "false", 12: "1"})
        show = self.start()
        show.until(lambda: self.desk.screen.active_title() == CONSOLE, "the keyboard in the console")
        return show

    def open_row(self, show, row, name):
        show.click_row(row, times=2)
        show.until_text("FileLabel", name)

    def test_lengths(self):
        make(self.desk.media / SHORT, "-f", "lavfi", "-i", "testsrc=s=64x48:r=25:d=0.2")
        make(self.desk.media / LONG, "-f", "lavfi", "-i", "color=s=16x16:r=1/600", "-t", str(HOURS * 3600),
             "-video_track_timescale", "600")
        make(self.desk.media / CUT, "-i", str(CLIPS / CLIP_NAMES[0]), "-c", "copy", "-movflags", "+faststart")
        whole = (self.desk.media / CUT).read_bytes()
        (self.desk.media / CUT).write_bytes(whole[:len(whole) // 2])
        show = self.start_in_front()
        show.until_rows([*CLIP_NAMES, SHORT, LONG, CUT])
        slider = show.control("QTM_PosBar")

        self.open_row(show, 3, SHORT)
        show.until_text("PlayModeLabel", "停止")  # at the first tick
        self.assertEqual((show.text("MaxTime"), seen.number(slider)), (NO_TIME, 0))
        show.press("Control_L", "Right")
        show.press("Shift_L", "z")
        show.press("space")
        show.until_text("PlayModeLabel", "再生中")

        self.open_row(show, 4, LONG)
        self.assertEqual(show.text("MaxTime"), "01：00：00")  # hours wrap at 60
        show.press("space")
        show.press("Shift_L", "b")
        show.until_text("PlayModeLabel", "停止")
        show.press("Alt_L", "Right")
        show.until(lambda: seen.number(slider) == 60, "the slider at a minute")
        with self.desk.screen.held("Alt_L", "Right"):
            show.until(lambda: seen.number(slider) > 1800, "half an hour and more")
        show.until(lambda: show.text("PosTIme") == show.text("MonitorPosTime") > "00：30：00", "the read-outs")

        self.assertEqual(show.program.errors, [])
        self.open_row(show, 5, CUT)
        self.assertEqual(show.text("MaxTime"), "00：00：20")
        show.until_playing(1, frame=FRAMES_PER_SECOND)
        show.press("Control_L", "Right")  # beyond the data, which is the end: it begins anew
        show.until(lambda: any(CUT in line for line in show.program.errors), "a line about the file")
        show.until(lambda: show.text("PosTIme") < "00：00：10", "the beginning")
        show.until_playing(1)
        self.assertEqual(len(show.program.errors), 1, show.program.errors)

    def test_keys_do_not_wait(self):
        """All keys of commands that stay in the window, at once after the one that opens a movie."""
        show = self.start_in_front()
        show.until_rows(CLIP_NAMES)
        chords = [key for name in ("コントローラー", "コントローラー２") for item, given in keys.read()[name].items()
                  for key in given if item not in ("Quit", "環境設定")]
        for _ in range(3):
            show.press("Return")
            for chord in chords:
                show.press(*chord)
            show.press("Shift_L", "b")
        show.press("Return")
        show.until_playing(1, frame=10)
        self.assertEqual(show.program.errors, [])


if __name__ == "__main__":
    unittest.main()
