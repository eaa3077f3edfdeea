"""An independent reader of selections, whole or in portions."""

import time

from Xlib import X, display as xdisplay

from ..session import Clipboard
from ..waiting import PATIENCE

_PROPERTY = "TROVEL_TEST_TRANSFER"


class ClipboardReader(Clipboard):
    """Asks the owner of a selection with a connection of its own."""

    text_format = "UTF8_STRING"

    def __init__(self, display_name, timeout=PATIENCE):
        self._timeout = timeout
        self._display = xdisplay.Display(display_name)
        self._window = self._display.screen().root.create_window(
            -10, -10, 1, 1, 0, X.CopyFromParent, event_mask=X.PropertyChangeMask)
        self._property = self._atom(_PROPERTY)

    def close(self):
        self._display.close()

    def owner(self, selection="CLIPBOARD"):
        return self._display.get_selection_owner(self._atom(selection))

    def clear(self):
        nobody = self._display.create_resource_object("window", X.NONE)
        nobody.set_selection_owner(self._atom("CLIPBOARD"), X.CurrentTime)
        self._display.sync()

    def targets(self, selection="CLIPBOARD"):
        if not self._convert(selection, "TARGETS"):
            return []
        value = self._take()
        return sorted(self._display.get_atom_name(number) for number in value.value)

    def read(self, target, selection="CLIPBOARD", pause=None):
        if not self._convert(selection, target):
            return None
        value = self._take()
        if value is None:  # Qt's way of refusing: it says that it answered, and gives nothing.
            return None
        if value.property_type != self._atom("INCR"):
            return bytes(value.value)
        data = bytearray()
        while True:
            self._wait(lambda event: event.type == X.PropertyNotify
                       and event.atom == self._property and event.state == X.PropertyNewValue)
            portion = bytes(self._take().value)
            if not portion:
                return bytes(data)
            data += portion
            if pause:
                pause(len(data))

    def begin(self, target, selection="CLIPBOARD"):
        self._convert(selection, target)

    def _convert(self, selection, target):
        self._window.delete_property(self._property)
        self._window.convert_selection(self._atom(selection), self._atom(target), self._property,
                                       X.CurrentTime)
        answer = self._wait(lambda event: event.type == X.SelectionNotify)
        return answer.property != X.NONE

    def _take(self):
        value = self._window.get_full_property(self._property, X.AnyPropertyType)
        self._window.delete_property(self._property)
        self._display.flush()
        return value

    def _wait(self, wanted):
        deadline = time.monotonic() + self._timeout
        while time.monotonic() < deadline:
            while self._display.pending_events():
                event = self._display.next_event()
                if wanted(event):
                    return event
            time.sleep(0.001)
        raise AssertionError("the clipboard's owner does not answer")

    def _atom(self, name):
        return self._display.intern_atom(name)
