"""From the selection to what reaches the chat application, and when."""

import hashlib
import os
import signal
import time

from Xlib import X

from harness.case import DesktopCase, chat_window
from harness.driver import ALT, CONTROL, HOTKEY, KEY_V, RETURN, SHIFT
from harness.program import write_preferences
from harness.waiting import moment_when, stays_true, wait_until

INSERT, KEY_V_DVORAK = 118, 60
HAND_OVER, FRONT_TO_CLICK, CLICK_TO_PASTE, PASTE_TO_SUBMIT = 0.3, 0.5, 0.3, 0.8
LOOK = 0.1  # between two looks whether a window has come to the front
SLACK = 0.15
REFUSAL = 2.0
NO_TARGET = "No AI chat app detected. Open Claude, ChatGPT, Gemini, or Perplexity."
REFUSED = ("Could not bring the target app to front. The screenshot is on your clipboard \u2014 "
           "paste it manually.")
QUIET = 1.2


class DeliveryTest(DesktopCase):
    def select_and_mark(self, desktop, program, *points, **options):
        mark = super().select_and_mark(desktop, program, *points, **options)
        self.kept_waiting = desktop.processes.kept_waiting()
        return mark

    def slack(self, desktop):
        """What the program's work, and a machine that is busy with other things, may add to the
        times since the selection."""
        return SLACK + max(0, desktop.processes.kept_waiting() - self.kept_waiting)

    def wait_for_paste(self, target, title):
        return wait_until(lambda: target.entries("pasted", title), f"{title} pastes", 6)[0]

    def assert_pasted_by(self, desktop, target, title):
        """The window with the title, and no other, got the click, the keys and the picture."""
        entry = self.wait_for_paste(target, title)
        png = desktop.clipboard.read("image/png")
        self.assertEqual(entry["picture"], hashlib.sha256(png).hexdigest())
        self.assertEqual(len(target.entries("button down", title)), 1)
        for other in desktop.targets:
            for pasted in other.entries("pasted"):
                self.assertEqual(pasted["title"], title)

    def assert_seconds(self, desktop, actual, expected):
        self.assertGreaterEqual(actual, expected - 0.01)
        self.assertLess(actual, expected + self.slack(desktop))

    def assert_since(self, desktop, moment, seconds, expected, spread=0):
        """`seconds` is that long after a moment that lies between two times, or `spread` longer."""
        self.assertGreaterEqual(seconds - moment[0], expected - 0.01)
        self.assertLess(seconds - moment[1], expected + spread + self.slack(desktop))

    # The sequence

    def test_the_window_is_clicked_then_gets_the_picture_and_no_return(self):
        desktop = self.desktop()
        desktop.paint()
        target = self.claude(desktop)
        program = self.program(desktop)
        mark = self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, target, "Claude")
        self.assertTrue(stays_true(lambda: not program.windows(), QUIET))
        x, y, width, height = desktop.observer.frame(target.window("Claude"))
        events = [(event.kind, event.detail) for event in desktop.tap.since(mark)]
        self.assertEqual(events, [("button down", 1), ("button up", 1),
                                  ("key down", CONTROL), ("key down", KEY_V),
                                  ("key up", KEY_V), ("key up", CONTROL)])
        click = desktop.tap.since(mark)[0]
        self.assertEqual((click.x, click.y), (x + width // 2, y + height * 9 // 10))
        paste = target.entries("key down", "Claude")[-1]
        self.assertEqual((paste["detail"], paste["state"]), (KEY_V, X.ControlMask))
        self.assertEqual([entry for entry in target.entries() if entry["sent"]], [])
        self.assert_at_rest(desktop, program)

    def test_automatic_sending_presses_return_once_and_alone(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        program = self.program(desktop, {"autoSendEnabled": True})
        mark = self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, target, "Claude")
        wait_until(lambda: target.entries("key up")[-1]["detail"] == RETURN, "it is submitted")
        self.assertTrue(stays_true(lambda: not program.windows(), QUIET))
        returns = [entry for entry in target.entries("key down") if entry["detail"] == RETURN]
        self.assertEqual([entry["state"] for entry in returns], [0])
        downs = {event.detail: event.time / 1000 for event in desktop.tap.since(mark)
                 if event.kind == "key down"}
        click = desktop.tap.since(mark)[0].time / 1000
        self.assert_seconds(desktop, downs[KEY_V] - click, CLICK_TO_PASTE)
        self.assert_seconds(desktop, downs[RETURN] - downs[KEY_V], PASTE_TO_SUBMIT)
        self.assert_at_rest(desktop, program)

    def test_sending_switched_off_before_the_paste_suppresses_the_return(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        program = self.program(desktop, {"autoSendEnabled": True})
        self.select_and_mark(desktop, program)
        wait_until(lambda: target.entries("button down"), "the window is clicked")
        write_preferences(desktop.preferences_path, {"hasCompletedOnboarding": True,
                                                     "autoSendEnabled": False})
        self.wait_for_paste(target, "Claude")
        self.assertTrue(stays_true(
            lambda: RETURN not in [entry["detail"] for entry in target.entries("key down")],
            QUIET))

    def test_the_click_follows_half_a_second_after_the_window_came_to_the_front(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        desktop.start_target(chat_window("Other", rectangle=(550, 80, 300, 300)))
        program = self.program(desktop)
        mark = self.select_and_mark(desktop, program)
        released = desktop.tap.events[mark - 1].time / 1000
        front = moment_when(lambda: target.is_active("Claude"), "Claude comes to the front")
        self.assertGreaterEqual(front[1] - released, HAND_OVER - 0.01)
        wait_until(lambda: desktop.tap.since(mark), "the window is clicked")
        click = desktop.tap.since(mark)[0].time / 1000
        self.assert_since(desktop, front, click, FRONT_TO_CLICK, LOOK)
        self.assert_pasted_by(desktop, target, "Claude")

    def test_a_window_in_front_is_clicked_half_a_second_after_the_copy(self):
        desktop = self.desktop()
        self.claude(desktop)
        program = self.program(desktop)
        mark = self.select_and_mark(desktop, program)
        copied = moment_when(desktop.clipboard.owner, "the picture is copied")
        wait_until(lambda: desktop.tap.since(mark), "the window is clicked")
        click = desktop.tap.since(mark)[0].time / 1000
        self.assert_since(desktop, copied, click, FRONT_TO_CLICK)

    def test_modifiers_that_the_user_still_holds_are_lifted_and_stay_up(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        program = self.program(desktop, {"autoSendEnabled": True})
        desktop.driver.hold(*HOTKEY)
        program.wait_for_overlay()
        desktop.driver.drag((500, 450), (700, 600))
        desktop.driver.release(HOTKEY[-1])
        self.wait_for_paste(target, "Claude")
        wait_until(lambda: target.entries("key up")[-1]["detail"] == RETURN, "it is submitted")
        click, = target.entries("button down")
        self.assertEqual(click["state"], 0)
        pressed = [(entry["detail"], entry["state"]) for entry in target.entries("key down")]
        self.assertIn((KEY_V, X.ControlMask), pressed)
        self.assertIn((RETURN, 0), pressed)
        self.assertEqual(desktop.observer.held_keys(), [])
        desktop.driver.release(SHIFT, CONTROL)
        self.assert_at_rest(desktop, program)

    def test_a_modifier_that_the_user_presses_after_the_click_is_lifted_too(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        program = self.program(desktop)
        self.select_and_mark(desktop, program)
        wait_until(lambda: target.entries("button up"), "the window is clicked")
        desktop.driver.hold(SHIFT, ALT)
        self.wait_for_paste(target, "Claude")
        paste = [entry["state"] for entry in target.entries("key down")
                 if entry["detail"] == KEY_V]
        self.assertEqual(paste, [X.ControlMask])
        wait_until(lambda: not desktop.observer.held_keys(), "the keys are up")
        desktop.driver.release(ALT, SHIFT)
        self.assert_at_rest(desktop, program)

    def test_the_paste_is_the_key_that_types_a_v(self):
        cases = {"de": [CONTROL, KEY_V], "fr": [CONTROL, KEY_V], "dvorak": [CONTROL, KEY_V_DVORAK],
                 "ru": [SHIFT, INSERT], "us,ru": [CONTROL, KEY_V]}
        for layout, keys in cases.items():
            with self.subTest(layout=layout):
                desktop = self.desktop()
                desktop.session.server.set_layout(layout, active=layout.count(","))
                self.claude(desktop)
                program = self.program(desktop)
                mark = self.select_and_mark(desktop, program)
                downs = lambda: [event.detail for event in desktop.tap.since(mark)
                                 if event.kind == "key down"]
                wait_until(lambda: len(downs()) == 2, "the paste keystroke")
                self.assertEqual(downs(), keys)
                wait_until(lambda: not desktop.observer.held_keys(), "the keys are up")

    def test_a_layout_without_insert_and_v_pastes_nothing_and_holds_nothing(self):
        desktop = self.desktop()
        desktop.session.server.set_layout("ru")
        desktop.processes.run("xmodmap", "-e", f"keycode {INSERT} = Print",
                              "-e", "keycode 90 = Print", "-e", "keycode 106 = Print")
        target = self.claude(desktop)
        program = self.program(desktop)
        self.select_and_mark(desktop, program)
        wait_until(lambda: target.entries("button down"), "the window is clicked")
        self.assertTrue(stays_true(lambda: not target.entries("key down")[2:], QUIET))
        self.assertIsNotNone(desktop.clipboard.picture())
        self.assert_at_rest(desktop, program)

    def test_no_file_is_written(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        program = self.program(desktop)
        self.select_and_mark(desktop, program)
        self.wait_for_paste(target, "Claude")
        self.assertEqual(os.listdir(os.path.join(desktop.folder, "home")), [])

    # The choice

    def test_the_chosen_application_beats_the_one_in_front(self):
        desktop = self.desktop()
        gemini = self.chat(desktop, "Gemini", rectangle=(100, 80, 300, 300))
        self.chat(desktop, "Claude", rectangle=(550, 80, 300, 300))
        program = self.program(desktop, {"preferredAIApp": "Gemini"})
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, gemini, "Gemini")

    def test_without_the_chosen_one_the_application_in_front_is_taken(self):
        desktop = self.desktop()
        self.chat(desktop, "Claude", rectangle=(100, 80, 300, 300))
        front = self.chat(desktop, "ChatGPT", rectangle=(550, 80, 300, 300))
        program = self.program(desktop, {"preferredAIApp": "Gemini"})
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, front, "ChatGPT")

    def test_behind_an_unknown_application_the_catalogues_order_decides(self):
        desktop = self.desktop()
        self.chat(desktop, "Perplexity", rectangle=(100, 80, 300, 300))
        claude = self.chat(desktop, "Claude", rectangle=(450, 80, 300, 300))
        self.chat(desktop, "Editor", rectangle=(800, 80, 300, 300))
        program = self.program(desktop)
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, claude, "Claude")

    def test_an_application_of_the_users_own_is_found_by_its_identifier(self):
        desktop = self.desktop()
        tool = self.chat(desktop, "MyTool", rectangle=(100, 80, 300, 300))
        self.chat(desktop, "Claude", rectangle=(550, 80, 300, 300))
        program = self.program(desktop, {
            "preferredAIApp": "MyTool", "customAppName": "MyTool",
            "customAppBundleID": "mytool.desktop"})
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, tool, "MyTool")

    def test_without_a_target_an_alert_comes_and_the_picture_stays(self):
        desktop = self.desktop()
        desktop.paint()
        self.chat(desktop, "Editor")
        program = self.program(desktop)
        expected = desktop.observer.screenshot((500, 450, 200, 150))
        mark = self.select_and_mark(desktop, program)
        alert = program.wait_for_alert()
        self.assertEqual(desktop.observer.title(alert), "Trovel")
        self.assert_same_picture(desktop.clipboard.picture(), expected, "no-target")
        self.assertTrue(stays_true(lambda: not desktop.tap.since(mark), QUIET))
        program.dismiss_alerts()
        self.assert_same_picture(desktop.clipboard.picture(), expected, "no-target")

    def test_two_applications_of_one_process_are_told_apart(self):
        desktop = self.desktop()
        for name in ("Claude", "Gemini"):
            desktop.install_application(name.lower(), name, name)
        both = desktop.start_target(chat_window("Gemini", rectangle=(100, 80, 300, 300)),
                                    chat_window("Claude", rectangle=(550, 80, 300, 300)))
        for name in ("Gemini", "Claude", "Gemini"):
            program = self.program(desktop, {"preferredAIApp": name})
            pasted = len(both.entries("pasted", name))
            self.select_and_mark(desktop, program)
            wait_until(lambda: len(both.entries("pasted", name)) == pasted + 1, "it pastes", 6)
            self.assertEqual(program.terminate(), 0)
        self.assertEqual(len(both.entries("pasted", "Gemini")), 2)
        self.assertEqual(len(both.entries("pasted", "Claude")), 1)

    def test_two_applications_of_one_name_are_told_apart(self):
        desktop = self.desktop()
        desktop.install_application("first.tool", "Tool", "First")
        desktop.install_application("second.tool", "Tool", "Second")
        targets = {name: desktop.start_target(chat_window(name, rectangle=rectangle))
                   for name, rectangle in (("First", (100, 80, 300, 300)),
                                           ("Second", (550, 80, 300, 300)))}
        for name, identifier in (("First", "first.tool.desktop"),
                                 ("Second", "second.tool.desktop")):
            with self.subTest(name):
                program = self.program(desktop, {
                    "preferredAIApp": "Tool", "customAppName": "Tool",
                    "customAppBundleID": identifier})
                self.select_and_mark(desktop, program)
                self.wait_for_paste(targets[name], name)
                self.assertEqual(program.terminate(), 0)
        self.assertEqual([len(target.entries("pasted")) for target in targets.values()], [1, 1])

    def test_of_two_windows_the_last_active_one_gets_the_picture(self):
        desktop = self.desktop()
        desktop.install_application("claude", "Claude", "Claude")
        target = desktop.start_target(
            chat_window("One", "Claude", rectangle=(100, 80, 300, 300)),
            chat_window("Two", "Claude", rectangle=(450, 80, 300, 300)))
        program = self.program(desktop)
        desktop.observer.activate(target.window("One"))
        wait_until(lambda: target.is_active("One"), "the first window is active")
        self.chat(desktop, "Editor", rectangle=(800, 80, 300, 300))
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, target, "One")

    def test_a_minimised_target_comes_back(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        self.chat(desktop, "Editor", rectangle=(550, 80, 300, 300))
        number = str(target.window("Claude").id)
        desktop.processes.run("xdotool", "windowminimize", number)
        wait_until(lambda: target.window("Claude").get_attributes().map_state != X.IsViewable,
                   "the window is minimised")
        program = self.program(desktop)
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, target, "Claude")

    def test_a_target_on_another_workspace_comes_to_the_front(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        self.chat(desktop, "Editor", rectangle=(550, 80, 300, 300))
        desktop.processes.run("xdotool", "set_desktop_for_window", target.window("Claude").id, "1")
        wait_until(lambda: target.window("Claude").get_attributes().map_state != X.IsViewable,
                   "the window is on another workspace")
        program = self.program(desktop)
        self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, target, "Claude")

    def test_the_shadow_that_a_window_draws_is_not_counted_at_the_click(self):
        desktop = self.desktop()
        left, right, top, bottom = 20, 60, 10, 90
        target = self.claude(desktop, shadow=(left, right, top, bottom))
        program = self.program(desktop)
        mark = self.select_and_mark(desktop, program)
        self.assert_pasted_by(desktop, target, "Claude")
        x, y, width, height = desktop.observer.frame(target.window("Claude"))
        click = desktop.tap.since(mark)[0]
        self.assertEqual((click.x, click.y), (x + left + (width - left - right) // 2,
                                              y + top + (height - top - bottom) * 9 // 10))

    # What goes wrong

    def test_a_target_that_dies_after_coming_to_the_front_is_not_clicked(self):
        desktop = self.desktop()
        desktop.paint()
        target = self.claude(desktop)
        self.chat(desktop, "Editor", rectangle=(550, 80, 300, 300))
        program = self.program(desktop, {"autoSendEnabled": True})
        mark = self.select_and_mark(desktop, program)
        front = moment_when(lambda: target.is_active("Claude"), "Claude comes to the front")
        wait_until(lambda: time.monotonic() > front[0] + 0.2, "it was seen in front")
        target.kill()
        downs = lambda: [event for event in desktop.tap.since(mark) if event.kind == "key down"]
        wait_until(lambda: len(downs()) == 3, "the keys are posted all the same")
        self.assertEqual([event.detail for event in downs()], [CONTROL, KEY_V, RETURN])
        self.assertNotIn("button down", [event.kind for event in desktop.tap.since(mark)])
        paste, submit = downs()[1].time / 1000, downs()[2].time / 1000
        self.assert_since(desktop, front, paste, FRONT_TO_CLICK + CLICK_TO_PASTE, LOOK)
        self.assert_seconds(desktop, submit - paste, PASTE_TO_SUBMIT)
        self.assertTrue(stays_true(lambda: not program.windows(), 0.3))
        self.assertEqual(desktop.clipboard.picture().size, (200, 150))
        self.assert_at_rest(desktop, program)

    def test_a_target_that_dies_before_it_is_in_front_ends_in_an_alert(self):
        desktop = self.desktop(window_manager="stubborn")
        self.chat(desktop, "Editor")
        desktop.install_application("claude", "Claude", "Claude")
        target = desktop.start_target(chat_window("Claude", rectangle=(550, 80, 300, 300)))
        program = self.program(desktop, {"autoSendEnabled": True})
        mark = self.select_and_mark(desktop, program)
        wait_until(lambda: os.path.getsize(desktop.session.refusals_path),
                   "Trovel asks for the front")
        target.kill()
        program.wait_for_alert()
        self.assertEqual(desktop.tap.since(mark), [])
        self.assertEqual(desktop.clipboard.picture().size, (200, 150))

    def test_a_refused_activation_is_watched_for_two_seconds_then_told(self):
        desktop = self.desktop(window_manager="stubborn")
        self.chat(desktop, "Editor")
        desktop.install_application("claude", "Claude", "Claude")
        desktop.start_target(chat_window("Claude", rectangle=(550, 80, 300, 300)))
        program = self.program(desktop, {"autoSendEnabled": True})
        mark = self.select_and_mark(desktop, program)
        shown = moment_when(program.alerts, "an alert is up")
        with open(desktop.session.refusals_path, encoding="utf-8") as refusals:
            asked = [float(line) for line in refusals.read().split()]
        self.assertGreaterEqual(len(asked), 1)
        self.assertGreaterEqual(shown[1] - asked[0], REFUSAL - 0.01)
        self.assertLess(shown[0] - asked[0], REFUSAL + self.slack(desktop))
        self.assertTrue(all(second > shown[0] - 0.1 for second in asked[1:]),
                        "the activation was tried again")
        self.assertTrue(stays_true(lambda: not desktop.tap.since(mark), QUIET))
        self.assertEqual(desktop.clipboard.picture().size, (200, 150))

    def test_an_alert_says_that_no_application_was_found(self):
        desktop = self.desktop(with_bus=True)
        program = self.program(desktop)
        program.select((500, 450), (700, 600))
        program.wait_for_alert()
        wait_until(lambda: NO_TARGET in program.spoken_texts(), "the alert says it")
        self.assertIn("Trovel", program.spoken_texts())
        self.assertIn("OK", program.spoken_texts())

    def test_an_alert_says_that_the_application_did_not_come_to_the_front(self):
        desktop = self.desktop(with_bus=True, window_manager="stubborn")
        self.chat(desktop, "Editor")
        desktop.install_application("claude", "Claude", "Claude")
        desktop.start_target(chat_window("Claude", rectangle=(550, 80, 300, 300)))
        program = self.program(desktop)
        program.select((500, 450), (700, 600))
        program.wait_for_alert()
        wait_until(lambda: REFUSED in program.spoken_texts(), "the alert says it")

    def test_a_target_that_comes_to_the_front_late_is_still_served(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        self.chat(desktop, "Editor", rectangle=(550, 80, 300, 300))
        desktop.session.window_manager.send_signal(signal.SIGSTOP)
        program = self.program(desktop)
        self.select_and_mark(desktop, program)
        desktop.clipboard.wait_for_owner()
        copied = time.monotonic()
        wait_until(lambda: time.monotonic() > copied + 1, "a second")
        desktop.session.window_manager.send_signal(signal.SIGCONT)
        self.assert_pasted_by(desktop, target, "Claude")
