"""An X session: Xvfb, or a window on another desktop, with a window manager and a compositor."""

import functools
import os

from ..session import Session
from ..waiting import wait_until
from .clipboard import ClipboardReader
from .driver import XDriver
from .input_tap import XInputTap
from .observer import XObserver
from .painting import paint_root
from .server import XServer

_WINDOW_MANAGERS = {"openbox": ["openbox"], "xfwm4": ["xfwm4", "--compositor=off"], "i3": ["i3"]}


class X11Session(Session):
    """`window_manager` is openbox, xfwm4, i3, stubborn or none, `compositor` picom or none. With
    another desktop as its `host` it is a window there, and is driven through it: an X server
    without test devices (one of the extensions that can be left out) cannot be driven otherwise.
    """

    kind = "x11"
    target_module = "harness.x11.target"

    def __init__(self, processes, size, monitors, with_bus=False, window_manager="openbox",
                 compositor=None, without_extensions=(), host=None):
        self._processes = processes
        self._closers = []
        self.server = XServer(processes, size, without_extensions,
                              host.session.server.display if host else None)
        factors = ";".join(f"{monitor.name}={monitor.scale}" for monitor in monitors)
        processes.environment.update(DISPLAY=self.server.display, QT_SCREEN_SCALE_FACTORS=factors)
        self.server.set_monitors(monitors)
        self.observer = self._closing(XObserver(self.server.display))
        self.driver = host.driver if host else XDriver(processes)
        self.clipboard = self.new_clipboard_reader()
        if with_bus or window_manager == "xfwm4":
            processes.start_bus()
        self._start_window_manager(window_manager)
        if compositor:
            self.start_compositor(compositor)

    @functools.cached_property
    def tap(self):
        """Listens from the first time that it is asked for."""
        return self._closing(XInputTap(self.server.display))

    def close(self):
        while self._closers:
            try:
                self._closers.pop()()
            except Exception:  # The X server may be gone by intention: its connections with it.
                pass

    def paint(self, picture):
        paint_root(self.observer.display, picture)

    def new_clipboard_reader(self, **options):
        return self._closing(ClipboardReader(self.server.display, **options))

    # What only X has

    def start_compositor(self, name):
        self._compositor = self._processes.start(name, name, "--config", "/dev/null",
                                                 "--backend", "xrender")
        wait_until(lambda: self.observer.selection_owner("_NET_WM_CM_S0"), f"{name} composes")

    def stop_compositor(self):
        self._processes.stop(self._compositor)
        wait_until(lambda: not self.observer.selection_owner("_NET_WM_CM_S0"), "it is gone")

    def start_clipboard_manager(self):
        """Starts a program that takes over what others leave on the clipboard when they end."""
        manager = self._processes.start("clipboard-manager", "/usr/bin/python3", "-m",
                                        "harness.x11.clipboard_manager")
        wait_until(lambda: self.observer.selection_owner("CLIPBOARD_MANAGER"), "it is there")
        return manager

    def _start_window_manager(self, name):
        if not name:
            return
        if name == "i3":
            folder = os.path.join(self._processes.environment["XDG_CONFIG_HOME"], "i3")
            os.makedirs(folder)
            with open(os.path.join(folder, "config"), "w", encoding="utf-8") as config:
                config.write("# i3 config file (v4)\nfont pango:monospace 8\n")
        if name == "stubborn":
            self.refusals_path = os.path.join(self._processes.folder, "refusals")
            command = ["/usr/bin/python3", "-m", "harness.x11.stubborn_window_manager",
                       self.refusals_path]
        else:
            command = _WINDOW_MANAGERS[name]
        self.window_manager = self._processes.start(name, *command)
        wait_until(self.observer.window_manager_is_up, f"{name} manages the windows")

    def _closing(self, connection):
        self._closers.append(connection.close)
        return connection
