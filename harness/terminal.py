"""Real terminals, with a program in them that writes down the very bytes it reads."""

import os

from .waiting import wait_until

# How each is started, with the words after which the program in it comes.
_COMMANDS = {
    "xterm": ["xterm", "-fa", "DejaVu Sans Mono", "-fs", "11", "-geometry", "90x7+60+60", "-e"],
    "xfce4-terminal": ["xfce4-terminal", "--disable-server", "--hide-menubar", "--hide-toolbar",
                       "--geometry=90x7+60+60", "-x"],
    "kitty": ["kitty", "--config=NONE", "--override=remember_window_size=no",
              "--override=initial_window_width=90c", "--override=initial_window_height=7c",
              "--override=update_check_interval=0"],
    "alacritty": ["alacritty", "--option=window.dimensions.columns=90",
                  "--option=window.dimensions.lines=7", "--command"],
}
# Without line discipline `cat` gets each byte as it comes, also one that no Return follows.
_CAT = 'stty -icanon min 1 && printf "%s" "$1" && exec cat >"$0"'


class Terminal:
    """One window of a terminal, in front of all others."""

    def __init__(self, desktop, kind, prompt="", program=None):
        """Runs `cat`, after writing `prompt`, or another `program` with its arguments."""
        self._desktop = desktop
        number = len(os.listdir(desktop.folder))
        self._journal = os.path.join(desktop.folder, f"{kind}-{number}.typed")
        inside = ["sh", "-c", _CAT, self._journal, prompt]
        if program:
            inside = ["sh", "-c", ': >"$0"; exec "$@"', self._journal, *program]
        self._process = desktop.processes.start(
            kind, *_COMMANDS[kind], *inside,
            env={**desktop.processes.environment, "LIBGL_ALWAYS_SOFTWARE": "1"})
        wait_until(lambda: os.path.exists(self._journal), f"the program in {kind} runs")
        self.window = wait_until(self._find_window, f"{kind}'s window is managed")
        self.activate()
        self.picture()

    def close(self):
        self._desktop.processes.stop(self._process)
        wait_until(lambda: not self._find_window(), "the terminal is gone")

    def activate(self):
        """Brings it to the front as a task bar would."""
        self._desktop.observer.activate(self.window)
        wait_until(self.is_active, "the terminal is in front")

    def is_active(self):
        return self._desktop.observer.active_window() == self.window.id

    def received(self):
        """What the program in it has read so far."""
        with open(self._journal, "rb") as file:
            return file.read()

    def picture(self):
        """What it shows, as soon as it has painted itself and that has stopped changing."""
        return self._desktop.observer.painted(self._desktop.observer.frame(self.window))

    def _find_window(self):
        windows = self._desktop.observer.managed_of(self._process.pid)
        return windows[0] if windows else None
