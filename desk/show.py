"""An operator's desk: screen, home folder, program, and the looks and moves that the tests share."""

import contextlib
import os
import pathlib
import shutil
import subprocess
import tempfile

from . import accessibility as seen
from . import clips, display, program, session
from .waiter import Waiter

CONSOLE = "Kirolane"
MONITOR = "モニター"
PREFERENCES = "環境設定"
CHOOSER = "フォルダを選択"
ABOUT = "バージョン情報"
LEFT = (0, 0, 1920, 1200)
RIGHT = (1920, 0, 1920, 1080)


def lay(file, place):
    """Has the file at that place too."""
    try:
        os.link(file, place)
    except OSError:  # on another device
        shutil.copy(file, place)


def inside(window, area):
    """All of the one within the other."""
    return (area[0] <= window[0] and window[0] + window[2] <= area[0] + area[2] and
            area[1] <= window[1] and window[1] + window[3] <= area[1] + area[3])


class Desk:
    """One screen and one home folder; the program lies in a folder of its own together with some clips."""

    def __init__(self, folder, screen, waiter, binary):
        self.folder = folder
        self.screen = screen
        self.waiter = waiter
        self.home = folder / "home"
        self.home.mkdir()
        self.media = folder / "program"
        self.media.mkdir()
        self.binary = self.media / "kirolane"
        shutil.copy(binary, self.binary)
        lay(binary.resolve().parent / "kirolane-engine", self.media / "kirolane-engine")

    def put(self, *files):
        for file in files:
            lay(file, self.media / file.name)

    def settings(self, changes=None):
        return program.settings_file(self.home, changes, self.media)

    @contextlib.contextmanager
    def started(self, environment=None, prefix=(), arguments=()):
        """The program up to the showing of its console; its list may still be filling."""
        with self.launched(environment, prefix, arguments) as running:
            show = Show(self.screen, self.waiter, running)
            show.until(lambda: CONSOLE in self.screen.windows() or not running.alive(), "the console")
            if not running.alive():
                raise AssertionError(f"ended at its start: {running.exit_status()} {running.errors}")
            show.until(lambda: show.control("StrGrid"), "the controls")
            yield show

    def launched(self, environment=None, prefix=(), arguments=()):
        return program.running_program([*prefix, self.binary, *arguments], self.home, self.screen.name, self.waiter,
                                       environment)


class Show:
    """A running program as a person sees it."""

    def __init__(self, screen, waiter, running):
        self.screen = screen
        self.waiter = waiter
        self.program = running
        self._tree = seen.Tree(running.process.pid)
        self._controls = {}

    def until(self, condition, what, seconds=10.0):
        try:
            return self.waiter.until(condition, what, seconds)
        except AssertionError as missed:
            raise AssertionError(f"{missed}; standard error: {self.program.errors}") from None

    def press(self, *keys):
        self.screen.press(*keys)

    def click(self, x, y, times=1):
        self.screen.click(x, y, times)

    def engine_of(self, file):
        """The process of the program's engine that holds that file; None for none."""
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if process.joinpath("stat").read_text().split()[3] == str(self.program.process.pid) and any(
                        os.readlink(entry) == str(file) for entry in process.joinpath("fd").iterdir()):
                    return int(process.name)
            except OSError:
                pass  # it has just ended
        return None

    # Controls

    def control(self, name, window=CONSOLE):
        key = window, name
        if self._controls.get(key) is None:
            self._controls[key] = self._tree.control(window, name)
        return self._controls[key]

    def forget(self, window):
        """To be called when a window has been closed for good: the next of that title is another."""
        self._controls = {key: control for key, control in self._controls.items() if key[0] != window}

    def click_on(self, name, window=CONSOLE):
        self.click(*seen.centre(self.control(name, window)))

    def text(self, name, window=CONSOLE):
        return seen.text(self.control(name, window))

    def until_text(self, name, wanted, seconds=10.0):
        self.until(lambda: self.text(name) == wanted, f"{name} saying {wanted!r}, not {self.text(name)!r}", seconds)

    # Windows that come and go

    def close(self):
        """Ends the show by the console's close box; the seconds that it took."""
        self.screen.ask_to_close(CONSOLE)
        status, seconds = self.program.exit_status()
        if status != 0 or self.program.errors:
            raise AssertionError(f"ended with status {status}: {self.program.errors}")
        return seconds

    def window(self, title):
        self.until(lambda: title in self.screen.windows(), f"the window {title}")
        return self.until(lambda: self._tree.window(title), f"what {title} holds")

    def until_gone(self, title):
        self.until(lambda: title not in self.screen.windows(), f"the end of {title}")

    def sound_window(self):
        """The title of the sound window: it changes with the movie's times."""
        return next((title for title in self.screen.windows() if "：" in title or title == "Untitled"), None)

    def turn_to(self, page, window=CONSOLE):
        """Of the lists, by its tab."""
        self.click(*seen.centre(seen.named(self.control("ListTab", window), page)))

    def open_sounds(self):
        self.turn_to("サウンド")
        self.until(lambda: seen.showing(self.control("mStrGrid")), "the sounds' page")

    def open_preferences(self):
        self.until(lambda: self.screen.active_title() in (CONSOLE, MONITOR), "the keyboard in the console")
        self.press("Control_L", "comma")
        self.window(PREFERENCES)
        self.until(lambda: self.screen.active_title() == PREFERENCES, "the preferences in front")
        self.forget(PREFERENCES)

    def choose_for(self, button, folder):
        """A folder in the preferences, by the chooser."""
        self.click_on(button, PREFERENCES)
        chooser = self.window(CHOOSER)
        field = self.until(lambda: seen.of_role(chooser, seen.ROLE.TEXT), "the field of the chooser")
        seen.write(field, str(folder))
        self.until(lambda: seen.enabled(seen.named(chooser, "選択")), "a choice")
        seen.act(seen.named(chooser, "選択"))
        self.until_gone(CHOOSER)
        self.until(lambda: self.screen.active_title() not in ("", CHOOSER), "the keyboard where it was")
        field = self.control(button.replace("Bevel", "Edit"), PREFERENCES)
        self.until(lambda: seen.content(field) == program.colon_path(folder), f"{folder} beside {button}")

    def save_preferences(self):
        self.click_on("SettingButton", PREFERENCES)
        self.until(lambda: self.text("MessageLabel", PREFERENCES) == "設定を確定しました", "the word of the save")

    def close_preferences(self):
        self.screen.ask_to_close(PREFERENCES)
        self.until_gone(PREFERENCES)

    def open_about(self):
        """By the item of the menu."""
        seen.act(seen.named(self.window(CONSOLE), ABOUT))
        self.window(ABOUT)

    # The list in front

    def rows(self, count, column=1, grid="StrGrid"):
        return [seen.text(seen.cell(self.control(grid), row, column)) for row in range(count)]

    def until_rows(self, names):
        self.until(lambda: self.rows(len(names)) == names and not self.rows(len(names) + 1)[-1],
                   f"the rows {names}, not {self.rows(len(names) + 1)}")

    def click_row(self, row, times=1):
        self.click(*seen.centre(seen.cell(self.control("StrGrid"), row, 1)), times)

    # Pictures

    def picture_area(self, window):
        return seen.area(self.control("QTM", window))

    def codes(self):
        """What the console and the monitor show: (clip, frame) or None, each."""
        picture = self.screen.picture
        return tuple(clips.read_code(picture, self.picture_area(window)) for window in (CONSOLE, MONITOR))

    def until_moving(self, area, pictures=25, seconds=10.0):
        """That many different ones have been seen there."""
        different = set()

        def moved():
            different.add(hash(self.screen.picture.area(*area)))
            return len(different) > pictures
        self.until(moved, f"moving pictures at {area}", seconds)

    def until_playing(self, clip, frame=0):
        """Both windows show that clip, at that frame or later."""
        def reached():
            codes = self.codes()
            return all(code and code[0] == clip and code[1] >= frame for code in codes) and codes
        return self.until(reached, f"clip {clip} in both windows from frame {frame}, not {self.codes()}")


@contextlib.contextmanager
def desk(binary, monitors=(LEFT, RIGHT), window_manager=True):
    session.start()
    with contextlib.ExitStack() as stack:
        # Readable for an ordinary user, too.
        folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="kirolane-")))
        folder.chmod(0o755)
        waiter = Waiter()
        screen = stack.enter_context(display.screen(folder / "screen", waiter, list(monitors), window_manager))
        yield Desk(folder, screen, waiter, binary)


def pixels(file, kind, filters="null"):
    """The bytes of a picture in a format of ffmpeg's."""
    return subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-i", str(file), "-vf", filters, "-f", "rawvideo",
                           "-pix_fmt", kind, "-"], check=True, capture_output=True).stdout
