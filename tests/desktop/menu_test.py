"""The status menu: in both kinds of tray, without one, and never in the picture."""

import os
import shutil
import time

from PIL import Image

from harness import pattern
from harness.case import DesktopCase, save_picture
from harness.driver import ESCAPE, LEFT, RIGHT
from harness.menu import StatusMenu
from harness.program import write_preferences
from harness.session import Monitor
from harness.waiting import stays_true, wait_until
from harness.x11.trays import NotifierHost, SystemTray

# The menu's rows by their place, each with the separators above it.
TROVEL, AUTO_SEND, ABOUT, QUIT = (0, 0), (5, 1), (10, 2), (11, 3)
ROWS, SEPARATORS = 12, 3
SEPARATOR_HEIGHT = 0.1  # of a row's
QUIET = 0.5


class MenuTest(DesktopCase):
    def wait_for_no_menu(self, desktop):
        wait_until(lambda: not desktop.observer.popups(), "the menu is gone")

    def row(self, menu, place):
        """The middle of a row of the menu."""
        x, y, width, height = menu
        index, separators = place
        row_height = height / (ROWS + SEPARATORS * SEPARATOR_HEIGHT)
        return (x + width // 3,
                int(y + row_height * (index + 0.5 + separators * SEPARATOR_HEIGHT)))

    def choose(self, desktop, menu, place):
        desktop.driver.click(self.row(menu, place))

    def close_menu(self, desktop):
        desktop.driver.press(ESCAPE)
        self.wait_for_no_menu(desktop)

    def has_auto_send(self, desktop):
        return desktop.preferences().get("autoSendEnabled", False)

    def start_trayer(self, desktop):
        tray = SystemTray(desktop)
        tray.wait_for_icon()
        return tray

    # The System Tray protocol

    def test_left_and_right_clicks_open_the_menu_in_a_system_tray(self):
        desktop = self.desktop()
        self.program(desktop)
        tray = self.start_trayer(desktop)
        for button, expected in ((LEFT, True), (RIGHT, False)):
            menu = tray.open_menu(button)
            self.choose(desktop, menu, AUTO_SEND)
            self.wait_for_no_menu(desktop)
            wait_until(lambda: self.has_auto_send(desktop) == expected, "auto send is toggled")
        self.assert_at_rest(desktop)

    def test_the_icon_comes_back_with_the_system_tray(self):
        desktop = self.desktop()
        self.program(desktop)
        tray = self.start_trayer(desktop)
        tray.close()
        tray = self.start_trayer(desktop)
        tray.open_menu()
        self.close_menu(desktop)

    def assert_menu_not_in_picture(self, compositor):
        desktop = self.desktop(compositor=compositor)
        picture = pattern.unique_pixels(*desktop.size)
        desktop.paint(picture)
        program = self.program(desktop)
        tray = self.start_trayer(desktop)
        menu = tray.open_menu()
        desktop.clipboard.clear()
        self.choose(desktop, menu, TROVEL)
        wait_until(lambda: [each for each in program.overlays() if each[2] == desktop.size[0]],
                   "the overlay is up")
        left, top = menu[0] - 20, menu[1] + 40
        right, bottom = menu[0] + menu[2] // 2, menu[1] + menu[3] + 20
        desktop.driver.drag((left, top), (right, bottom))
        taken = program.wait_for_picture()
        self.assertGreater(taken.size[0], 100)
        self.assert_same_picture(taken, picture.crop((left, top, left + taken.size[0],
                                                      top + taken.size[1])), "menu-in-picture")
        program.dismiss_alerts()

    def test_a_capture_started_from_the_menu_does_not_show_it(self):
        self.assert_menu_not_in_picture(None)

    def test_nor_does_it_under_a_compositor(self):
        self.assert_menu_not_in_picture("picom")

    def test_it_opens_beside_its_icon_and_looks_so(self):
        desktop = self.desktop(monitors=[Monitor("main", 0, 0, 1280, 720, 1.5, primary=True)])
        desktop.paint(Image.new("RGB", desktop.size, (88, 112, 140)))
        self.program(desktop, {"preferredAIApp": "Claude", "autoSendEnabled": True,
                               "terminalModeEnabled": True, "terminalModeTarget": 1})
        menu = StatusMenu(desktop, self.start_trayer(desktop))
        submenu = menu.enter("Terminal Mode")
        menus = desktop.observer.popups()
        left, bottom = submenu[0] - 40, max(y + height for _, y, _, height in menus) + 40
        width, _ = desktop.size
        save_picture(desktop.observer.settled((left, 0, width - left, bottom)), "menu")
        menu.close()

    # The StatusNotifierItem protocol

    def test_a_panel_that_shows_the_menu_itself_never_shows_an_old_checkmark(self):
        desktop = self.desktop(with_bus=True)
        self.program(desktop)
        menu = StatusMenu(desktop, NotifierHost(desktop), RIGHT)
        unchecked = menu.marks()["Auto Send"]
        menu.choose("Auto Send")
        wait_until(lambda: self.has_auto_send(desktop), "auto send is toggled")
        checked = menu.marks()["Auto Send"]
        self.assertNotEqual(checked, unchecked)
        # Somebody else changes it: the first look must be right.
        for expected in (False, True):
            write_preferences(desktop.preferences_path + ".new", {"autoSendEnabled": expected})
            shutil.move(desktop.preferences_path + ".new", desktop.preferences_path)
            time.sleep(QUIET)
            self.assertEqual(menu.marks()["Auto Send"] == checked, expected)

    def test_a_left_click_opens_the_menu_there_too_and_the_icon_survives_a_restart(self):
        desktop = self.desktop(with_bus=True)
        self.program(desktop)
        panel = NotifierHost(desktop)
        panel.open_menu()
        self.close_menu(desktop)
        panel.close()
        panel = NotifierHost(desktop)
        menu = panel.open_menu()
        self.choose(desktop, menu, AUTO_SEND)
        wait_until(lambda: self.has_auto_send(desktop), "auto send is toggled")

    # No tray

    def test_without_a_tray_a_second_start_shows_the_menu_at_the_pointer(self):
        desktop = self.desktop()
        program = self.program(desktop)
        desktop.driver.move((400, 200))
        second = desktop.processes.start("second", os.environ["TROVEL_BINARY"])
        menu = desktop.observer.wait_for_menu()
        self.assertEqual(second.wait(3), 0)
        self.assertLessEqual(abs(menu[0] - 400) + abs(menu[1] - 200), 4)
        self.close_menu(desktop)
        self.assertTrue(stays_true(lambda: not desktop.observer.popups(), QUIET))
        desktop.processes.run(os.environ["TROVEL_BINARY"])
        self.choose(desktop, desktop.observer.wait_for_menu(), QUIT)
        self.assertEqual(program.wait(), 0)

    def test_a_second_start_during_a_selection_disturbs_nothing(self):
        desktop = self.desktop()
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.processes.run(os.environ["TROVEL_BINARY"])
        self.assertTrue(stays_true(lambda: not desktop.observer.popups(), 1.5))
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assert_at_rest(desktop, program)
