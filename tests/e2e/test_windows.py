"""The windows beside the console: sound, preferences, folder chooser."""

from case import CLIPS, CONSOLE, MONITOR, NO_TIME, Case, seen
from desk.show import CHOOSER, LEFT, PREFERENCES, RIGHT, inside, lay
from desk.program import colon_path

LONG = "0 長.mp4"  # 150 s, 10 pictures a second
SOUNDS = ["音.wav", "音２.wav"]
BUTTONS = [*(f"Fold{n}" for n in range(1, 11)), "Fold99"]
MANY = 30000
FLAT = (0xB1, 0xB1, 0xB1)


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
        screen.ask_to_close(title)
        show.until_gone(title)
        self.assertEqual(show.rows(1, column=0, grid="mStrGrid"), ["●"], "the sound goes on")
        show.press("Alt_L", "space")
        show.press("Down")
        show.press("Return")
        show.until(lambda: inside(screen.windows().get(show.sound_window(), (-1, -1, 0, 0)), LEFT),
                   "the window of the next sound on the operator's display")
        show.press("Control_L", "Shift_L", "n")
        show.until(lambda: not show.sound_window(), "the end of the window with its sound")

    def test_preferences(self):
        def pixel():
            left, top, _, _ = screen.windows()[CONSOLE]
            return screen.picture.pixel(left + 2, top + 62)
        self.desk.settings()
        screen = self.desk.screen
        with self.desk.started() as show:
            self.until_monitor(show, RIGHT)
            show.open_preferences()
            for name in ("DisplayMode_Check", "Hide_Check", "WindowColor_Check"):  # each frees the next
                box = show.control(name, PREFERENCES)
                show.until(lambda: seen.enabled(box), f"{name} free")
                before = seen.checked(box)
                show.click_on(name, PREFERENCES)
                show.until(lambda: seen.checked(box) != before, f"{name} turned")
            show.save_preferences()
            self.shoot("saved")
            show.close_preferences()
            # The hiding acts at the next move of the console, its colour at the next start.
            self.assertIn(MONITOR, screen.windows())
            self.assertNotEqual(pixel(), FLAT)
            screen.move(CONSOLE, 300, 200)
            show.until_gone(MONITOR)
            show.close()
        with self.desk.started() as show:
            show.until(lambda: show.rows(1)[0], "the list")
            self.assertNotIn(MONITOR, screen.windows())
            self.assertEqual(pixel(), FLAT)
            show.press("Alt_L", "x")
            show.press("Return")
            show.until_text("PlayModeLabel", "再生中")
            self.assertIn(CONSOLE, screen.windows(), "nothing would be left to see")

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
