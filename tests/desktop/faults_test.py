"""What the program does when its surroundings are broken or hostile."""

import os
import subprocess

from Xlib import X

from harness.case import DesktopCase, chat_window
from harness.driver import ESCAPE, HOTKEY, RIGHT
from harness.session import Monitor
from harness.waiting import stays_true, wait_until
from harness.x11.observer import XObserver

START, END, AREA = (500, 450), (700, 600), (500, 450, 200, 150)
MEBIBYTE = 1 << 20
TWO_MONITORS = [Monitor("main", 0, 0, 640, 720, primary=True), Monitor("right", 640, 0, 640, 720)]


class SurroundingsTest(DesktopCase):
    """Parts of the desktop that are missing."""

    def test_without_an_x_server_it_says_so_and_ends(self):
        desktop = self.desktop(window_manager=None)
        for display in (":9999", "", "nonsense"):
            with self.subTest(display=display):
                done = subprocess.run(
                    [os.environ["TROVEL_BINARY"]], timeout=10, check=False, capture_output=True,
                    text=True, env={**desktop.processes.environment, "DISPLAY": display})
                self.assertEqual(done.returncode, 1)
                self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)

    def test_without_test_devices_a_press_starts_nothing(self):
        host = self.desktop(size=(900, 700), window_manager=None)
        desktop = self.desktop(size=(800, 600), without_extensions=("XTEST",), host=host)
        self.assertNotIn("XTEST", desktop.observer.display.list_extensions())
        program = self.program(desktop)
        host.driver.move((400, 300))
        host.driver.hold(*HOTKEY)
        wait_until(lambda: desktop.observer.held_keys() == sorted(HOTKEY), "the keys are down")
        self.assertTrue(stays_true(lambda: not program.overlays(), 0.5))
        host.driver.release(*HOTKEY)
        self.assertTrue(program.is_running())
        self.assertTrue(desktop.observer.is_input_free())

    def test_in_a_wayland_session_a_press_starts_nothing(self):
        desktop = self.desktop()
        program = self.program(desktop, environment={"XDG_SESSION_TYPE": "wayland"})
        desktop.driver.press_hotkey()
        self.assertTrue(stays_true(lambda: not program.overlays(), 0.5))
        self.assert_at_rest(desktop, program)

    def test_without_a_window_manager_the_picture_is_copied_and_an_alert_shown(self):
        desktop = self.desktop(window_manager=None)
        desktop.paint()
        program = self.program(desktop)
        expected = desktop.observer.screenshot(AREA)
        self.assert_same_picture(program.capture(START, END), expected, "no-manager")
        wait_until(program.windows, "the alert is up")
        desktop.driver.press_hotkey()
        wait_until(lambda: (0, 0, *desktop.size) in program.overlays(), "the overlay is up")
        desktop.driver.click((20, 20), RIGHT)
        wait_until(lambda: (0, 0, *desktop.size) not in program.overlays(), "the overlay is gone")
        self.assertTrue(desktop.observer.is_input_free())

    def test_without_shared_memory_the_picture_is_the_same(self):
        for scale in (1, 1.75):
            with self.subTest(scale=scale):
                monitor = Monitor("main", 0, 0, 1280, 720, scale=scale, primary=True)
                desktop = self.desktop(monitors=[monitor], without_extensions=("MIT-SHM",))
                self.assertNotIn("MIT-SHM", desktop.observer.display.list_extensions())
                desktop.paint()
                program = self.program(desktop)
                for start, end, area in ((START, END, AREA),
                                         ((0, 0), (1279, 719), (0, 0, 1280, 720))):
                    expected = desktop.observer.screenshot(area)
                    self.assert_same_picture(program.capture(start, end), expected, "no-shm")
                    program.dismiss_alerts()

    def test_a_test_bundles_process_runs_without_a_hotkey(self):
        for variable in ("XCTestBundlePath", "XCTestConfigurationFilePath"):
            with self.subTest(variable):
                desktop = self.desktop()
                program = self.program(desktop, environment={variable: ""}, wait=False)
                self.assertTrue(stays_true(program.is_running, 0.7))
                self.assertFalse(desktop.observer.is_hotkey(*HOTKEY))

    def test_a_keyboard_that_another_program_keeps_is_no_trap(self):
        desktop = self.desktop()
        program = self.program(desktop)
        other = XObserver(desktop.session.server.display)
        other.root.grab_pointer(False, 0, X.GrabModeAsync, X.GrabModeAsync, 0, 0, X.CurrentTime)
        other.display.sync()
        desktop.driver.press_hotkey()
        self.assertTrue(stays_true(program.is_running, 1.5))
        other.display.ungrab_pointer(X.CurrentTime)
        other.display.sync()
        other.close()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assert_at_rest(desktop, program)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()


class SecondStartTest(DesktopCase):
    def test_a_second_start_opens_the_firsts_menu_and_ends_quietly(self):
        desktop = self.desktop()
        program = self.program(desktop)
        second = desktop.start_program(wait=False)
        self.assertEqual(second.wait(5), 0)
        self.assertEqual(second.messages(), "")
        desktop.observer.wait_for_menu()
        desktop.driver.press(ESCAPE)
        wait_until(lambda: not desktop.observer.popups(), "the menu is gone")
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        third = desktop.start_program(wait=False)
        self.assertEqual(third.wait(5), 0)
        self.assertEqual(len(program.overlays()), 1)
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assert_at_rest(desktop, program)

    def test_after_a_crash_the_next_start_works(self):
        desktop = self.desktop()
        first = desktop.start_program()
        desktop.driver.press_hotkey()
        first.wait_for_overlay()
        first.process.kill()
        first.wait()
        wait_until(desktop.observer.is_input_free, "the grabs are gone")
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()


class UnpluggedScreenTest(DesktopCase):
    """A monitor goes away while the overlay covers it."""

    def unplug(self):
        desktop = self.desktop(monitors=TWO_MONITORS, with_bus=True)
        desktop.paint()
        program = self.program(desktop)
        desktop.clipboard.clear()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.session.server.remove_monitor(TWO_MONITORS[1])
        return desktop, program

    def test_a_drag_on_the_lost_screen_copies_nothing_and_says_so(self):
        desktop, program = self.unplug()
        desktop.driver.drag((800, 200), (1000, 400))
        program.wait_for_alert()
        wait_until(lambda: "Could not find the target display." in program.spoken_texts(),
                   "the alert says it")
        self.assertFalse(desktop.clipboard.owner())
        program.dismiss_alerts()
        self.assert_at_rest(desktop, program)

    def test_a_drag_on_the_other_screen_is_captured(self):
        desktop, program = self.unplug()
        desktop.driver.drag((100, 200), (300, 400))
        picture = program.wait_for_picture()
        program.dismiss_alerts()
        expected = desktop.observer.screenshot((100, 200, 200, 200))
        self.assert_same_picture(picture, expected, "unplugged")

    def test_it_can_be_cancelled_and_the_next_overlay_covers_what_is_there(self):
        desktop, program = self.unplug()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assert_at_rest(desktop, program)
        desktop.driver.press_hotkey()
        self.assertEqual(program.wait_for_overlay(count=1), [TWO_MONITORS[0].rectangle])
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()

    def test_a_screen_that_comes_while_the_overlay_is_up_is_covered_next_time(self):
        desktop = self.desktop(monitors=TWO_MONITORS)
        desktop.session.server.remove_monitor(TWO_MONITORS[1])
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay(count=1)
        desktop.session.server.add_monitor(TWO_MONITORS[1])
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        desktop.driver.press_hotkey()
        program.wait_for_overlay(count=2)
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()


class HostileNameTest(DesktopCase):
    """Applications whose names were made to hurt."""

    def deliver(self, name):
        desktop = self.desktop()
        desktop.install_application("tool", name, "Tool")
        target = desktop.start_target(chat_window("Tool", rectangle=(100, 80, 300, 300)))
        self.chat(desktop, "Editor", rectangle=(550, 80, 300, 300))
        self.capture_for(desktop, target)

    def capture_for(self, desktop, target):
        program = self.program(desktop, {
            "preferredAIApp": "Mine", "customAppName": "Mine", "customAppBundleID": "tool.desktop"})
        self.select_and_mark(desktop, program)
        wait_until(lambda: target.entries("pasted"), "the tool pastes", 6)
        self.assertTrue(program.is_running())

    def test_quotes_newlines_and_statements_are_only_a_name(self):
        for name in ('Say "hi" to activate', 'a\\nb', 'a\\\\b', '" & do shell script "x', "%s%n",
                     "<b>bold</b>", "\u202eesrever", "'", "\t"):
            with self.subTest(name=name):
                self.deliver(name)

    def test_a_name_of_a_megabyte_is_a_name(self):
        self.deliver("x" * MEBIBYTE)
        self.deliver("\u20ac" * (MEBIBYTE // 3))

    def test_a_title_of_a_megabyte_with_a_quote_is_nothing_to_it(self):
        desktop = self.desktop(window_manager="stubborn")  # The others draw all of it.
        desktop.install_application("tool", "Tool", "Tool")
        target = desktop.start_target(chat_window("Tool", shown='"' * MEBIBYTE))
        self.capture_for(desktop, target)

    def test_a_window_class_that_is_huge_or_broken_is_an_application_too(self):
        for window_class in ("x" * 60_000, 'Quo"te\nnew', "\u00ff\u00fe"):
            with self.subTest(window_class=window_class[:10]):
                desktop = self.desktop()
                desktop.start_target(chat_window("Odd", window_class))
                claude = self.claude(desktop, rectangle=(550, 80, 300, 300))
                program = self.program(desktop)
                self.select_and_mark(desktop, program)
                wait_until(lambda: claude.entries("pasted"), "Claude pastes", 6)
