"""The picture against the screen, pixel for pixel."""

import struct
import zlib

from harness import pattern
from harness.case import DesktopCase, chat_window
from harness.driver import ESCAPE
from harness.session import Monitor
from harness.waiting import wait_until

SCALES = (1, 1.25, 1.5, 1.75, 2)
METRES_TO_AN_INCH = 0.0254


def chunks(png):
    """The chunks of a PNG file by name, in order; a name that repeats keeps its first place."""
    assert png[:8] == b"\x89PNG\r\n\x1a\n"
    found, position = {}, 8
    while position < len(png):
        length, name = struct.unpack(">I4s", png[position:position + 8])
        body = png[position + 8:position + 8 + length]
        check, = struct.unpack(">I", png[position + 8 + length:position + 12 + length])
        assert zlib.crc32(name + body) == check, name
        found[name.decode()] = found.get(name.decode(), b"") + body
        position += 12 + length
    return found


class PictureTest(DesktopCase):
    def check(self, desktop, program, start, end, kept=None):
        """Drags from pixel to pixel; the picture must be what is on the screen there."""
        left, right = sorted((start[0], end[0]))
        top, bottom = sorted((start[1], end[1]))
        expected = desktop.observer.screenshot(kept or (left, top, right - left, bottom - top))
        self.assert_same_picture(program.capture(start, end), expected, "picture")
        program.dismiss_alerts()

    def test_the_picture_is_the_screen_at_every_scale(self):
        for scale in SCALES:
            monitor = Monitor("main", 0, 0, 1366, 768, scale=scale, primary=True)
            desktop = self.desktop(size=(1366, 768), monitors=[monitor])
            desktop.paint()
            desktop.start_target(chat_window("Window"))
            program = self.program(desktop)
            for start, end in (((0, 0), (333, 221)), ((101, 203), (402, 411)),
                               ((1003, 509), (347, 113)), ((700, 700), (1365, 767))):
                with self.subTest(scale=scale, start=start, end=end):
                    far = tuple(place + (place == size - 1)
                                for place, size in zip(end, desktop.size))
                    kept = None
                    if far != end:
                        kept = (*start, far[0] - start[0], far[1] - start[1])
                    self.check(desktop, program, start, end, kept)

    def test_a_drag_from_corner_to_corner_is_the_whole_screen(self):
        for scale in SCALES:
            with self.subTest(scale=scale):
                monitor = Monitor("main", 0, 0, 1920, 1080, scale=scale, primary=True)
                desktop = self.desktop(size=(1920, 1080), monitors=[monitor])
                desktop.paint()
                program = self.program(desktop)
                self.check(desktop, program, (0, 0), (1919, 1079), (0, 0, 1920, 1080))
                self.check(desktop, program, (1919, 1079), (0, 0), (0, 0, 1920, 1080))

    def test_each_of_several_monitors_is_captured_whole_at_its_own_scale(self):
        monitors = [Monitor("main", 900, 0, 1000, 700, scale=1, primary=True),
                    Monitor("left", 0, 50, 900, 600, scale=1.75),
                    Monitor("below", 1000, 700, 801, 451, scale=1.25)]
        desktop = self.desktop(size=(1920, 1160), monitors=monitors)
        desktop.paint()
        program = self.program(desktop)
        for monitor in monitors:
            with self.subTest(monitor=monitor.name):
                last = (monitor.x + monitor.width - 1, monitor.y + monitor.height - 1)
                self.check(desktop, program, (monitor.x, monitor.y), last, monitor.rectangle)

    def test_the_picture_is_the_screen_under_a_compositor(self):
        desktop = self.desktop(compositor="picom")
        desktop.paint()
        desktop.start_target(chat_window("Window"))
        expected = pattern.unique_pixels(*desktop.size).getpixel((1000, 600))
        wait_until(lambda: desktop.observer.screenshot((1000, 600, 1, 1)).getpixel((0, 0))
                   == expected, "picom has painted the background")
        program = self.program(desktop)
        self.check(desktop, program, (50, 50), (800, 500))

    def test_the_pointer_is_not_in_the_picture(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        before = desktop.observer.screenshot((200, 200, 300, 200))
        desktop.driver.move((350, 300))
        self.assert_same_picture(program.capture((200, 200), (500, 400)), before, "pointer")
        program.dismiss_alerts()

    def test_the_picture_shows_the_moment_of_the_key_press(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        before = desktop.observer.screenshot((100, 100, 300, 200))
        desktop.clipboard.clear()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.paint(pattern.unique_pixels(*desktop.size, salt=0x33))
        desktop.driver.drag((100, 100), (400, 300))
        self.assert_same_picture(program.wait_for_picture(), before, "moment")
        program.dismiss_alerts()

    def test_a_second_capture_shows_its_own_moment(self):
        desktop = self.desktop()
        program = self.program(desktop)
        for salt in (0, 0x33, 0x66):
            desktop.paint(pattern.unique_pixels(*desktop.size, salt=salt))
            self.check(desktop, program, (100, 100), (400, 300))
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.press(ESCAPE)
        program.wait_for_no_overlay()
        desktop.paint(pattern.unique_pixels(*desktop.size, salt=0x11))
        self.check(desktop, program, (100, 100), (400, 300))

    def test_the_clipboard_offers_a_tagged_png_and_nothing_else(self):
        for scale in (1, 2):
            with self.subTest(scale=scale):
                monitor = Monitor("main", 0, 0, 1280, 720, scale=scale, primary=True)
                desktop = self.desktop(monitors=[monitor])
                program = self.program(desktop)
                program.capture((100, 100), (400, 300))
                formats = [name for name in desktop.clipboard.targets() if "/" in name]
                self.assertEqual(formats, ["image/png"])
                self.assertIsNone(desktop.clipboard.text())
                found = chunks(desktop.clipboard.read("image/png"))
                self.assertLessEqual(set(found), {"IHDR", "sRGB", "gAMA", "cHRM", "pHYs", "IDAT",
                                                  "IEND"})
                self.assertIn("sRGB", found)
                per_metre = round(72 * scale / METRES_TO_AN_INCH)
                self.assertEqual(struct.unpack(">IIB", found["pHYs"]), (per_metre, per_metre, 1))
                self.assertEqual(struct.unpack(">II", found["IHDR"][:8]), (300, 200))
                program.dismiss_alerts()
