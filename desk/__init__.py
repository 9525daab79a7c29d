"""A desktop of our own: displays, window manager, keys, eyes and ears. The tests in real windows, ./run without a
display, ./bench/run and the guide's pictures work on it.

Nothing in here waits for time to pass: Waiter.until looks again whenever something has happened on the screen,
in a process or on a pipe, and gives up at a deadline.
"""
