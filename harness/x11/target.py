"""The stand-in application as an X client: `python3 -m harness.x11.target FILE`. Cursors are glyphs
of the cursor font."""

import hashlib
import json
import os
import sys
import time

from Xlib import X, Xatom, Xutil, display as xdisplay

from .. import pattern
from ..driver import KEY_V
from .clipboard import ClipboardReader
from .painting import put

_KINDS = {X.KeyPress: "key down", X.KeyRelease: "key up", X.ButtonPress: "button down",
          X.ButtonRelease: "button up", X.FocusIn: "focus in", X.FocusOut: "focus out",
          X.MapNotify: "mapped"}
_BYTES_A_REQUEST = 60_000
_MASK = (X.KeyPressMask | X.KeyReleaseMask | X.ButtonPressMask | X.ButtonReleaseMask
         | X.FocusChangeMask | X.StructureNotifyMask | X.ExposureMask)


class Target:
    """All windows of one process, and the journal of their events."""

    def __init__(self, specification):
        self._display = xdisplay.Display()
        self._journal = open(specification["journal"], "a", buffering=1, encoding="utf-8")
        self._reader = None
        self._windows = {}
        for index, description in enumerate(specification["windows"]):
            window = self._open(description, salt=0x55 + index)
            self._windows[window.id] = description
        self._display.sync()

    def run(self):
        while True:
            event = self._display.next_event()
            kind = _KINDS.get(event.type)
            if kind:
                self._write(kind, event)
            if event.type == X.KeyPress and event.detail == KEY_V and event.state & X.ControlMask:
                self._paste(event)

    def _write(self, kind, event, **more):
        entry = {"kind": kind, "window": event.window.id, "seconds": time.monotonic(),
                 "title": self._windows[event.window.id]["title"], "sent": event.send_event, **more}
        if event.type in (X.KeyPress, X.KeyRelease, X.ButtonPress, X.ButtonRelease):
            entry.update(detail=event.detail, state=event.state, time=event.time,
                         at=[event.root_x, event.root_y])
        self._journal.write(json.dumps(entry) + "\n")

    def _paste(self, event):
        if not self._windows[event.window.id].get("paste"):
            return
        self._reader = self._reader or ClipboardReader(self._display.get_display_name())
        png = self._reader.read("image/png")
        digest = hashlib.sha256(png).hexdigest() if png else None
        self._write("pasted", event, picture=digest)

    def _open(self, description, salt):
        x, y, width, height = description["rectangle"]
        screen = self._display.screen()
        window = screen.root.create_window(x, y, width, height, 0, X.CopyFromParent,
                                           event_mask=_MASK)
        self._name(window, description)
        window.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.USSize, x=x, y=y,
                                   width=width, height=height)
        window.set_wm_hints(flags=Xutil.InputHint | Xutil.StateHint, input=1,
                            initial_state=Xutil.NormalState)
        if "cursor" in description:
            font = self._display.open_font("cursor")
            glyph = description["cursor"]
            cursor = font.create_glyph_cursor(font, glyph, glyph + 1, (0, 0, 0), (65535,) * 3)
            window.change_attributes(cursor=cursor)
        pixmap = window.create_pixmap(width, height, screen.root_depth)
        put(pixmap, screen.root_depth, pattern.unique_pixels(width, height, salt))
        window.change_attributes(background_pixmap=pixmap.id)
        window.map()
        return window

    def _name(self, window, description):
        utf8 = self._display.intern_atom("UTF8_STRING")
        title = description.get("shown", description["title"]).encode()
        for start in range(0, max(1, len(title)), _BYTES_A_REQUEST):
            part = title[start:start + _BYTES_A_REQUEST]
            for name, kind in ((self._display.intern_atom("_NET_WM_NAME"), utf8),
                               (Xatom.WM_NAME, Xatom.STRING)):
                window.change_property(name, kind, 8, part, mode=X.PropModeAppend)
        window.set_wm_class(description["instance"], description["class"])
        window.change_property(self._display.intern_atom("_NET_WM_PID"), Xatom.CARDINAL, 32,
                               [description.get("pid", os.getpid())])
        if "shadow" in description:
            window.change_property(self._display.intern_atom("_GTK_FRAME_EXTENTS"),
                                   Xatom.CARDINAL, 32, description["shadow"])


if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as file:
        Target(json.load(file)).run()
