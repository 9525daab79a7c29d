"""The session bus, over which the accessibility interface is reached; one for the process, ended with it."""

import atexit
import os
import shutil
import subprocess
import tempfile

from .processes import end


def start():
    """To be called before anything else of this package; calls after the first do nothing."""
    if start.done:
        return
    start.done = True
    folder = tempfile.mkdtemp(prefix="kirolane-session-")
    os.chmod(folder, 0o700)
    atexit.register(shutil.rmtree, folder, ignore_errors=True)
    os.environ["XDG_RUNTIME_DIR"] = folder
    for name in ("WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS", "NO_AT_BRIDGE"):
        os.environ.pop(name, None)
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], stdin=subprocess.DEVNULL,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    atexit.register(end, bus)
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()


start.done = False
