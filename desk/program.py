"""The real program with a home folder of its own."""

import contextlib
import os
import pathlib
import re
import subprocess
import time

from .processes import end

SETTINGS = pathlib.PurePath("Library/Application Support/Kirolane/Setting/ES")
LINES = 200
NO_DEVICE = b"kirolane: sound: no device answers; the show goes on without, until one does"
REPORT = re.compile("ERROR: [A-Za-z]+Sanitizer|: runtime error: ")  # what the sanitizers find ends the program


class Program:
    def __init__(self, process, home, waiter):
        self.process = process
        self.home = home
        self.errors = []  # lines of standard error, but for that of a machine without a sound device
        self._waiter = waiter
        self._rest = b""
        waiter.watch(process.stderr.fileno(), self._take_errors)
        waiter.watch_exit(process)

    def _take_errors(self):
        data = os.read(self.process.stderr.fileno(), 65536)
        if not data:
            self._waiter.forget(self.process.stderr.fileno())
            return False
        *lines, self._rest = (self._rest + data).split(b"\n")
        self.errors += [line.decode("utf-8", "backslashreplace") for line in lines if line != NO_DEVICE]
        return True

    def alive(self):
        return self.process.poll() is None

    def exit_status(self, seconds=10.0):
        """(status, seconds until then)"""
        begin = time.monotonic()
        self._waiter.until(lambda: not self.alive(), "the end of the program", seconds)
        took = time.monotonic() - begin
        self.take_last_errors()
        return self.process.returncode, took

    def take_last_errors(self):
        """Of a program that has ended."""
        descriptor = self.process.stderr.fileno()
        os.set_blocking(descriptor, False)
        with contextlib.suppress(BlockingIOError):
            while self._take_errors():
                pass


def settings_file(home, changes=None, folder=None):
    """Writes a settings file of the first values, with some lines changed; what nobody reads is nil."""
    lines = dict.fromkeys(range(1, LINES + 1), "nil")
    lines |= {2: "true", 4: "false", 6: "false", 8: "false", 12: "3", 14: "3", 16: "1", 18: "1"}
    lines |= dict.fromkeys([*range(22, 32), *range(33, 43)], colon_path(folder))
    lines |= changes or {}
    path = home / SETTINGS
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("".join(line + "\n" for line in lines.values()), encoding="utf-8")
    return path


def colon_path(folder):
    return "Root:" + "".join(part + ":" for part in pathlib.Path(folder).parts[1:])


@contextlib.contextmanager
def running_program(command, home, display, waiter, environment=None):
    """command is a list; the environment is not the caller's, but what a bare session has."""
    kept = "PATH", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "ASAN_OPTIONS", "UBSAN_OPTIONS"
    bare = {key: os.environ[key] for key in kept if key in os.environ}
    process = subprocess.Popen(
        list(map(str, command)), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
        cwd="/", env={**bare, "HOME": str(home), "DISPLAY": display, "LANG": "C.UTF-8",
                      "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "KIROLANE_NAMES": "1", **(environment or {})})
    program = Program(process, home, waiter)
    try:
        yield program
    finally:
        end(process)
        program.take_last_errors()
        waiter.forget(process.stderr.fileno())
        process.stderr.close()
        if any(REPORT.search(line) for line in program.errors):  # be it of the very end, when nobody looks any more
            raise AssertionError("\n".join(program.errors))
