"""Processes that end with the scope that started them, by their own number."""

import contextlib
import subprocess


@contextlib.contextmanager
def running(command, **options):
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, **options)
    try:
        yield process
    finally:
        end(process)


def end(process):
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
    process.wait()
