"""What the overlay looks like, measured on the screen; the pictures are kept to be looked at."""

from PIL import Image

from harness.case import DesktopCase, chat_window, save_picture
from harness.driver import ESCAPE
from harness.session import Monitor
from harness.waiting import wait_until

BLUE = (28, 110, 242)
DIMMED, BOXED = 0.65, 0.30
GAP, MARGIN = 6, 2
SIZE = (1280, 720)


class OverlayLookTest(DesktopCase):
    def setUp(self):
        self.scale = 1
        self.before = self.shown = None

    def drag(self, scale, start, end, name, compositor=None, size=SIZE):
        """Holds a drag at `end` and looks at the screen before and meanwhile."""
        self.scale = scale
        monitor = Monitor("main", 0, 0, *size, scale=scale, primary=True)
        desktop = self.desktop(size=size, monitors=[monitor], compositor=compositor)
        desktop.paint(Image.effect_noise(size, 64).convert("RGB").point(lambda v: 64 + v // 2))
        desktop.start_target(chat_window("Window", rectangle=(200, 100, 500, 400)))
        program = self.program(desktop)
        self.before = desktop.observer.screenshot()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.drag(start, end, release=False)
        self.wait_for_blue(desktop, end)
        self.shown = desktop.observer.screenshot()
        save_picture(self.shown, name)
        desktop.driver.press(ESCAPE)
        desktop.driver.button_up()
        program.wait_for_no_overlay()
        return (min(start[0], end[0]), min(start[1], end[1]),
                max(start[0], end[0]), max(start[1], end[1]))

    def wait_for_blue(self, desktop, end):
        corner = (max(0, end[0] - 2), max(0, end[1] - 2), 4, 4)
        wait_until(lambda: BLUE in desktop.observer.screenshot(corner).getdata(),
                   "the border has reached the pointer")

    def assert_factor(self, x, y, factor):
        """The pixel is as bright as before times `factor`, to what rounding may change."""
        for shown, before in zip(self.shown.getpixel((x, y)), self.before.getpixel((x, y))):
            self.assertAlmostEqual(shown, before * factor, delta=1.5, msg=f"at {x}, {y}")

    def assert_selection(self, left, top, right, bottom):
        """The hole shows the screen as it was, the line is one point, and the rest is dim."""
        line = round(self.scale)
        for x, y in ((left, top), (right - 1, top), (left, bottom - 1), (right - 1, bottom - 1),
                     ((left + right) // 2, top + line - 1), (left + line - 1, top + 20)):
            self.assertEqual(self.shown.getpixel((x, y)), BLUE, f"at {x}, {y}")
        inner = (left + line, top + line, right - line, bottom - line)
        self.assertEqual(self.shown.crop(inner).tobytes(), self.before.crop(inner).tobytes())
        width, height = self.shown.size
        for x, y in ((left - 1, top + 5), (right, top + 5), (5, 5), (width - 1, 0),
                     (left + 1, top - 1), (width - 1, height - 1)):
            if 0 <= x < width and 0 <= y < height:
                self.assert_factor(x, y, DIMMED)

    def test_the_label_stands_below_the_selection(self):
        for scale, end in ((1, (620, 440)), (2, (900, 540))):
            with self.subTest(scale=scale):
                box = self.drag(scale, (300, 200), end, f"overlay-below-scale-{scale}")
                self.assert_selection(*box)
                middle, bottom = (box[0] + box[2]) // 2, box[3]
                self.assert_factor(middle, bottom + GAP * scale - 1, DIMMED)
                self.assert_factor(middle, bottom + GAP * scale, DIMMED * BOXED)

    def test_the_label_flips_above_a_selection_at_the_foot_of_the_screen(self):
        for scale in (1, 2):
            with self.subTest(scale=scale):
                box = self.drag(scale, (300, 400), (700, 700), f"overlay-flipped-scale-{scale}")
                self.assert_selection(*box)
                middle, top = (box[0] + box[2]) // 2, box[1]
                self.assert_factor(middle, top - GAP * scale, DIMMED)
                self.assert_factor(middle, top - GAP * scale - 1, DIMMED * BOXED)

    def test_the_label_stays_inside_at_the_left_and_the_right(self):
        for scale in (1, 2):
            for name, start, end in (("left", (0, 200), (40, 300)),
                                     ("right", (1279, 200), (1240, 300))):
                with self.subTest(scale=scale, name=name):
                    self.drag(scale, start, end, f"overlay-{name}-scale-{scale}")
                    row = 300 + GAP * scale + 6 * scale
                    at = (lambda x: x) if name == "left" else (lambda x: SIZE[0] - 1 - x)
                    self.assert_factor(at(MARGIN * scale - 1), row, DIMMED)
                    self.assert_factor(at(MARGIN * scale), row, DIMMED * BOXED)

    def test_before_a_drag_and_up_to_two_points_all_is_dim(self):
        desktop = self.desktop()
        desktop.paint()
        program = self.program(desktop)
        self.before = desktop.observer.screenshot()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.drag((600, 300), (602, 400), release=False)
        self.shown = desktop.observer.screenshot()
        for x, y in ((0, 0), (1279, 719), (601, 350), (600, 410), (599, 299)):
            self.assert_factor(x, y, DIMMED)
        desktop.driver.move((603, 400))
        self.wait_for_blue(desktop, (603, 400))
        desktop.driver.press(ESCAPE)
        desktop.driver.button_up()
        program.wait_for_no_overlay()

    def test_a_drag_leaves_no_trace_of_its_way(self):
        for scale in (1, 1.5, 2):
            with self.subTest(scale=scale):
                straight = self.shown_after(scale, steps=1)
                detour = self.shown_after(scale, steps=25, detour=True)
                self.assertEqual(straight.tobytes(), detour.tobytes())

    def shown_after(self, scale, steps, detour=False):
        monitor = Monitor("main", 0, 0, *SIZE, scale=scale, primary=True)
        desktop = self.desktop(monitors=[monitor])
        desktop.paint()
        program = self.program(desktop)
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        start, end = (401, 203), (811, 507)
        if detour:
            desktop.driver.drag(start, (1200, 20), steps=steps, release=False)
            for point in ((20, 20), (20, 715), (1270, 715), (820, 510), (401, 507), end):
                desktop.driver.move(point)
        else:
            desktop.driver.drag(start, end, steps=steps, release=False)
        self.wait_for_blue(desktop, end)
        shown = desktop.observer.screenshot()
        desktop.driver.press(ESCAPE)
        desktop.driver.button_up()
        program.wait_for_no_overlay()
        return shown

    def test_under_a_compositor_it_looks_the_same(self):
        box = self.drag(1, (300, 200), (620, 440), "overlay-picom", compositor="picom")
        self.assert_selection(*box)

    def test_a_full_screen_window_is_covered_too(self):
        for window_manager in ("openbox", "xfwm4", "i3"):
            with self.subTest(window_manager):
                desktop = self.desktop(window_manager=window_manager)
                target = desktop.start_target(chat_window("Film"))
                desktop.observer.fill_screen(target.window("Film"))
                wait_until(lambda: desktop.observer.frame(target.window("Film"))
                           == (0, 0, *desktop.size), "the window fills the screen")
                program = self.program(desktop)
                self.before = desktop.observer.screenshot()
                desktop.driver.press_hotkey()
                program.wait_for_overlay()
                self.shown = desktop.observer.screenshot()
                for x, y in ((5, 5), (300, 200), (640, 360), (1270, 710)):
                    self.assert_factor(x, y, DIMMED)
                desktop.driver.press(ESCAPE)
                program.wait_for_no_overlay()

    def test_only_the_monitor_under_the_drag_shows_a_selection(self):
        monitors = [Monitor("main", 640, 0, 640, 480, primary=True),
                    Monitor("left", 0, 0, 640, 480, scale=2)]
        desktop = self.desktop(size=(1280, 480), monitors=monitors)
        desktop.paint()
        program = self.program(desktop)
        self.before = desktop.observer.screenshot()
        desktop.driver.press_hotkey()
        program.wait_for_overlay()
        desktop.driver.drag((300, 100), (900, 300), release=False)
        wait_until(lambda: BLUE in desktop.observer.screenshot((600, 90, 40, 20)).getdata(),
                   "the border is drawn")
        self.shown = desktop.observer.screenshot()
        save_picture(self.shown, "overlay-over-the-edge")
        for x, y in ((640, 200), (700, 100), (900, 300), (1279, 479)):
            self.assert_factor(x, y, DIMMED)
        self.assertEqual(self.shown.crop((302, 102, 640, 298)).tobytes(),
                         self.before.crop((302, 102, 640, 298)).tobytes())
        desktop.driver.press(ESCAPE)
        desktop.driver.button_up()
        program.wait_for_no_overlay()
