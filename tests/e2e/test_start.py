"""Starts: the first, the next, and those that cannot be."""

import os
import re
import signal

from case import CONSOLE, Case, unittest
from desk.program import LINES, SETTINGS

NOBODY = 65534


class Start(Case):
    def assert_fails(self, about, prefix=(), environment=None):
        """One line on standard error, a dialog that names the file, status 1 when that is answered."""
        desk = self.desk
        with desk.launched(environment, prefix) as program:
            desk.waiter.until(lambda: len(desk.screen.windows()) > 1 or not program.alive(), "a dialog")
            self.assertTrue(program.alive(), program.errors)
            self.assertNotIn("モニター", desk.screen.windows())
            desk.waiter.until(lambda: desk.screen.active_title(), "the dialog in front")
            self.shoot("dialog")
            desk.screen.press("Return")
            status, _ = program.exit_status()
        self.assertEqual(status, 1)
        self.assertEqual(len(program.errors), 1, program.errors)
        self.assertRegex(program.errors[0], "^kirolane: .*" + re.escape(about))

    def test_first_and_next(self):
        with self.desk.started() as show:
            show.close()
        file = self.desk.home / SETTINGS
        first = file.read_bytes()
        lines = first.decode("utf-8").split("\n")
        self.assertEqual(len(lines), LINES + 1, "200 lines, each ended")
        self.assertEqual(lines[:4], ["// DualDisplayMode", "true", "FullScreen", "false"])
        self.assertTrue(lines[21].endswith(":program:"))
        with self.desk.started() as show:
            show.close()
        self.assertEqual(file.read_bytes(), first)

    def test_settings_gone(self):
        self.desk.settings().unlink()
        self.assert_fails(str(SETTINGS))

    def test_home_that_cannot_be_written(self):
        """As an ordinary user, since nothing is closed to root."""
        self.desk.home.chmod(0o555)
        own = self.desk.folder / "session"
        own.mkdir(mode=0o700)
        prefix = ()
        if os.geteuid() == 0:
            os.chown(own, NOBODY, NOBODY)
            prefix = ("setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups")
        self.assert_fails("home/Library: Permission denied", prefix,
                          {"XDG_RUNTIME_DIR": str(own), "XDG_CACHE_HOME": str(own)})

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
        with self.desk.launched({"DISPLAY": ""}) as program:
            status, _ = program.exit_status()
        self.assertEqual(status, 1, program.errors)
        self.assertTrue(program.errors[-1].startswith("kirolane: "), program.errors)


if __name__ == "__main__":
    unittest.main()
