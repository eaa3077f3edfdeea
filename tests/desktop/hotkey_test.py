"""The hotkey as a user's keyboard presses it."""

import time

from Xlib import X

from harness import driver
from harness.case import DesktopCase
from harness.driver import ALT, CAPS_LOCK, ESCAPE, HOTKEY, KEY_2, NUM_LOCK, SUPER
from harness.waiting import stays_true, wait_until
from harness.x11.observer import HOTKEY_MODIFIERS, XObserver

KEY_F1, KEY_A = 67, 38
LOCKS = [X.LockMask, X.Mod2Mask, X.LockMask | X.Mod2Mask]


class HotkeyTest(DesktopCase):
    def press_and_cancel(self, desktop, program, keys=HOTKEY):
        desktop.driver.press(*keys)
        program.wait_for_overlay()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assert_at_rest(desktop, program)

    def test_a_press_opens_the_overlay_and_escape_closes_it(self):
        desktop = self.desktop()
        program = self.program(desktop)
        for _ in range(3):
            self.press_and_cancel(desktop, program)

    def test_a_press_works_with_num_lock_and_caps_lock_on(self):
        desktop = self.desktop()
        program = self.program(desktop)
        for locks in ([NUM_LOCK], [CAPS_LOCK], [NUM_LOCK, CAPS_LOCK]):
            with self.subTest(locks=locks):
                for lock in locks:
                    desktop.driver.press(lock)
                self.assertTrue(desktop.observer.root.query_pointer().mask & LOCKS[-1])
                self.press_and_cancel(desktop, program)
                for lock in locks:
                    desktop.driver.press(lock)

    def test_a_press_works_in_other_layouts(self):
        for layout in ("de", "fr", "dvorak", "ru"):
            with self.subTest(layout=layout):
                desktop = self.desktop()
                desktop.session.server.set_layout(layout)
                self.press_and_cancel(desktop, self.program(desktop))

    def test_a_press_works_in_the_second_layout(self):
        desktop = self.desktop()
        desktop.session.server.set_layout("us,ru", active=1)
        program = self.program(desktop)
        self.press_and_cancel(desktop, program)

    def test_a_press_works_after_the_layout_has_changed(self):
        desktop = self.desktop()
        program = self.program(desktop)
        for layout in ("fr", "ru", "us,de", "us"):
            with self.subTest(layout=layout):
                desktop.session.server.set_layout(layout)
                self.press_and_cancel(desktop, program)

    def test_a_recorded_key_replaces_the_usual_one(self):
        desktop = self.desktop()
        control_and_option_f1 = {"hotkeyIsCustom": True, "hotkeyKeyCode": 122,
                                 "hotkeyModifiers": 0x1800}
        program = self.program(desktop, control_and_option_f1, wait=False)
        wait_until(lambda: desktop.observer.is_key_taken(KEY_F1, X.Mod1Mask | X.Mod4Mask),
                   "the recorded key is taken", 10)
        self.assertFalse(desktop.observer.is_hotkey(*HOTKEY))
        self.press_and_cancel(desktop, program, (SUPER, ALT, KEY_F1))

    def test_stored_numbers_count_for_nothing_until_a_key_was_recorded(self):
        desktop = self.desktop()
        program = self.program(desktop, {"hotkeyIsCustom": False, "hotkeyKeyCode": 122,
                                         "hotkeyModifiers": 0x1800})
        self.press_and_cancel(desktop, program)

    def test_only_the_whole_combination_is_taken(self):
        desktop = self.desktop()
        self.program(desktop)
        for modifiers in (0, X.ControlMask, X.ShiftMask, HOTKEY_MODIFIERS | X.Mod1Mask):
            self.assertFalse(desktop.observer.is_key_taken(KEY_2, modifiers))
        for locks in LOCKS:
            self.assertTrue(desktop.observer.is_key_taken(KEY_2, HOTKEY_MODIFIERS | locks))

    def test_the_key_is_free_again_after_the_end(self):
        desktop = self.desktop()
        program = self.program(desktop)
        self.assertEqual(program.terminate(), 0)
        for locks in [0, *LOCKS]:
            self.assertFalse(desktop.observer.is_key_taken(KEY_2, HOTKEY_MODIFIERS | locks))

    def test_a_held_key_is_one_press(self):
        desktop = self.desktop()
        desktop.processes.run("xset", "r", "rate", "150", "40")
        program = self.program(desktop)
        mark = desktop.tap.mark()
        desktop.driver.hold(*HOTKEY)
        program.wait_for_overlay()
        desktop.driver.click((300, 300), driver.RIGHT)
        program.wait_for_no_overlay()
        wait_until(lambda: len(desktop.tap.since(mark)) > 20, "the held key repeats")
        self.assertTrue(stays_true(lambda: not program.overlays(), 0.5))
        desktop.driver.release(*reversed(HOTKEY))
        self.press_and_cancel(desktop, program)

    def test_a_second_press_while_the_overlay_is_up_is_dropped(self):
        desktop = self.desktop()
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        windows = [window.id for window in desktop.observer.windows_of(program.pid)]
        desktop.driver.press_hotkey()
        self.assertTrue(stays_true(
            lambda: [window.id for window in desktop.observer.windows_of(program.pid)] == windows,
            0.3))
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assertTrue(stays_true(lambda: not program.windows(), 0.4))
        self.assert_at_rest(desktop, program)

    def test_two_quick_presses_open_one_overlay(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        presses = ["keydown", HOTKEY[0], "keydown", HOTKEY[1], *["key", KEY_2] * 2,
                   "keyup", HOTKEY[1], "keyup", HOTKEY[0]]
        desktop.processes.run("xdotool", *presses)
        self.assertEqual(program.wait_for_overlay(), [(0, 0, *desktop.size)])
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assertTrue(stays_true(lambda: not program.windows(), 0.4))
        self.assert_at_rest(desktop, program)

    def test_a_press_while_an_alert_is_up_gives_an_overlay_that_can_be_dismissed(self):
        desktop = self.desktop()
        program = self.program(desktop)
        program.select((200, 200), (400, 300))
        alert = program.wait_for_alert()
        self.press_and_cancel(desktop, program)
        self.assertIn(alert.id, [window.id for window in program.alerts()])
        program.dismiss_alerts()
        self.press_and_cancel(desktop, program)

    def test_a_capture_while_an_alert_is_up_is_delivered(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        program.select((200, 200), (400, 300))
        program.wait_for_alert()
        self.assertEqual(program.capture((10, 10), (50, 40)).size, (40, 30))
        program.dismiss_alerts(2)

    def test_a_key_that_another_program_has_leaves_trovel_running_without_one(self):
        for taken in (HOTKEY_MODIFIERS, HOTKEY_MODIFIERS | X.Mod2Mask):
            with self.subTest(taken=taken):
                desktop = self.desktop()
                other = XObserver(desktop.session.server.display)
                other.root.grab_key(KEY_2, taken, False, X.GrabModeAsync, X.GrabModeAsync)
                other.display.sync()
                program = self.program(desktop, wait=False)
                self.assertTrue(stays_true(program.is_running, 1))
                free = [locks for locks in [0, *LOCKS] if HOTKEY_MODIFIERS | locks != taken]
                for locks in free:
                    self.assertFalse(
                        desktop.observer.is_key_taken(KEY_2, HOTKEY_MODIFIERS | locks))
                desktop.driver.press_hotkey()
                self.assertTrue(stays_true(lambda: not program.windows(), 0.2))
                other.close()

    def test_the_frontmost_application_does_not_see_the_key(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        program = self.program(desktop)
        desktop.driver.press(KEY_A)
        wait_until(lambda: target.entries("key up"), "the target has the keyboard")
        self.press_and_cancel(desktop, program)
        time.sleep(0.1)
        self.assertNotIn(KEY_2, [entry["detail"] for entry in target.entries("key down")])
        self.assertNotIn(ESCAPE, [entry["detail"] for entry in target.entries("key down")])
