"""An engine that ends in the middle of a show."""

import os
import signal

from case import CLIP_NAMES, MONITOR, Case, unittest
from desk.clips import FRAMES_PER_SECOND
from desk.show import RIGHT


class Engines(Case):
    def end_engine(self, show, clip, before, sent):
        """And what the audience sees from then on, from that frame up to the clip's next second."""
        engine = show.engine_of(self.desk.media / CLIP_NAMES[clip - 1])
        seen_between = set()
        os.kill(engine, sent)

        def goes_on():
            code = show.codes()[1]
            middle = [self.desk.screen.picture.pixel(RIGHT[0] + x, RIGHT[1] + 800) for x in range(20, 1920, 120)]
            seen_between.add("black" if not any(map(any, middle)) else code and code[0])
            if code:
                self.assertGreaterEqual(code[1], before, "it never goes back")
            return code and code[1] > before + FRAMES_PER_SECOND
        show.until(goes_on, "the movie going on")
        self.assertLessEqual(seen_between, {clip, None}, "something else than the clip was seen")
        show.until_text("PlayModeLabel", "再生中")
        self.assertNotEqual(show.engine_of(self.desk.media / CLIP_NAMES[clip - 1]), engine)

    def test_their_end_costs_a_moment_of_a_standing_picture(self):
        kills = int(os.environ.get("KIROLANE_KILLS", 3))
        plain = os.environ.get("ASAN_OPTIONS", "") + ":handle_segv=0"  # an end without a sanitizer's report
        show = self.start(lines=kills, environment={"ASAN_OPTIONS": plain})
        self.until_monitor(show, RIGHT)
        self.play_first(show)
        for number in range(kills):
            clip = number % 3 + 1
            if number > 0:
                show.click_row(clip - 1, times=2)
            stage = show.until_playing(clip, frame=5)[1]
            self.end_engine(show, clip, stage[1], [signal.SIGKILL, signal.SIGSEGV, signal.SIGABRT][number % 3])
            self.shoot(f"{number + 1}")
            codes = show.codes()
            self.assertLessEqual(abs(codes[0][1] - codes[1][1]), FRAMES_PER_SECOND // 3, "the twins")
        self.assertIn(MONITOR, self.desk.screen.windows())


if __name__ == "__main__":
    unittest.main()
