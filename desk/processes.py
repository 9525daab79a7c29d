"""Processes that end with the scope that started them, by their own number."""

import contextlib
import ctypes
import os
import subprocess

SEIZE, INTERRUPT, DETACH = 0x4206, 0x4207, 17  # of ptrace
ANY_THREAD = 0x40000000


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


@contextlib.contextmanager
def held(thread):
    """For the scope that thread of a process of ours stands still, and it alone, as if a call had not come back."""
    ptrace = ctypes.CDLL(None, use_errno=True).ptrace
    ptrace.argtypes = [ctypes.c_long] * 4

    def ask(request):
        if ptrace(request, thread, 0, 0) != 0:
            raise OSError(ctypes.get_errno(), "ptrace")
    ask(SEIZE)
    ask(INTERRUPT)
    os.waitpid(thread, ANY_THREAD)
    try:
        yield
    finally:
        ask(DETACH)
