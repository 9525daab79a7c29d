"""What keys do beyond their commands: held down, whatever has the keyboard, at once after an opening, at the end."""

from case import CLIP_NAMES, Case, seen
from desk import keys
from desk.clips import FRAMES_PER_SECOND


class Keys(Case):
    def test_held_down(self):
        """Seeks and volume go on, what turns something on and off acts once."""
        show = self.start_playing()
        screen = self.desk.screen
        with screen.held("Control_L", "Down"):
            show.until(lambda: seen.number(show.control("VolumeProgress")) <= 60, "the volume falling")
        with screen.held("Shift_L", "z"):
            show.until(lambda: show.text("LoopLabel") == "→", "the loop")
            show.until(lambda: (show.codes()[1] or (0, 0))[1] > 5 * FRAMES_PER_SECOND, "more than the time until a key repeats")
            self.assertEqual(show.text("LoopLabel"), "→")
        show.press("space")
        show.until_text("PlayModeLabel", "一時停止")
        with screen.held("Control_L", "Shift_L", "Right"):
            show.until(lambda: seen.number(show.control("QTM_PosBar")) == 20, "the end")
        with screen.held("Control_L", "Alt_L", "Left"):
            show.until(lambda: seen.number(show.control("QTM_PosBar")) == 0, "the beginning")
        self.assertEqual(self.desk.waiter.until_still(show.codes), ((1, 0), (1, 0)))

    def test_whatever_has_the_keyboard(self):
        show = self.start_playing()
        places = [seen.centre(show.control(name)) for name in ("Rate", "VolumeProgress", "FileLabel", "Fold2", "ListTab")]
        places.append(seen.centre(seen.cell(show.control("StrGrid"), 20, 1)))
        loop = ""
        for place in [None, *places]:
            if place is not None:
                show.click(*place)
            show.press("Alt_L")  # alone it takes nothing away
            show.press("Shift_L", "x")
            loop = "" if loop else "↓"
            show.until_text("LoopLabel", loop)
        show.until_rows(CLIP_NAMES)  # the other button names the same folder
        show.click_row(0)
        for key in "2", "n", "period":
            show.press(key)
        show.press("Return")
        show.until_playing(1)

    def test_all_at_once(self):
        """All of commands that stay in the window, at once after the one that opens a movie."""
        show = self.start_playing()
        chords = [key for name in ("コントローラー", "コントローラー２") for item, given in keys.read()[name].items()
                  for key in given if item not in ("Quit", "環境設定")]
        for chord in 3 * [("Return",), *chords, ("Shift_L", "b")] + [("Return",)]:
            show.press(*chord)
        show.until_playing(1, frame=10)

    def test_end_of_a_movie(self):
        show = self.start_playing()
        show.press("Shift_L", "z")
        show.until_text("LoopLabel", "→")
        show.press("Control_L", "Right")  # beyond the end: the loop begins anew
        show.until(lambda: all(code and code[1] < 2 * FRAMES_PER_SECOND for code in show.codes()), "the beginning")
        show.until_playing(1, frame=2 * FRAMES_PER_SECOND)
        show.press("Shift_L", "x")
        show.press("Control_L", "Right")
        show.until_playing(2, frame=5)
        self.assertEqual(show.rows(3, column=0), ["", "●", ""])
