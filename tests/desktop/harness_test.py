"""The harness is believed by all other tests, so it is tried on plain programs first."""

import hashlib
import os
import time
import unittest

from Xlib import X

from harness import driver, pattern
from harness.desktop import Desktop
from harness.session import Monitor
from harness.waiting import moment_when, wait_until
from harness.x11.observer import XObserver


class HarnessTest(unittest.TestCase):
    def test_a_screenshot_is_the_painted_picture(self):
        for compositor in (None, "picom"):
            with self.subTest(compositor=compositor), Desktop(compositor=compositor) as desktop:
                desktop.paint()
                expected = pattern.unique_pixels(*desktop.size).tobytes()
                wait_until(lambda: desktop.observer.screenshot().tobytes() == expected,
                           "the background is on the screen")

    def test_no_two_pixels_of_the_pattern_are_equal(self):
        picture = pattern.unique_pixels(640, 480)
        self.assertEqual(len(set(picture.getdata())), 640 * 480)

    def test_the_reader_gets_a_large_selection_in_portions(self):
        with Desktop() as desktop:
            path = os.path.join(desktop.folder, "noise.png")
            pattern.noise(1600, 1200).save(path)
            desktop.processes.start("xclip", "xclip", "-selection", "clipboard",
                                    "-t", "image/png", "-i", path)
            desktop.clipboard.wait_for_owner()
            portions = []
            data = desktop.clipboard.read("image/png", pause=portions.append)
            self.assertGreater(len(portions), 1)
            with open(path, "rb") as file:
                self.assertEqual(hashlib.sha256(data).digest(),
                                 hashlib.sha256(file.read()).digest())

    def test_a_taken_key_is_seen_and_the_question_leaves_it_free(self):
        with Desktop() as desktop:
            key = (driver.KEY_2, X.ControlMask)
            other = XObserver(desktop.session.server.display)
            self.assertFalse(desktop.observer.is_key_taken(*key))
            other.root.grab_key(*key, False, X.GrabModeAsync, X.GrabModeAsync)
            other.display.sync()
            self.assertTrue(desktop.observer.is_key_taken(*key))
            other.root.ungrab_key(*key)
            other.display.sync()
            self.assertFalse(desktop.observer.is_key_taken(*key))
            other.close()

    def test_held_keys_and_buttons_and_grabs_are_seen(self):
        with Desktop() as desktop:
            self.assertTrue(desktop.observer.is_input_free())
            desktop.driver.hold(driver.CONTROL)
            desktop.driver.button_down()
            self.assertEqual(desktop.observer.held_keys(), [driver.CONTROL])
            self.assertTrue(desktop.observer.held_buttons() & X.Button1Mask)
            desktop.driver.button_up()
            desktop.driver.release(driver.CONTROL)
            self.assertEqual(desktop.observer.held_keys(), [])
            self.assertFalse(desktop.observer.held_buttons())

    def test_a_grab_is_seen_and_the_question_leaves_the_keyboard_free(self):
        with Desktop() as desktop:
            other = XObserver(desktop.session.server.display)
            self.assertTrue(desktop.observer.is_keyboard_free())
            other.root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
            other.display.sync()
            self.assertFalse(desktop.observer.is_keyboard_free())
            self.assertTrue(desktop.observer.is_pointer_free())
            self.assertFalse(desktop.observer.is_input_free())
            other.display.ungrab_keyboard(X.CurrentTime)
            other.display.sync()
            self.assertTrue(desktop.observer.is_input_free())
            other.close()

    def test_a_window_that_shows_what_lies_behind_it_has_not_painted_itself(self):
        area = (100, 100, 200, 150)
        with Desktop() as desktop:
            desktop.paint()
            other = XObserver(desktop.session.server.display)
            window = other.root.create_window(*area, 0, X.CopyFromParent, override_redirect=True,
                                              background_pixmap=X.NONE)
            window.map()
            other.display.sync()
            self.assertFalse(desktop.observer.is_painted(area))
            window.change_attributes(background_pixel=0x202020)
            window.clear_area()
            other.display.sync()
            self.assertTrue(desktop.observer.is_painted(area))
            other.close()

    def test_the_tap_sees_the_repeats_of_a_held_key(self):
        with Desktop() as desktop:
            desktop.processes.run("xset", "r", "rate", "200", "40")
            mark = desktop.tap.mark()
            desktop.driver.hold(38)
            wait_until(lambda: len(desktop.tap.since(mark)) > 5, "the key repeats")
            desktop.driver.release(38)
            self.assertEqual({event.detail for event in desktop.tap.since(mark)}, {38})

    def test_a_target_is_managed_and_writes_down_what_it_gets(self):
        for window_manager in ("openbox", "xfwm4", "i3", "stubborn"):
            with self.subTest(window_manager), Desktop(window_manager=window_manager) as desktop:
                target = desktop.start_target({"instance": "one", "class": "One", "title": "One",
                                               "rectangle": [100, 100, 300, 200]})
                wait_until(lambda: target.is_active("One"), "the target is active")
                desktop.driver.press(driver.KEY_V)
                entries = wait_until(lambda: target.entries("key up"), "the key arrives")
                self.assertEqual(entries[0]["detail"], driver.KEY_V)
                self.assertFalse(entries[0]["sent"])

    def test_monitors_divide_the_screen(self):
        monitors = [Monitor("main", 640, 0, 640, 480, primary=True),
                    Monitor("left", 0, 0, 640, 480)]
        with Desktop(size=(1280, 480), monitors=monitors) as desktop:
            shown = desktop.processes.run("xrandr", "--listmonitors").decode()
            self.assertIn("Monitors: 2", shown)
            self.assertIn("*main 640/160x480/120+640+0", shown)
            desktop.session.server.remove_monitor(monitors[1])
            self.assertIn("Monitors: 1", desktop.processes.run("xrandr", "--listmonitors").decode())

    def test_the_page_reports_a_pasted_picture_and_a_submission(self):
        with Desktop() as desktop:
            browser = desktop.start_browser()
            path = os.path.join(desktop.folder, "picture.png")
            picture = pattern.unique_pixels(320, 200)
            picture.save(path)
            desktop.processes.start("xclip", "xclip", "-selection", "clipboard",
                                    "-t", "image/png", "-i", path)
            x, y, width, height = desktop.observer.frame(browser.window)
            middle = (x + width // 2, y + height * 9 // 10)
            desktop.driver.click(middle)
            browser.page.wait_for("focus")
            desktop.driver.press(driver.CONTROL, driver.KEY_V)
            self.assertEqual(browser.page.wait_for_picture().tobytes(), picture.tobytes())
            self.assertEqual(browser.page.clicks(), [middle])
            desktop.driver.press(driver.RETURN)
            browser.page.wait_for("submit")

    def test_a_desktop_without_test_devices_is_driven_through_its_host(self):
        with Desktop(size=(900, 700), window_manager=None) as host, \
                Desktop(size=(800, 600), without_extensions=("XTEST",), host=host) as desktop:
            self.assertNotIn("XTEST", desktop.observer.display.list_extensions())
            host.driver.move((400, 300))
            desktop.driver.hold(driver.CONTROL)
            wait_until(lambda: desktop.observer.held_keys() == [driver.CONTROL], "it arrives")
            desktop.driver.release(driver.CONTROL)

    def test_the_clipboard_manager_keeps_what_it_is_asked_to_keep(self):
        with Desktop() as desktop:
            desktop.session.start_clipboard_manager()
            path = os.path.join(desktop.folder, "picture.png")
            pattern.unique_pixels(300, 200).save(path)
            xclip = desktop.processes.start("xclip", "xclip", "-selection", "clipboard",
                                            "-t", "image/png", "-i", path)
            desktop.clipboard.wait_for_owner()
            png = desktop.clipboard.read("image/png")
            desktop.clipboard.read("SAVE_TARGETS", "CLIPBOARD_MANAGER")
            wait_until(lambda: xclip.poll() is not None, "xclip has lost the clipboard")
            self.assertEqual(desktop.clipboard.read("image/png"), png)

    def test_nothing_outlives_a_desktop(self):
        with Desktop() as desktop:
            processes = [desktop.session.server.process, desktop.session.window_manager]
            folder = desktop.folder
        self.assertTrue(all(process.poll() is not None for process in processes))
        self.assertFalse(os.path.exists(folder))

    def test_waiting_ends_with_a_sentence(self):
        start = time.monotonic()
        with self.assertRaisesRegex(AssertionError, "not within 0.1 s: the moon is blue"):
            wait_until(lambda: False, "the moon is blue", 0.1)
        self.assertLess(time.monotonic() - start, 1)

    def test_a_moment_lies_between_the_last_look_before_it_and_the_first_after(self):
        looks = []

        def is_third_look():
            looks.append(time.monotonic())
            return len(looks) == 3
        before, after = moment_when(is_third_look, "the third look")
        self.assertLess(before, looks[1])
        self.assertGreater(before, looks[0])
        self.assertGreater(after, looks[2])

    def test_what_a_busy_machine_keeps_processes_from_is_counted(self):
        with Desktop(window_manager=None) as desktop:
            before = desktop.processes.kept_waiting()
            for number in range(2 * os.cpu_count()):
                desktop.processes.start(f"busy-{number}", "sh", "-c", "while :; do :; done")
            wait_until(lambda: desktop.processes.kept_waiting() > before + 0.1, "some wait")



if __name__ == "__main__":
    unittest.main()
