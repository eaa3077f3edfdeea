"""What the tests on desktops have in common."""

import os
import unittest

from PIL import Image

from .desktop import Desktop
from .program import DEFAULTS
from .waiting import wait_until


def chat_window(title, window_class=None, rectangle=(100, 80, 400, 300), **more):
    """A description of one window for Desktop.start_target."""
    window_class = window_class or title
    return {"instance": window_class.lower(), "class": window_class, "title": title,
            "rectangle": list(rectangle), **more}


def whole(picture):
    return (picture.size, picture.tobytes())


class DesktopCase(unittest.TestCase):
    """A test with desktops that close at its end, and programs that must end well."""

    maxDiff = 200

    def desktop(self, **options):
        desktop = Desktop(**options)
        self.addCleanup(desktop.close)
        return desktop

    def program(self, desktop, preferences=DEFAULTS, **options):
        """Starts Trovel; at the end of the test it must end on request, quietly and with 0."""
        program = desktop.start_program(preferences, **options)
        self.addCleanup(self._check_end, program)
        return program

    def claude(self, desktop, **options):
        """Opens a window that Trovel knows as a chat application, in front of all others."""
        return self.chat(desktop, "Claude", **options)

    def chat(self, desktop, name, **options):
        """Opens a window of the application that shows `name`, and waits until it is in front."""
        identifier = name.lower()
        desktop.install_application(identifier, name, name)
        target = desktop.start_target(chat_window(name, **options))
        wait_until(lambda: target.is_active(name), f"{name} is in front")
        return target

    def select_and_mark(self, desktop, program, start=(500, 450), end=(700, 600)):
        """Selects, and returns the place in the input tap after the last thing the user did."""
        mark = desktop.tap.mark()
        desktop.clipboard.clear()
        program.select(start, end)
        wait_until(lambda: [event.kind for event in desktop.tap.since(mark)][-1:] == ["button up"],
                   "the drag has ended")
        return desktop.tap.mark()

    def settled_screenshot(self, desktop, rectangle):
        """What is on the screen once everything has been drawn."""
        return desktop.observer.settled(rectangle)

    def assert_at_rest(self, desktop, program=None):
        """Nothing is held, grabbed or covered any more."""
        self.assertEqual(desktop.observer.held_keys(), [])
        self.assertEqual(desktop.observer.held_buttons(), 0)
        self.assertTrue(desktop.observer.is_input_free(), "a grab was left behind")
        if program:
            self.assertEqual(program.overlays(), [])
            self.assertTrue(program.is_running())

    def assert_same_picture(self, picture, expected, name="difference"):
        """Compares sizes and bytes; saves both where pictures go when they differ."""
        if whole(picture) == whole(expected):
            return
        save_picture(picture, f"failed/{name}-is")
        save_picture(expected, f"failed/{name}-should-be")
        self.assertEqual(picture.size, expected.size)
        self.fail(f"the pixels differ; see {name}-is.png and {name}-should-be.png")

    def _check_end(self, program):
        if program.is_running():
            self.assertEqual(program.terminate(), 0)
        self.assertEqual(program.messages(), "")


def save_picture(picture, name):
    """Keeps a picture for people to look at, where the build says."""
    folder = os.environ.get("TROVEL_PICTURES")
    if folder:
        path = os.path.join(folder, name + ".png")
        os.makedirs(os.path.dirname(path), exist_ok=True)
        picture.save(path)


def stacked(upper, lower, gap=12):
    """Two pictures of one width as one, with a white strip between them."""
    picture = Image.new("RGB", (upper.width, upper.height + gap + lower.height), "white")
    picture.paste(upper, (0, 0))
    picture.paste(lower, (0, upper.height + gap))
    return picture
