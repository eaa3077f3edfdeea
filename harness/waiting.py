"""Waiting for something to become true, by looking."""

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


def stays_true(predicate, seconds):
    """Whether `predicate` holds each time that it is asked during `seconds`."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not predicate():
            return False
        time.sleep(POLL_SECONDS)
    return True
