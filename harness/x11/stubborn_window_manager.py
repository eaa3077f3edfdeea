"""A window manager that shows windows where they ask to be and never gives any of them the front
but the first: `python3 -m harness.x11.stubborn_window_manager JOURNAL`. The journal gets one line,
the time in seconds, for each request to activate a window."""

import sys
import time

from Xlib import X, Xatom, display as xdisplay


class StubbornWindowManager:
    """Keeps the client list of the root window; refuses to change the active window."""

    def __init__(self, journal):
        self._journal = open(journal, "a", buffering=1, encoding="utf-8")
        self._display = xdisplay.Display()
        self._display.set_error_handler(lambda *_: None)
        self._root = self._display.screen().root
        self._clients = []
        self._announce()
        self._root.change_attributes(event_mask=X.SubstructureRedirectMask
                                     | X.SubstructureNotifyMask)
        self._display.sync()

    def run(self):
        activate = self._atom("_NET_ACTIVE_WINDOW")
        while True:
            event = self._display.next_event()
            if event.type == X.MapRequest:
                self._manage(event.window)
            elif event.type == X.ConfigureRequest:
                self._configure(event)
            elif event.type in (X.UnmapNotify, X.DestroyNotify):
                self._forget(event.window)
            elif event.type == X.ClientMessage and event.client_type == activate:
                self._journal.write(f"{time.monotonic()}\n")

    def _announce(self):
        check = self._root.create_window(-1, -1, 1, 1, 0, X.CopyFromParent, override_redirect=True)
        for window in (check, self._root):
            window.change_property(self._atom("_NET_SUPPORTING_WM_CHECK"), Xatom.WINDOW, 32,
                                   [check.id])
        supported = ["_NET_SUPPORTED", "_NET_SUPPORTING_WM_CHECK", "_NET_CLIENT_LIST",
                     "_NET_ACTIVE_WINDOW"]
        self._root.change_property(self._atom("_NET_SUPPORTED"), Xatom.ATOM, 32,
                                   [self._atom(name) for name in supported])
        self._publish()

    def _manage(self, window):
        window.map()
        if window.id not in self._clients:
            self._clients.append(window.id)
        if len(self._clients) == 1:
            window.set_input_focus(X.RevertToPointerRoot, X.CurrentTime)
        self._publish()

    def _forget(self, window):
        if window.id in self._clients:
            self._clients.remove(window.id)
            self._publish()

    def _configure(self, event):
        names = {X.CWX: "x", X.CWY: "y", X.CWWidth: "width", X.CWHeight: "height",
                 X.CWBorderWidth: "border_width", X.CWSibling: "sibling",
                 X.CWStackMode: "stack_mode"}
        event.window.configure(**{name: getattr(event, name) for bit, name in names.items()
                                  if event.value_mask & bit})

    def _publish(self):
        self._root.change_property(self._atom("_NET_CLIENT_LIST"), Xatom.WINDOW, 32, self._clients)
        self._root.change_property(self._atom("_NET_ACTIVE_WINDOW"), Xatom.WINDOW, 32,
                                   self._clients[:1] or [X.NONE])
        self._display.flush()

    def _atom(self, name):
        return self._display.intern_atom(name)


if __name__ == "__main__":
    StubbornWindowManager(sys.argv[1]).run()
