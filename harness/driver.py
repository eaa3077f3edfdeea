"""The user's hands: keys by their place on the keyboard, and the mouse."""

import abc

CONTROL, SHIFT, SUPER, ALT = 37, 50, 133, 64
KEY_2, KEY_V, ESCAPE, RETURN, CAPS_LOCK, NUM_LOCK = 11, 55, 9, 36, 66, 77
UP, DOWN, RIGHT_ARROW, INSERT = 111, 116, 114, 118
LEFT, RIGHT = 1, 3
HOTKEY = (CONTROL, SHIFT, KEY_2)


class Driver(abc.ABC):
    """Moves the keys and the mouse of a desktop as devices do, seen by everyone as a user's."""

    @abc.abstractmethod
    def _perform(self, *steps):
        """Does these steps one after the other: ("keydown" or "keyup", keycode), ("mousemove", x,
        y), ("mousedown", "mouseup" or "click", button)."""

    @abc.abstractmethod
    def type_text(self, text):
        """Presses the keys that write `text`."""

    def press(self, *keycodes):
        """Presses keys in order and lets go of them in reverse."""
        self._perform(*_all("keydown", keycodes), *_all("keyup", keycodes[::-1]))

    def tap(self, *keycodes):
        """Presses and releases one key after the other."""
        if keycodes:
            self._perform(*((verb, keycode) for keycode in keycodes
                            for verb in ("keydown", "keyup")))

    def press_hotkey(self):
        self.press(*HOTKEY)

    def hold(self, *keycodes):
        self._perform(*_all("keydown", keycodes))

    def release(self, *keycodes):
        self._perform(*_all("keyup", keycodes))

    def move(self, point):
        self._perform(("mousemove", *point))

    def click(self, point, button=LEFT):
        self._perform(("mousemove", *point), ("click", button))

    def button_down(self, button=LEFT):
        self._perform(("mousedown", button))

    def button_up(self, button=LEFT):
        self._perform(("mouseup", button))

    def drag(self, start, end, steps=8, release=True):
        """Presses at `start`, moves in `steps` to `end` and lets go there."""
        way = [("mousemove", *(first + (last - first) * step // steps
                               for first, last in zip(start, end)))
               for step in range(1, steps + 1)]
        self._perform(("mousemove", *start), ("mousedown", LEFT), *way,
                      *([("mouseup", LEFT)] if release else []))


def _all(verb, keycodes):
    return [(verb, keycode) for keycode in keycodes]
