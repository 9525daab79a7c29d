"""What docs/guide.md tells: the evening from the first start to the end of the show, and the ways of one display.

Where KIROLANE_GUIDE names a folder, the guide's pictures are saved there.
"""

import os
import pathlib
import subprocess

from case import CLIPS, CONSOLE, MONITOR, SHOTS, Case, seen
from desk import display
from desk.show import CHOOSER, PREFERENCES, lay

GUIDE = os.environ.get("KIROLANE_GUIDE")

WIDE, HIGH = 1024, 640  # a display
FIRST_HALF = ["サンプル１.mp4", "サンプル２.mov", "サンプル３.m4v"]
SECOND_HALF = {"第二部１.m4v": FIRST_HALF[2], "第二部２.mov": FIRST_HALF[1]}
MUSIC = ["サンプル音１.wav", "サンプル音２.mp3"]
FOLDERS = {"ムービー": dict(zip(FIRST_HALF, FIRST_HALF)), "第二部": SECOND_HALF, "音楽": dict(zip(MUSIC, MUSIC))}


class Guide(Case):
    """A walk that leaves pictures for the guide."""

    monitors = None
    beside_the_program = ()

    def set_up(self, monitors):
        super().set_up(monitors)
        self.desk.screen.paint_ground(display.GROUND)

    def picture(self, name, *area):
        """What the guide shows; small, with few colours."""
        file = SHOTS / f"evening {name} {seen.scale}.png"
        self.desk.screen.picture.save_png(file, *area)
        if GUIDE and seen.scale == 1:
            subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-y", "-i", file, "-vf",
                            "split[a][b];[a]palettegen=max_colors=96[p];[b][p]paletteuse=dither=none",
                            pathlib.Path(GUIDE) / f"{name}.png"], check=True)


class Evening(Guide):
    def walk(self, scale):
        seen.scale = scale
        wide, high = scale * WIDE, scale * HIGH
        self.operator, self.audience = (0, 0, wide, high), (wide, 0, wide, high)
        self.set_up((self.operator, self.audience))
        self.folders = {name: self.desk.home / name for name in FOLDERS}
        for folder in self.folders.values():
            folder.mkdir()
            for name, sample in FOLDERS[folder.name].items():
                lay(CLIPS / "samples" / sample, folder / name)

        finer = {"QT_SCALE_FACTOR": str(scale)}
        with self.desk.started(finer) as show:
            self.until_monitor(show, self.audience)
            self.choose_folders(show)
            self.assertLess(show.close(), 1.0)
        with self.desk.started(finer) as show:
            show.until_rows(FIRST_HALF)
            self.run_the_list(show)
            self.add_music(show)
            self.go_on_with_the_second_half(show)
            self.hide_and_show_the_console(show)
            self.assertLess(show.close(), 1.0)

    def test_evening(self):
        self.walk(scale=1)

    def test_twice_as_fine(self):
        self.walk(scale=2)

    def settled(self, title, width):
        """The area of a window of that width in units that stands still, with its frame."""
        screen = self.desk.screen
        self.desk.waiter.until_still(lambda: screen.picture.area(*screen.windows()[title]), still=0.3)
        left, top, wide, high = screen.windows()[title]
        self.assertIn(width, (None, wide // seen.scale))
        return left - 1, top - 20, wide + 2, high + 22

    def choose_folders(self, show):
        show.open_preferences()
        show.click_on("Folder1_Bevel", PREFERENCES)
        show.window(CHOOSER)
        self.picture("chooser", *self.settled(CHOOSER, None))
        show.press("Escape")
        show.until_gone(CHOOSER)
        show.choose_for("Folder1_Bevel", self.folders["ムービー"])
        show.choose_for("Folder2_Bevel", self.folders["第二部"])
        show.turn_to("サウンド", PREFERENCES)
        show.until(lambda: seen.showing(show.control("mFolder1_Bevel", PREFERENCES)), "the sounds' page")
        show.choose_for("mFolder1_Bevel", self.folders["音楽"])
        show.turn_to("ムービー", PREFERENCES)
        show.save_preferences()
        self.picture("preferences", *self.settled(PREFERENCES, 688))
        show.close_preferences()

    def run_the_list(self, show):
        self.until_in_front(show, CONSOLE)
        show.press("Shift_L", "x")
        show.until(lambda: show.text("LoopLabel") == "↓", "the sign of the list")
        show.press("Return")
        show.until_text("PlayModeLabel", "再生中")
        show.until_moving(self.audience)
        show.until(lambda: show.text("PosTIme") >= "00：00：03", "three seconds of it")
        self.picture("show")

    def add_music(self, show):
        show.open_sounds()
        show.until(lambda: show.rows(2, grid="mStrGrid") == MUSIC, "the music")
        show.press("Return")
        show.until(lambda: "：" in (show.sound_window() or ""), "the sound window")
        title = show.sound_window()
        self.assertEqual(self.desk.screen.windows()[title][2:], (140 * seen.scale, 265 * seen.scale))
        label = show.control("VolumeLabel", title)
        for level in (79, 78, 77):
            show.press("Control_L", "Shift_L", "Down")
            show.until(lambda: seen.text(label) == f"Volume：  {level}", f"the music at {level}")
        self.assertEqual(show.text("VolumeLabel"), "Volume：  80", "the movie is as loud as before")
        show.press("Control_L", "Shift_L", "x")
        show.until(lambda: show.text("mLoopLabel") == "↓", "the sign of the music's list")
        show.until_moving(self.audience)
        self.picture("music", *self.operator)

    def go_on_with_the_second_half(self, show):
        # The end of a movie leads to the next row by itself.
        show.press("Control_L", "Right")
        show.until_text("FileLabel", FIRST_HALF[1])
        show.turn_to("ムービー")
        show.until(lambda: seen.showing(show.control("StrGrid")), "the movies' page")
        show.click_on("Fold2")
        show.until_rows(list(SECOND_HALF))
        show.until_moving(self.audience)
        show.until_text("FileLabel", FIRST_HALF[1])
        show.press("Return")
        show.until_text("FileLabel", list(SECOND_HALF)[0])
        show.until(lambda: show.rows(2, column=0) == ["●", ""], "its mark")
        show.until_moving(self.audience)

    def hide_and_show_the_console(self, show):
        windows = self.desk.screen.windows
        show.press("Alt_L", "x")
        show.until(lambda: CONSOLE not in windows() and not show.sound_window(), "the audience's window alone")
        show.until_moving(self.audience)
        self.picture("hidden")
        show.press("Alt_L", "x")
        show.until(lambda: CONSOLE in windows() and show.sound_window(), "the console and the music's window")
        self.until_in_front(show, CONSOLE)


class OneDisplay(Guide):
    """The three ways of one display."""

    def test_one_display(self):
        self.set_up([(0, 0, 1024, 960)])
        for name in FIRST_HALF:
            lay(CLIPS / "samples" / name, self.desk.media / name)
        modes = {"under": ("false", "false"), "behind": ("true", "false"), "none": ("false", "true")}
        for picture, (full_screen, hidden) in modes.items():
            self.desk.settings({2: "false", 4: full_screen, 8: hidden})
            with self.desk.started() as show:
                show.until_rows(FIRST_HALF)
                show.press("Return")
                show.until(lambda: show.text("PosTIme") >= "00：00：03", "three seconds of the movie")
                self.assertEqual(MONITOR in self.desk.screen.windows(), picture != "none")
                self.picture(picture)
                if picture == "under":
                    self.until_below(show)
                    self.desk.screen.move(CONSOLE, 300, 300)  # the monitor comes along, beyond the edge, too
                    show.until(lambda: self.desk.screen.windows()[CONSOLE][1] > 200, "the console moved")
                    self.until_below(show)
                show.close()
