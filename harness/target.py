"""Stand-ins for chat applications: small programs that write down what reaches them.

Each session has one (`Session.target_module`). It is given the path of a JSON object: "journal",
the file that gets one JSON object a line, and "windows", a list of objects with "instance",
"class", "title" and "rectangle". They may have "shown" (another title to show), "pid" (another than
the process's own), "cursor" (a number of one), "paste" (read the picture on the clipboard on
Control+V) and "shadow" (widths of what the window draws around itself: left, right, top, bottom).
"""

import json
import os

from .waiting import wait_until


class TargetProcess:
    """A process of stand-in applications and what they wrote down."""

    def __init__(self, desktop, windows):
        self._desktop = desktop
        number = len(desktop.targets)
        desktop.targets.append(self)
        self._journal = os.path.join(desktop.folder, f"target-{number}.journal")
        descriptions = [{"paste": True, **window} for window in windows]
        self._shown = {each["title"]: each.get("shown", each["title"]) for each in windows}
        path = os.path.join(desktop.folder, f"target-{number}.json")
        with open(path, "w", encoding="utf-8") as specification:
            json.dump({"journal": self._journal, "windows": descriptions}, specification)
        self.process = desktop.processes.start(
            f"target-{number}", "/usr/bin/python3", "-m", desktop.session.target_module, path)
        wait_until(lambda: len(self.entries("mapped")) == len(windows), "the target's windows")
        wait_until(lambda: len(desktop.observer.managed_of(self.pid)) == len(windows),
                   "the target's windows are managed")

    @property
    def pid(self):
        return self.process.pid

    def entries(self, kind=None, title=None):
        """The journal's entries of a kind and of the window with a title, in order."""
        try:
            with open(self._journal, encoding="utf-8") as journal:
                lines = journal.read().splitlines()
        except FileNotFoundError:
            return []
        found = [json.loads(line) for line in lines if line.endswith("}")]
        return [entry for entry in found if kind in (None, entry["kind"])
                and title in (None, entry["title"])]

    def window(self, title):
        """The window with this title, as the observer sees it."""
        observer = self._desktop.observer
        return next(window for window in observer.managed_of(self.pid)
                    if observer.title(window) == self._shown[title])

    def is_active(self, title):
        return self._desktop.observer.active_window() == self.window(title).id

    def kill(self):
        """Takes the process away at once, as a crash would."""
        self.process.kill()
        self.process.wait()
