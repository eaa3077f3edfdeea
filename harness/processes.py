"""The processes of one desktop: started with its environment and gone when it closes."""

import os
import signal
import subprocess

_DIES_WITH_US = ("setpriv", "--pdeathsig", "KILL")


class Processes:
    """Starts processes and ends every one of them, the last started first."""

    def __init__(self, folder, environment):
        self.folder = folder
        self.environment = environment
        self.has_bus = False
        self._running = []

    def start(self, name, *command, **options):
        """Starts `command`; what it says goes to a file `name`.log of the folder."""
        options.setdefault("env", self.environment)
        with open(self.log_path(name), "ab") as log:
            options.setdefault("stdout", log)
            options.setdefault("stderr", log)
            process = subprocess.Popen([*_DIES_WITH_US, *map(str, command)],
                                       stdin=subprocess.DEVNULL, start_new_session=True, **options)
        self._running.append(process)
        return process

    def run(self, *command, timeout=20, check=True):
        """Runs `command` to its end and returns what it wrote to standard output, as bytes."""
        done = subprocess.run([str(word) for word in command], env=self.environment, check=check,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, timeout=timeout)
        return done.stdout

    def start_bus(self):
        """Starts a session bus for all processes that are started later."""
        read_end, write_end = os.pipe()
        environment = {name: value for name, value in self.environment.items()
                       if name != "DBUS_SESSION_BUS_ADDRESS"}
        self.start("bus", "dbus-daemon", "--session", "--nofork",
                   f"--print-address={write_end}", pass_fds=(write_end,), env=environment)
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            self.environment["DBUS_SESSION_BUS_ADDRESS"] = answer.readline().strip()
        self.has_bus = True

    def stop(self, process, grace=3.0):
        """Ends `process` and its children, by force after `grace` seconds."""
        if process in self._running:
            self._running.remove(process)
        self._signal(process, signal.SIGTERM)
        try:
            process.wait(grace)
        except subprocess.TimeoutExpired:
            pass
        self._signal(process, signal.SIGKILL)
        process.wait()

    def stop_all(self):
        while self._running:
            self.stop(self._running[-1])

    def log_path(self, name):
        return os.path.join(self.folder, name + ".log")

    def log(self, name):
        with open(self.log_path(name), encoding="utf-8", errors="replace") as log:
            return log.read()

    def kept_waiting(self):
        """Seconds in which the desktop's processes and this one had something to do and no
        processor to do it, all together: what a busy machine adds to their times at most."""
        numbers = [os.getpid(), *(process.pid for process in self._running)]
        return sum(_kept_waiting(number) for number in numbers)

    def running(self, binary):
        """The numbers of the desktop's processes that run `binary`, whoever started them."""
        home = f"HOME={self.environment['HOME']}".encode()
        found = []
        for number in filter(str.isdigit, os.listdir("/proc")):
            try:
                if os.readlink(f"/proc/{number}/exe") != os.path.realpath(binary):
                    continue
                with open(f"/proc/{number}/environ", "rb") as environment:
                    if home in environment.read().split(b"\0"):
                        found.append(int(number))
            except OSError:  # It has ended, or is somebody else's.
                continue
        return found

    @staticmethod
    def _signal(process, number):
        try:
            os.killpg(process.pid, number)
        except ProcessLookupError:
            pass


def _kept_waiting(number):
    try:
        with open(f"/proc/{number}/schedstat", encoding="ascii") as file:
            return int(file.read().split()[1]) / 1e9
    except FileNotFoundError:  # It has ended.
        return 0


def own_mounts(processes):
    """The words in front of a command with which it may mount what it likes, seen by nobody else;
    none where the system refuses that."""
    for prefix in (["unshare", "--map-root-user", "--mount"], ["unshare", "--mount"]):
        try:
            processes.run(*prefix, "mount", "-t", "tmpfs", "none", "/mnt")
            return prefix
        except (subprocess.CalledProcessError, FileNotFoundError):
            continue
    return []
