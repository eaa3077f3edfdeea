"""The tap on an X server's devices."""

import threading

from Xlib import X, display as xdisplay
from Xlib.ext import record
from Xlib.protocol import rq

from ..session import InputEvent, InputTap

_NAMES = {X.KeyPress: "key down", X.KeyRelease: "key up", X.ButtonPress: "button down",
          X.ButtonRelease: "button up"}


class XInputTap(InputTap):
    """Writes down the device events of a display from its construction on."""

    def __init__(self, display_name):
        super().__init__()
        self._data = xdisplay.Display(display_name)
        self._control = xdisplay.Display(display_name)
        wanted = {"core_requests": (0, 0), "core_replies": (0, 0), "ext_requests": (0, 0, 0, 0),
                  "ext_replies": (0, 0, 0, 0), "delivered_events": (0, 0),
                  "device_events": (X.KeyPress, X.ButtonRelease), "errors": (0, 0),
                  "client_started": False, "client_died": False}
        self._context = self._data.record_create_context(0, [record.AllClients], [wanted])
        self._ready = threading.Event()
        self._thread = threading.Thread(target=self._listen, daemon=True)
        self._thread.start()
        self._ready.wait()

    def close(self):
        self._control.record_disable_context(self._context)
        self._control.flush()
        self._thread.join(2)
        self._control.close()

    def _listen(self):
        try:
            self._data.record_enable_context(self._context, self._receive)
        except Exception:  # The server went away, as some tests want; nothing more will come.
            self._ready.set()

    def _receive(self, reply):
        if reply.category == record.StartOfData:
            self._ready.set()
        if reply.category != record.FromServer:
            return
        rest = reply.data
        while rest:
            event, rest = rq.EventField(None).parse_binary_value(
                rest, self._data.display, None, None)
            if event.type in _NAMES:
                self.events.append(InputEvent(_NAMES[event.type], event.detail, event.time,
                                              event.root_x, event.root_y))
