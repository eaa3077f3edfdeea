"""The status menu under a user's hands, whoever paints it."""

from .driver import DOWN, ESCAPE, LEFT, RETURN, RIGHT_ARROW
from .waiting import wait_until

SEPARATOR = "-"
ROWS = ["Trovel", SEPARATOR, "AI App", "Change Hotkey…", "Launch at Login", "Terminal Mode",
        "Auto Send", SEPARATOR, "Permissions…", "Check for Updates…", "What's New…",
        "Help & Support…", "About Trovel", SEPARATOR, "Quit Trovel"]
AI_APPS = ["Claude", "ChatGPT", "Gemini", "Perplexity", "Copilot", SEPARATOR, "Browser Mode",
           SEPARATOR, "Other…"]
BROWSERS = ["Safari", "Chrome", "Arc", "Firefox", "Edge"]
TERMINALS = ["Off", SEPARATOR, "Frontmost App", "Terminal", "iTerm", "Warp", "VS Code", "Cursor"]
_SUBMENUS = {"AI App": AI_APPS, "Browser Mode": BROWSERS, "Terminal Mode": TERMINALS}
_MARKS_WIDTH = 21  # of the place for checkmarks, in front of the titles
_LINE_HEIGHT = 3


class StatusMenu:
    """Opens the menu at the icon in a panel and chooses from it by keys."""

    def __init__(self, desktop, tray, button=LEFT):
        self._desktop = desktop
        self._tray = tray
        self._button = button

    def open(self):
        """Opens it and returns its rectangle."""
        return self._tray.open_menu(self._button)

    def enter(self, *titles):
        """Opens it and, through these rows, a submenu; returns the submenu's rectangle."""
        self.open()
        return self._go_down(titles)

    def choose(self, *titles):
        """Opens it and chooses the last of these rows, which lies in the submenus of the others."""
        self.open()
        self._go_down(titles[:-1])
        self._select(titles[:-1], titles[-1])
        self._desktop.driver.tap(RETURN)
        self.wait_until_closed()

    def close(self):
        """Closes it with all of its submenus."""
        for left in reversed(range(len(self._rectangles()))):
            self._desktop.driver.press(ESCAPE)
            wait_until(lambda: len(self._rectangles()) <= left, "a menu is gone")

    def wait_until_closed(self):
        wait_until(lambda: not self._rectangles(), "the menu is gone")

    def marks(self, *titles):
        """Opens it down to a submenu; returns what is painted in front of each of its titles, which
        is the same for all rows that are checked."""
        x, y, _, height = self.enter(*titles)
        rows = _rows_of(titles)
        strip = (x + 3, y + 2, _MARKS_WIDTH, height - 4)
        observer = self._desktop.observer
        picture = observer.painted(strip)
        marks = _marks_in(picture, rows)
        if titles:  # Keys have opened it, so its first row is the one in another colour.
            self._desktop.driver.tap(DOWN)
            wait_until(lambda: observer.screenshot(strip) != picture, "the second row is selected")
            marks[rows[0]] = _marks_in(observer.painted(strip), rows)[rows[0]]
        self.close()
        return marks

    def _go_down(self, titles):
        for depth, title in enumerate(titles):
            self._select(titles[:depth], title)
            self._desktop.driver.tap(RIGHT_ARROW)
            self._wait_for(depth + 2)
        return self._rectangles()[-1]

    def _select(self, above, title):
        """Goes to a row of the menu below the rows `above`."""
        steps = [row for row in _rows_of(above) if row != SEPARATOR].index(title)
        if not above:  # A submenu that keys have opened begins at its first row, the menu nowhere.
            steps += 1
        self._desktop.driver.tap(*[DOWN] * steps)

    def _rectangles(self):
        return self._desktop.observer.popups()

    def _wait_for(self, count):
        return wait_until(lambda: len(self._rectangles()) == count and self._rectangles(),
                          f"{count} menus are open")


def _marks_in(picture, rows):
    """What is painted in a strip in front of each of the rows."""
    marks = dict.fromkeys(row for row in rows if row != SEPARATOR)
    for middle, ink in _inks(picture):
        marks[_row_at(rows, middle / picture.height)] = ink
    return marks


def _inks(picture):
    """What stands out from the background of a strip, but for lines: each thing's middle in y, and
    how it looks wherever it stands."""
    gray = picture.convert("L")
    background = max(gray.getcolors())[1]
    ink = gray.point(lambda value: abs(value - background))
    top = 0
    for y in range(ink.height + 1):
        if not ink.crop((0, y, ink.width, y + 1)).getbbox():
            if y - top > _LINE_HEIGHT:
                thing = ink.crop((0, top, ink.width, y))
                thing = thing.crop(thing.getbbox())
                yield (top + y) / 2, (thing.size, thing.tobytes())
            top = y + 1


def _rows_of(titles):
    return _SUBMENUS[titles[-1]] if titles else ROWS


def _row_at(rows, share):
    """The row that lies at this share of the menu's height."""
    separator = 0.1
    left = share * sum(separator if row == SEPARATOR else 1 for row in rows)
    for row in rows:
        left -= separator if row == SEPARATOR else 1
        if left < 0 and row != SEPARATOR:
            return row
    return rows[-1]
