"""A private X display with realistic content, and the processes on it."""
import json
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time


class Display:
    """Xvfb, a session bus, openbox, a tray, and windows that fill about half of the screen."""

    def __init__(self, width, height, compositor):
        self.width, self.height, self.compositor = width, height, compositor
        self.folder = tempfile.mkdtemp(prefix="trovel-bench-")
        self.started = []
        self.pids = {}

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.started):
            end(process)
        if "dbus" in self.pids:
            os.kill(self.pids["dbus"], signal.SIGTERM)
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start(self):
        self.env = self._environment()
        self._write_settings()
        receive, send = os.pipe()
        server = ["Xvfb", "-displayfd", str(send), "-screen", "0",
                  f"{self.width}x{self.height}x24", "-nolisten", "tcp", "-s", "0", "-noreset"]
        self.spawn("X", server, pass_fds=[send])
        os.close(send)
        with os.fdopen(receive) as answer:
            self.env["DISPLAY"] = ":" + answer.readline().strip()
        bus = subprocess.run(
            ["dbus-daemon", "--session", "--fork", "--print-address=1", "--print-pid=1"],
            env=self.env, capture_output=True, text=True, check=True).stdout.split()
        self.env["DBUS_SESSION_BUS_ADDRESS"], self.pids["dbus"] = bus[0], int(bus[1])
        self.spawn("openbox", ["openbox"])
        self.wait_for("xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 0x")
        self.spawn("trayer", ["trayer", "--edge", "bottom", "--align", "right",
                              "--widthtype", "request", "--height", "48"])
        self._fill()
        if self.compositor == "picom":
            self.spawn("picom", ["picom", "--backend", "xrender", "--config", "/dev/null"])
        time.sleep(3)
        self.run(["xdotool", "mousemove", str(self.width - 37), str(self.height // 2 + 33)])

    def _environment(self):
        env = {k: v for k, v in os.environ.items() if k in ("PATH", "LANG", "TERM", "FREEZE_OWNER")}
        home = self.folder + "/home"
        env.update(
            HOME=home, XDG_CONFIG_HOME=home + "/.config", XDG_CACHE_HOME=home + "/.cache",
            XDG_DATA_HOME=home + "/.local/share", XDG_RUNTIME_DIR=self.folder + "/run",
            XDG_SESSION_TYPE="x11", LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb", NO_AT_BRIDGE="1")
        os.makedirs(env["XDG_RUNTIME_DIR"], mode=0o700)
        return env

    def _write_settings(self):
        settings = {
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
        for name, text in settings.items():
            path = os.path.join(self.env["XDG_CONFIG_HOME"], name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)

    def _fill(self):
        wallpaper = f"{self.folder}/wallpaper.png"
        size = f"{self.width}x{self.height}"
        self.run(["convert", "-size", size, "-seed", "7", "plasma:steelblue-tan", wallpaper])
        self.run(["hsetroot", "-fill", wallpaper])
        columns, rows = self.width // 3, self.height // 2
        for i in range(6):
            dark = i % 2 == 0
            colors = ("#1e1e1e", "#d4d4d4") if dark else ("white", "black")
            place = f"80x36+{(i % 3) * columns + 60}+{(i // 3) * rows + 60}"
            self.spawn(f"xterm{i}", [
                "xterm", "-fa", "DejaVu Sans Mono", "-fs", "11", "-bg", colors[0], "-fg",
                colors[1], "-uc", "-geometry", place, "-e", "sh", "-c",
                "cat /usr/include/std*.h | head -n 300; printf '\\033[?25l'; exec sleep 100000"])

    def set_preferences(self, text):
        """Gives the next Trovel these preferences."""
        path = os.path.join(self.env["XDG_CONFIG_HOME"], "trovel", "preferences.ini")
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)

    def spawn(self, name, command, **options):
        log = open(f"{self.folder}/{name}.log", "w", encoding="utf-8")
        process = subprocess.Popen(command, env=self.env, stdin=subprocess.DEVNULL,
                                   stdout=log, stderr=log, start_new_session=True, **options)
        log.close()
        self.started.append(process)
        self.pids[name] = process.pid
        return process

    def run(self, command, **options):
        return subprocess.run(command, env=self.env, capture_output=True, text=True,
                              check=False, **options)

    def wait_for(self, command, seconds=20):
        end_at = time.monotonic() + seconds
        while time.monotonic() < end_at:
            if self.run(["sh", "-c", command]).returncode == 0:
                return
            time.sleep(0.02)
        raise RuntimeError("timed out waiting for: " + command)

    def tray_icon(self, name):
        """The centre of that program's tray icon."""
        end_at = time.monotonic() + 10
        pattern = (r'\s+0x\w+ "%s".* (\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(\d+)\+(\d+)$' % name)
        while time.monotonic() < end_at:
            for line in self.run(["xwininfo", "-root", "-tree"]).stdout.splitlines():
                match = re.match(pattern, line)
                if match:
                    width, height, x, y = map(int, match.groups())
                    if 10 < width < 100 and y > self.height - 100:
                        return x + width // 2, y + height // 2
            time.sleep(0.2)
        raise RuntimeError(name + " shows no tray icon")

    def probe(self, program, *arguments):
        """One measurement by the probe; its answer, or {'ok': 0} when it gave none."""
        watched = ["--cpu", f"x={self.pids['X']}"]
        answer = self.run([program, "overlay", *arguments, *watched], timeout=90)
        try:
            return json.loads(answer.stdout)
        except ValueError:
            return {"ok": 0, "error": answer.stderr[-200:]}


def end(process):
    """Ends a process and everything in its session."""
    for sign in (signal.SIGTERM, signal.SIGKILL):
        try:
            os.killpg(process.pid, sign)
        except ProcessLookupError:
            break
        try:
            process.wait(2)
            break
        except subprocess.TimeoutExpired:
            continue


def memory(pid):
    """Resident, proportional, private and anonymous (no file's) sizes of a process in MiB, and its
    shared memory."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
        text = file.read()

    def mib(*names):
        return sum(int(re.search(rf"^{n}:\s+(\d+)", text, re.M)[1]) for n in names) / 1024
    with open(f"/proc/{pid}/status", encoding="ascii") as file:
        shared = int(re.search(r"^RssShmem:\s+(\d+)", file.read(), re.M)[1]) / 1024
    return {"rss": mib("Rss"), "pss": mib("Pss"), "private": mib("Private_Clean", "Private_Dirty"),
            "anonymous": mib("Anonymous"), "shmem": shared}


def wakeups(pid):
    """Voluntary context switches of all of a process's threads: each is a wake-up from a wait."""
    total = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/status", encoding="ascii") as file:
            total += int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", file.read(), re.M)[1])
    return total


def cpu_ms(pid):
    """CPU time of another process, ended threads included."""
    return time.clock_gettime((~pid << 3) | 2) * 1e3
