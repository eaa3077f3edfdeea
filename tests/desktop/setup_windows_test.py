"""The setup windows in daily use: recording a hotkey, choosing the application, the grants."""

import os
import signal

from harness.case import DesktopCase
from harness.driver import ALT, CONTROL, ESCAPE, HOTKEY, KEY_2, RETURN, SHIFT, SUPER
from harness.setup_windows import (CANCEL, CARDS, CHANGE_APP, CONTINUE, DONE,
                                   GRANT_ACCESSIBILITY, GRANT_SCREEN_RECORDING, PERMISSIONS,
                                   RECORDER, RESTART, open_change_app, open_permissions,
                                   open_recorder, wait_for_setup_window)
from harness.waiting import stays_true, wait_until

QUIET = 0.4
KEY_F1, KEY_3 = 67, 12
OTHER_HOTKEY = (SUPER, ALT, KEY_F1)
WAYLAND = {"XDG_SESSION_TYPE": "wayland"}


class SetupWindowsCase(DesktopCase):
    def open(self, desktop, program, opener, size):
        opener(desktop)
        window = wait_for_setup_window(desktop, program, size)
        self.settled_screenshot(desktop, window.frame)
        return window

    def wait_for_no_window(self, program):
        wait_until(lambda: not program.windows(), "the window is closed")

    def press_and_cancel(self, desktop, program, keys):
        desktop.driver.press(*keys)
        program.wait_for_overlay()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()


class RecorderTest(SetupWindowsCase):
    def is_taken(self, desktop, hotkey=HOTKEY):
        return desktop.observer.is_hotkey(*hotkey)

    def open_recorder(self, desktop, program):
        recorder = self.open(desktop, program, open_recorder, RECORDER)
        wait_until(lambda: not self.is_taken(desktop), "the hotkey rests")
        return recorder

    def test_another_hotkey_takes_the_place_of_the_old_one(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        self.open_recorder(desktop, program)
        desktop.driver.press(*OTHER_HOTKEY)
        self.wait_for_no_window(program)
        wait_until(lambda: self.is_taken(desktop, OTHER_HOTKEY), "it is registered")
        self.assertFalse(self.is_taken(desktop))
        self.assertEqual(desktop.preferences(), {
            "hasCompletedOnboarding": True, "hotkeyIsCustom": True, "hotkeyKeyCode": 122,
            "hotkeyModifiers": 0x1800})
        desktop.driver.press(*HOTKEY)
        self.assertTrue(stays_true(lambda: not program.windows(), QUIET), "the old one is dead")
        self.press_and_cancel(desktop, program, OTHER_HOTKEY)
        expected = desktop.observer.screenshot((50, 60, 120, 90))
        desktop.driver.press(*OTHER_HOTKEY)
        program.wait_for_overlay()
        desktop.clipboard.clear()
        desktop.driver.drag((50, 60), (170, 150))
        self.assert_same_picture(program.wait_for_picture(), expected)
        program.dismiss_alerts()
        self.assert_at_rest(desktop, program)

    def test_the_hotkey_in_use_can_be_recorded_again_and_does_not_fire(self):
        desktop = self.desktop()
        desktop.processes.run("xset", "r", "rate", "150", "40")
        program = self.program(desktop)
        self.open_recorder(desktop, program)
        mark = desktop.tap.mark()
        desktop.driver.hold(*HOTKEY)
        self.wait_for_no_window(program)
        wait_until(lambda: len(desktop.tap.since(mark)) > 20, "the held key repeats")
        self.assertTrue(stays_true(lambda: not program.windows(), QUIET))
        desktop.driver.release(*reversed(HOTKEY))
        wait_until(lambda: self.is_taken(desktop), "it is registered again")
        self.assertTrue(stays_true(lambda: not program.windows(), QUIET))
        self.assertTrue(desktop.preferences()["hotkeyIsCustom"])
        self.press_and_cancel(desktop, program, HOTKEY)
        self.assert_at_rest(desktop, program)

    def test_a_new_hotkey_that_is_held_does_not_fire_either(self):
        desktop = self.desktop()
        desktop.processes.run("xset", "r", "rate", "150", "40")
        program = self.program(desktop)
        self.open_recorder(desktop, program)
        mark = desktop.tap.mark()
        desktop.driver.hold(CONTROL, SHIFT, KEY_3)
        self.wait_for_no_window(program)
        wait_until(lambda: len(desktop.tap.since(mark)) > 20, "the held key repeats")
        self.assertTrue(stays_true(lambda: not program.windows(), QUIET))
        desktop.driver.release(KEY_3, SHIFT, CONTROL)
        wait_until(lambda: self.is_taken(desktop, (CONTROL, SHIFT, KEY_3)), "it is registered")
        self.press_and_cancel(desktop, program, (CONTROL, SHIFT, KEY_3))

    def test_the_hotkey_works_while_the_recorder_has_not_the_keyboard(self):
        desktop = self.desktop()
        program = self.program(desktop)
        recorder = self.open_recorder(desktop, program)
        self.chat(desktop, "Editor", rectangle=(20, 20, 300, 300))
        wait_until(lambda: self.is_taken(desktop), "the hotkey is back")
        self.press_and_cancel(desktop, program, HOTKEY)
        recorder.click((20, 20))
        wait_until(recorder.has_keyboard, "the recorder has the keyboard again")
        wait_until(lambda: not self.is_taken(desktop), "the hotkey rests again")
        recorder.click(CANCEL)
        self.wait_for_no_window(program)
        self.press_and_cancel(desktop, program, HOTKEY)
        self.assertEqual(desktop.preferences(), {"hasCompletedOnboarding": True})

    def test_what_is_pressed_is_shown_and_the_title_bar_reports_nothing(self):
        desktop = self.desktop(with_bus=True)
        program = self.program(desktop)
        recorder = self.open_recorder(desktop, program)
        self.wait_for_text(program, "⌘⇧2")
        desktop.driver.press(KEY_2)
        self.wait_for_text(program, "Add a modifier key")
        desktop.driver.hold(CONTROL, SHIFT)
        self.wait_for_text(program, "⇧⌘…")
        desktop.driver.release(SHIFT, CONTROL)
        self.wait_for_text(program, "⌘⇧2")
        desktop.driver.press(ESCAPE)
        self.wait_for_text(program, "Add a modifier key")
        recorder.close()
        self.wait_for_no_window(program)
        wait_until(lambda: self.is_taken(desktop), "the hotkey is back")
        self.assertEqual(desktop.preferences(), {"hasCompletedOnboarding": True})

    def wait_for_text(self, program, text):
        wait_until(lambda: text in program.spoken_texts(), f"the window says {text}")


class ChangeAppTest(SetupWindowsCase):
    def assert_pasted_by(self, target, title):
        wait_until(lambda: target.entries("pasted", title), f"{title} pastes", 6)

    def test_a_click_on_a_card_takes_effect_at_the_next_capture(self):
        desktop = self.desktop()
        desktop.paint()
        claude = self.claude(desktop, rectangle=(20, 20, 280, 280))
        chatgpt = self.chat(desktop, "ChatGPT", rectangle=(960, 20, 280, 280))
        program = self.program(desktop, {"preferredAIApp": "Claude"})
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(claude, "Claude")
        window = self.open(desktop, program, open_change_app, CHANGE_APP)
        window.click(window.tile(CARDS.index("ChatGPT")))
        wait_until(lambda: desktop.preferences()["preferredAIApp"] == "ChatGPT", "it is stored")
        window.close()
        self.wait_for_no_window(program)
        self.assertEqual(desktop.preferences()["preferredAIApp"], "ChatGPT")
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(chatgpt, "ChatGPT")
        self.assertEqual(len(claude.entries("pasted")), 1)
        self.assert_at_rest(desktop, program)

    def test_an_application_chosen_from_the_panel_receives_a_capture(self):
        desktop = self.desktop()
        desktop.paint()
        desktop.install_application("org.example.Notes", "Quick Notes", "QuickNotes")
        desktop.install_application("org.example.Paint", "Paint", "Paint")
        paint = self.chat(desktop, "Paint", rectangle=(20, 20, 280, 280))
        program = self.program(desktop)
        window = self.open(desktop, program, open_change_app, CHANGE_APP)
        window.click(window.tile(len(CARDS)))
        panel = wait_until(lambda: [each for each in program.alerts()
                                    if desktop.observer.title(each) == "Choose an App"],
                           "the panel is open")[0]
        wait_until(lambda: desktop.observer.active_window() == panel.id, "it has the keyboard")
        desktop.driver.type_text("pain")
        desktop.driver.press(RETURN)
        wait_until(lambda: len(program.alerts()) == 1, "the panel is closed")
        wait_until(lambda: desktop.preferences() == {
            "hasCompletedOnboarding": True, "customAppName": "Paint",
            "customAppBundleID": "org.example.Paint.desktop", "preferredAIApp": "Paint"},
            "the choice is stored")
        window.click(window.tile(0, has_custom=True))
        wait_until(lambda: desktop.preferences()["preferredAIApp"] == "Claude", "Claude is chosen")
        window.click(window.tile(len(CARDS), has_custom=True))
        wait_until(lambda: desktop.preferences()["preferredAIApp"] == "Paint", "Paint is chosen")
        window.click(DONE)
        self.wait_for_no_window(program)
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(paint, "Paint")
        self.assert_at_rest(desktop, program)

    def test_there_is_one_window_and_it_stays_where_it_was(self):
        desktop = self.desktop()
        program = self.program(desktop, {"preferredAIApp": "Safari"})
        window = self.open(desktop, program, open_change_app, CHANGE_APP)
        desktop.processes.run("xdotool", "windowmove", window.native.id, "100", "150")
        wait_until(lambda: window.frame[0] < 200, "it was moved")
        moved = window.frame
        self.chat(desktop, "Editor", rectangle=(700, 400, 300, 300))
        again = self.open(desktop, program, open_change_app, CHANGE_APP)
        self.assertEqual(again.native.id, window.native.id)
        self.assertEqual(again.frame, moved)
        self.assertEqual(len(program.alerts()), 1)
        desktop.driver.press(RETURN)
        self.wait_for_no_window(program)
        self.assertEqual(desktop.preferences()["preferredAIApp"], "Safari")

    def test_the_window_is_moved_by_its_background_but_not_by_its_cards(self):
        desktop = self.desktop()
        program = self.program(desktop)
        window = self.open(desktop, program, open_change_app, CHANGE_APP)
        x, y, _, _ = window.frame
        card = window.point(window.tile(2))
        desktop.driver.drag(card, (card[0] + 60, card[1] + 50))
        self.assertTrue(stays_true(lambda: window.frame[:2] == (x, y), QUIET))
        background = window.point((40, 190))
        desktop.driver.drag(background, (background[0] + 60, background[1] + 50), steps=30)
        wait_until(lambda: window.frame[:2] == (x + 60, y + 50), "it follows the pointer")
        desktop.driver.move((5, 5))
        self.assertTrue(stays_true(lambda: window.frame[:2] == (x + 60, y + 50), QUIET))
        self.assert_at_rest(desktop)


class PermissionsTest(SetupWindowsCase):
    def dismiss_explanation(self, desktop, program, window):
        """Waits for the alert over `window`, and closes it with a key."""
        def is_in_front():
            above = [each.id for each in program.alerts() if each.id != window.native.id]
            return desktop.observer.active_window() in above
        wait_until(is_in_front, "it is explained")
        desktop.driver.press(ESCAPE)
        wait_until(lambda: len(program.alerts()) == 1, "the explanation is closed")

    def test_with_both_grants_it_can_be_continued_and_there_is_one_window(self):
        desktop = self.desktop()
        program = self.program(desktop)
        window = self.open(desktop, program, open_permissions, PERMISSIONS)
        again = self.open(desktop, program, open_permissions, PERMISSIONS)
        self.assertEqual(again.native.id, window.native.id)
        self.assertEqual(len(program.alerts()), 1)
        again.click(CONTINUE)
        self.wait_for_no_window(program)
        self.press_and_cancel(desktop, program, HOTKEY)

    def test_in_a_wayland_session_the_grant_buttons_explain_what_is_missing(self):
        desktop = self.desktop(with_bus=True)
        program = self.program(desktop, environment=WAYLAND)
        window = self.open(desktop, program, open_permissions, PERMISSIONS)
        wait_until(lambda: program.spoken_texts().count("Not granted") == 2, "both are missing")
        for place in (GRANT_ACCESSIBILITY, GRANT_SCREEN_RECORDING):
            window.click(place)
            wait_until(lambda: any("Wayland session" in text for text in program.spoken_texts()),
                       "it is explained")
            self.dismiss_explanation(desktop, program, window)
        wait_until(lambda: "May need restart" in program.spoken_texts(), "it asks for a restart", 3)
        self.assertIn("Restart Trovel", program.spoken_texts())
        states = {element["name"]: element["states"] for element in program.spoken()}
        self.assertNotIn("enabled", states["Continue"])

    def test_the_restart_starts_the_program_again_once_it_is_gone(self):
        desktop = self.desktop(with_bus=True)
        program = self.program(desktop, environment=WAYLAND)
        window = self.open(desktop, program, open_permissions, PERMISSIONS)
        window.click(GRANT_SCREEN_RECORDING)
        self.dismiss_explanation(desktop, program, window)
        wait_until(lambda: "Restart Trovel" in program.spoken_texts(), "the button appears")
        window.click(RESTART)
        self.assertEqual(program.wait(), 0)
        started = wait_until(lambda: desktop.processes.running(os.environ["TROVEL_BINARY"]),
                             "it was started again")
        self.assertEqual(len(started), 1)
        self.addCleanup(os.kill, started[0], signal.SIGTERM)
        wait_until(lambda: desktop.observer.is_hotkey(*HOTKEY), "its hotkey")


class ScreenReaderTest(SetupWindowsCase):
    def spoken(self, program, text):
        wait_until(lambda: text in program.spoken_texts(), f"it says {text}", 10)
        return program.spoken()

    def buttons(self, elements):
        return [(element["name"], element["description"]) for element in elements
                if element["role"] == "push button"]

    def texts(self, elements):
        return [element["name"] for element in elements if element["role"] == "label"]

    def test_it_hears_the_first_window_and_can_choose_and_go_on(self):
        desktop = self.desktop(with_bus=True)
        program = self.program(desktop, {"hasCompletedOnboarding": False})
        window = wait_for_setup_window(desktop, program, (600, 600))
        elements = self.spoken(program, "Get Started")
        self.assertEqual(self.texts(elements), [
            "Trovel", "Screenshot any part of your screen and send it to AI — instantly.",
            "Press ⌘⇧2 anywhere", "A global shortcut that works no matter what app is in front",
            "Drag to select a region", "Capture exactly the part of the screen you need",
            "Automatically sent to AI", "Your screenshot is pasted and sent — nothing else to do",
            "Choose your AI app"])
        self.assertEqual(self.buttons(elements), [
            ("Claude", "selected"), *((name, "not selected") for name in CARDS[1:]),
            ("Choose other app", ""), ("Get Started", "")])
        card = next(element for element in elements if element["name"] == "Gemini")
        x, y, _, height = window.frame
        self.assertEqual(card["frame"], [x + 197, y + height - 152, 96, 76])
        program.press_spoken("Gemini")
        wait_until(lambda: ("Gemini", "selected") in self.buttons(program.spoken()), "chosen")
        self.assertEqual([element["name"] for element in program.spoken()
                          if "selected" in element["states"]], ["Gemini"])
        program.press_spoken("Get Started")
        wait_for_setup_window(desktop, program, PERMISSIONS)
        self.assertEqual(desktop.preferences()["preferredAIApp"], "Gemini")

    def test_it_hears_the_other_windows(self):
        desktop = self.desktop(with_bus=True)
        program = self.program(desktop, {"preferredAIApp": "Copilot"})
        self.open(desktop, program, open_change_app, CHANGE_APP)
        elements = self.spoken(program, "Done")
        self.assertEqual(self.texts(elements),
                         ["Choose your AI app", "Screenshots will be sent here first"])
        self.assertEqual(self.buttons(elements), [
            *((name, "not selected") for name in CARDS[:-1]), ("Copilot", "selected"),
            ("Choose other app", ""), ("Done", "")])
        desktop.driver.press(RETURN)
        self.wait_for_no_window(program)
        self.open(desktop, program, open_recorder, RECORDER)
        elements = self.spoken(program, "Cancel")
        self.assertEqual(self.texts(elements), [
            "Press a new hotkey combination",
            "Must include at least one modifier (⌘, ⌃, ⌥, or ⇧)", "⌘⇧2"])
        self.assertEqual(self.buttons(elements), [("Cancel", "")])
        program.press_spoken("Cancel")
        self.wait_for_no_window(program)
        self.open(desktop, program, open_permissions, PERMISSIONS)
        elements = self.spoken(program, "Continue")
        self.assertEqual(self.texts(elements), [
            "Permissions", "Trovel captures a screen region (⌘⇧2) and pastes it\n"
            "into your AI app. These permissions make that work.",
            "Screen Recording", "Granted ✓",
            "Needed to capture your screenshot. Without it, captures come back blank.",
            "Accessibility", "Granted ✓",
            "Needed to paste your screenshot into the AI app and send it for you."])
        self.assertEqual(self.buttons(elements),
                         [("Granted", ""), ("Granted", ""), ("Continue", "")])
