"""The first minute with Trovel: from nothing to a picture in the chat."""

from harness.case import DesktopCase
from harness.driver import RETURN
from harness.setup_windows import (CARDS, CONTINUE, GET_STARTED, ONBOARDING, PERMISSIONS,
                                   setup_windows, wait_for_setup_window)
from harness.waiting import stays_true, wait_until

AREA = (60, 80, 400, 300)
QUIET = 0.5
WAYLAND = {"XDG_SESSION_TYPE": "wayland"}


class FirstRunTest(DesktopCase):
    def first_run(self, desktop, **options):
        """Starts the program without preferences; returns it and its first window."""
        program = self.program(desktop, None, **options)
        return program, wait_for_setup_window(desktop, program, ONBOARDING)

    def get_started(self, desktop, program, onboarding):
        onboarding.click(GET_STARTED)
        return wait_for_setup_window(desktop, program, PERMISSIONS)

    def assert_opens_nothing(self, program):
        self.assertTrue(stays_true(lambda: not program.windows(), QUIET))

    def test_from_the_first_start_to_a_picture_in_the_chat(self):
        desktop = self.desktop()
        desktop.paint()
        browser = desktop.start_browser()
        program, onboarding = self.first_run(desktop)
        self.assertEqual(desktop.preferences(), {})
        self.choose_a_card_and_press_return(desktop, program, onboarding)
        permissions = wait_for_setup_window(desktop, program, PERMISSIONS)
        self.assertEqual(desktop.preferences(), {"preferredAIApp": "Gemini"})
        permissions.click(CONTINUE)
        wait_until(lambda: not program.windows(), "the window is closed")
        wait_until(lambda: desktop.preferences().get("hasCompletedOnboarding"), "it is done")
        self.assertEqual(program.terminate(), 0)

        program = self.program(desktop, None)
        self.assert_opens_nothing(program)
        mark = browser.page.mark()
        expected = desktop.observer.screenshot(AREA)
        program.select(AREA[:2], (AREA[0] + AREA[2], AREA[1] + AREA[3]))
        self.assert_same_picture(browser.page.wait_for_picture(mark), expected, "first-run")
        self.assert_at_rest(desktop, program)

    def choose_a_card_and_press_return(self, desktop, program, onboarding):
        x, y, width, height = onboarding.frame
        self.assertEqual((width, height), ONBOARDING)
        self.assertAlmostEqual(x + width / 2, desktop.size[0] / 2, delta=2)
        above, below = y, desktop.size[1] - y - height
        self.assertTrue(0 < above <= below + 40, "in the middle, or a little above it")
        onboarding.click(onboarding.tile(CARDS.index("Gemini")))
        self.assertEqual(desktop.preferences(), {}, "nothing is stored before the button")
        desktop.driver.press(RETURN)
        wait_until(lambda: not setup_windows(desktop, program, ONBOARDING), "it is closed")

    def test_return_at_once_chooses_claude(self):
        desktop = self.desktop()
        program, _ = self.first_run(desktop)
        desktop.driver.press(RETURN)
        wait_for_setup_window(desktop, program, PERMISSIONS)
        self.assertEqual(desktop.preferences(), {"preferredAIApp": "Claude"})

    def test_windows_closed_by_their_title_bars_come_back_at_the_next_start(self):
        desktop = self.desktop()
        program, onboarding = self.first_run(desktop)
        onboarding.click(onboarding.tile(1))
        onboarding.close()
        wait_until(lambda: not program.windows(), "the window is closed")
        self.assertEqual(desktop.preferences(), {})
        self.assertEqual(program.terminate(), 0)
        program, onboarding = self.first_run(desktop)
        self.get_started(desktop, program, onboarding).close()
        wait_until(lambda: not program.windows(), "the window is closed")
        self.assertEqual(program.terminate(), 0)
        self.assertEqual(desktop.preferences(), {"preferredAIApp": "Claude"})
        self.first_run(desktop)

    def test_a_capture_may_be_taken_over_the_open_window(self):
        desktop = self.desktop()
        desktop.paint()
        claude = self.claude(desktop, rectangle=(20, 20, 300, 300))
        program, onboarding = self.first_run(desktop)
        x, y, _, _ = onboarding.frame
        self.settled_screenshot(desktop, onboarding.frame)
        expected = self.settled_screenshot(desktop, (x - 20, y + 30, 100, 80))
        self.assert_same_picture(program.capture((x - 20, y + 30), (x + 80, y + 110)), expected)
        wait_until(lambda: claude.entries("pasted"), "Claude pastes", 6)
        self.assertEqual(len(setup_windows(desktop, program, ONBOARDING)), 1)

    def test_without_the_grants_the_hotkey_brings_the_one_permissions_window(self):
        desktop = self.desktop()
        program, onboarding = self.first_run(desktop, environment=WAYLAND)
        permissions = self.get_started(desktop, program, onboarding)
        self.chat(desktop, "Editor", rectangle=(20, 20, 300, 300))
        desktop.driver.press_hotkey()
        again = wait_for_setup_window(desktop, program, PERMISSIONS)
        self.assertEqual(again.native.id, permissions.native.id)
        self.assertEqual(len(program.alerts()), 1)
        self.assertEqual(program.overlays(), [])
        again.click(CONTINUE)
        desktop.driver.press(RETURN)
        self.assertTrue(stays_true(again.has_keyboard, QUIET), "it cannot be continued")
        self.assertEqual(desktop.preferences(), {"preferredAIApp": "Claude"})
