"""Waiting for something to become true, by looking."""

import time

POLL_SECONDS = 0.005


def wait_until(predicate, what, timeout=5.0):
    """Returns the first true answer of `predicate`; an AssertionError naming `what` after that."""
    deadline = time.monotonic() + timeout
    while True:
        answer = predicate()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {timeout} s: {what}")
        time.sleep(POLL_SECONDS)


def stays_true(predicate, seconds):
    """Whether `predicate` holds each time that it is asked during `seconds`."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not predicate():
            return False
        time.sleep(POLL_SECONDS)
    return True
