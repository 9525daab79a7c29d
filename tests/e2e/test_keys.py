"""A show run by keys alone, in the console and from the monitor."""

from case import CLIP_NAMES, CLIPS, CONSOLE, MONITOR, Case, seen, unittest
from rig.clips import FRAMES_PER_SECOND

SOUND = "音.wav"


class Keys(Case):
    def start_playing(self):
        show = self.start()
        show.until_rows(CLIP_NAMES)
        show.press("Return")
        show.until_playing(1, frame=5)
        return show

    def until_frame(self, show, low, high):
        """Both windows are within these frames."""
        show.until(lambda: all(code and low <= code[1] < high for code in show.codes()),
                   f"frames {low} to {high}, not {show.codes()}")

    def test_seeks_and_mark(self):
        show = self.start_playing()
        five = 5 * FRAMES_PER_SECOND
        show.press("Control_L", "Alt_L", "Right")
        self.until_frame(show, five, 2 * five)
        show.press("space")
        show.until_text("PlayModeLabel", "一時停止")
        marked = self.until_still(show)[1][1]
        show.press("Control_L", "period")
        show.press("Control_L", "Alt_L", "Right")
        self.until_frame(show, marked + five - 2, marked + five + 3)
        show.press("Control_L", "slash")  # to the whole second of the mark
        self.until_frame(show, marked - FRAMES_PER_SECOND, marked + 1)
        show.press("Control_L", "Left")  # 30 s back ends at the beginning
        self.until_frame(show, 0, 2)
        self.assertEqual(show.program.errors, [])

    def test_volume_rate_and_loop(self):
        show = self.start_playing()
        show.press("Control_L", "Down")
        show.until_text("VolumeLabel", "Volume：  79")
        show.until(lambda: seen.number(show.control("VolumeProgress")) == 79, "the bar at 79")
        show.press("Alt_L", "Down")
        show.until(lambda: not seen.enabled(show.control("VolumeLabel")), "the mute")
        show.press("Alt_L", "Down")
        show.until(lambda: seen.enabled(show.control("VolumeLabel")), "the end of the mute")
        show.press("Shift_L", "Right")
        show.until_text("RateText", "Rate：＋１")
        show.press("Shift_L", "z")
        show.until(lambda: show.text("LoopLabel") != "", "the sign of the loop")
        show.press("Control_L", "Right")  # beyond the end: the loop begins anew
        self.until_frame(show, 0, 2 * FRAMES_PER_SECOND)
        show.until_playing(1, frame=2 * FRAMES_PER_SECOND)

    def test_console_hidden(self):
        show = self.start_playing()
        show.press("Alt_L", "x")
        show.until(lambda: CONSOLE not in self.desk.screen.windows(), "the console hidden")
        show.until(lambda: self.desk.screen.active_title() == MONITOR, "the keyboard in the monitor")
        show.press("space")
        self.desk.waiter.until(lambda: show.text("PlayModeLabel") == "一時停止", "a pause")
        self.assertIsNotNone(self.until_still(show)[1])
        show.press("Alt_L", "x")
        show.until(lambda: self.desk.screen.active_title() == CONSOLE, "the console in front")

    def test_sound_beside_the_movie(self):
        self.desk.put(CLIPS / SOUND)
        show = self.start_playing()
        show.click(*self.tab(show, "サウンド"))
        show.until(lambda: show.rows(1, grid="mStrGrid") == [SOUND], "the sound in its list")
        show.press("Return")
        show.until(lambda: any(title.endswith(" / 00：00：20") for title in self.desk.screen.windows()),
                   "the sound's time in the title of its window")
        show.until(lambda: show.rows(1, column=0, grid="mStrGrid") == ["●"], "the sound's mark")
        frame = show.codes()[1][1]
        show.until_playing(1, frame + FRAMES_PER_SECOND)
        self.shoot("playing")
        self.assertEqual(show.program.errors, [])

    def tab(self, show, text):
        return seen.centre(seen.named(show.control("ListTab"), text))


if __name__ == "__main__":
    unittest.main()
