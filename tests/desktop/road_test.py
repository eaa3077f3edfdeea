"""The main road under every window manager and compositor that Trovel is tried with."""

import hashlib

from harness.case import DesktopCase, chat_window
from harness.driver import CONTROL, ESCAPE, KEY_V, RETURN
from harness.session import Monitor
from harness.waiting import wait_until

WINDOW_MANAGERS = ("openbox", "xfwm4", "i3")
MONITORS = [Monitor("main", 640, 0, 640, 720, primary=True),
            Monitor("left", 0, 0, 640, 720, scale=1.5)]


class RoadTest(DesktopCase):
    def drive(self, window_manager, compositor):
        desktop = self.desktop(monitors=MONITORS, window_manager=window_manager,
                               compositor=compositor)
        desktop.paint()
        claude = self.claude(desktop, rectangle=(60, 60, 300, 300))
        self.chat(desktop, "Editor", rectangle=(700, 60, 300, 300))
        program = self.program(desktop, {"preferredAIApp": "Claude", "autoSendEnabled": True})
        expected = self.settled_screenshot(desktop, (100, 100, 350, 500))
        mark = self.select_and_mark(desktop, program, (100, 100), (450, 600))
        entry = wait_until(lambda: claude.entries("pasted"), "Claude pastes", 6)[0]
        png = desktop.clipboard.read("image/png")
        self.assertEqual(entry["picture"], hashlib.sha256(png).hexdigest())
        self.assert_same_picture(desktop.clipboard.picture(), expected,
                                 f"road-{window_manager}-{compositor}")
        x, y, width, height = desktop.observer.frame(claude.window("Claude"))
        click = [event for event in desktop.tap.since(mark) if event.kind == "button down"]
        self.assertEqual([(event.x, event.y) for event in click],
                         [(x + width // 2, y + height * 9 // 10)])
        self.assertEqual(claude.entries("button down")[-1]["detail"], 1)
        wait_until(lambda: claude.entries("key up")[-1]["detail"] == RETURN, "it is submitted")
        self.assertEqual([entry["detail"] for entry in claude.entries("key down")][-3:],
                         [CONTROL, KEY_V, RETURN])
        self.assert_at_rest(desktop, program)
        self.cancel(desktop, program)

    def cancel(self, desktop, program):
        active, cursor = desktop.observer.active_window(), desktop.observer.cursor()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assertEqual(desktop.observer.active_window(), active)
        wait_until(lambda: desktop.observer.cursor() == cursor, "the cursor is the old one")
        self.assert_at_rest(desktop, program)

    def test_the_road_without_a_compositor(self):
        for window_manager in WINDOW_MANAGERS:
            with self.subTest(window_manager):
                self.drive(window_manager, None)

    def test_the_road_under_picom(self):
        for window_manager in WINDOW_MANAGERS:
            with self.subTest(window_manager):
                self.drive(window_manager, "picom")

    def test_a_compositor_may_come_and_go_between_captures(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        desktop.start_target(chat_window("Window"))
        session = desktop.session
        for change in (lambda: session.start_compositor("picom"), session.stop_compositor):
            change()
            expected = self.settled_screenshot(desktop, (100, 100, 400, 300))
            self.assert_same_picture(program.capture((100, 100), (500, 400)), expected, "change")
            program.dismiss_alerts()
