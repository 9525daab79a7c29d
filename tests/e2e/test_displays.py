"""Where the monitor goes: one display or two, with and without a window manager, and displays that go away."""

from case import CLIP_NAMES, CONSOLE, MONITOR, Case, seen, unittest
from rig.desk import LEFT, RIGHT

GAP = 6  # between the console and a monitor under it


class Displays(Case):
    def set_up(self, monitors, window_manager=True):
        self.monitors, self.window_manager = monitors, window_manager
        super().setUp()

    def setUp(self):
        pass  # each case says which displays it has

    def until_monitor(self, show, area):
        show.until(lambda: self.desk.screen.windows().get(MONITOR) == tuple(area),
                   f"the monitor on {area}, not {self.desk.screen.windows()}")

    def console_content(self, show):
        """The console without its menu bar, as the box around all controls of the first list tells."""
        x, y, _, _ = seen.area(show.control("GroupBox1"))
        return x - 4, y - 5

    def play_first(self, show):
        show.until_rows(CLIP_NAMES)
        show.click_row(0, times=2)
        return show.until_playing(1, frame=5)

    def test_one_display(self):
        self.set_up([LEFT])
        file = self.desk.settings({4: "false", 8: "false"})
        before = file.read_bytes()
        show = self.start()
        left, top = self.console_content(show)
        self.until_monitor(show, (left, top + 420 + GAP, 800, 600))
        self.assertEqual(file.read_bytes(), before, "two displays are still wanted at the next start")
        self.play_first(show)
        self.shoot("playing")
        self.assertEqual(show.picture_area(MONITOR), (left, top + 420 + GAP, 800, 600))
        self.assertEqual(show.program.errors, [])

    def test_full_screen_on_the_only_display(self):
        self.set_up([(0, 0, 1280, 1024)])
        self.desk.settings({2: "false", 4: "true"})
        show = self.start()
        self.until_monitor(show, (0, 0, 1280, 1024))
        show.until(lambda: self.desk.screen.active_title() == CONSOLE, "the console in front")
        show.until_rows(CLIP_NAMES)
        dark = self.desk.screen.picture.pixel(1270, 1000)
        show.click_row(0, times=2)
        # The console stands on the upper part of the monitor's picture; its last lower block is white.
        show.until(lambda: (show.codes()[0] or (0, 0))[1] > 5, "the preview playing")
        show.until(lambda: self.desk.screen.picture.pixel(1270, 1000) == (255, 255, 255), "the picture behind it")
        self.assertEqual(dark, (0, 0, 0))
        self.shoot("playing")

    def test_hidden_monitor(self):
        self.set_up([LEFT])
        self.desk.settings({2: "false", 4: "false", 8: "true"})
        show = self.start()
        show.until_rows(CLIP_NAMES)
        show.press("Return")
        show.until_text("PlayModeLabel", "再生中")
        self.assertNotIn(MONITOR, self.desk.screen.windows())

    def test_no_window_manager(self):
        self.set_up([LEFT, RIGHT], window_manager=False)
        show = self.start()
        self.until_monitor(show, RIGHT)
        self.play_first(show)
        self.shoot("playing")

    def test_a_display_goes_and_comes(self):
        self.set_up([LEFT, RIGHT])
        show = self.start()
        self.until_monitor(show, RIGHT)
        _, stage = self.play_first(show)
        self.desk.screen.unplug(1)
        # The preview goes on; where the system puts the other window is its own affair.
        show.until(lambda: (show.codes()[0] or (0, 0))[1] > stage[1] + 30, "the preview going on")
        self.desk.screen.plug(1)
        show.until(lambda: (show.codes()[0] or (0, 0))[1] > stage[1] + 60, "the preview going on")
        self.assertTrue(show.program.alive())
        self.assertEqual(show.program.errors, [])


if __name__ == "__main__":
    unittest.main()
