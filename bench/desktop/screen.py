"""The desktop that is measured: realistic content, a tray, and the settings of all programs."""
import json
import os

from harness.desktop import Desktop
from harness.waiting import wait_until
from harness.x11.trays import SystemTray

SETTINGS = {
    "trovel/preferences.ini": "hasCompletedOnboarding=true\n",
    "flameshot/flameshot.ini":
        "[General]\nshowStartupLaunchMessage=false\nshowHelp=false\n"
        "showSidePanelButton=false\nshowDesktopNotification=false\n"
        "checkForUpdates=false\ncontrastOpacity=140\n",
    "ksnip/ksnip.conf":
        "[Application]\nAutoCopyToClipboardNewCaptures=true\nCloseToTray=true\n"
        "MinimizeToTray=true\nStartMinimizedToTray=true\nUseTrayIcon=true\n"
        "TrayIconNotificationsEnabled=false\nUseSingleInstance=true\n"
        "[ImageGrabber]\nImplicitCaptureDelay=0\nCaptureDelay=0\n"
        "FreezeImageWhileSnippingEnabled=true\nHideMainWindowDuringScreenshot=true\n"
        "SnippingAreaMagnifyingGlassEnabled=false\nSnippingAreaRulersEnabled=false\n"
        "SnippingAreaPositionAndSizeInfoEnabled=false\nShowSnippingAreaInfoText=false\n",
    "spectaclerc": "[General]\nuseReleaseToCapture=true\n",
}


class Screen(Desktop):
    """A desktop with a bus, a tray, and windows that fill about half of it."""

    def __init__(self, width, height, compositor=None):
        super().__init__(size=(width, height), with_bus=True)
        try:
            self._fill(compositor)
        except BaseException:
            self.close()
            raise

    def _fill(self, compositor):
        for name, text in SETTINGS.items():
            self._write(name, text)
        self.tray = SystemTray(self)
        width, height = self.size
        wallpaper = f"{self.folder}/wallpaper.png"
        self.processes.run("convert", "-size", f"{width}x{height}", "-seed", "7",
                           "plasma:steelblue-tan", wallpaper, timeout=600)
        self.processes.run("hsetroot", "-fill", wallpaper)
        for i in range(6):
            dark = i % 2 == 0
            colors = ("#1e1e1e", "#d4d4d4") if dark else ("white", "black")
            place = f"80x36+{(i % 3) * (width // 3) + 60}+{(i // 3) * (height // 2) + 60}"
            terminal = self.processes.start(
                f"xterm{i}", "xterm", "-fa", "DejaVu Sans Mono", "-fs", "11", "-bg", colors[0],
                "-fg", colors[1], "-uc", "-geometry", place, "-e", "sh", "-c",
                "cat /usr/include/std*.h | head -n 300; printf '\\033[?25l'; exec sleep 100000")
            wait_until(lambda: self.observer.managed_of(terminal.pid), "a terminal is open", 20)
        if compositor:
            self.session.start_compositor(compositor)
        self.driver.move((width - 37, height // 2 + 33))
        self.observer.settled((0, 0, width, height), 60)

    def set_preferences(self, text):
        """Gives the next Trovel these preferences."""
        self._write("trovel/preferences.ini", text)

    def probe(self, program, *arguments):
        """One measurement by the probe; its answer, or {'ok': 0} when it gave none."""
        answer = self.processes.run(program, "overlay", *arguments, "--cpu",
                                    f"x={self.session.server.process.pid}", timeout=90, check=False)
        return json.loads(answer) if answer else {"ok": 0}

    def _write(self, name, text):
        path = os.path.join(self.processes.environment["XDG_CONFIG_HOME"], name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
