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
    monitors = (desks.LEFT, desks.RIGHT)
    window_manager = True
    beside_the_program = CLIP_NAMES

    def setUp(self):
        self.desk = self.enterContext(desks.desk(BINARY, self.monitors, self.window_manager))
        self.desk.put(*(CLIPS / name for name in self.beside_the_program))
        SHOTS.mkdir(parents=True, exist_ok=True)

    def start(self, **options):
        show = self.enterContext(self.desk.started(**options))
        self.addCleanup(self.shoot, "end")  # while the program still runs
        return show

    def shoot(self, moment):
        self.desk.screen.picture.save_png(SHOTS / f"{self.id().split('.', 1)[1]}-{moment}.png")

    def assert_covers(self, window, area):
        self.assertEqual(self.desk.screen.windows().get(window), tuple(area))

    def assert_curtain(self, show, window, width):
        """The logo stands on the black rectangle, which covers the player's place."""
        area = seen.area(show.control("DummyQTM", window))[:2]
        wanted = desks.logo_pixels(LOGO, width, 120)
        show.until(lambda: self.desk.screen.picture.area(*area, width, 120) == wanted, f"the logo in {window}")

    def until_still(self, show):
        """The codes of both windows once nothing moves any more."""
        return self.desk.waiter.until_still(show.codes)


__all__ = ["Case", "CLIPS", "CLIP_NAMES", "CONSOLE", "MONITOR", "NO_TIME", "SHOTS", "seen", "unittest"]
