"""Starts that cannot be, and an end that is asked for."""

import re
import signal

from case import CONSOLE, Case
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
            status, _ = program.exit_status()
        self.assertEqual(status, 1)
        self.assertEqual(len(program.errors), 1, program.errors)
        self.assertRegex(program.errors[0], "^kirolane: .*" + re.escape(about))

    def test_settings_gone(self):
        self.desk.settings().unlink()
        self.assert_fails(str(SETTINGS))

    def test_home_that_cannot_be_written(self):
        (self.desk.home / "Library").touch()  # where a folder has to be
        self.assert_fails("home/Library")

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
