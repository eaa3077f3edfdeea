"""Preferences files that no program of ours has written."""

import os

from harness.case import DesktopCase
from harness.driver import ESCAPE, HOTKEY, KEY_V
from harness.waiting import stays_true, wait_until

MEBIBYTE = 1 << 20


class PreferencesTest(DesktopCase):
    def put(self, desktop, content):
        os.makedirs(os.path.dirname(desktop.preferences_path))
        with open(desktop.preferences_path, "wb") as file:
            file.write(content)

    def assert_works(self, desktop):
        program = self.program(desktop, None)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assert_at_rest(desktop, program)
        self.assertEqual(program.terminate(), 0)

    def test_the_default_hotkey_works_with_a_broken_file_which_is_kept_once(self):
        good = b"hasCompletedOnboarding=true\n"
        contents = {"empty": b"", "bytes": bytes(range(256)) * 16, "cut off": good + b"autoSendEn",
                    "cut in a value": good + b'preferredAIApp="Cla', "zeros": bytes(4096),
                    "no newline": good + b"autoSendEnabled=true",
                    "too large": b"a=" + b"1" * (3 * MEBIBYTE)}
        for name, content in contents.items():
            with self.subTest(name):
                desktop = self.desktop()
                self.put(desktop, content)
                for _ in range(2):
                    self.assert_works(desktop)
                folder = os.path.dirname(desktop.preferences_path)
                kept = {}
                for file_name in os.listdir(folder):
                    with open(os.path.join(folder, file_name), "rb") as file:
                        kept[file_name] = file.read()
                self.assertIn(content, kept.values())
                self.assertLessEqual(len(kept), 2)

    def test_values_of_the_wrong_type_count_as_absent(self):
        desktop = self.desktop()
        self.put(desktop, b'hasCompletedOnboarding=true\nhotkeyIsCustom="true"\n'
                          b'hotkeyKeyCode="122"\nhotkeyModifiers=true\nautoSendEnabled=1\n'
                          b'preferredAIApp=5\nterminalModeEnabled="yes"\nterminalModeTarget=true\n'
                          b'customAppName=false\n')
        target = self.claude(desktop)
        program = self.program(desktop, None)
        self.select_and_mark(desktop, program)
        wait_until(lambda: target.entries("pasted"), "Claude pastes")
        self.assertTrue(stays_true(lambda: target.entries("key down")[-1]["detail"] == KEY_V, 1.2))

    def test_a_file_that_cannot_be_read_is_no_obstacle(self):
        def make_folder(path):
            os.mkdir(path)

        def make_endless_link(path):
            os.symlink(path, path)

        for make in (make_folder, os.mkfifo, make_endless_link):
            with self.subTest(make.__name__):
                desktop = self.desktop()
                os.makedirs(os.path.dirname(desktop.preferences_path))
                make(desktop.preferences_path)
                self.assert_works(desktop)
                self.assertEqual(os.listdir(os.path.dirname(desktop.preferences_path)),
                                 ["preferences.ini"])

    def test_a_recorded_hotkey_out_of_range_stops_the_program_with_a_word(self):
        for key in ("hotkeyKeyCode", "hotkeyModifiers"):
            for value in (-1, 1 << 32, 1 << 70):
                with self.subTest(key=key, value=value):
                    desktop = self.desktop()
                    other = {"hotkeyKeyCode": 19, "hotkeyModifiers": 768}
                    program = desktop.start_program(
                        {"hotkeyIsCustom": True, **other, key: value}, wait=False)
                    self.assertNotEqual(program.wait(5), 0)
                    self.assertIn(key, program.messages())
                    self.assertFalse(desktop.observer.is_hotkey(*HOTKEY))

    def test_a_hotkey_out_of_range_that_is_not_in_use_is_no_matter(self):
        desktop = self.desktop()
        self.put(desktop, b"hasCompletedOnboarding=true\nhotkeyKeyCode=-1\nhotkeyModifiers=-1\n")
        self.assert_works(desktop)
