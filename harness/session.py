"""What a desktop needs of a display server: the parts of a session, each an interface that every
kind of session implements. Points and rectangles are in pixels of the whole desktop, from its upper
left; keys are XKB's keycodes, which are evdev's plus 8."""

import abc
import io
from dataclasses import dataclass

from PIL import Image

from .waiting import PATIENCE, wait_until


@dataclass(frozen=True)
class Monitor:
    """A monitor in pixels of the whole desktop, and the scale that the user chose for it."""

    name: str
    x: int
    y: int
    width: int
    height: int
    scale: float = 1
    primary: bool = False

    @property
    def rectangle(self):
        return (self.x, self.y, self.width, self.height)


@dataclass(frozen=True)
class InputEvent:
    """A "key down", "key up", "button down" or "button up", at a time of the server in
    milliseconds."""

    kind: str
    detail: int
    time: int
    x: int
    y: int


class Server(abc.ABC):
    """The display server: its monitors, its keyboard and its sudden end."""

    @abc.abstractmethod
    def add_monitor(self, monitor):
        """Plugs a monitor in."""

    @abc.abstractmethod
    def remove_monitor(self, monitor):
        """Pulls a monitor out."""

    @abc.abstractmethod
    def set_layout(self, layout, active=0):
        """Sets the keyboard layouts, such as "us,ru", and which of them is in use."""

    @abc.abstractmethod
    def kill(self):
        """Takes the server away at once, as a crash would."""


class Observer(abc.ABC):
    """What a bystander can see, with a connection of its own that changes nothing but what a test
    asks for. Windows are values of the session's own that have an `id`."""

    @abc.abstractmethod
    def screenshot(self, rectangle=None):
        """The pixels of `rectangle` (x, y, width, height), or all, as an RGB picture."""

    def settled(self, rectangle, timeout=PATIENCE):
        """The pixels of `rectangle` as soon as they have stopped changing for a moment."""
        equal = []

        def is_settled():
            picture = self.screenshot(rectangle)
            if equal and picture != equal[-1]:
                equal.clear()
            equal.append(picture)
            return len(equal) == 8
        wait_until(is_settled, "the screen has come to rest", timeout)
        return equal[-1]

    def is_painted(self, rectangle):
        """Whether most of the pixels of `rectangle` have one colour, as a window's have that has
        painted itself, and not the pattern that lies behind it."""
        width, height = rectangle[2:]
        count, _ = max(self.screenshot(rectangle).getcolors(width * height))
        return count > width * height // 2

    def painted(self, rectangle):
        """The pixels of `rectangle` as soon as a window has painted them and they have stopped
        changing."""
        wait_until(lambda: self.is_painted(rectangle), "a window has painted itself")
        return self.settled(rectangle)

    @abc.abstractmethod
    def cursor(self):
        """A value that tells the cursor now on the screen from others."""

    @abc.abstractmethod
    def client_list(self):
        """All windows that the window manager manages."""

    @abc.abstractmethod
    def managed_of(self, pid):
        """Those among them that process `pid` opened."""

    @abc.abstractmethod
    def windows_of(self, pid):
        """Whatever process `pid` has on the screen, managed or not."""

    @abc.abstractmethod
    def overlays_of(self, pid):
        """The rectangles of what `pid` shows above all windows and no window manager touches."""

    @abc.abstractmethod
    def popups(self):
        """The rectangles of the menus that are open, whoever shows them."""

    def wait_for_menu(self):
        """The rectangle of the menu that opens, as soon as it takes keys."""
        menu = wait_until(self.popups, "the menu is open")[0]
        wait_until(lambda: not self.is_keyboard_free(), "the menu has the keyboard")
        return menu

    @abc.abstractmethod
    def active_window(self):
        """The id of the window that has the keyboard's focus, 0 when none has."""

    @abc.abstractmethod
    def activate(self, window):
        """Brings `window` to the front as a task bar would."""

    @abc.abstractmethod
    def close_window(self, window):
        """Closes `window` as the button in its title bar does."""

    @abc.abstractmethod
    def fill_screen(self, window):
        """Makes `window` a full-screen one, as its own menu would."""

    @abc.abstractmethod
    def title(self, window):
        """The name that `window` shows; empty when it has none."""

    @abc.abstractmethod
    def frame(self, window):
        """The rectangle of `window` without what a window manager adds; None when it is gone."""

    @abc.abstractmethod
    def held_keys(self):
        """The keycodes that are down."""

    @abc.abstractmethod
    def held_buttons(self):
        """A value that is 0 when no button of the mouse is down."""

    @abc.abstractmethod
    def is_keyboard_free(self):
        """Whether nobody, such as an open menu, has the keyboard for himself."""

    @abc.abstractmethod
    def is_pointer_free(self):
        """Whether nobody has the pointer for himself."""

    def is_input_free(self):
        return self.is_keyboard_free() and self.is_pointer_free()

    @abc.abstractmethod
    def is_hotkey(self, *keycodes):
        """Whether a program is told of this key, pressed after its modifiers, wherever it is
        pressed."""


class InputTap:
    """Every key and button that moves on a desktop, whoever moved it and whoever received it."""

    def __init__(self):
        self.events = []

    def mark(self):
        """A place in the list of events: everything later comes after it."""
        return len(self.events)

    def since(self, mark):
        return list(self.events[mark:])


class Clipboard(abc.ABC):
    """An independent reader of selections ("CLIPBOARD", "PRIMARY"), as any other program is one."""

    text_format = "text/plain;charset=utf-8"

    @abc.abstractmethod
    def owner(self, selection="CLIPBOARD"):
        """A value that tells who offers something there from others; a false one for nobody."""

    @abc.abstractmethod
    def clear(self):
        """Takes the clipboard away from its owner, so that the next one can be told from it."""

    @abc.abstractmethod
    def targets(self, selection="CLIPBOARD"):
        """The names of the formats on offer, sorted; none when nobody owns the selection."""

    @abc.abstractmethod
    def read(self, target, selection="CLIPBOARD", pause=None):
        """The bytes of the selection as `target`, or nothing when that is refused. `pause` is
        called with the number of bytes that have come, between two portions of a transfer."""

    @abc.abstractmethod
    def begin(self, target, selection="CLIPBOARD"):
        """Asks for the selection and takes no further part in the transfer."""

    @abc.abstractmethod
    def close(self):
        """Ends, in the middle of a transfer too."""

    def wait_for_owner(self, timeout=PATIENCE):
        wait_until(self.owner, "something is copied", timeout)

    def picture(self):
        """The picture on the clipboard in RGB; nothing when there is none."""
        png = self.read("image/png")
        return Image.open(io.BytesIO(png)).convert("RGB") if png else None

    def text(self, selection="CLIPBOARD"):
        data = self.read(self.text_format, selection)
        return data.decode() if data is not None else None


class Session(abc.ABC):
    """A display server with a window manager, and those who drive and watch it: a `server`, a
    `driver` (driver.py), an `observer`, a `tap` and a `clipboard`. Its construction starts all of
    it with the environment of `processes`, and writes there what other programs need to join."""

    kind = ""  # as XDG_SESSION_TYPE names it, and toolkits their platforms
    target_module = ""  # the stand-in application, run as target.py says

    @abc.abstractmethod
    def paint(self, picture):
        """Makes `picture` the background of the desktop."""

    @abc.abstractmethod
    def new_clipboard_reader(self, **options):
        """Another reader, which closes with the session."""

    @abc.abstractmethod
    def close(self):
        """Ends the connections; the processes end with the desktop."""
