"""The files of terminal mode where disks are full, folders odd and others write there too."""

import os
import resource
import signal

from harness import pattern
from harness.captures import Captures
from harness.case import DesktopCase
from harness.desktop import Desktop
from harness.processes import own_mounts
from harness.waiting import stays_true, wait_until

START, END, AREA = (100, 100), (500, 400), (100, 100, 400, 300)
KEPT = 50
QUIET = 0.6
NO_FOLDER = "Could not create captures directory."
NOT_SAVED = "Failed to save screenshot to disk."


class CaptureFilesTest(DesktopCase):
    """Nothing is in front here, so a path that was offered is all that comes of a capture."""

    @classmethod
    def setUpClass(cls):
        cls.shared = Desktop(with_bus=True)
        cls.addClassCleanup(cls.shared.close)
        cls.shared.paint(pattern.noise(*cls.shared.size))

    def start(self, name="home", wrapper=()):
        """Starts Trovel with a home folder of that name."""
        home = os.path.join(self.shared.folder, self.id().rsplit(".", 1)[-1], name)
        os.makedirs(home, exist_ok=True)
        self.home = home
        program = self.program(self.shared, {"terminalModeEnabled": True, "terminalModeTarget": 1},
                               environment={"HOME": home}, wrapper=wrapper)
        self.captures = Captures(home, f"/proc/{program.pid}/root")
        return program

    def start_with_mounts(self, script):
        """The same after a shell script in which `mount` works and changes nothing elsewhere."""
        prefix = own_mounts(self.shared.processes)
        if not prefix:
            self.skipTest("this system lets nobody mount anything, not even for himself")
        return self.start(wrapper=[*prefix, "sh", "-c", f'set -e; {script}; exec "$0"'])

    def capture(self, program, start=START, end=END):
        """Captures a region and returns the name of its file, whose path is offered."""
        before = self.captures.names()
        self.select_and_mark(self.shared, program, start, end)
        self.shared.clipboard.wait_for_owner()
        name = self.captures.wait_for_new(before)
        self.assert_offered(name)
        return name

    def assert_offered(self, name):
        self.assertEqual(self.shared.clipboard.text(), f"{self.captures.folder}/{name} ")

    def assert_complains(self, program, sentence):
        mark = self.select_and_mark(self.shared, program, START, END)
        program.wait_for_alert()
        wait_until(lambda: sentence in program.spoken_texts(), "the alert says it")
        self.assertFalse(self.shared.clipboard.owner())
        self.assertEqual(self.shared.tap.since(mark), [])
        program.dismiss_alerts()
        self.assert_at_rest(self.shared, program)

    # Places that do not take a file

    def test_on_a_full_disk_the_failure_is_told_and_later_captures_work(self):
        program = self.start_with_mounts('mkdir "$HOME/.trovel"; '
                                         'mount -t tmpfs -o size=64k none "$HOME/.trovel"')
        self.assert_complains(program, NOT_SAVED)
        for name in self.captures.names():
            os.remove(self.captures.path(name))
        self.capture(program, (100, 100), (140, 130))

    def test_in_a_home_that_cannot_be_written_no_folder_can_be_made(self):
        program = self.start_with_mounts('mount -t tmpfs -o ro,size=64k none "$HOME"')
        self.assert_complains(program, NO_FOLDER)

    def test_a_folder_that_cannot_be_written_takes_no_file(self):
        program = self.start_with_mounts(
            'mkdir -p "$HOME/.trovel/captures"; '
            'mount -t tmpfs -o ro,size=64k none "$HOME/.trovel/captures"')
        self.assert_complains(program, NOT_SAVED)

    def test_a_file_where_a_folder_should_be_is_left_alone(self):
        for name in (".trovel", ".trovel/captures"):
            with self.subTest(name):
                program = self.start(name.replace("/", " "))
                path = os.path.join(self.home, name)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", encoding="utf-8") as file:
                    file.write("mine")
                self.assert_complains(program, NO_FOLDER)
                with open(path, encoding="utf-8") as file:
                    self.assertEqual(file.read(), "mine")
                self.assertEqual(program.terminate(), 0)

    def test_a_program_that_is_killed_while_it_writes_leaves_what_was_written(self):
        program = self.start()
        limit = 64 * 1024
        # The system ends a program that writes past this limit, in the middle of its writing.
        resource.prlimit(program.pid, resource.RLIMIT_FSIZE, (limit, limit))
        resource.prlimit(program.pid, resource.RLIMIT_CORE, (0, 0))
        mark = self.select_and_mark(self.shared, program, START, END)
        self.assertEqual(program.wait(5), -signal.SIGXFSZ)
        self.captures = Captures(self.home)
        (name,) = self.captures.names()
        self.assertEqual(os.path.getsize(self.captures.path(name)), limit)
        self.assertFalse(self.shared.clipboard.owner())
        self.assertTrue(stays_true(lambda: not self.shared.tap.since(mark), QUIET))
        self.assert_at_rest(self.shared)
        self.capture(self.start())
        self.assertEqual(len(self.captures.names()), 2)

    # Names

    def test_a_home_folder_may_have_any_name(self):
        name = """it's "my" home, $HOME `x` \\ é"""
        program = self.start(name)
        picture = self.shared.observer.screenshot(AREA)
        self.assert_same_picture(self.captures.picture(self.capture(program)), picture, "odd-home")

    def test_two_captures_at_once_are_two_files(self):
        program = self.start()
        areas = [AREA, (600, 300, 300, 200)]
        pictures = [self.shared.observer.screenshot(area) for area in areas]
        self.shared.clipboard.clear()
        for x, y, width, height in areas:  # the second before the first is handed over
            program.select((x, y), (x + width, y + height))
            program.wait_for_no_overlay()
        wait_until(lambda: len(self.captures.finished()) == 2, "two pictures are written")
        for name, picture in zip(self.captures.names(), pictures):
            self.assert_same_picture(self.captures.picture(name), picture, "of-two")
        wait_until(lambda: self.captures.names()[1] in (self.shared.clipboard.text() or ""),
                   "the later path is offered")

    # Pruning

    def test_the_oldest_of_fifty_one_goes_and_only_pictures_count(self):
        program = self.start()
        others = [".hidden.png", "a.jpg", "b.png.txt", "c", "png"]
        pictures = [f"{index:02}.png" for index in range(KEPT - 1)] + ["99-FOREIGN.PNG"]
        self.captures.fill(others + pictures)
        new = self.capture(program)
        self.assertEqual(self.captures.names(), sorted(others + pictures[1:] + [new]))

    def test_fifty_of_five_thousand_are_kept_beside_what_cannot_be_deleted(self):
        program = self.start()
        os.makedirs(f"{self.home}/.trovel/captures/000-folder.png/inside")
        pictures = [f"{index:04}.png" for index in range(5000)]
        self.captures.fill(pictures)
        new = self.capture(program)
        self.assertEqual(self.captures.names(),
                         sorted(["000-folder.png"] + pictures[-(KEPT - 1):] + [new]))
        self.capture(program)
        self.assertEqual(len(self.captures.names()), KEPT + 1)
