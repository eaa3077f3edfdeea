"""Other screenshot programs, and how each is started, triggered and confirmed."""
import dataclasses
import os
import shutil
import time
from typing import Callable


@dataclasses.dataclass
class Peer:
    """A program to measure beside Trovel."""
    name: str
    start: Callable      # screen -> its resident process, or None when each trigger starts one
    trigger: Callable    # screen -> the probe's trigger
    ready: str = "painted"
    copies: bool = False     # whether the picture goes to the clipboard by itself
    confirm: str = ""        # the key that takes the picture after the drag
    stays: bool = True       # whether it waits in the background between captures


def resident(command, seconds):
    def start(screen):
        process = screen.processes.start(os.path.basename(command[0]), *command)
        time.sleep(seconds)
        return process
    return start


def tray_click(name):
    def trigger(screen):
        x, y = screen.tray.wait_for_icon(name)
        return f"click:{x},{y}"
    return trigger


def always(what):
    return lambda screen: what


def none(screen):
    return None


def yardstick(program):
    """The least that a resident program must do: what this machine's server costs anyone."""
    return Peer("yardstick", resident([program], 0.5), always("key:Ctrl+Alt+c"), copies=True)


def peers(screen):
    """The peers that are installed."""
    everyone = [
        Peer("flameshot", resident(["flameshot"], 2.5), tray_click("flameshot"), copies=True,
             confirm="Ctrl+c"),
        Peer("ksnip", resident(["ksnip"], 2.5), always("key:Alt+Shift+r")),
        Peer("spectacle", none, always("command:exec spectacle -b -n -r -c"), copies=True,
             stays=False),
        Peer("maim", none, always("command:maim -s | xclip -selection clipboard -t image/png"),
             ready="cursor", copies=True, stays=False),
        Peer("scrot", none, always("command:scrot -o -s $HOME/s.png; "
                                   "xclip -selection clipboard -t image/png $HOME/s.png"),
             ready="cursor", copies=True, stays=False),
    ]
    path = screen.processes.environment["PATH"]
    return [peer for peer in everyone if shutil.which(peer.name, path=path)]
