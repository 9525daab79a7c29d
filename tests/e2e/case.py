"""What every test in real windows begins with."""

import os
import pathlib
import unittest

from desk import accessibility as seen
from desk import show as desks
from desk.show import CONSOLE, MONITOR

BINARY = pathlib.Path(os.environ["KIROLANE_PROGRAM"])
CLIPS = pathlib.Path(os.environ["KIROLANE_CLIPS"])
LOGO = pathlib.Path(os.environ["KIROLANE_LOGO"])
SHOTS = pathlib.Path(os.environ["KIROLANE_SHOTS"])

CLIP_NAMES = ["1 番.mp4", "2 番.mp4", "3 番.mp4"]
NO_TIME = "00：00：00"


class Case(unittest.TestCase):
    monitors = (desks.LEFT, desks.RIGHT)  # none where each test sets up its own
    beside_the_program = CLIP_NAMES

    def setUp(self):
        if self.monitors:
            self.set_up(self.monitors)

    def set_up(self, monitors, window_manager=True):
        self.desk = self.enterContext(desks.desk(BINARY, monitors, window_manager))
        self.desk.put(*(CLIPS / name for name in self.beside_the_program))
        SHOTS.mkdir(parents=True, exist_ok=True)

    def start(self, lines=0, **options):
        """The program, which at the end of the test has written so many lines to standard error."""
        show = self.enterContext(self.desk.started(**options))
        self.addCleanup(lambda: self.assertEqual(len(show.program.errors), lines, show.program.errors))
        self.addCleanup(self.shoot, "end")  # while the program still runs
        return show

    def start_playing(self):
        show = self.start()
        self.play_first(show)
        return show

    def play_first(self, show):
        show.until_rows(CLIP_NAMES)
        self.until_in_front(show, CONSOLE)
        show.press("Return")
        return show.until_playing(1, frame=5)

    def until_monitor(self, show, area):
        show.until(lambda: self.desk.screen.windows().get(MONITOR) == area,
                   f"the monitor on {area}, not {self.desk.screen.windows()}")

    def until_below(self, show):
        """The monitor of the smallest size, under the console."""
        def below():
            left, top, _, height = self.desk.screen.windows()[CONSOLE]
            return self.desk.screen.windows()[MONITOR] == (left, top + height + 6, 320, 240)
        show.until(below, f"the monitor under the console, not {self.desk.screen.windows()}")

    def until_in_front(self, show, title):
        show.until(lambda: self.desk.screen.active_title() == title, f"the keyboard in {title}")

    def shoot(self, moment):
        self.desk.screen.picture.save_png(SHOTS / f"{self.id().split('.', 1)[1]}-{moment}.png")

    def assert_curtain(self, show, window, width):
        """The logo stands on the black rectangle, which covers the player's place."""
        area = seen.area(show.control("DummyQTM", window))[:2]
        wanted = desks.pixels(LOGO, "rgb24", f"crop={width}:120:0:0")
        show.until(lambda: self.desk.screen.picture.area(*area, width, 120) == wanted, f"the logo in {window}")
