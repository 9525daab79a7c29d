"""Where the monitor goes: one display or two, with and without a window manager, and displays that go away."""

import pathlib

from case import CLIP_NAMES, CONSOLE, MONITOR, Case
from desk import clips
from desk.clips import FRAMES_PER_SECOND
from desk.show import ABOUT, LEFT, PREFERENCES, RIGHT, inside
from desk.display import MAIN, SECOND
from desk.sound import FileDevice

ONLY = (0, 0, 1280, 1024)


class Displays(Case):
    monitors = None

    def test_full_screen_on_the_only_display(self):
        self.set_up([ONLY])
        self.desk.settings({2: "false", 4: "true"})
        show = self.start()
        screen = self.desk.screen
        self.until_monitor(show, ONLY)
        self.until_in_front(show, CONSOLE)
        show.until_rows(CLIP_NAMES)
        dark = screen.picture.pixel(1270, 1000)
        show.click_row(0, times=2)
        # The console stands on the upper part of the monitor's picture; its last lower block is white.
        show.until(lambda: (show.codes()[0] or (0, 0))[1] > 5, "the preview playing")
        show.until(lambda: screen.picture.pixel(1270, 1000) == (255, 255, 255), "the picture behind it")
        self.assertEqual(dark, (0, 0, 0))
        show.until(screen.pointer_is_seen, "the pointer on the console")
        screen.click(1270, 1000)
        show.until(lambda: not screen.pointer_is_seen(), "no pointer on the monitor")
        show.until(lambda: screen.active_title() == CONSOLE and screen.stacking().index(CONSOLE) >
                   screen.stacking().index(MONITOR), "the console before the monitor")
        screen.move(CONSOLE, 200, 300)
        show.until(lambda: show.codes()[0], "the preview")
        self.shoot("moved")
        self.until_monitor(show, ONLY)

    def test_no_window_manager(self):
        self.set_up([LEFT, RIGHT], window_manager=False)
        show = self.start()
        self.until_monitor(show, RIGHT)
        show.until_rows(CLIP_NAMES)
        show.click_row(0, times=2)
        show.until_playing(1, frame=5)
        self.shoot("playing")

    def test_a_panel_on_the_second_display(self):
        self.set_up([LEFT, (1920, 0, 1920, 1200)])
        screen = self.desk.screen

        def panel_seen():
            return screen.picture.pixel(2800, 1180) == (0xC0, 0x40, 0x60)
        screen.put_panel(1920, 1160, 1920, 40, 0xC04060)
        self.desk.waiter.until(panel_seen, "the panel")
        show = self.start()
        self.until_monitor(show, (1920, 0, 1920, 1200))
        show.until(lambda: not panel_seen(), "the curtain over the panel")
        self.play_first(show)
        self.shoot("playing")
        self.assertFalse(panel_seen())

    def test_a_display_goes_and_comes(self):
        self.set_up([LEFT, RIGHT])
        device = FileDevice(self.desk)
        show = self.start(environment=device.environment)
        screen = self.desk.screen
        self.until_monitor(show, RIGHT)
        self.assertFalse(device.file.exists(), "no sound is played before a movie")
        _, stage = self.play_first(show)
        engine = show.engine_of(self.desk.media / CLIP_NAMES[0])
        descriptors = pathlib.Path(f"/proc/{engine}/fd").iterdir()
        opened = [name.readlink() for name in descriptors].count(device.file)
        self.assertEqual(opened, 1, "one player, and one only, has the sound device")
        screen.unplug(SECOND)
        show.until_gone(MONITOR)
        self.until_in_front(show, CONSOLE)
        show.until(lambda: (show.codes()[0] or (0, 0))[1] > stage[1] + FRAMES_PER_SECOND, "the preview going on")
        heard = device.seconds()
        show.press("Control_L", "Left")
        show.until(lambda: device.seconds() > heard + 1, "sound from the beginning, as the device takes it ahead of time")
        show.press("Alt_L", "x")  # of no use now: the console is all that can be seen
        show.until(lambda: min(show.text("PosTIme"), show.text("MonitorPosTime")) > "00：00：02", "both players going on")
        self.until_in_front(show, CONSOLE)
        self.shoot("gone")
        screen.plug(SECOND, RIGHT)
        self.until_monitor(show, RIGHT)
        show.until_playing(1, frame=stage[1] + FRAMES_PER_SECOND)
        self.until_in_front(show, CONSOLE)
        # A movie opened without the display fills it when it comes.
        screen.unplug(SECOND)
        show.until_gone(MONITOR)
        show.press("Down")
        show.press("Return")
        show.until_text("FileLabel", CLIP_NAMES[1])
        screen.plug(SECOND, RIGHT)
        self.until_monitor(show, RIGHT)
        show.until_playing(2, frame=5)
        self.assertEqual(show.picture_area(MONITOR), RIGHT)
        self.shoot("back")

    def test_any_order(self):
        for name, main, stage in (("left", (1280, 0, 1920, 1200), (0, 120, 1280, 720)),
                                  ("above", (200, 768, 1366, 768), (0, 0, 1024, 768)),
                                  ("on end", (1080, 400, 1280, 1024), (0, 0, 1080, 1920))):
            self.set_up([main, stage])
            with self.desk.started() as show:
                windows = self.desk.screen.windows
                self.until_monitor(show, stage)
                self.play_first(show)
                show.open_preferences()
                show.open_about()
                for title in (PREFERENCES, ABOUT):
                    show.until(lambda: inside(windows()[title], main), f"{title} on {main}, not {windows()[title]}")
                left, top, _, _ = windows()[CONSOLE]
                self.assertLess(max(left - main[0], top - main[1]), 40)
                show.until_playing(1, frame=20)  # nothing stands on any of it
                self.shoot(name)
                self.assertEqual(show.program.errors, [])

    def test_its_display_comes_back_otherwise(self):
        left, right = (0, 0, 1920, 1200), (1600, 0, 1920, 1200)
        self.set_up([left, (1920, 0, 1600, 900)])
        show = self.start()
        screen = self.desk.screen
        self.play_first(show)

        def until_followed(stage, keyboard):
            self.until_monitor(show, stage)
            show.until(lambda: show.picture_area(MONITOR) == stage, f"the picture on {stage}")
            show.until(lambda: show.codes()[1], "the movie")
            show.until(lambda: screen.active_title() == keyboard, f"the keyboard in {keyboard}", seconds=2)

        def until_console(area):
            show.until(lambda: inside(screen.windows()[CONSOLE], area), "the console on the operator's display")
        for keyboard in (CONSOLE, MONITOR):
            self.until_in_front(show, keyboard)
            screen.plug("HDMI", (1920, 100, 1024, 768), instead=SECOND)
            until_followed((1920, 100, 1024, 768), keyboard)
            screen.unplug("HDMI")
            show.until_gone(MONITOR)
            screen.plug(MAIN + "b", right, instead=MAIN)
            screen.plug("DVI", (0, 0, 1600, 900))
            until_followed((0, 0, 1600, 900), CONSOLE)
            until_console(right)
            self.shoot(keyboard)
            screen.plug(MAIN, left, instead=MAIN + "b")
            screen.plug(SECOND, (1920, 0, 1600, 900), instead="DVI")
            until_console(left)
            until_followed((1920, 0, 1600, 900), CONSOLE)
            show.press("Alt_L", "x")

    def test_virtual_desktops(self):
        self.set_up([LEFT, RIGHT])
        show = self.start()
        screen = self.desk.screen
        _, stage = self.play_first(show)
        screen.turn_to_desktop(1)
        show.until(lambda: CONSOLE not in screen.windows(), "the other desktop")
        show.until(lambda: (clips.read_code(screen.picture, RIGHT) or (0, 0))[1] > stage[1] + FRAMES_PER_SECOND,
                   "the movie going on")
        self.shoot("other")
        screen.turn_to_desktop(0)
        self.until_in_front(show, CONSOLE)
        self.until_monitor(show, RIGHT)
