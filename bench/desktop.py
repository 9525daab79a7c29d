"""desktop.py COMMAND...: runs a command on a virtual desktop of two displays, and ends as it ends."""

import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))

from desk import display
from desk.waiter import Waiter

DISPLAYS = [(0, 0, 1920, 1200), (1920, 0, 1920, 1080)]


def main():
    with tempfile.TemporaryDirectory(prefix="kirolane-bench-") as folder:
        with display.screen(pathlib.Path(folder), Waiter(), DISPLAYS) as screen:
            environment = {**os.environ, "DISPLAY": screen.name}
            environment.pop("DBUS_SESSION_BUS_ADDRESS", None)
            return subprocess.run(sys.argv[1:], env=environment, check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
