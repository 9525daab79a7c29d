"""Starts that cannot be, and an end that is asked for."""

import re
import signal
import subprocess

from case import CONSOLE, Case, seen
from desk.program import SETTINGS


class Start(Case):
    def assert_fails(self, about):
        """One line on standard error, a dialog that names the file, status 1 when that is answered."""
        desk = self.desk
        with desk.launched() as program:
            desk.waiter.until(lambda: len(desk.screen.windows()) > 1 or not program.alive(), "a dialog")
            self.assertTrue(program.alive(), program.errors)
            self.assertNotIn("モニター", desk.screen.windows())
            desk.waiter.until(lambda: desk.screen.active_title(), "the dialog in front")
            self.shoot("dialog")
            desk.screen.press("Return")
            self.assertEqual(program.exit_status()[0], 1)
        self.assertEqual(len(program.errors), 1, program.errors)
        self.assertRegex(program.errors[0], "^kirolane: .*" + re.escape(about))

    def test_settings_gone(self):
        self.desk.settings().unlink()
        self.assert_fails(str(SETTINGS))

    def test_home_that_cannot_be_written(self):
        (self.desk.home / "Library").touch()  # where a folder has to be
        self.assert_fails("home/Library")

    def test_asked_for(self):
        """A file on the command line is selected and waits; another instance beside it is asked for what is not there."""
        folder = self.desk.folder / "given"
        folder.mkdir()
        for number in range(60):
            (folder / f"{number}.mp4").touch()
        show = self.start(arguments=["../" * 9 + str(folder / "47.mp4")])
        show.until(lambda: seen.showing(seen.cell(show.control("StrGrid"), 47, 1)), "the row of the file")
        self.until_in_front(show, CONSOLE)
        show.press("Down")
        show.press("Return")
        show.until(lambda: show.rows(60, column=2)[48] == "  ???", "the next row opened")
        self.assertEqual(show.rows(60, column=2)[47], "")
        with self.desk.launched(arguments=["gone"]) as other:
            self.desk.waiter.until(lambda: other.errors, "a line")
            self.assertEqual(other.errors, ["kirolane: /gone: No such file or directory"])
            self.assertTrue(show.program.alive())
            other.errors.clear()
        show.program.errors.clear()  # of the row that failed

    def test_without_soundfont_and_type_face(self):
        hide = "mount -t tmpfs none /usr/share/sounds && mount -t tmpfs none /usr/share/fonts && exec $0"
        hidden = "unshare", "-rm", "bash", "-c", hide
        if subprocess.run([*hidden, "true"], stderr=subprocess.DEVNULL).returncode:
            self.skipTest("nothing can be hidden here")
        show = self.start(lines=2, prefix=hidden)
        wanted = "^kirolane: start: the type face .*[|]kirolane: start: no SoundFont"
        show.until(lambda: re.search(wanted, "|".join(show.program.errors)), "a line about each")

    def test_nobody_reads_and_the_session_ends(self):
        """Standard error whose reader has gone, then the terminal goes, then a signal asks for the end."""
        (self.desk.media / "0.mp4").touch()  # fails to open, with a line
        with self.desk.started(prefix=("bash", "-c", 'exec "$0" 2> >(exec true)')) as show:
            show.until(lambda: show.rows(1) == ["0.mp4"], "the list")
            show.press("Return")
            show.until(lambda: show.rows(1, column=2) == ["  ???"], "a row that failed")
            show.program.process.send_signal(signal.SIGHUP)
            show.press("Down")
            show.press("Return")
            show.until_playing(1)
            show.program.process.send_signal(signal.SIGTERM)
            status, took = show.program.exit_status()
        self.assertEqual(status, 0)
        self.assertLess(took, 1.0)

    def test_no_display(self):
        for session, cause in (({"WAYLAND_DISPLAY": "wayland-0"}, "Xwayland is missing"), ({}, "DISPLAY is not set"),
                               ({"DISPLAY": ":99999"}, "qt.qpa.xcb: could not connect to display :99999")):
            with self.subTest(cause), self.desk.launched({"DISPLAY": "", **session}) as program:
                end = "|".join([str(program.exit_status()[0]), *program.errors])
                self.assertRegex(end, f"^1[|]kirolane: start: no desktop [^|]*: {cause}[^|]*$")
