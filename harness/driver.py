"""The user's hands: keys by their place on the keyboard, and the mouse. xdotool does the moving."""

CONTROL, SHIFT, SUPER, ALT = 37, 50, 133, 64
KEY_2, KEY_V, ESCAPE, RETURN, CAPS_LOCK, NUM_LOCK = 11, 55, 9, 36, 66, 77
UP, DOWN, RIGHT_ARROW, INSERT = 111, 116, 114, 118
LEFT, RIGHT = 1, 3
HOTKEY = (CONTROL, SHIFT, KEY_2)


class Driver:
    """Moves keys and buttons of one display through the X server's own test devices."""

    def __init__(self, processes):
        self._processes = processes

    def press(self, *keycodes):
        """Presses keys in order and lets go of them in reverse."""
        self._do(*self._words("keydown", keycodes), *self._words("keyup", keycodes[::-1]))

    def tap(self, *keycodes):
        """Presses and releases one key after the other."""
        words = [word for keycode in keycodes for verb in ("keydown", "keyup")
                 for word in self._words(verb, (keycode,))]
        if words:
            self._do(*words)

    def press_hotkey(self):
        self.press(*HOTKEY)

    def hold(self, *keycodes):
        self._do(*self._words("keydown", keycodes))

    def release(self, *keycodes):
        self._do(*self._words("keyup", keycodes))

    def move(self, point):
        self._do("mousemove", *point)

    def click(self, point, button=LEFT):
        self._do("mousemove", *point, "click", button)

    def button_down(self, button=LEFT):
        self._do("mousedown", button)

    def button_up(self, button=LEFT):
        self._do("mouseup", button)

    def drag(self, start, end, steps=8, release=True):
        """Presses at `start`, moves in `steps` to `end` and lets go there."""
        self._do(*self._drag_words(start, end, steps), *(["mouseup", LEFT] if release else []))

    def type_text(self, text):
        self._do("type", "--delay", "1", text)

    def _drag_words(self, start, end, steps):
        words = ["mousemove", *start, "mousedown", LEFT]
        for step in range(1, steps + 1):
            words += ["mousemove", *(first + (last - first) * step // steps
                                     for first, last in zip(start, end))]
        return words

    @staticmethod
    def _words(verb, keycodes):
        # xdotool takes a single digit for the key that types it.
        return [word for keycode in keycodes for word in (verb, f"{keycode:02}")]

    def _do(self, *words):
        self._processes.run("xdotool", *words)
