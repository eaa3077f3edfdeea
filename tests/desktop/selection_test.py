"""The overlay under a user's mouse and keyboard."""

import time

from harness.case import DesktopCase, chat_window
from harness.driver import ESCAPE, RETURN, RIGHT
from harness.session import Monitor
from harness.waiting import stays_true, wait_until

SPACE, KEY_A, MIDDLE = 65, 38, 2
HAND_CURSOR = 60
TIME_OUT = 30
THREE_MONITORS = [Monitor("main", 800, 0, 800, 600, primary=True),
                  Monitor("left", 0, 100, 800, 500, scale=1.5),
                  Monitor("below", 800, 600, 640, 480, scale=2)]


class SelectionTest(DesktopCase):
    def test_every_monitor_is_covered_exactly(self):
        desktop = self.desktop(size=(1600, 1080), monitors=THREE_MONITORS)
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        self.assertEqual(program.wait_for_overlay(),
                         sorted(monitor.rectangle for monitor in THREE_MONITORS))
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assert_at_rest(desktop, program)

    def test_a_drag_in_any_direction_selects_the_same(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        left, top, right, bottom = 200, 150, 520, 390
        expected = desktop.observer.screenshot((left, top, right - left, bottom - top))
        for start, end in (((left, top), (right, bottom)), ((right, top), (left, bottom)),
                           ((left, bottom), (right, top)), ((right, bottom), (left, top))):
            with self.subTest(start=start, end=end):
                self.assert_same_picture(program.capture(start, end), expected, "direction")
                program.dismiss_alerts()

    def test_nothing_is_copied_by_what_cancels(self):
        desktop = self.desktop()
        program = self.program(desktop)
        desktop.processes.start("xclip", "xclip", "-selection", "clipboard", "-i",
                                desktop.preferences_path)
        desktop.clipboard.wait_for_owner()
        owner = desktop.clipboard.owner()
        drive = desktop.driver
        cancels = {"escape": lambda: drive.press(ESCAPE),
                   "right click": lambda: drive.click((600, 300), RIGHT),
                   "plain click": lambda: drive.click((600, 300)),
                   "4 by 100": lambda: drive.drag((600, 300), (604, 400)),
                   "100 by 4": lambda: drive.drag((600, 300), (700, 304)),
                   "escape in mid-drag": self.cancel_in_mid_drag(desktop, ESCAPE),
                   "right press in mid-drag": self.cancel_in_mid_drag(desktop, None)}
        for name, cancel in cancels.items():
            with self.subTest(name):
                drive.press_hotkey()
                program.wait_for_overlay()
                cancel()
                program.wait_for_no_overlay()
                self.assertTrue(stays_true(lambda: not program.windows(), 0.4))
                self.assertEqual(desktop.clipboard.owner(), owner)
                self.assert_at_rest(desktop, program)

    @staticmethod
    def cancel_in_mid_drag(desktop, keycode):
        def cancel():
            desktop.driver.drag((600, 300), (700, 400), release=False)
            if keycode:
                desktop.driver.press(keycode)
            else:
                desktop.driver.button_down(RIGHT)
                desktop.driver.button_up(RIGHT)
            desktop.driver.button_up()
        return cancel

    def test_five_points_are_enough_and_four_are_not_at_every_scale(self):
        for scale in (1, 1.5, 2):
            with self.subTest(scale=scale):
                monitor = Monitor("main", 0, 0, 1280, 720, scale=scale, primary=True)
                desktop = self.desktop(monitors=[monitor])
                program = self.program(desktop)
                four, hundred, more = int(4 * scale), int(100 * scale), int(4 * scale) + 1
                program.select((600, 300), (600 + four, 300 + hundred))
                program.wait_for_no_overlay()
                self.assertTrue(stays_true(lambda: not program.windows(), 0.4))
                picture = program.capture((600, 300), (600 + more, 300 + more))
                self.assertEqual(picture.size, (more, more))
                program.dismiss_alerts()

    def test_cancelling_gives_back_the_cursor_the_focus_and_the_front(self):
        desktop = self.desktop()
        target = self.claude(desktop, cursor=HAND_CURSOR)
        program = self.program(desktop)
        x, y, width, height = desktop.observer.frame(target.window("Claude"))
        desktop.driver.move((x + width // 2, y + height // 2))
        hand, active = desktop.observer.cursor(), desktop.observer.active_window()
        for cancel in (lambda: desktop.driver.press(ESCAPE),
                       lambda: desktop.driver.click((x + 9, y + 9), RIGHT)):
            desktop.driver.press_hotkey()
            program.wait_for_overlay()
            wait_until(lambda: desktop.observer.cursor() != hand, "the cursor is a crosshair")
            cancel()
            program.wait_for_no_overlay()
            wait_until(lambda: desktop.observer.cursor() == hand, "the cursor is the old one")
            self.assertEqual(desktop.observer.active_window(), active)
        desktop.driver.press(KEY_A)
        wait_until(lambda: KEY_A in [entry["detail"] for entry in target.entries("key down")],
                   "the target has the keyboard again")
        self.assertEqual(target.entries("button down"), [])

    def test_the_cursor_is_one_crosshair_on_all_monitors(self):
        desktop = self.desktop(size=(1600, 1080), monitors=THREE_MONITORS)
        self.claude(desktop, cursor=HAND_CURSOR, rectangle=(820, 20, 400, 300))
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        seen = set()
        for monitor in THREE_MONITORS:
            desktop.driver.move((monitor.x + 200, monitor.y + 150))
            seen.add(desktop.observer.cursor())
        self.assertEqual(len(seen), 1)
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()

    def test_other_keys_and_buttons_do_nothing_and_reach_nobody(self):
        desktop = self.desktop()
        target = self.claude(desktop)
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        for keycode in (KEY_A, RETURN, SPACE):
            desktop.driver.press(keycode)
        desktop.driver.click((200, 200), MIDDLE)
        self.assertTrue(stays_true(lambda: len(program.overlays()) == 1, 0.3))
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        self.assertEqual([entry["detail"] for entry in target.entries("key down")
                          if entry["detail"] in (KEY_A, RETURN, SPACE, ESCAPE)], [])
        self.assertEqual(target.entries("button down"), [])

    def test_a_drag_on_any_monitor_gives_that_monitors_pixels(self):
        desktop = self.desktop(size=(1600, 1080), monitors=THREE_MONITORS)
        desktop.paint()
        program = self.program(desktop)
        for monitor in THREE_MONITORS:
            with self.subTest(monitor=monitor.name):
                start = (monitor.x + 31, monitor.y + 41)
                end = (start[0] + 300, start[1] + 200)
                expected = desktop.observer.screenshot((*start, 300, 200))
                picture = program.capture(start, end)
                self.assert_same_picture(picture, expected, f"monitor-{monitor.name}")
                program.dismiss_alerts()

    def test_a_drag_over_a_monitors_edge_stays_on_that_monitor(self):
        # To the right and below it is cut at the edge. To the left and above it begins at the edge
        # and is as large as it was drawn, as far as the monitor reaches.
        desktop = self.desktop(size=(1600, 1080), monitors=THREE_MONITORS)
        desktop.paint()
        program = self.program(desktop)
        drags = {"main to left": ((1000, 200), (500, 400), (800, 200, 500, 200)),
                 "left to main": ((500, 200), (1100, 420), (500, 200, 300, 220)),
                 "main to below": ((1000, 400), (1200, 800), (1000, 400, 200, 200)),
                 "below to main": ((1300, 700), (1100, 200), (1100, 600, 200, 480)),
                 "left to nowhere": ((500, 300), (300, 20), (300, 100, 200, 280))}
        for name, (start, end, kept) in drags.items():
            with self.subTest(name):
                expected = desktop.observer.screenshot(kept)
                self.assert_same_picture(program.capture(start, end), expected, "edge")
                program.dismiss_alerts()

    def test_an_overlay_left_alone_cancels_itself_even_in_mid_drag(self):
        desktops = [self.desktop(), self.desktop()]
        programs = [self.program(desktop) for desktop in desktops]
        starts = []
        for desktop, program in zip(desktops, programs):
            starts.append(time.monotonic())
            desktop.driver.press_hotkey()
            program.wait_for_overlay()
        desktops[1].driver.drag((300, 200), (500, 400), release=False)
        both_up = lambda: all(program.overlays() for program in programs)
        self.assertTrue(stays_true(both_up, TIME_OUT - 1 - (time.monotonic() - starts[0])))
        for desktop, program, start in zip(desktops, programs, starts):
            program.wait_for_no_overlay(timeout=3)
            took = time.monotonic() - start
            self.assertGreaterEqual(took, TIME_OUT)
            self.assertLess(took, TIME_OUT + 1)
        desktops[1].driver.button_up()
        for desktop, program in zip(desktops, programs):
            self.assertTrue(stays_true(lambda: not program.windows(), 0.4))
            self.assertFalse(desktop.clipboard.owner())
            self.assert_at_rest(desktop, program)

    def test_an_old_time_out_does_not_close_a_new_overlay(self):
        desktop = self.desktop()
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        first = time.monotonic()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        wait_until(lambda: time.monotonic() > first + TIME_OUT - 2, "most of the time", TIME_OUT)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        self.assertTrue(stays_true(lambda: len(program.overlays()) == 1, 4))
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()

    def test_two_windows_under_the_overlay_stay_as_they_were(self):
        desktop = self.desktop()
        desktop.paint()
        desktop.start_target(chat_window("One"), chat_window("Two", rectangle=(300, 200, 400, 300)))
        program = self.program(desktop)
        before = desktop.observer.screenshot()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.drag((100, 100), (400, 400), release=False)
        desktop.driver.press(ESCAPE)
        desktop.driver.button_up()
        program.wait_for_no_overlay()
        wait_until(lambda: desktop.observer.screenshot().tobytes() == before.tobytes(),
                   "the screen looks as before")
