"""Waiting for something to become true, by looking."""

import threading
import time

POLL_SECONDS = 0.005
# Nothing is claimed by it: a machine that is busy with something else gets to it in the end.
PATIENCE = 20.0


def wait_until(predicate, what, timeout=PATIENCE):
    """Returns the first true answer of `predicate`; an AssertionError naming `what` after that."""
    deadline = time.monotonic() + timeout
    while True:
        answer = predicate()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {timeout} s: {what}")
        time.sleep(POLL_SECONDS)


def moment_when(predicate, what):
    """Waits for it; returns two monotonic times in seconds between which it became true."""
    times = [time.monotonic()]

    def is_true():
        asked = time.monotonic()
        if predicate():
            return True
        times[0] = asked
        return False
    wait_until(is_true, what)
    return times[0], time.monotonic()


class Metronome:
    """Knows how late this machine wakes those who sleep: what a program that counts its time in
    tenths of a second cannot make good."""

    _STEP = 0.1

    def __init__(self):
        self.lateness = 0.0  # seconds since the construction, all steps together
        self._stopped = threading.Event()
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()

    def stop(self):
        self._stopped.set()
        self._thread.join()

    def _run(self):
        before = time.monotonic()
        while not self._stopped.wait(self._STEP):
            now = time.monotonic()
            self.lateness += now - before - self._STEP
            before = now


def stays_true(predicate, seconds):
    """Whether `predicate` holds each time that it is asked during `seconds`."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not predicate():
            return False
        time.sleep(POLL_SECONDS)
    return True
