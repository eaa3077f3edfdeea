"""A desktop of a test: a session on a display server, a home folder, programs."""

import json
import os
import shutil
import tempfile

from . import pattern
from .browser import Browser
from .processes import Processes
from .program import DEFAULTS, Program
from .session import Monitor
from .target import TargetProcess
from .x11.session import X11Session

SIZE = (1280, 720)
_TREE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


class Desktop:
    """Everything that a user sits in front of. A context manager: nothing of it outlives the test.

    `monitors` divide the desktop's `size` in pixels. The `session` is started with them, with a
    session bus if one is wanted, and with the other options, which are its own.
    """

    def __init__(self, size=SIZE, monitors=None, session=X11Session, **options):
        self.size = size
        self.monitors = monitors or [Monitor("main", 0, 0, *size, primary=True)]
        self.folder = tempfile.mkdtemp(prefix="trovel-desktop-")
        self.processes = Processes(self.folder, self._environment(session.kind))
        self.targets = []
        self._browsers = []
        self.session = None
        try:
            self.session = session(self.processes, size, self.monitors, **options)
        except BaseException:
            self.close()
            raise
        self.driver = self.session.driver
        self.observer = self.session.observer
        self.clipboard = self.session.clipboard

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        while self._browsers:
            self._browsers.pop().close()
        if self.session:
            self.session.close()
        self.processes.stop_all()
        shutil.rmtree(self.folder, ignore_errors=True)

    @property
    def tap(self):
        return self.session.tap

    def paint(self, picture=None):
        """Paints the background with a picture in which every pixel is different."""
        self.session.paint(picture or pattern.unique_pixels(*self.size))

    # Programs

    @property
    def preferences_path(self):
        return os.path.join(self.folder, "config", "trovel", "preferences.ini")

    def preferences(self):
        """What is stored by now."""
        try:
            with open(self.preferences_path, encoding="utf-8") as file:
                lines = file.read().splitlines()
        except FileNotFoundError:
            return {}
        return {key: json.loads(value) for key, _, value in
                (line.partition("=") for line in lines if line)}

    def start_program(self, preferences=DEFAULTS, **options):
        """Starts Trovel with these preferences beside a finished onboarding, or with None with
        the preferences that it finds."""
        return Program(self, preferences, **options)

    def start_browser(self, **options):
        self._browsers.append(Browser(self, **options))
        return self._browsers[-1]

    def start_target(self, *windows):
        """Opens the windows of one stand-in process, each a dictionary that target.py explains,
        and waits until they are managed."""
        return TargetProcess(self, windows)

    def install_application(self, identifier, name, window_class):
        """Writes a desktop entry, so that windows of `window_class` belong to `identifier`."""
        folder = os.path.join(self.folder, "data", "applications")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, identifier + ".desktop"), "w", encoding="utf-8") as entry:
            entry.write("[Desktop Entry]\nType=Application\nExec=true\n"
                        f"Name={name}\nStartupWMClass={window_class}\n")

    def _environment(self, kind):
        environment = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH")
                       if name in os.environ}
        places = {"HOME": "home", "XDG_CONFIG_HOME": "config", "XDG_DATA_HOME": "data",
                  "XDG_CACHE_HOME": "cache", "XDG_STATE_HOME": "state", "XDG_RUNTIME_DIR": "run"}
        for variable, name in places.items():
            path = os.path.join(self.folder, name)
            os.makedirs(path, mode=0o700)
            environment[variable] = path
        environment.update(LANG="C.UTF-8", XDG_SESSION_TYPE=kind, PYTHONPATH=_TREE,
                           DBUS_SESSION_BUS_ADDRESS="disabled:", NO_AT_BRIDGE="1")
        return environment
