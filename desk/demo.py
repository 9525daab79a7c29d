"""python3 -m desk.demo PROGRAM FOLDER: shows the program at work on a virtual desktop of two displays, opens the first movie of
its list by key, and saves a picture of both displays in FOLDER. What ./run does where there is no display.
"""

import pathlib
import sys
import tempfile

from . import display, program, session
from .show import CONSOLE, MONITOR, Show
from .waiter import Waiter

DISPLAYS = [(0, 0, 1024, 576), (1024, 0, 1024, 576)]
GROUND = 0x39424E
PICTURES = 75  # shown by the monitor until the picture is saved; the first ones of a clip may be dark


def say(text):
    print(f"kirolane: {text}", flush=True)


def looks(screen, area):
    """A few pixels of an area, enough to tell one picture from the next."""
    left, top, width, height = area
    return tuple(screen.picture.pixel(left + x * width // 32, top + y * height // 16)
                 for x in range(1, 32) for y in range(1, 16))


def show_at_work(binary, target, screen, waiter, home):
    with program.running_program([binary], home, screen.name, waiter) as running:
        show = Show(screen, waiter, running)
        show.until_started()
        show.until(lambda: MONITOR in screen.windows(), "the monitor window")
        show.until(lambda: screen.active_title() == CONSOLE, "the keyboard in the console")
        name = show.until(lambda: show.rows(1)[0], "a movie in the list")
        say(f"opening {name} by key")
        show.press("Return")
        show.until_text("PlayModeLabel", "再生中")
        pictures = {looks(screen, DISPLAYS[1])}

        def played():
            pictures.add(looks(screen, DISPLAYS[1]))
            return len(pictures) > PICTURES
        show.until(played, "moving pictures on the second display", seconds=20)
        screen.picture.save_png(target)
        screen.ask_to_close(CONSOLE)
        status, _ = running.exit_status()
        if status != 0 or running.errors:
            raise AssertionError(f"ended with status {status}: {running.errors}")


def main():
    binary = pathlib.Path(sys.argv[1]).resolve()
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    target = folder / "two-displays.png"
    waiter = Waiter()
    session.start()
    with tempfile.TemporaryDirectory(prefix="kirolane-") as temporary:
        home = pathlib.Path(temporary) / "home"
        home.mkdir()
        with display.screen(pathlib.Path(temporary) / "screen", waiter, DISPLAYS) as screen:
            screen.paint_ground(GROUND)
            show_at_work(binary, target, screen, waiter, home)
    say(f"picture of both displays: {target}")


if __name__ == "__main__":
    try:
        main()
    except (AssertionError, OSError, RuntimeError) as failure:
        print(f"kirolane: {failure}", file=sys.stderr)
        sys.exit(1)
