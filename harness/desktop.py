"""A desktop of a test: X server, window manager, compositor, home folder, programs."""

import json
import os
import shutil
import tempfile

from Xlib import X

from . import pattern
from .browser import Browser
from .clipboard import ClipboardReader
from .driver import Driver
from .input_tap import InputTap
from .observer import Observer
from .processes import Processes
from .program import Program
from .waiting import wait_until
from .x_server import Monitor, XServer

SIZE = (1280, 720)
_TREE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
_WINDOW_MANAGERS = {"openbox": ["openbox"], "xfwm4": ["xfwm4", "--compositor=off"], "i3": ["i3"]}


class Desktop:
    """Everything that a user sits in front of. A context manager: nothing of it outlives the test.

    `monitors` divide the root window of `size` pixels; `window_manager` is openbox, xfwm4, i3,
    stubborn or none, `compositor` picom or none. With another desktop as its `host` it is a window
    there, and is driven through it: an X server without test devices cannot be driven otherwise.
    """

    def __init__(self, size=SIZE, monitors=None, window_manager="openbox", compositor=None,
                 without_extensions=(), with_bus=False, host=None):
        self.size = size
        self.monitors = monitors or [Monitor("main", 0, 0, *size, primary=True)]
        self.folder = tempfile.mkdtemp(prefix="trovel-desktop-")
        self.processes = Processes(self.folder)
        self.processes.environment = self._environment()
        self._closers = []
        self.targets = []
        try:
            self._start(window_manager, compositor, without_extensions, with_bus, host)
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        while self._closers:
            try:
                self._closers.pop()()
            except Exception:  # The X server may be gone by intention: its connections with it.
                pass
        self.processes.stop_all()
        shutil.rmtree(self.folder, ignore_errors=True)

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

    def start_program(self, preferences={}, **options):
        """Starts Trovel with these preferences beside a finished onboarding, or with None with
        the preferences that it finds."""
        return Program(self, preferences, **options)

    def start_browser(self, **options):
        browser = Browser(self, **options)
        self._closers.append(browser.close)
        return browser

    def start_target(self, *windows):
        """Opens the windows of one stand-in process, each a dictionary that target.py explains,
        and waits until the window manager has given the last of them the front."""
        return TargetProcess(self, windows)

    def install_application(self, identifier, name, window_class):
        """Writes a desktop entry, so that windows of `window_class` belong to `identifier`."""
        folder = os.path.join(self.folder, "data", "applications")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, identifier + ".desktop"), "w", encoding="utf-8") as entry:
            entry.write("[Desktop Entry]\nType=Application\nExec=true\n"
                        f"Name={name}\nStartupWMClass={window_class}\n")

    def paint(self, picture=None):
        """Paints the background with a picture in which every pixel is different."""
        pattern.paint_root(self.observer.display, picture or pattern.unique_pixels(*self.size))

    def clear_clipboard(self):
        """Takes the clipboard away from its owner, so that the next one can be told from it."""
        display = self.observer.display
        nobody = display.create_resource_object("window", X.NONE)
        nobody.set_selection_owner(self.observer.atom("CLIPBOARD"), X.CurrentTime)
        display.sync()

    def wait_for_clipboard(self, timeout=5.0):
        wait_until(lambda: self.observer.selection_owner("CLIPBOARD"), "something is copied",
                   timeout)

    def new_clipboard_reader(self, **options):
        reader = ClipboardReader(self.x_server.display, **options)
        self._closers.append(reader.close)
        return reader

    def start_compositor(self, name):
        self._compositor = self.processes.start(name, name, "--config", "/dev/null",
                                                "--backend", "xrender")
        wait_until(lambda: self.observer.selection_owner("_NET_WM_CM_S0"), f"{name} composes", 15)

    def stop_compositor(self):
        self.processes.stop(self._compositor)
        wait_until(lambda: not self.observer.selection_owner("_NET_WM_CM_S0"), "it is gone")

    def start_clipboard_manager(self):
        """Starts a program that takes over what others leave on the clipboard when they end."""
        manager = self.processes.start("clipboard-manager", "/usr/bin/python3", "-m",
                                       "harness.clipboard_manager")
        wait_until(lambda: self.observer.selection_owner("CLIPBOARD_MANAGER"), "it is there", 10)
        return manager

    # Construction

    def _start(self, window_manager, compositor, without_extensions, with_bus, host):
        host_display = host.x_server.display if host else None
        self.x_server = XServer(self.processes, self.size, without_extensions, host_display)
        self.processes.environment["DISPLAY"] = self.x_server.display
        self.x_server.set_monitors(self.monitors)
        self.observer = Observer(self.x_server.display)
        self._closers.append(self.observer.close)
        self.driver = host.driver if host else Driver(self.processes)
        if "XTEST" not in without_extensions:  # The same switch takes the means to listen away.
            self.tap = InputTap(self.x_server.display)
            self._closers.append(self.tap.close)
        self.clipboard = self.new_clipboard_reader()
        if with_bus or window_manager == "xfwm4":
            self._start_bus()
        self._start_window_manager(window_manager)
        if compositor:
            self.start_compositor(compositor)

    def _environment(self):
        environment = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH")
                       if name in os.environ}
        places = {"HOME": "home", "XDG_CONFIG_HOME": "config", "XDG_DATA_HOME": "data",
                  "XDG_CACHE_HOME": "cache", "XDG_STATE_HOME": "state", "XDG_RUNTIME_DIR": "run"}
        for variable, name in places.items():
            path = os.path.join(self.folder, name)
            os.makedirs(path, mode=0o700)
            environment[variable] = path
        factors = ";".join(f"{monitor.name}={monitor.scale}" for monitor in self.monitors)
        environment.update(LANG="C.UTF-8", XDG_SESSION_TYPE="x11", PYTHONPATH=_TREE,
                           QT_SCREEN_SCALE_FACTORS=factors,
                           DBUS_SESSION_BUS_ADDRESS="disabled:", NO_AT_BRIDGE="1")
        return environment

    def _start_bus(self):
        read_end, write_end = os.pipe()
        environment = {name: value for name, value in self.processes.environment.items()
                       if name != "DBUS_SESSION_BUS_ADDRESS"}
        self.processes.start("bus", "dbus-daemon", "--session", "--nofork",
                             f"--print-address={write_end}", pass_fds=(write_end,), env=environment)
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            self.processes.environment["DBUS_SESSION_BUS_ADDRESS"] = answer.readline().strip()
        self.processes.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"

    def _start_window_manager(self, name):
        if not name:
            return
        if name == "i3":
            folder = os.path.join(self.folder, "config", "i3")
            os.makedirs(folder)
            with open(os.path.join(folder, "config"), "w", encoding="utf-8") as config:
                config.write("# i3 config file (v4)\nfont pango:monospace 8\n")
        if name == "stubborn":
            self.refusals_path = os.path.join(self.folder, "refusals")
            command = ["/usr/bin/python3", "-m", "harness.stubborn_window_manager",
                       self.refusals_path]
        else:
            command = _WINDOW_MANAGERS[name]
        self.window_manager = self.processes.start(name, *command)
        wait_until(self.observer.window_manager_is_up, f"{name} manages the windows", 15)



class TargetProcess:
    """A process of stand-in applications and what they wrote down."""

    def __init__(self, desktop, windows):
        self._desktop = desktop
        number = len(desktop.targets)
        desktop.targets.append(self)
        self._journal = os.path.join(desktop.folder, f"target-{number}.journal")
        descriptions = [{"paste": True, **window} for window in windows]
        path = os.path.join(desktop.folder, f"target-{number}.json")
        with open(path, "w", encoding="utf-8") as specification:
            json.dump({"journal": self._journal, "windows": descriptions}, specification)
        self.process = desktop.processes.start(
            f"target-{number}", "/usr/bin/python3", "-m", "harness.target", path)
        wait_until(lambda: len(self.entries("mapped")) == len(windows), "the target's windows", 10)
        if getattr(desktop, "window_manager", None):
            wait_until(lambda: len(desktop.observer.managed_of(self.process.pid)) == len(windows),
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
        number = next(entry["window"] for entry in self.entries("mapped", title))
        return self._desktop.observer.display.create_resource_object("window", number)

    def is_active(self, title):
        return self._desktop.observer.active_window() == self.window(title).id

    def kill(self):
        """Takes the process away at once, as a crash would."""
        self.process.kill()
        self.process.wait()
