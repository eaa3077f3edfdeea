"""An X server of its own on a free display number."""

import ctypes
import os

from ..session import Server
from ..waiting import wait_until

_CORE_KEYBOARD = 0x100


class XServer(Server):
    """Xvfb with the given size in pixels, or a window on the display `host`. Extensions can be left
    out by name."""

    def __init__(self, processes, size, without_extensions=(), host=None):
        self.size = size
        self._processes = processes
        read_end, write_end = os.pipe()
        options = [word for name in without_extensions for word in ("-extension", name)]
        resolution = f"{size[0]}x{size[1]}"
        command = ["Xephyr", "-screen", resolution] if host else \
            ["Xvfb", "-screen", "0", resolution + "x24", "-s", "0"]
        self.process = processes.start(
            "x-server", *command, "-displayfd", write_end, "-noreset",
            "-nolisten", "tcp", *options,
            env={**processes.environment, "DISPLAY": host or ""}, pass_fds=(write_end,))
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise AssertionError("the X server did not start: " + processes.log("x-server"))
        self.display = ":" + number

    def set_monitors(self, monitors):
        """Divides the root window into `monitors`, the only ones that clients see."""
        output = self._processes.run("xrandr").decode().split(" connected", 1)[0].split("\n")[-1]
        for index, monitor in enumerate(monitors):
            self.add_monitor(monitor, output if index == 0 else "none")

    def add_monitor(self, monitor, output="none"):
        """Plugs a monitor in. One of them has to show the server's only `output`."""
        star = "*" if monitor.primary else ""
        geometry = (f"{monitor.width}/{monitor.width // 4}x"
                    f"{monitor.height}/{monitor.height // 4}+{monitor.x}+{monitor.y}")
        self._processes.run("xrandr", "--setmonitor", star + monitor.name, geometry, output)

    def remove_monitor(self, monitor):
        self._processes.run("xrandr", "--delmonitor", monitor.name)

    def kill(self):
        self.process.kill()
        self.process.wait()

    def set_layout(self, layout, active=0):
        self._processes.run("setxkbmap", "-layout", layout)
        wait_until(lambda: f"layout:     {layout}\n" in self._query(), "the keyboard layout")
        xlib = ctypes.CDLL("libX11.so.6")
        xlib.XOpenDisplay.restype = ctypes.c_void_p
        display = ctypes.c_void_p(xlib.XOpenDisplay(self.display.encode()))
        xlib.XkbLockGroup(display, _CORE_KEYBOARD, active)
        xlib.XCloseDisplay(display)

    def _query(self):
        return self._processes.run("setxkbmap", "-query").decode()
