"""The folder in which terminal mode leaves its pictures, as another program sees it."""

import os

from PIL import Image

from .waiting import wait_until

_END = b"IEND\xaeB`\x82"  # of every PNG file


class Captures:
    """The captures under a home folder. `root` is where the program's `/` is for us."""

    def __init__(self, home, root=""):
        self.folder = os.path.join(home, ".trovel", "captures")
        self._root = root

    def path(self, name):
        return f"{self._root}{self.folder}/{name}"

    def names(self):
        """All names in the folder, in order; none when there is no folder."""
        try:
            return sorted(os.listdir(self._root + self.folder))
        except FileNotFoundError:
            return []

    def finished(self):
        """The names of the pictures that are written to their end."""
        return [name for name in self.names() if self._is_finished(name)]

    def fill(self, names):
        """Makes files of these names, one after the other."""
        os.makedirs(self._root + self.folder, exist_ok=True)
        for name in names:
            with open(self.path(name), "wb") as file:
                file.write(b"foreign")

    def wait_for_new(self, before=()):
        """The name of the one picture that was not there `before`."""
        return wait_until(lambda: [name for name in self.finished() if name not in before],
                          "a picture is written")[0]

    def picture(self, name):
        with Image.open(self.path(name)) as picture:
            return picture.convert("RGB")

    def _is_finished(self, name):
        if os.path.isdir(self.path(name)):
            return False
        with open(self.path(name), "rb") as file:
            return file.read().endswith(_END)
