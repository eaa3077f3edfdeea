"""Trovel itself, started as a user's session would and watched from outside."""

import json
import os
import signal
import types

from .driver import ESCAPE, HOTKEY
from .waiting import PATIENCE, wait_until

DEFAULTS = types.MappingProxyType({"hasCompletedOnboarding": True})


def write_preferences(path, preferences):
    """Writes a preferences file as the program keeps it."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        for key, value in preferences.items():
            file.write(f"{key}={_text(value)}\n")


def _text(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, str):
        return '"' + value.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"'
    return str(value)


class Program:
    """One run of the program, from its start to its end. A `wrapper` is a command that becomes the
    program which its last words name."""

    def __init__(self, desktop, preferences=None, environment=None, wait=True, wrapper=()):
        self._desktop = desktop
        if preferences is not None:
            write_preferences(desktop.preferences_path, {**DEFAULTS, **preferences})
        # A screen reader would switch this on, where there is a bus to talk to it.
        spoken = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"} if desktop.processes.has_bus else {}
        self.process = desktop.processes.start(
            "trovel", *wrapper, os.environ["TROVEL_BINARY"],
            env={**desktop.processes.environment, **spoken, **(environment or {})})
        self.pid = self.process.pid
        if wait:
            wait_until(self._answers_its_hotkey, "Trovel has its hotkey")

    # What it shows

    def overlays(self):
        """The rectangles of the overlay's windows that are on the screen."""
        return self._desktop.observer.overlays_of(self.pid)

    def wait_for_overlay(self, count=None, timeout=PATIENCE):
        """Waits until every monitor is covered and returns the rectangles."""
        expected = count or len(self._desktop.monitors)
        return wait_until(lambda: len(self.overlays()) == expected and self.overlays(),
                          f"{expected} overlay windows are up", timeout)

    def wait_for_no_overlay(self, timeout=PATIENCE):
        wait_until(lambda: not self.overlays(), "the overlay is gone", timeout)

    def alerts(self):
        """The program's windows that the window manager knows."""
        return self._desktop.observer.managed_of(self.pid)

    def wait_for_alert(self, timeout=PATIENCE):
        return wait_until(self.alerts, "an alert is up", timeout)[0]

    def spoken(self):
        """What its windows are to a screen reader, as harness.accessible tells it; needs a desktop
        with a bus."""
        return [json.loads(line) for line in self._accessible().splitlines()]

    def spoken_texts(self):
        return [element["name"] for element in self.spoken() if element["name"]]

    def press_spoken(self, name):
        """Presses what has that name, as a screen reader does."""
        self._accessible("press", name)

    def _accessible(self, *words):
        return self._desktop.processes.run("/usr/bin/python3", "-m", "harness.accessible",
                                           self.pid, *words).decode()

    def dismiss_alerts(self, count=1):
        """Waits for that many alerts, closes them with a key, as a user does, the topmost first,
        and waits until they are off the screen."""
        observer = self._desktop.observer
        wait_until(lambda: len(self.alerts()) == count, f"{count} alerts are up")
        left = [alert.id for alert in self.alerts()]
        while left:
            top = wait_until(lambda: observer.active_window() in left and observer.active_window(),
                             "an alert has the keyboard")
            self._desktop.driver.press(ESCAPE)
            left.remove(top)
            wait_until(lambda: [alert.id for alert in self.alerts()] == left, "an alert is gone")
        wait_until(lambda: not observer.windows_of(self.pid), "the alerts are off the screen")

    def windows(self):
        """All of its windows that are on the screen."""
        observer = self._desktop.observer
        return self.alerts() or observer.windows_of(self.pid)

    # What a user does with it

    def select(self, start, end, steps=8):
        """Presses the hotkey and drags over the overlay from one pixel to another."""
        self._desktop.driver.press_hotkey()
        self.wait_for_overlay()
        self._desktop.driver.drag(start, end, steps)

    def capture(self, start, end, timeout=PATIENCE):
        """Selects, and returns the picture that then comes on the clipboard, in RGB."""
        self._desktop.clipboard.clear()
        self.select(start, end)
        return self.wait_for_picture(timeout)

    def wait_for_picture(self, timeout=PATIENCE):
        """The picture on the clipboard, in RGB, as soon as the program owns one."""
        self._desktop.clipboard.wait_for_owner(timeout)
        return self._desktop.clipboard.picture()

    # How it ends

    def is_running(self):
        return self.process.poll() is None

    def terminate(self, timeout=PATIENCE):
        """Asks the program to end and returns its exit status; negative is a signal."""
        self.process.send_signal(signal.SIGTERM)
        return self.wait(timeout)

    def wait(self, timeout=PATIENCE):
        wait_until(lambda: not self.is_running(), "Trovel has ended", timeout)
        return self.process.returncode

    def messages(self):
        """What it wrote to standard output and standard error."""
        return self._desktop.processes.log("trovel")

    def _answers_its_hotkey(self):
        if not self.is_running():
            raise AssertionError(f"Trovel ended with {self.process.returncode} instead of waiting "
                                 f"for its hotkey: {self.messages()}")
        return self._desktop.observer.is_hotkey(*HOTKEY)
