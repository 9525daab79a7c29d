"""The windows beside the console: sound, folder chooser."""

from case import CLIPS, CONSOLE, NO_TIME, Case, seen, unittest
from desk.show import CHOOSER, LEFT, inside, lay
from desk.program import colon_path

LONG = "0 長.mp4"  # 150 s, 10 pictures a second
SOUNDS = ["音.wav", "音２.wav"]
BUTTONS = [*(f"Fold{n}" for n in range(1, 11)), "Fold99"]
MANY = 30000


class Windows(Case):
    def start_with(self, *files):
        for file in files:
            lay(CLIPS / (SOUNDS[0] if file in SOUNDS else file), self.desk.media / file)
        show = self.start()
        show.until(lambda: show.rows(1)[0], "the list")
        self.until_in_front(show, CONSOLE)
        return show

    def pressed(self, show):
        return [name for name in BUTTONS if seen.checked(show.control(name))]

    def open_sound(self, show):
        show.open_sounds()
        show.until(lambda: show.rows(2, grid="mStrGrid") == SOUNDS, "the sounds")
        show.press("Return")
        return show.until(show.sound_window, "the sound window")

    def test_sound_window(self):
        show = self.start_with(*SOUNDS)
        screen = self.desk.screen
        first = self.open_sound(show)
        show.until(lambda: inside(screen.windows().get(first, (-1, -1, 0, 0)), LEFT), "it on the operator's display")
        show.until(lambda: show.sound_window() == f"{NO_TIME} / {NO_TIME}", "the movie's times as the title")
        title = show.sound_window()
        for name in ("PlayModeLabel", "PosTime", "FileLabel"):
            show.control(name, title)  # before the window goes
        mode = lambda: show.text("PlayModeLabel", title)
        show.until(lambda: mode() == "再生中", "the sound playing")
        self.assertEqual(screen.active_title(), CONSOLE)
        screen.move(title, 200, 150)
        show.until(lambda: screen.windows()[title][:2] == (200, 150), "the sound window over the console")
        show.click(700, 40)  # the console's menu bar
        show.press("Escape")
        self.desk.waiter.until_still(screen.stacking)
        self.assertGreater(screen.stacking().index(title), screen.stacking().index(CONSOLE))
        self.shoot("above")
        show.click_on("QTM_PlayButton", title)
        show.until(lambda: mode() == "一時停止", "a pause by its button")
        self.assertEqual(screen.active_title(), CONSOLE, "a click leaves the keyboard where it is")
        show.press("Alt_L", "space")
        show.until(lambda: mode() == "再生中", "the key")

        screen.ask_to_close(title)
        show.until_gone(title)
        before = show.text("PosTime", title)
        show.until(lambda: show.text("PosTime", title) != before, "the sound playing on")
        self.assertEqual(show.rows(1, column=0, grid="mStrGrid"), ["●"])
        show.press("Shift_L", "space")
        show.until(lambda: mode() == "一時停止", "a pause by key")
        show.press("Down")
        show.press("Return")
        show.until(show.sound_window, "the window of the next sound")
        show.until(lambda: show.text("FileLabel", title) == SOUNDS[1], "its name")
        show.until(lambda: inside(screen.windows().get(show.sound_window(), (-1, -1, 0, 0)), LEFT),
                   "it on the operator's display")
        show.press("Control_L", "Shift_L", "n")
        show.until(lambda: not show.sound_window(), "the end of the window with its sound")

    def test_folder_buttons(self):
        folders = {}
        for name, count in (("many", MANY), ("few", 3)):
            folder = folders[name] = self.desk.folder / name
            folder.mkdir()
            for number in range(count):
                (folder / f"{number}.mov").touch()
        self.desk.settings({23: colon_path(folders["many"]), 24: colon_path(folders["few"])})
        show = self.start_with(LONG, SOUNDS[0], SOUNDS[1])
        self.assertEqual(self.pressed(show), ["Fold1"])
        show.press("Return")
        show.until_playing(4, frame=1)
        self.open_sound(show)
        show.turn_to("ムービー")

        # A press in the middle of a scan: the last one's folder is listed, from its beginning. Two clicks of a mouse
        # are further apart.
        seen.act(show.control("Fold2"))
        seen.act(show.control("Fold3"))
        show.until(lambda: self.pressed(show) == ["Fold3"], "the last one pressed alone")
        show.until_rows(["0.mov", "1.mov", "2.mov"])
        show.until(lambda: not seen.showing(show.control("CountLabel")), "the end of the counting")

        # The chooser, with a scan under way.
        seen.act(show.control("Fold2"))
        seen.act(show.control("Fold99"))
        show.window(CHOOSER)
        self.assertTrue(inside(self.desk.screen.windows()[CHOOSER], LEFT))
        time, mode = show.text("PosTIme"), show.text("PlayModeLabel")
        stage = lambda: (show.codes()[1] or (0, 0))[1]
        frame = show.until(stage, "the movie on the stage")
        seen.act(show.control("QTM_PlayButton"))
        seen.act(show.control("Fold3"))
        show.until(lambda: stage() > frame + 25, "the movie playing on")
        show.until(lambda: show.text("FileNumberLabel").endswith(str(MANY)), "the scan going on", seconds=20)
        self.shoot("choosing")
        self.assertEqual((show.text("PosTIme"), show.text("PlayModeLabel")), (time, mode), "no tick, no command")
        show.press("Escape")
        show.until_gone(CHOOSER)
        show.until(lambda: show.text("PosTIme") != time, "the next tick")
        self.assertEqual(self.pressed(show), ["Fold2"], "cancelled")
        self.assertEqual(show.text("PlayModeLabel"), "再生中")

        show.click_on("Fold99")
        show.choose_folder(folders["few"])
        show.until_rows(["0.mov", "1.mov", "2.mov"])
        self.assertEqual(self.pressed(show), ["Fold99"])
        self.assertEqual(show.text("DirLabel"), colon_path(folders["few"]))
        show.until_playing(4, frame + 25)


if __name__ == "__main__":
    unittest.main()
