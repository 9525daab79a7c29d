"""python3 -m desk.demo PROGRAM FOLDER: shows the program at work on a virtual desktop of two displays, opens the first
movie of its list by key, and saves a picture of both displays in FOLDER. What ./run does where there is no display.
"""

import pathlib
import sys

from .display import GROUND
from .show import CONSOLE, desk

DISPLAYS = [(0, 0, 1024, 576), (1024, 0, 1024, 576)]
PICTURES = 75  # shown by the monitor until the picture is saved; the first ones of a clip may be dark


def say(text):
    print(f"kirolane: {text}", flush=True)


def main():
    binary = pathlib.Path(sys.argv[1]).absolute()  # through a link, where it is one
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    target = folder / "two-displays.png"
    with desk(binary, DISPLAYS) as place:
        place.binary = binary  # where it lies, with what lies beside it
        place.screen.paint_ground(GROUND)
        with place.started() as show:
            show.until(lambda: show.screen.active_title() == CONSOLE, "the keyboard in the console")
            name = show.until(lambda: show.rows(1)[0], "a movie in the list")
            say(f"opening {name} by key")
            show.press("Return")
            show.until_text("PlayModeLabel", "再生中")
            show.until_moving(DISPLAYS[1], PICTURES, seconds=20)
            show.screen.picture.save_png(target)
            show.close()
    say(f"picture of both displays: {target}")


if __name__ == "__main__":
    try:
        main()
    except (AssertionError, OSError, RuntimeError) as failure:
        print(f"kirolane: {failure}", file=sys.stderr)
        sys.exit(1)
