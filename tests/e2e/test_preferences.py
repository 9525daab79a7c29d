"""The preferences in real windows, over the restarts after which most of them act."""

from case import CLIP_NAMES, CLIPS, CONSOLE, MONITOR, Case, seen, unittest
from desk.show import PREFERENCES, RIGHT, lay
from desk.program import SETTINGS, colon_path

LONG = "長編.mp4"
FLAT = (0xB1, 0xB1, 0xB1)


class Preferences(Case):
    def line(self, number):
        return (self.desk.home / SETTINGS).read_text(encoding="utf-8").split("\n")[number - 1]

    def turn(self, show, name):
        box = show.control(name, PREFERENCES)
        show.until(lambda: seen.enabled(box), f"{name} free")
        before = seen.checked(box)
        show.click_on(name, PREFERENCES)
        show.until(lambda: seen.checked(box) != before, f"{name} turned")

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

    def test_when_a_save_acts(self):
        other = self.desk.media / "other"
        other.mkdir()
        lay(CLIPS / LONG, other / LONG)
        self.desk.settings({24: colon_path(self.desk.media), 22: colon_path(self.desk.media)})
        with self.desk.started() as show:
            show.until_rows(CLIP_NAMES)
            self.until_monitor(show, RIGHT)
            corner = [place + 2 for place in self.desk.screen.windows()[CONSOLE][:2]]
            corner[1] += 60
            plain = self.desk.screen.picture.pixel(*corner)
            self.assertNotEqual(plain, FLAT)

            show.open_preferences()
            for box in ("DisplayMode_Check", "Hide_Check", "WindowColor_Check"):  # each frees the next
                self.turn(show, box)
            self.choose_last(show, "FreeSeek_Popup")
            for _ in range(2):
                show.click(*seen.centre(show.control("UpDownArrow.Up", PREFERENCES)))
            show.until(lambda: seen.content(show.control("FolderNumber_Edit", PREFERENCES)) == "3", "the number 3")
            show.choose_for("Folder3_Bevel", other)
            self.assertEqual(self.line(24), colon_path(self.desk.media), "before the save")
            show.save_preferences()
            self.shoot("saved")
            self.assertEqual([self.line(number) for number in (2, 4, 6, 8, 12, 16, 24)],
                             ["false", "false", "true", "true", "19", "3", colon_path(other)])
            show.close_preferences()

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
            show.close()
        with self.desk.started() as show:
            show.until_rows([LONG])
            self.assertTrue(seen.checked(show.control("Fold3")))
            self.assertNotIn(MONITOR, self.desk.screen.windows())
            self.assertEqual(self.desk.screen.picture.pixel(*corner), FLAT)
            show.press("Alt_L", "x")
            show.press("Return")
            show.until_text("PlayModeLabel", "再生中")
            self.assertIn(CONSOLE, self.desk.screen.windows(), "nothing would be left to see")


if __name__ == "__main__":
    unittest.main()
