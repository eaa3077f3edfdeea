"""The whole promise in real Chromium: key, drag, and the picture stands in the chat page."""

from harness.case import DesktopCase
from harness.desktop import Desktop
from harness.waiting import stays_true, wait_until

QUIET = 1.5
START, END, AREA = (60, 80), (460, 380), (60, 80, 400, 300)


class BrowserTest(DesktopCase):
    @classmethod
    def setUpClass(cls):
        cls.shared = Desktop()
        cls.addClassCleanup(cls.shared.close)
        cls.shared.paint()
        cls.browser = cls.shared.start_browser()
        cls.page = cls.browser.page

    def capture(self, preferences):
        """Captures a region; returns the page's mark from before and what was on the screen."""
        program = self.program(self.shared, preferences)
        mark = self.page.mark()
        expected = self.shared.observer.screenshot(AREA)
        self.select_and_mark(self.shared, program, START, END)
        return program, mark, expected

    def test_the_page_gets_the_pixels_and_without_sending_no_submission(self):
        program, mark, expected = self.capture({"preferredAIApp": "Chrome"})
        self.assert_same_picture(self.page.wait_for_picture(mark), expected, "page")
        self.assertTrue(stays_true(lambda: not self.page.of("submit", mark), QUIET))
        self.assertEqual(self.page.count("paste", mark), 1)
        self.assert_at_rest(self.shared, program)

    def test_with_sending_the_form_is_submitted_once(self):
        program, mark, expected = self.capture({"preferredAIApp": "Chrome",
                                                "autoSendEnabled": True})
        self.assert_same_picture(self.page.wait_for_picture(mark), expected, "page")
        self.page.wait_for("submit", mark)
        self.assertTrue(stays_true(lambda: self.page.count("submit", mark) == 1, QUIET))
        kinds = [report.kind for report in self.page.reports[mark:]]
        self.assertLess(kinds.index("paste"), kinds.index("submit"))
        self.assert_at_rest(self.shared, program)

    def test_the_page_is_clicked_once_in_the_middle_near_its_foot(self):
        x, y, width, height = self.shared.observer.frame(self.browser.window)
        _, mark, _ = self.capture({"preferredAIApp": "Chrome"})
        self.page.wait_for_picture(mark)
        self.assertEqual(self.page.clicks(mark), [(x + width // 2, y + height * 9 // 10)])

    def test_the_browser_in_front_is_taken_without_a_choice(self):
        self.shared.observer.activate(self.browser.window)
        wait_until(lambda: self.shared.observer.active_window() == self.browser.window.id,
                   "Chromium is in front")
        _, mark, expected = self.capture({})
        self.assert_same_picture(self.page.wait_for_picture(mark), expected, "page")

    def test_the_preferred_application_beats_the_browser_in_front(self):
        claude = self.claude(self.shared, rectangle=(480, 60, 140, 200))
        self.addCleanup(claude.kill)
        self.shared.observer.activate(self.browser.window)
        wait_until(lambda: self.shared.observer.active_window() == self.browser.window.id,
                   "Chromium is in front")
        program, mark, _ = self.capture({"preferredAIApp": "Claude"})
        wait_until(lambda: claude.entries("pasted"), "Claude pastes")
        self.assertEqual(self.page.of("paste", mark), [])
        self.assert_at_rest(self.shared, program)

    def test_a_chosen_browser_in_the_background_comes_to_the_front(self):
        editor = self.chat(self.shared, "Editor", rectangle=(480, 60, 140, 200))
        self.addCleanup(editor.kill)
        _, mark, expected = self.capture({"preferredAIApp": "Chrome"})
        self.assert_same_picture(self.page.wait_for_picture(mark), expected, "page")
        self.assertEqual(self.shared.observer.active_window(), self.browser.window.id)

    def test_a_picture_of_the_whole_screen_arrives(self):
        program = self.program(self.shared, {"preferredAIApp": "Chrome"})
        mark = self.page.mark()
        width, height = self.shared.size
        expected = self.shared.observer.screenshot()
        self.select_and_mark(self.shared, program, (0, 0), (width - 1, height - 1))
        self.assert_same_picture(self.page.wait_for_picture(mark), expected, "page-whole")
