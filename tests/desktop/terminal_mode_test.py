"""Terminal mode: the picture's path, one space and nothing else arrives where it should."""

import hashlib
import os

from harness.browser import EDITOR_PAGE
from harness.captures import Captures
from harness.case import DesktopCase, save_picture, stacked
from harness.desktop import Desktop
from harness.driver import INSERT, RETURN, SHIFT
from harness.terminal import Terminal
from harness.waiting import stays_true, wait_until

FRONTMOST, TERMINAL, ITERM, WARP, VS_CODE, CURSOR, UNKNOWN = 1, 2, 3, 4, 5, 6, 7
START, END, AREA = (900, 420), (1200, 620), (900, 420, 300, 200)
QUIET = 0.6
PASTE = [("key down", SHIFT), ("key down", INSERT), ("key up", INSERT), ("key up", SHIFT)]


class TerminalModeCase(DesktopCase):
    """Automatic sending is always on here: no Return may come of it."""

    @classmethod
    def setUpClass(cls):
        cls.shared = Desktop(with_bus=True)
        cls.addClassCleanup(cls.shared.close)
        cls.shared.paint()

    def setUp(self):
        self.captures = Captures(self.shared.processes.environment["HOME"])
        self.running = None

    def terminal(self, kind, **options):
        terminal = Terminal(self.shared, kind, **options)
        self.addCleanup(terminal.close)
        return terminal

    def stand_in(self, name):
        """A window of a program that Trovel knows by this window class."""
        target = self.chat(self.shared, name, rectangle=(700, 60, 300, 200))
        self.addCleanup(target.kill)
        return target

    def start(self, tag):
        """Starts Trovel with the target of that tag, in place of the one before it."""
        if self.running:
            self.assertEqual(self.running.terminate(), 0)
        self.running = self.program(self.shared, {"terminalModeEnabled": True,
                                                  "terminalModeTarget": tag,
                                                  "autoSendEnabled": True})
        return self.running

    def capture(self, tag):
        """Captures a region; returns the program, the path that its file has, and the place in the
        input tap after what the user did."""
        program = self.start(tag)
        before = self.captures.names()
        expected = self.shared.observer.settled(AREA)
        mark = self.select_and_mark(self.shared, program, START, END)
        self.shared.clipboard.wait_for_owner()
        name = self.captures.wait_for_new(before)
        self.assertEqual(len(self.captures.names()), len(before) + 1)
        self.assert_same_picture(self.captures.picture(name), expected, "captured-file")
        return program, f"{self.captures.folder}/{name}", mark

    def assert_pasted(self, read, path, mark):
        """What `read` returns is the path and one space, once, and no other key went down."""
        expected = f"{path} ".encode()
        wait_until(read, "something is pasted")
        self.assertTrue(stays_true(lambda: expected.startswith(read()), QUIET), read())
        self.assertEqual(read(), expected)
        events = [(event.kind, event.detail) for event in self.shared.tap.since(mark)]
        self.assertEqual(events, PASTE)
        self.assert_offered(path)

    def assert_offered(self, path):
        for selection in ("CLIPBOARD", "PRIMARY"):
            self.assertEqual(self.shared.clipboard.text(selection), path + " ")


class TerminalsTest(TerminalModeCase):
    def assert_goes_into_the_terminal_in_front(self, kind):
        terminal = self.terminal(kind)
        program, path, mark = self.capture(FRONTMOST)
        self.assert_pasted(terminal.received, path, mark)
        self.assertTrue(terminal.is_active())
        self.assert_at_rest(self.shared, program)

    # The application in front when the hotkey was pressed

    def test_the_path_goes_into_xterm(self):
        self.assert_goes_into_the_terminal_in_front("xterm")

    def test_the_path_goes_into_xfce4_terminal(self):
        self.assert_goes_into_the_terminal_in_front("xfce4-terminal")

    def test_the_path_goes_into_kitty(self):
        self.assert_goes_into_the_terminal_in_front("kitty")

    def test_the_path_goes_into_alacritty(self):
        self.assert_goes_into_the_terminal_in_front("alacritty")

    def test_it_goes_there_although_another_window_came_to_the_front_meanwhile(self):
        terminal = self.terminal("xterm")
        program = self.start(FRONTMOST)
        self.shared.driver.press_hotkey()
        program.wait_for_overlay()
        other = self.stand_in("Editor")
        mark = self.shared.tap.mark()
        self.shared.clipboard.clear()
        self.shared.driver.drag(START, END)
        wait_until(terminal.received, "the path arrives")
        self.assertFalse([entry for entry in other.entries("key down")])
        self.assertTrue(terminal.is_active())
        keys = [event.kind for event in self.shared.tap.since(mark) if "key" in event.kind]
        self.assertEqual(len(keys), len(PASTE))

    def test_a_tag_without_an_application_means_the_one_in_front_too(self):
        terminal = self.terminal("xterm")
        _, path, mark = self.capture(UNKNOWN)
        self.assert_pasted(terminal.received, path, mark)

    def test_with_nothing_in_front_the_path_waits_on_the_clipboard(self):
        program, path, mark = self.capture(FRONTMOST)
        self.assertTrue(stays_true(lambda: not program.alerts(), QUIET))
        self.assertEqual(self.shared.tap.since(mark), [])
        self.assert_offered(path)

    # The application of a tag

    def test_the_terminal_used_last_is_the_one_that_is_meant(self):
        xterm = self.terminal("xterm")
        xfce = self.terminal("xfce4-terminal")
        editor = self.stand_in("Editor")
        _, path, mark = self.capture(TERMINAL)
        self.assert_pasted(xfce.received, path, mark)
        self.assertTrue(xfce.is_active())
        self.assertEqual(xterm.received(), b"")
        xterm.activate()
        self.shared.observer.activate(editor.window("Editor"))
        wait_until(lambda: editor.is_active("Editor"), "the editor is in front")
        _, path, mark = self.capture(TERMINAL)
        self.assert_pasted(xterm.received, path, mark)

    def test_warp_and_cursor_are_found_by_their_windows(self):
        for tag, window_class in ((WARP, "warp-terminal"), (CURSOR, "Cursor")):
            with self.subTest(window_class):
                target = self.stand_in(window_class)
                editor = self.stand_in("Editor")
                _, path, mark = self.capture(tag)
                wait_until(lambda: len(target.entries("key up")) == 2, "the paste key arrives")
                self.assertEqual([entry["detail"] for entry in target.entries("key down")],
                                 [SHIFT, INSERT])
                keys = [entry["detail"] for entry in editor.entries("key down")]
                self.assertNotIn(INSERT, keys)
                self.assertTrue(stays_true(lambda: len(self.shared.tap.since(mark)) == len(PASTE),
                                           QUIET))
                self.assert_offered(path)
                target.kill()
                editor.kill()

    def test_an_application_that_does_not_run_is_named(self):
        names = {TERMINAL: "Terminal", ITERM: "iTerm", WARP: "Warp", VS_CODE: "VS Code",
                 CURSOR: "Cursor"}
        for tag, name in names.items():
            with self.subTest(name):
                program, path, mark = self.capture(tag)
                program.wait_for_alert()
                wait_until(lambda: f"{name} is not running." in program.spoken_texts(),
                           "the alert says it")
                self.assert_offered(path)
                self.assertEqual(self.shared.tap.since(mark), [])
                program.dismiss_alerts()

    # A person's day

    def test_in_a_shell_the_path_is_a_word_of_the_command(self):
        home = self.shared.processes.environment["HOME"]
        terminal = self.terminal("xterm", program=["env", "PS1=$ ", "bash", "--norc", "-i"])
        self.shared.driver.type_text("sha256sum ")
        _, path, mark = self.capture(FRONTMOST)
        wait_until(lambda: len(self.shared.tap.since(mark)) == len(PASTE), "it is pasted")
        self.shared.driver.type_text(">~/sum")
        self.shared.driver.press(RETURN)
        sum_path = os.path.join(home, "sum")
        wait_until(lambda: os.path.exists(sum_path) and os.path.getsize(sum_path), "the sum")
        with open(path, "rb") as file:
            digest = hashlib.sha256(file.read()).hexdigest()
        with open(sum_path, encoding="utf-8") as file:
            self.assertEqual(file.read(), f"{digest}  {path}\n")
        self.assertTrue(terminal.is_active())

    def test_it_looks_so(self):
        terminal = self.terminal("xfce4-terminal", prompt="> ")
        self.shared.driver.type_text("Why is this table cut off? ")
        typed = terminal.received
        wait_until(lambda: typed().endswith(b"? "), "the question is typed")
        before = terminal.picture()
        question = typed()
        _, path, mark = self.capture(FRONTMOST)
        self.assert_pasted(lambda: typed()[len(question):], path, mark)
        after = terminal.picture()
        self.assertNotEqual(after.tobytes(), before.tobytes())
        save_picture(stacked(before, after), "terminal-mode")


class EditorTest(TerminalModeCase):
    """A text area in Chromium, under the window class of an editor that Trovel knows."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.shared.install_application("code", "Some Editor", "Code")
        cls.browser = cls.shared.start_browser(options=["--class=Code"], page=EDITOR_PAGE)

    def type_question(self):
        """Types into the editor, in front of all others; returns what tells the text after it."""
        self.shared.observer.activate(self.browser.window)
        wait_until(lambda: self.shared.observer.active_window() == self.browser.window.id,
                   "the editor is in front")
        wait_until(lambda: ", focused" in self.shared.observer.title(self.browser.window),
                   "keys reach the editor")
        before = self.text()
        self.shared.driver.type_text("look ")
        wait_until(lambda: self.text() == before + b"look ", "the question is typed")
        return lambda: self.text()[len(before) + len(b"look "):]

    def text(self):
        """What stands in the editor: its reports may overtake each other, and it only grows."""
        return max((report.body for report in self.browser.page.of("text")), key=len, default=b"")

    def assert_arrives(self, read, tag):
        clicks = self.browser.page.count("click")
        program, path, mark = self.capture(tag)
        self.assert_pasted(read, path, mark)
        self.assertEqual(self.browser.page.count("click"), clicks)
        self.assert_at_rest(self.shared, program)

    def test_the_path_goes_into_the_editor_in_front(self):
        self.assert_arrives(self.type_question(), FRONTMOST)

    def test_the_path_goes_into_vs_code_behind_another_window(self):
        read = self.type_question()
        self.stand_in("Editor")
        self.assert_arrives(read, VS_CODE)
        self.assertEqual(self.shared.observer.active_window(), self.browser.window.id)
