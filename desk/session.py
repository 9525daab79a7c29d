"""The session bus, over which the accessibility interface is reached; one for the process, ended with it."""

import atexit
import functools
import os
import shutil
import subprocess
import tempfile

from .processes import end


@functools.cache
def start():
    """To be called before anything else of this package; calls after the first do nothing."""
    folder = tempfile.mkdtemp(prefix="kirolane-session-")  # for its owner alone
    atexit.register(shutil.rmtree, folder, ignore_errors=True)
    os.environ["XDG_RUNTIME_DIR"] = folder
    for name in ("WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS", "NO_AT_BRIDGE"):
        os.environ.pop(name, None)
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], stdin=subprocess.DEVNULL,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    atexit.register(end, bus)
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
