"""Every row of the status menu, chosen by hand in both kinds of tray, and what comes of it."""

import os
import shutil

from harness.captures import Captures
from harness.case import DesktopCase
from harness.desktop import Desktop
from harness.driver import LEFT, RIGHT
from harness.menu import StatusMenu
from harness.processes import own_mounts
from harness.program import DEFAULTS
from harness.waiting import wait_until
from harness.x11.trays import NotifierHost, SystemTray

BELOW_PANEL = 40
UPDATES = ("It does not look for new versions by itself. They are published at {} for you to "
           "install in place of this one.")
ABOUT = ("Screenshot to AI in one keystroke. Capture a region and send it directly to Claude, "
         "ChatGPT, Gemini, or Perplexity.")


class MenuRows(DesktopCase):
    """The tests, for classes that know their trays."""

    Panel, button = SystemTray, LEFT

    @classmethod
    def setUpClass(cls):
        cls.shared = Desktop(with_bus=True)
        cls.addClassCleanup(cls.shared.close)
        cls.shared.paint()
        cls.panel = cls.Panel(cls.shared)
        cls.opened = os.path.join(cls.shared.folder, "opened")
        install_opener(os.path.join(cls.shared.folder, "bin"), cls.opened)

    def start(self, preferences=DEFAULTS, **options):
        path = os.path.join(self.shared.folder, "bin") + ":" + os.environ["PATH"]
        program = self.program(self.shared, preferences, environment={"PATH": path}, **options)
        self.panel.wait_for_icon()
        self.menu = StatusMenu(self.shared, self.panel, self.button)
        self.addCleanup(self.panel.wait_for_no_icon)
        self.addCleanup(program.terminate)
        return program

    def wait_for_preferences(self, **expected):
        """Waits until these are stored, whatever else is."""
        wait_until(lambda: expected.items() <= self.shared.preferences().items(), str(expected))

    def checked(self, *titles):
        """The titles with a checkmark in the menu, or in that submenu of it."""
        return [title for title, mark in self.menu.marks(*titles).items() if mark == self.checkmark]

    def learn_checkmark(self):
        """One of the terminal targets is always checked; while the mode is off it is "Off"."""
        marks = self.menu.marks("Terminal Mode")
        self.checkmark = marks.pop("Off")
        self.assertNotIn(self.checkmark, marks.values())

    # Switches

    def test_the_switches_switch_and_show_it(self):
        self.start()
        entry = os.path.join(self.shared.folder, "config", "autostart", "trovel.desktop")
        self.learn_checkmark()
        self.assertEqual(self.checked(), [])
        self.menu.choose("Auto Send")
        self.wait_for_preferences(autoSendEnabled=True)
        self.assertEqual(self.checked(), ["Auto Send"])
        self.menu.choose("Launch at Login")
        wait_until(lambda: os.path.exists(entry), "it will be launched at login")
        self.assertEqual(self.checked(), ["Launch at Login", "Auto Send"])
        self.menu.choose("Auto Send")
        self.wait_for_preferences(autoSendEnabled=False)
        self.assertEqual(self.checked(), ["Launch at Login"])
        self.menu.choose("Launch at Login")
        wait_until(lambda: not os.path.exists(entry), "it will not be launched any more")
        self.assertEqual(self.checked(), [])

    def test_a_chosen_application_is_the_only_one_with_a_checkmark(self):
        self.start()
        self.learn_checkmark()
        self.assertEqual(self.checked("AI App"), [])
        self.menu.choose("AI App", "Perplexity")
        self.wait_for_preferences(preferredAIApp="Perplexity")
        self.assertEqual(self.checked("AI App"), ["Perplexity"])
        self.menu.choose("AI App", "Browser Mode", "Firefox")
        self.wait_for_preferences(preferredAIApp="Firefox")
        self.assertEqual(self.checked("AI App"), [])
        self.assertEqual(self.checked("AI App", "Browser Mode"), ["Firefox"])

    def test_the_terminal_targets_take_turns(self):
        self.start()
        self.learn_checkmark()
        for tag, title in ((1, "Frontmost App"), (2, "Terminal"), (3, "iTerm"), (4, "Warp"),
                           (5, "VS Code"), (6, "Cursor")):
            self.menu.choose("Terminal Mode", title)
            self.wait_for_preferences(terminalModeEnabled=True, terminalModeTarget=tag)
        self.assertEqual(self.checked("Terminal Mode"), ["Cursor"])
        self.menu.choose("Terminal Mode", "Off")
        self.wait_for_preferences(terminalModeEnabled=False, terminalModeTarget=0)
        self.assertEqual(self.checked("Terminal Mode"), ["Off"])

    # Windows, alerts, pages

    def test_three_rows_open_windows(self):
        program = self.start()
        for titles, text in ((("Permissions…",), "Screen Recording"),
                             (("Change Hotkey…",), "Change Hotkey"),
                             (("AI App", "Other…"), "Claude")):
            with self.subTest(titles[-1]):
                self.menu.choose(*titles)
                window = program.wait_for_alert()
                wait_until(lambda: text in program.spoken_texts(), "its texts are spoken")
                self.shared.observer.close_window(window)
                wait_until(lambda: not program.alerts(), "the window is closed")

    def test_about_and_updates_say_what_there_is_to_say(self):
        program = self.start()
        for title, texts in (("About Trovel", ["Trovel", "OK", ABOUT, "Current hotkey: ⌘⇧2"]),
                             ("Check for Updates…",
                              [UPDATES.format(os.environ["TROVEL_RELEASES_URL"]), "OK"])):
            with self.subTest(title):
                self.menu.choose(title)
                program.wait_for_alert()
                for text in texts:
                    wait_until(lambda: text in spoken(program), text)
                program.dismiss_alerts()

    def test_two_rows_open_addresses(self):
        self.start()
        for title, address in (
                ("What's New…", os.environ["TROVEL_CHANGELOG_URL"]),
                ("Help & Support…", "mailto:" + os.environ["TROVEL_SUPPORT_EMAIL"])):
            with self.subTest(title):
                self.menu.choose(title)
                wait_until(lambda: os.path.exists(self.opened), "something is opened")
                with open(self.opened, encoding="utf-8") as file:
                    self.assertEqual(file.read(), address + "\n")
                os.remove(self.opened)

    # The first row and the last

    def test_the_first_row_captures_what_was_there_before_the_menu(self):
        before = self.shared.observer.screenshot()
        captures = Captures(self.shared.processes.environment["HOME"])
        program = self.start({"terminalModeEnabled": True})
        x, y, width, height = self.menu.open()
        self.menu.close()
        self.menu.choose("Trovel")
        program.wait_for_overlay()
        start, end = (x + 5, max(y, BELOW_PANEL)), (x + width - 5, y + height - 5)
        self.shared.driver.drag(start, end)
        taken = captures.picture(captures.wait_for_new())
        self.assert_same_picture(taken, before.crop((*start, *end)), "menu-in-picture")

    def test_the_last_row_ends_the_program(self):
        program = self.start()
        self.menu.choose("Quit Trovel")
        self.assertEqual(program.wait(), 0)


class SystemTrayRowsTest(MenuRows):
    """The program paints the menu itself."""

    def test_a_login_item_that_cannot_be_made_is_explained_and_stays_unchecked(self):
        folder = os.path.join(self.shared.folder, "config", "autostart")
        shutil.rmtree(folder, ignore_errors=True)
        with open(folder, "w", encoding="utf-8"):
            pass
        self.addCleanup(os.remove, folder)
        program = self.start()
        self.learn_checkmark()
        self.menu.choose("Launch at Login")
        self.assert_alert(program, "Could not enable Launch at Login: Not a directory")
        self.assertEqual(self.checked(), [])

    def test_nor_does_one_that_cannot_be_removed_lose_its_checkmark(self):
        prefix = own_mounts(self.shared.processes)
        if not prefix:
            self.skipTest("this system lets nobody mount anything, not even for himself")
        entry = os.path.join(self.shared.folder, "config", "autostart", "trovel.desktop")
        os.makedirs(os.path.dirname(entry))
        self.addCleanup(shutil.rmtree, os.path.dirname(entry))
        with open(entry, "w", encoding="utf-8") as file:
            file.write(f"[Desktop Entry]\nType=Application\nExec={os.environ['TROVEL_BINARY']}\n")
        # A file that something is mounted on cannot be removed.
        program = self.start(wrapper=[*prefix, "sh", "-c",
                                      f'mount --bind "{entry}" "{entry}" && exec "$0"'])
        self.learn_checkmark()
        self.menu.choose("Launch at Login")
        self.assert_alert(program,
                          "Could not disable Launch at Login: Device or resource busy")
        self.assertEqual(self.checked(), ["Launch at Login"])

    def assert_alert(self, program, text):
        program.wait_for_alert()
        for each in ("Launch at Login", text, "OK"):
            wait_until(lambda: each in program.spoken_texts(), each)
        program.dismiss_alerts()


class NotifierRowsTest(MenuRows):
    """The panel paints the menu, and only tells what was chosen."""

    Panel, button = NotifierHost, RIGHT


del MenuRows  # The two above are all of its runs.


def install_opener(folder, path):
    """Writes a program that opens addresses: it notes in the file at `path` what it was given."""
    os.makedirs(folder)
    opener = os.path.join(folder, "xdg-open")
    with open(opener, "w", encoding="utf-8") as file:
        file.write(f"#!/bin/sh\nprintf '%s\\n' \"$@\" >'{path}.new' && mv '{path}.new' '{path}'\n")
    os.chmod(opener, 0o755)


def spoken(program):
    """What its windows say, without the places where a line may break."""
    return "\n".join(program.spoken_texts()).replace("\u200b", "")
