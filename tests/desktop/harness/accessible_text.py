"""Prints what the windows of a process say to a screen reader, one text a line:
`python3 -m harness.accessible_text PID`."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (the version comes first)


def texts(element):
    """The names of an element and of everything in it."""
    if element is None:
        return
    yield element.get_name() or ""
    for index in range(element.get_child_count()):
        yield from texts(element.get_child_at_index(index))


def main(pid):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        try:
            if application is not None and application.get_process_id() == pid:
                print("\n".join(text for text in texts(application) if text))
        except GLib.Error:  # An application may end while it is asked.
            continue


if __name__ == "__main__":
    main(int(sys.argv[1]))
