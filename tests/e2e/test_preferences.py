"""The preferences in real windows, over the restarts after which most of them act."""

from case import CLIP_NAMES, CLIPS, CONSOLE, MONITOR, Case, seen, unittest
from desk.show import LEFT, PREFERENCES, RIGHT, lay
from desk.program import SETTINGS, colon_path

SAVED = "設定を確定しました"
LONG = "長編.mp4"
FLAT = (0xB1, 0xB1, 0xB1)

# The boxes of the monitor, and what the next start makes of them.
BOXES = ["DisplayMode_Check", "FullScreen_Check", "Hide_Check"]
MODES = {
    "full": [False, True, False],
    "hidden": [False, False, True],
    "under": [False, False, False],
    "dual": [True, False, False],
}


class Preferences(Case):
    def line(self, number):
        return (self.desk.home / SETTINGS).read_text(encoding="utf-8").split("\n")[number - 1]

    def lines(self, *numbers):
        return [self.line(number) for number in numbers]

    def tick(self, show, wanted):
        """Clicks from left to right of what rules the others, until the boxes stand as wanted."""
        for name, on in zip(BOXES, wanted):
            box = show.control(name, PREFERENCES)
            if seen.checked(box) != on:
                show.until(lambda: seen.enabled(box), f"{name} free")
                show.click_on(name, PREFERENCES)
                show.until(lambda: seen.checked(box) == on, f"{name} turned")

    def choose_last(self, show, popup):
        x, y, width, height = seen.area(show.control(popup, PREFERENCES))

        def below():
            return self.desk.screen.picture.area(x, y + 3 * height, width, height)  # clear of the pointer
        closed = below()
        show.click_on(popup, PREFERENCES)
        show.until(lambda: below() != closed, "the rows of the popup")
        show.press("End")
        show.press("Return")
        show.until(lambda: below() == closed, "the end of the popup")

    def save(self, show):
        show.click_on("SettingButton", PREFERENCES)
        show.until(lambda: show.text("MessageLabel", PREFERENCES) == SAVED, "the word of the save")

    def end(self, show):
        self.desk.screen.ask_to_close(CONSOLE)
        self.assertEqual(show.program.exit_status()[0], 0)
        self.assertEqual(show.program.errors, [])

    def until_mode(self, show, mode):
        place = {"full": LEFT, "dual": RIGHT, "hidden": None}
        windows = self.desk.screen.windows
        if mode == "under":
            show.until(lambda: windows().get(MONITOR, (0, 0, 0, 0))[2:] == (800, 600), "the monitor under the console")
            self.assertGreater(windows()[MONITOR][1], windows()[CONSOLE][1] + 420)
        else:
            show.until(lambda: windows().get(MONITOR) == place[mode], f"the monitor {mode}, not {windows()}")

    def test_four_modes_of_the_monitor(self):
        modes = ["dual", *MODES]
        for index, mode in enumerate(modes):
            with self.desk.started() as show:
                show.until_rows(CLIP_NAMES)
                self.until_mode(show, mode)
                show.open_preferences()
                self.assertEqual([seen.checked(show.control(box, PREFERENCES)) for box in BOXES], MODES[mode])
                if index + 1 < len(modes):
                    before = self.desk.screen.windows().get(MONITOR)
                    following = MODES[modes[index + 1]]
                    self.tick(show, following)
                    self.save(show)
                    self.assertEqual(self.lines(2, 4, 8), ["true" if on else "false" for on in following])
                    self.assertEqual(self.desk.screen.windows().get(MONITOR), before, "nothing moves before a start")
                self.end(show)

    def test_when_a_save_acts(self):
        other = self.desk.media / "other"
        other.mkdir()
        lay(CLIPS / LONG, other / LONG)
        self.desk.settings({24: colon_path(self.desk.media), 22: colon_path(self.desk.media)})
        with self.desk.started() as show:
            show.until_rows(CLIP_NAMES)
            self.until_mode(show, "dual")
            corner = [place + 2 for place in self.desk.screen.windows()[CONSOLE][:2]]
            corner[1] += 60
            plain = self.desk.screen.picture.pixel(*corner)
            self.assertNotEqual(plain, FLAT)

            show.open_preferences()
            self.tick(show, MODES["hidden"])
            show.click_on("WindowColor_Check", PREFERENCES)
            self.choose_last(show, "FreeSeek_Popup")
            for _ in range(2):
                show.click(*seen.centre(show.control("UpDownArrow.Up", PREFERENCES)))
            show.until(lambda: seen.content(show.control("FolderNumber_Edit", PREFERENCES)) == "3", "the number 3")
            show.click_on("Folder3_Bevel", PREFERENCES)
            show.choose_folder(other)
            show.until(lambda: seen.content(show.control("Folder3_Edit", PREFERENCES)) == colon_path(other),
                       "the folder's path")
            self.assertEqual(self.line(24), colon_path(self.desk.media), "before the save")
            self.save(show)
            self.shoot("saved")
            self.assertEqual(self.lines(6, 8, 12, 16, 24), ["true", "true", "19", "3", colon_path(other)])
            self.desk.screen.ask_to_close(PREFERENCES)
            show.until_gone(PREFERENCES)

            # At once: the step of the seeks and the folder of a button that is pressed.
            self.assertEqual(show.rows(3), CLIP_NAMES, "no scan is started")
            self.assertTrue(seen.checked(show.control("Fold1")))
            show.click_on("Fold3")
            show.until_rows([LONG])
            show.press("Return")
            show.until_text("MaxTime", "00：15：00")
            show.press("space")
            show.until_text("PlayModeLabel", "一時停止")
            show.press("Alt_L", "Right")
            show.until(lambda: show.text("PosTIme").startswith("00：10：0"), "ten minutes on")
            # At the next move of the console: the hiding. At the next start: its colour.
            self.assertIn(MONITOR, self.desk.screen.windows())
            self.assertEqual(self.desk.screen.picture.pixel(*corner), plain)
            self.desk.screen.move(CONSOLE, 300, 200)
            show.until_gone(MONITOR)
            self.end(show)
        with self.desk.started() as show:
            show.until_rows([LONG])
            self.assertTrue(seen.checked(show.control("Fold3")))
            self.assertNotIn(MONITOR, self.desk.screen.windows())
            self.assertEqual(self.desk.screen.picture.pixel(*corner), FLAT)
            show.press("Alt_L", "x")
            show.press("Return")
            show.until_text("PlayModeLabel", "再生中")
            self.assertIn(CONSOLE, self.desk.screen.windows(), "nothing would be left to see")

    def test_what_cannot_be_stored(self):
        broken = self.desk.home / "line\nbreak"
        broken.mkdir()
        show = self.start()
        show.until_rows(CLIP_NAMES)
        show.open_preferences()
        self.save(show)
        before = seen.content(show.control("Folder1_Edit", PREFERENCES))

        # A folder whose name would be two lines.
        show.click_on("Folder1_Bevel", PREFERENCES)
        chooser = show.window("フォルダを選択")
        entry = show.until(lambda: seen.named(chooser, broken.name, lists=True), "the folder in the list")
        x, y, _, _ = seen.area(entry)
        show.click(x + 40, y + 10)
        show.until(lambda: seen.enabled(seen.named(chooser, "選択")), "a choice")
        seen.act(seen.named(chooser, "選択"))
        show.until_gone("フォルダを選択")
        show.until(lambda: show.program.errors, "a line about it")
        self.assertEqual(len(show.program.errors), 1)
        self.assertIn("line break:", show.program.errors[0])
        show.window(PREFERENCES)
        self.assertEqual(seen.content(show.control("Folder1_Edit", PREFERENCES)), before)

        # A file that cannot be written, after a save that could.
        self.assertEqual(show.text("MessageLabel", PREFERENCES), SAVED)
        file = self.desk.home / SETTINGS
        file.unlink()
        file.mkdir()
        show.click_on("SettingButton", PREFERENCES)
        show.until(lambda: len(show.program.errors) == 2, "a line about the file")
        self.assertIn("ES: Is a directory", show.program.errors[1])
        self.assertEqual(show.text("MessageLabel", PREFERENCES), "")
        file.rmdir()
        self.save(show)
        self.assertEqual(len(file.read_text(encoding="utf-8").split("\n")), 201)


if __name__ == "__main__":
    unittest.main()
