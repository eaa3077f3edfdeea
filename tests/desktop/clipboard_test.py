"""The picture on the clipboard, read by others: large, slowly, by several, and after the end."""

import io
import signal
import time

from PIL import Image

from harness import pattern
from harness.case import DesktopCase
from harness.driver import ESCAPE
from harness.waiting import stays_true, wait_until

MEBIBYTE = 1 << 20
LARGE = (3840, 2160)
SOON = 0.25


class ClipboardTest(DesktopCase):
    def large_picture(self):
        """A desktop whose whole screen was copied, with more than 20 MiB of PNG."""
        desktop = self.desktop(size=LARGE)
        noise = pattern.noise(*LARGE)
        desktop.paint(noise)
        program = self.program(desktop)
        desktop.clipboard.clear()
        program.select((0, 0), (LARGE[0] - 1, LARGE[1] - 1), steps=3)
        desktop.clipboard.wait_for_owner(10)
        return desktop, program, noise

    def test_a_picture_of_twenty_mebibytes_is_read_whole_while_the_program_answers(self):
        desktop, program, noise = self.large_picture()
        program.dismiss_alerts()
        other = desktop.session.new_clipboard_reader()
        answers, overlays = [], []

        def ask_meanwhile(_):
            began = time.monotonic()
            self.assertIn("image/png", other.targets())
            answers.append(time.monotonic() - began)
            if not overlays:
                desktop.driver.press_hotkey()
                overlays.append(program.wait_for_overlay(timeout=SOON))
                desktop.driver.press(ESCAPE)
                program.wait_for_no_overlay(timeout=SOON)

        png = desktop.clipboard.read("image/png", pause=ask_meanwhile)
        self.assertGreater(len(png), 20 * MEBIBYTE)
        self.assertEqual(overlays, [[(0, 0, *LARGE)]])
        self.assertLess(max(answers), SOON)
        picture = Image.open(io.BytesIO(png)).convert("RGB")
        self.assertEqual(picture.size, LARGE)
        self.assertEqual(picture.tobytes(), noise.tobytes())

    def test_xclip_reads_the_same_bytes(self):
        desktop, _, _ = self.large_picture()
        ours = desktop.clipboard.read("image/png")
        theirs = desktop.processes.run("xclip", "-selection", "clipboard", "-t", "image/png",
                                       "-o")
        self.assertEqual(len(theirs), len(ours))
        self.assertEqual(theirs, ours)

    def test_a_reader_that_stops_in_the_middle_disturbs_nobody(self):
        desktop, program, _ = self.large_picture()
        program.dismiss_alerts()
        whole = desktop.clipboard.read("image/png")
        for leaves in (False, True):
            with self.subTest(leaves=leaves):
                stalled = desktop.session.new_clipboard_reader()
                stalled.begin("image/png")
                if leaves:
                    stalled.close()
                self.assertEqual(desktop.clipboard.read("image/png"), whole)
        small = program.capture((100, 100), (140, 130))
        self.assertEqual(small.size, (40, 30))

    def test_a_reader_that_stops_in_the_middle_does_not_hold_up_the_end(self):
        desktop, program, _ = self.large_picture()
        desktop.session.new_clipboard_reader().begin("image/png")
        self.assertEqual(program.terminate(), 0)
        self.assert_at_rest(desktop)

    def test_a_transfer_that_has_begun_goes_on_through_a_new_capture(self):
        desktop, program, noise = self.large_picture()
        program.dismiss_alerts()
        pictures = []

        def capture_once(_):
            if not pictures:
                pictures.append(None)
                desktop.driver.press_hotkey()
                program.wait_for_overlay()
                desktop.driver.drag((10, 10), (60, 50))
                pictures.append(program.wait_for_alert())
        png = desktop.clipboard.read("image/png", pause=capture_once)
        self.assertEqual(Image.open(io.BytesIO(png)).convert("RGB").tobytes(), noise.tobytes())
        self.assertEqual(desktop.clipboard.picture().size, (50, 40))

    def test_a_capture_replaces_what_another_program_copied(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        for _ in range(2):
            xclip = desktop.processes.start("xclip", "xclip", "-selection", "clipboard", "-i",
                                            desktop.preferences_path)
            wait_until(lambda: "UTF8_STRING" in desktop.clipboard.targets(), "xclip owns")
            owner = desktop.clipboard.owner()
            program.select((100, 100), (300, 200))
            wait_until(lambda: desktop.clipboard.owner() != owner,
                       "Trovel owns")
            self.assertEqual(desktop.clipboard.picture().size, (200, 100))
            program.dismiss_alerts()
            wait_until(lambda: xclip.poll() is not None, "xclip has lost the clipboard")

    def test_what_another_program_copies_afterwards_stays(self):
        desktop = self.desktop()
        program = self.program(desktop)
        program.capture((100, 100), (300, 200))
        program.dismiss_alerts()
        desktop.processes.start("xclip", "xclip", "-selection", "clipboard", "-i",
                                desktop.preferences_path)
        wait_until(lambda: "UTF8_STRING" in desktop.clipboard.targets(), "xclip owns")
        self.assertTrue(stays_true(
            lambda: "UTF8_STRING" in desktop.clipboard.targets(), 0.5))

    def test_the_primary_selection_is_left_alone(self):
        desktop = self.desktop()
        program = self.program(desktop)
        program.capture((100, 100), (300, 200))
        self.assertFalse(desktop.observer.selection_owner("PRIMARY"))

    def test_at_the_end_a_clipboard_manager_takes_the_picture_over(self):
        desktop = self.desktop()
        desktop.paint()
        manager = desktop.session.start_clipboard_manager()
        program = self.program(desktop)
        program.capture((100, 100), (300, 200))
        png = desktop.clipboard.read("image/png")
        self.assertEqual(program.terminate(), 0)
        desktop.clipboard.wait_for_owner()
        self.assertEqual(desktop.clipboard.read("image/png"), png)
        self.assertIsNone(manager.poll())

    def test_a_clipboard_manager_that_does_not_answer_does_not_hold_up_the_end(self):
        desktop = self.desktop()
        manager = desktop.session.start_clipboard_manager()
        program = self.program(desktop)
        program.capture((100, 100), (300, 200))
        manager.send_signal(signal.SIGSTOP)
        self.assertEqual(program.terminate(timeout=6), 0)
        manager.send_signal(signal.SIGCONT)
