"""The user's hands on an X desktop: xdotool, through the X server's own test devices."""

from ..driver import Driver


class XDriver(Driver):
    def __init__(self, processes):
        self._processes = processes

    def type_text(self, text):
        self._processes.run("xdotool", "type", "--delay", "1", text)

    def _perform(self, *steps):
        words = [word for verb, *numbers in steps for word in (verb, *self._written(verb, numbers))]
        self._processes.run("xdotool", *words)

    @staticmethod
    def _written(verb, numbers):
        # xdotool takes a single digit for the key that types it.
        return [f"{number:02}" for number in numbers] if verb.startswith("key") else numbers
