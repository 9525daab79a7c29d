"""A desktop of our own for the tests in real windows: displays, window manager, keys, eyes and ears.

Nothing in here waits for time to pass: Waiter.until looks again whenever something has happened on the screen,
in a process or on a pipe, and gives up at a deadline.
"""
