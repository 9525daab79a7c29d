"""Waiting for what happens, with a deadline."""

import os
import select
import time

LOOK_AGAIN = 1.0  # seconds, as the program's own tick: what a hidden window writes raises no event
PATIENCE = float(os.environ.get("KIROLANE_PATIENCE", 1))  # by which a build is slower


class Waiter:
    """Holds the descriptors that tell of an event, each with the call that takes the event in."""

    def __init__(self):
        self._poll = select.poll()
        self._sources = {}
        self._queues = {}

    def watch(self, descriptor, take, queued=False):
        """With queued, events may also lie in a queue behind the descriptor; take() then says if it had any."""
        if queued:
            self._queues[descriptor] = take
        self._sources[descriptor] = take
        self._poll.register(descriptor, select.POLLIN)

    def forget(self, descriptor):
        self._queues.pop(descriptor, None)
        if self._sources.pop(descriptor, None) is not None:
            self._poll.unregister(descriptor)

    def watch_exit(self, process):
        """An exit counts as an event, too."""
        descriptor = os.pidfd_open(process.pid)

        def take():
            self.forget(descriptor)
            os.close(descriptor)

        self.watch(descriptor, take)

    def until(self, condition, what, seconds=10.0):
        """The first true answer of the condition, which is asked again after each event."""
        deadline = time.monotonic() + seconds * PATIENCE
        while True:
            answer = condition()
            if answer:
                return answer
            left = deadline - time.monotonic()
            if left <= 0:
                raise AssertionError(f"not within {seconds:g} s: {what}")
            self._next(min(left, LOOK_AGAIN))

    def until_still(self, look, still=0.7, seconds=10.0):
        """What look() gives once it has stayed the same over all events of that time."""
        begin = since = time.monotonic()
        seen = look()
        while (now := time.monotonic()) < since + still:
            if now > begin + seconds * PATIENCE:
                raise AssertionError(f"never still for {still:g} s: {seen}")
            self._next(since + still - now)
            if look() != seen:
                seen, since = look(), time.monotonic()
        return seen

    def _next(self, seconds):
        if any([take() for take in self._queues.values()]):
            return True
        ready = self._poll.poll(max(1, int(seconds * 1000)))
        for descriptor, _ in ready:
            take = self._sources.get(descriptor)
            if take is not None:
                take()
        return bool(ready)
