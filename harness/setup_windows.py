"""The setup windows as a user sees them: which one is open, and where its parts are."""

import os

from .driver import DOWN, RETURN, RIGHT_ARROW, UP
from .waiting import wait_until

ONBOARDING, PERMISSIONS, CHANGE_APP, RECORDER = (600, 600), (440, 380), (600, 210), (360, 160)
CARDS = ("Claude", "ChatGPT", "Gemini", "Perplexity", "Copilot")

# Middles of the parts, in points from the lower left of their windows.
GET_STARTED = (300, 46)
DONE = (300, 24)
CANCEL = (180, 24)
GRANT_SCREEN_RECORDING, GRANT_ACCESSIBILITY = (364, 258), (364, 182)
RESTART, CONTINUE = (220, 82), (220, 40)
_SELECTOR_MIDDLE = {ONBOARDING: 114, CHANGE_APP: 82}
_TILE_PITCH = 110


class SetupWindow:
    """A window of the program that is on the screen."""

    def __init__(self, desktop, window, size):
        self.native = window
        self.size = size
        self._desktop = desktop

    @property
    def frame(self):
        return self._desktop.observer.frame(self.native)

    def point(self, place):
        """The pixel of a place in points from the lower left of the content."""
        x, y, width, height = self.frame
        across, up = (place[0] * width // self.size[0], place[1] * height // self.size[1])
        return (x + across, y + height - up)

    def click(self, place):
        self._desktop.driver.click(self.point(place))

    def tile(self, index, has_custom=False):
        """The middle of a tile of the row of applications that is within the window."""
        first = -78 if has_custom else -23
        x = min(max(first + index * _TILE_PITCH + 48, 10), self.size[0] - 10)
        return (x, _SELECTOR_MIDDLE[self.size])

    def picture(self):
        return self._desktop.observer.screenshot(self.frame)

    def has_keyboard(self):
        return self._desktop.observer.active_window() == self.native.id

    def close(self):
        """Closes it as the button in its title bar does."""
        self._desktop.observer.close_window(self.native)


def setup_windows(desktop, program, size):
    """The program's windows of that content size."""
    def has_size(window):
        frame = desktop.observer.frame(window)
        return frame is not None and frame[2:] == size
    return [SetupWindow(desktop, window, size) for window in program.alerts() if has_size(window)]


def wait_for_setup_window(desktop, program, size):
    """Waits until it is open and has the keyboard."""
    def find():
        found = setup_windows(desktop, program, size)
        return found[0] if found and found[0].has_keyboard() else None
    return wait_until(find, f"the window of {size} has the keyboard")


def choose_from_menu(desktop, *keys):
    """Opens the menu, as a second start does, and presses keys in it."""
    desktop.processes.run(os.environ["TROVEL_BINARY"])
    desktop.observer.wait_for_menu()
    for key in keys:
        desktop.driver.press(key)
    wait_until(lambda: not desktop.observer.popups(), "the menu is gone")


def open_change_app(desktop):
    choose_from_menu(desktop, *[DOWN] * 2, RIGHT_ARROW, UP, RETURN)


def open_recorder(desktop):
    choose_from_menu(desktop, *[DOWN] * 3, RETURN)


def open_permissions(desktop):
    choose_from_menu(desktop, *[DOWN] * 7, RETURN)
