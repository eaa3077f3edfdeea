"""An X server of its own on a free display number."""

import os
import subprocess
from dataclasses import dataclass

from .waiting import wait_until


@dataclass(frozen=True)
class Monitor:
    """A monitor in pixels of the root window, and the scale that the user chose for it."""

    name: str
    x: int
    y: int
    width: int
    height: int
    scale: float = 1
    primary: bool = False

    @property
    def rectangle(self):
        return (self.x, self.y, self.width, self.height)


class XServer:
    """Xvfb with the given size in pixels; its extensions can be left out by name."""

    def __init__(self, processes, size, without_extensions=()):
        self.size = size
        self._processes = processes
        read_end, write_end = os.pipe()
        options = [word for name in without_extensions for word in ("-extension", name)]
        self.process = processes.start(
            "x-server", "Xvfb", "-displayfd", write_end, "-screen", "0", f"{size[0]}x{size[1]}x24",
            "-nolisten", "tcp", "-s", "0", "-noreset", *options, pass_fds=(write_end,))
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise AssertionError("the X server did not start: " + processes.log("x-server"))
        self.display = ":" + number

    def set_monitors(self, monitors):
        """Divides the root window into `monitors`, the only ones that clients see."""
        for index, monitor in enumerate(monitors):
            star = "*" if monitor.primary else ""
            geometry = (f"{monitor.width}/{monitor.width // 4}x"
                        f"{monitor.height}/{monitor.height // 4}+{monitor.x}+{monitor.y}")
            self._processes.run("xrandr", "--setmonitor", star + monitor.name, geometry,
                                "screen" if index == 0 else "none")

    def remove_monitor(self, monitor):
        self._processes.run("xrandr", "--delmonitor", monitor.name)

    def kill(self):
        """Takes the X server away at once, as a crash would."""
        self.process.kill()
        self.process.wait()

    def set_layout(self, layout):
        """Sets the keyboard layout, such as "us,ru", and waits until the server has it."""
        self._processes.run("setxkbmap", "-layout", layout)
        wait_until(lambda: f"layout:     {layout}\n" in self._query(), "the keyboard layout")

    def _query(self):
        return self._processes.run("setxkbmap", "-query").decode()
