"""A clipboard manager as the freedesktop convention describes it, for pictures only: it answers
SAVE_TARGETS by reading the clipboard and owning it from then on."""

from Xlib import X, Xatom, display as xdisplay
from Xlib.protocol import event as xevent

from .clipboard import ClipboardReader


class ClipboardManager:
    """Keeps one picture, and hands it out in one piece."""

    def __init__(self):
        self._display = xdisplay.Display()
        self._reader = ClipboardReader(self._display.get_display_name())
        self._window = self._display.screen().root.create_window(-10, -10, 1, 1, 0, 0)
        self._png = None
        self._window.set_selection_owner(self._atom("CLIPBOARD_MANAGER"), X.CurrentTime)

    def run(self):
        while True:
            event = self._display.next_event()
            if event.type == X.SelectionRequest:
                self._answer(event)

    def _answer(self, request):
        done = False
        if request.target == self._atom("SAVE_TARGETS"):
            self._png = self._reader.read("image/png")
            self._window.set_selection_owner(self._atom("CLIPBOARD"), X.CurrentTime)
            request.requestor.change_property(request.property, self._atom("NULL"), 32, [])
            done = True
        elif request.target == self._atom("TARGETS"):
            names = ["TARGETS", "SAVE_TARGETS"] + (["image/png"] if self._png else [])
            request.requestor.change_property(request.property, Xatom.ATOM, 32,
                                              [self._atom(name) for name in names])
            done = True
        elif request.target == self._atom("image/png") and self._png:
            request.requestor.change_property(request.property, request.target, 8, self._png)
            done = True
        request.requestor.send_event(xevent.SelectionNotify(
            time=request.time, requestor=request.requestor, selection=request.selection,
            target=request.target, property=request.property if done else X.NONE))
        self._display.flush()

    def _atom(self, name):
        return self._display.intern_atom(name)


if __name__ == "__main__":
    ClipboardManager().run()
