"""The end of the program at every step: asked for, or because the X server went away."""

import signal

from harness.case import DesktopCase, chat_window
from harness.driver import HOTKEY
from harness.waiting import stays_true, wait_until

START, END = (500, 450), (700, 600)


class TerminationTest(DesktopCase):
    """SIGTERM at each step: a quick end with 0, and nothing stays held, grabbed or on screen."""

    def terminate(self, prepare, window_manager="openbox"):
        desktop = self.desktop(window_manager=window_manager)
        self.chat(desktop, "Editor", rectangle=(100, 80, 300, 300))
        desktop.install_application("claude", "Claude", "Claude")
        target = desktop.start_target(chat_window("Claude", rectangle=(550, 80, 300, 300)))
        program = desktop.start_program({"autoSendEnabled": True, "preferredAIApp": "Claude"})
        desktop.clipboard.clear()
        prepare(desktop, program, target)
        self.assertEqual(program.terminate(), 0)
        mark = desktop.tap.mark()
        self.assertEqual(program.messages(), "")
        desktop.driver.button_up()
        self.assert_at_rest(desktop)
        self.assertEqual(desktop.observer.windows_of(program.pid), [])
        self.assertFalse(desktop.observer.is_hotkey(*HOTKEY))
        self.assertTrue(stays_true(
            lambda: {event.kind for event in desktop.tap.since(mark)} <= {"button up"}, 1.2))

    def test_while_idle(self):
        self.terminate(lambda desktop, program, target: None)

    def test_by_the_interrupt_key(self):
        desktop = self.desktop()
        program = desktop.start_program()
        program.process.send_signal(signal.SIGINT)
        self.assertEqual(program.wait(), 0)

    def test_right_after_the_start(self):
        desktop = self.desktop()
        for _ in range(5):
            program = desktop.start_program(wait=False)
            self.assertIn(program.terminate(), (0, -signal.SIGTERM))
            self.assertEqual(program.messages(), "")

    def test_while_the_overlay_is_up(self):
        def prepare(desktop, program, target):
            desktop.driver.press_hotkey()
            program.wait_for_overlay()
        self.terminate(prepare)

    def test_in_mid_drag(self):
        def prepare(desktop, program, target):
            desktop.driver.press_hotkey()
            program.wait_for_overlay()
            desktop.driver.drag(START, END, release=False)
        self.terminate(prepare)

    def test_during_the_capture(self):
        self.terminate(lambda desktop, program, target: program.select(START, END))

    def test_while_waiting_for_the_target(self):
        self.terminate(lambda desktop, program, target: program.capture(START, END), "stubborn")

    def test_before_the_click(self):
        def prepare(desktop, program, target):
            program.select(START, END)
            wait_until(lambda: target.is_active("Claude"), "Claude is in front")
        self.terminate(prepare)

    def test_between_click_and_paste(self):
        def prepare(desktop, program, target):
            program.select(START, END)
            wait_until(lambda: target.entries("button up"), "Claude is clicked")
        self.terminate(prepare)

    def test_between_paste_and_return(self):
        def prepare(desktop, program, target):
            program.select(START, END)
            wait_until(lambda: target.entries("pasted"), "Claude pastes")
        self.terminate(prepare)

    def test_while_an_alert_is_up(self):
        def prepare(desktop, program, target):
            target.kill()
            program.select(START, END)
            program.wait_for_alert()
        self.terminate(prepare)

    def test_while_an_overlay_is_up_over_an_alert(self):
        def prepare(desktop, program, target):
            target.kill()
            program.select(START, END)
            program.wait_for_alert()
            desktop.driver.press_hotkey()
            program.wait_for_overlay()
        self.terminate(prepare)


class LostServerTest(DesktopCase):
    """The connection to the X server breaks; the program must end by itself, without a crash."""

    def lose(self, prepare):
        desktop = self.desktop()
        self.claude(desktop)
        program = desktop.start_program()
        prepare(desktop, program)
        desktop.session.server.kill()
        status = program.wait(5)
        self.assertIn(status, (0, 1), program.messages())
        self.assertLessEqual(len(program.messages().splitlines()), 3, program.messages())

    def test_while_idle(self):
        self.lose(lambda desktop, program: None)

    def test_while_the_overlay_is_up(self):
        def prepare(desktop, program):
            desktop.driver.press_hotkey()
            program.wait_for_overlay()
        self.lose(prepare)

    def test_in_mid_drag(self):
        def prepare(desktop, program):
            desktop.driver.press_hotkey()
            program.wait_for_overlay()
            desktop.driver.drag(START, END, release=False)
        self.lose(prepare)

    def test_in_mid_capture(self):
        def prepare(desktop, program):
            program.select((0, 0), (1279, 719), steps=1)
        self.lose(prepare)

    def test_while_the_target_comes_to_the_front(self):
        def prepare(desktop, program):
            program.capture(START, END)
        self.lose(prepare)

    def test_when_only_its_own_connection_is_closed(self):
        desktop = self.desktop()
        program = desktop.start_program()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        overlay, = desktop.observer.windows_of(program.pid)
        overlay.kill_client()
        desktop.observer.display.sync()
        self.assertIn(program.wait(5), (0, 1), program.messages())
        self.assert_at_rest(desktop)

    def test_while_an_alert_is_up(self):
        desktop = self.desktop()
        program = desktop.start_program()
        program.select(START, END)
        program.wait_for_alert()
        desktop.session.server.kill()
        self.assertIn(program.wait(5), (0, 1), program.messages())
