"""Footage of every kind, each opened from the list, sought and played to its end in both windows."""

import os
import pathlib
from collections import namedtuple

from case import CONSOLE, MONITOR, SHOTS, Case, seen
from desk.show import lay

CORPUS = pathlib.Path(os.environ["KIROLANE_CORPUS"])
EXACT, IN_STEP = 0.15, 0.4  # seconds
THUMB = 8  # from an end of the slider to the middle of a thumb there

# The clip of the corpus, if it has another name; what the quarters of its pictures show, row by row, told by the time
# of such a grey; its length, where it is sought to, and the lines that it costs.
GREY, MOVING = "grows with the time", "anything"
Kind = namedtuple("Kind", "clip quarters seconds target lines", defaults=("", GREY, "5", 4, 0))
CLOCKS = {
    "early.mp4": Kind(target=2, lines=1), "edited.mp4": Kind(), "fast.mp4": Kind(), "late_clock.mpg": Kind(),
    "late_sound.mov": Kind("late_sound.mkv"), "silent.mp4": Kind(), "sound.mov": Kind("clip.m4a", [-0.1] * 4, "45", 3),
    "uneven.mp4": Kind(), "wrapped.mpg": Kind()}
PICTURES = {
    "editor.mov": Kind(), "full_range.mp4": Kind(), "interlaced.mp4": Kind("", MOVING, "2", 1),
    "interlaced.mpg": Kind("", MOVING, "2", 1), "large.mp4": Kind("", [2.65] * 4, "0"), "odd.mp4": Kind(),
    "ten_bit.mp4": Kind(), "tiny.mp4": Kind()}


class Footage(Case):
    monitors = ((0, 0, 1024, 640), (1024, 0, 1024, 640))
    beside_the_program = ()

    def quarters(self, show, window):
        left, top, width, height = show.picture_area(window)
        greens = (self.desk.screen.picture.pixel(left + x * width // 4, top + y * height // 4)[1]
                  for y in (1, 3) for x in (1, 3))
        return [(green * 219 / 255 - 4) / 40 for green in greens]

    def until_both(self, show, wanted, within, what):
        """The two windows show the same, and that is what is wanted."""
        def both():
            console, monitor = (self.quarters(show, window) for window in (CONSOLE, MONITOR))
            return wanted(monitor) and all(abs(a - b) < within for a, b in zip(console, monitor))
        show.until(both, f"{what} in both windows, not {self.quarters(show, CONSOLE), self.quarters(show, MONITOR)}")

    def until_halted(self, show, kind, time, what):
        wanted = [time] * 4 if kind.quarters is GREY else kind.quarters
        self.until_both(show, lambda quarters: wanted is MOVING or all(
            abs(a - b) < EXACT for a, b in zip(quarters, wanted)), EXACT, what)

    def seek(self, show, target, seconds):
        bar = show.control("QTM_PosBar")
        left, top, width, height = seen.area(bar)
        begin, end = (left + THUMB + place * (width - 2 * THUMB) // seconds for place in (int(seen.number(bar)), target))
        with self.desk.screen.dragging(begin, top + height // 2):
            self.desk.screen.point((begin + end) // 2, top + height // 2)
            self.desk.screen.point(end, top + height // 2)
        show.until(lambda: seen.number(bar) == target, "the slider where it was drawn")

    def play(self, show, name, kind):
        before = len(show.program.errors)
        show.press("Return")
        show.until_text("FileLabel", name)
        self.assertIn(show.text("MaxTime"), [f"00：00：0{seconds}" for seconds in kind.seconds])
        if kind.seconds != "0":
            least = 0.3 if kind.quarters is GREY else -1
            self.until_both(show, lambda quarters: min(quarters) > least, IN_STEP, name)
            show.press("space")
            show.until_text("PlayModeLabel", "一時停止")
            self.seek(show, kind.target, int(show.text("MaxTime")[-1]))
            self.until_halted(show, kind, kind.target, f"{name} at {kind.target}")
            self.desk.screen.picture.save_png(SHOTS / f"footage {name}.png")
            show.press("space")
            show.until_text("PlayModeLabel", "再生中")
        show.until_text("PlayModeLabel", "停止")
        self.until_halted(show, kind, 0, f"the beginning of {name}")
        self.assertEqual([name in line for line in show.program.errors[before:]], [True] * kind.lines,
                         show.program.errors)
        show.press("Down")

    def play_all(self, kinds):
        for name, kind in kinds.items():
            lay(CORPUS / (kind.clip or name), self.desk.media / name)
        show = self.start(lines=sum(kind.lines for kind in kinds.values()))
        show.until_rows(list(kinds))
        for name, kind in kinds.items():
            self.play(show, name, kind)

    def test_clocks(self):
        self.play_all(CLOCKS)

    def test_pictures(self):
        self.play_all(PICTURES)
