"""The rules are themselves tested: each catches the small wrong file written for it, and lets the
nearest right one pass. A rule without a case here fails too."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

import deps
import rules
import tidy
from source import Source

# (rule, path, what is wrong, what is right)
CASES = [
    ("include_directions", "delivery/a.cpp",
     '#include "capture/crop.h"\n', '#include "platform/image.h"\n'),
    ("include_directions", "capture/a.cpp",
     '#include "setup_windows/slots.h"\n', '#include "delivery/detector.h"\n'),
    ("include_directions", "setup_windows/a.cpp",
     '#include "capture/crop.h"\n', '#include "settings/preferences.h"\n'),
    ("include_directions", "settings/a.cpp",
     '#include "delivery/detector.h"\n', '#include "platform/ui/view.h"\n'),
    ("include_directions", "platform/a.cpp",
     '#include "platform/ui/view.h"\n', '#include "platform/image.h"\n'),
    ("include_directions", "capture/a.cpp",
     '#include "app/app_delegate.h"\n', '#include "settings/hotkey.h"\n'),
    ("include_directions", "platform/ui/a.h",
     '#pragma once\n\n#include "settings/hotkey.h"\n',
     '#pragma once\n\n#include "platform/image.h"\n'),
    ("include_directions", "app/a.cpp",
     '#include "platform/linux/x.h"\n', '#include "platform/backend.h"\n'),
    ("include_directions", "app/a.cpp",
     '#include "platform/simulated/x.h"\n', '#include "setup_windows/card.h"\n'),
    ("include_directions", "platform/linux/a.cpp",
     '#include "platform/simulated/x.h"\n', '#include "platform/linux/x11/x.h"\n'),
    ("include_directions", "platform/linux/qt/a.cpp",
     '#include "platform/linux/x11/x.h"\n', '#include "platform/linux/pictures/x.h"\n'),
    ("include_directions", "platform/linux/x11/a.cpp",
     '#include "platform/linux/x11/overlay/x.h"\n', '#include "platform/linux/tray/x.h"\n'),
    ("include_directions", "platform/linux/x11/overlay/a.cpp",
     '#include "platform/linux/x.h"\n', '#include "platform/linux/x11/x.h"\n'),
    ("include_directions", "platform/linux/files/a.cpp",
     '#include "platform/linux/system/x.h"\n', '#include "platform/linux/files/x.h"\n'),
    ("include_directions", "platform/linux/applications/a.cpp",
     "#include <xcb/xcb.h>\n", "#include <QImage>\n"),
    ("include_directions", "platform/linux/x11/overlay/a.cpp",
     "#include <xkbcommon/xkbcommon.h>\n", "#include <xcb/render.h>\n"),
    ("include_directions", "platform/macos/ui/a.mm",
     '#include "platform/macos/x.h"\n', '#include "platform/macos/bridge/x.h"\n'),
    ("include_directions", "platform/linux/a.cpp",
     '#include "delivery/detector.h"\n', '#include <QWindow>\n'),
    ("include_directions", "platform/ui/a.cpp", "#include <QWindow>\n", "#include <vector>\n"),
    ("include_directions", "delivery/a.cpp", "#include <xcb/xcb.h>\n", "#include <expected>\n"),
    ("include_directions", "delivery/a.cpp", '#include "detector.h"\n',
     '#include "delivery/detector.h"\n'),
    ("include_order", "capture/crop.cpp",
     '#include <vector>\n\n#include "capture/crop.h"\n',
     '#include "capture/crop.h"\n\n#include <vector>\n'),
    ("include_order", "capture/crop.cpp",
     '#include "capture/crop.h"\n#include <vector>\n',
     '#include "capture/crop.h"\n\n#include "platform/image.h"\n\n#include <vector>\n'),
    ("include_order", "platform/linux/x11/a.cpp",
     "#include <vector>\n\n#include <xcb/xcb.h>\n", "#include <xcb/xcb.h>\n\n#include <vector>\n"),
    ("include_order", "platform/linux/x11/a.cpp",
     "#include <fcntl.h>\n#include <QWindow>\n", "#include <csignal>\n#include <fcntl.h>\n"),
    ("banned_calls", "tests/app/a_test.cpp", "void f() { usleep(5); }\n", "void sleepy();\n"),
    ("banned_calls", "platform/linux/a.cpp",
     "void f() { std::this_thread::sleep_for(delay); }\n", "// sleep_for is not for us\n"),
    ("banned_calls", "capture/a.cpp", "int f() { return rand(); }\n", "int operand();\n"),
    ("banned_calls", "capture/a.cpp", "unsigned f() { return std::random_device{}(); }\n",
     'auto f() { return "rand()"; }\n'),
    ("banned_calls", "app/a.cpp", "auto f() { return std::chrono::steady_clock::now(); }\n",
     "std::chrono::steady_clock::duration f();\n"),
    ("banned_calls", "tests/app/a_test.cpp", "auto f() { return time(nullptr); }\n",
     "auto f(Queue& queue) { return queue.time(); }\n"),
    ("banned_calls", "app/a.cpp", "void f() { throw 1; }\n", "void throwAway();\n"),
    ("banned_calls", "app/a.cpp", "void f() { try { g(); } catch (int) {} }\n",
     "void retry();\n"),
    ("banned_calls", "app/a.cpp", "int f() { return g().value(); }\n",
     "int f() { return *g(); }\n"),
    ("banned_calls", "app/a.cpp", "auto f() { return g().and_then(h); }\n", "void and_then();\n"),
    ("banned_calls", "app/a.cpp", 'void f() { std::print("x"); }\n', "void print();\n"),
    ("banned_calls", "app/a.cpp", "std::move_only_function<void()> f();\n",
     "std::function<void()> f();\n"),
    ("banned_calls", "platform/linux/a.cpp", "std::jthread f();\n", "std::thread f();\n"),
    ("banned_calls", "app/a.cpp", 'void f() { printf("x"); }\n',
     'void f() { fingerprint("x"); }\n'),
    ("banned_calls", "app/a.cpp", "using namespace std;\n", "using std::swap;\n"),
    ("banned_calls", "app/a.cpp", "using namespace trovel;\n",
     "using namespace std::chrono_literals;\n"),
    ("banned_calls", "app/a.cpp", "void f() { thread_local int x = 0; }\n", "int x();\n"),
    ("mutable_statics", "app/a.cpp",
     "int f() {\n    static int calls = 0;\n    return ++calls;\n}\n",
     "int f() {\n    static constexpr int kCalls = 0;\n    return kCalls;\n}\n"),
    ("mutable_statics", "app/a.cpp", "namespace trovel {\nint calls = 0;\n}\n",
     "namespace trovel {\nint const kCalls = 0;\n}\n"),
    ("mutable_statics", "app/a.cpp", "namespace {\nstd::vector<int> calls;\n}\n",
     "namespace {\nstd::vector<int> calls();\n}\n"),
    ("mutable_statics", "app/a.cpp", "namespace {\nstd::vector<int> calls{1, 2};\n}\n",
     "namespace {\nstd::array const kCalls{1, 2};\n}\n"),
    ("mutable_statics", "app/a.cpp", "class A {\n    static char const* name_;\n};\n",
     "class A {\n    char const* name_;\n    static int f();\n};\n"),
    ("mutable_statics", "app/a.cpp", "namespace {\nchar const* kName = nullptr;\n}\n",
     "namespace {\nchar const* const kA = nullptr;\nconstexpr auto* kName = \"\";\n}\n"),
    ("header_form", "app/a.h", "#ifndef A\n#define A\n#endif\n", "#pragma once\n"),
    ("mutable_statics", "app/a.cpp", "int f() {\n    static std::vector<int> calls{1, 2};\n}\n",
     "int f() {\n    static std::array const kCalls{1, 2};\n    std::vector<int> calls{1};\n}\n"),
    ("header_form", "app/a.h", "#pragma once\n\n#ifdef __APPLE__\n#endif\n",
     "#pragma once\n\nint f();\n"),
    ("class_comments", "app/a.h", "#pragma once\n\nnamespace trovel {\n\nclass A {\n};\n\n}\n",
     "#pragma once\n\nnamespace trovel {\n\nclass B;\n\n/// An A.\nclass A {\n};\n\n}\n"),
    ("class_comments", "app/a.h", "#pragma once\n\ntemplate <class T>\nclass A : B {\n};\n",
     "#pragma once\n\n/// An A.\ntemplate <class T>\nclass A : B {\n};\n"),
    ("class_comments", "platform/macos/a.h", "#pragma once\n\n@interface A : NSObject {\n}\n@end\n",
     "#pragma once\n\n/// An A.\n@interface A : NSObject {\n}\n@end\n"),
    ("function_lengths", "app/a.cpp", "int f() {\n" + "    g();\n" * 59 + "}\n",
     "int f() {\n" + "    g();\n" * 58 + "}\n"),
    ("function_lengths", "tests/a_test.cpp",
     "namespace {\nTEST(A, B) {\n" + "    if (a) {\n    }\n" * 30 + "}\n}\n",
     "namespace {\nTEST(A, B) {\n" + "    if (a) {\n    }\n" * 29 + "}\n}\n"),
    ("function_lengths", "app/a.cpp", "A::A(int b) : b_{b}, c_(b) {\n" + "    g();\n" * 60 + "}\n",
     "constexpr std::array<int, f()> kTable = {\n" + "    1,\n" * 90 + "};\n"),
    ("function_lengths", "platform/macos/a.mm",
     "@implementation A\n- (void)f:(int)x {\n" + "    g();\n" * 60 + "}\n@end\n",
     "@implementation A\n" + "- (void)f:(int)x {\n    g();\n}\n" * 30 + "@end\n"),
    ("line_lengths", "app/a.cpp", "//" + "x" * 99 + "\n", "//" + "x" * 98 + "\n"),
    ("line_lengths", "tests/a.py", "#" + "x" * 100 + "\n", "#" + "ü" * 99 + "\n"),
    ("objc_file_lengths", "platform/macos/a.mm", "\n" * 201, "\n" * 200),
    ("objc_file_lengths", "platform/macos/ui/a.mm", "\n" * 201, "\n" * 200),
    ("leftovers", "docs/a.md", "TO" + "DO: more\n", "What to do next\n"),
    ("leftovers", "app/a.cpp", "// FIX" + "ME later\n", "// Fixed\n"),
    ("machine_paths", "docs/a.md", "See /ro" + "ot/notes.\n", "See the root/notes.\n"),
    ("machine_paths", "app/a.cpp", "// as in /ho" + "me/somebody/x\n", "// as in $HOME/x\n"),
    ("machine_paths", "tests/a.py", 'PATH = "/wo' + 'rk/x"\n', 'HOME = "/home/somebody"\n'),
    ("file_names", "app/AppDelegate.cpp", "", ""),
    ("file_names", "tests/app/hotkey.cpp", "TEST(A, B) {}\n", ""),
    ("endings", "app/a.cpp", "int f();", "int f();\n"),
    ("endings", "app/a.cpp", "\tint f();\n", "    int f();\n"),
]
RENAMED = {"app/AppDelegate.cpp": "app/app_delegate.cpp"}


def findings(*sources):
    return [rule for rule, *_ in rules.judge(sources) if rule != "missing_files"]


class EveryRuleTest(unittest.TestCase):
    def test_catches_what_is_wrong_and_nothing_else(self):
        for rule, path, wrong, _ in CASES:
            with self.subTest(rule=rule, text=wrong):
                self.assertEqual(set(findings(Source(path, wrong))), {rule})

    def test_lets_pass_what_is_right(self):
        for rule, path, _, right in CASES:
            with self.subTest(rule=rule, text=right):
                self.assertEqual(findings(Source(RENAMED.get(path, path), right)), [])

    def test_has_a_case(self):
        judged = (*rules.CPP_RULES, *rules.CODE_RULES, *rules.TEXT_RULES)
        self.assertEqual({rule.__name__ for rule in judged}, {rule for rule, *_ in CASES})


class TheTreeTest(unittest.TestCase):
    def test_may_not_go_in_circles(self):
        a = Source("app/a.h", '#pragma once\n\n#include "app/b.h"\n')
        b = Source("app/b.h", '#pragma once\n\n#include "app/c.h"\n')
        c = Source("app/c.h", '#pragma once\n\n#include "app/a.h"\n')
        self.assertEqual(findings(a, b, c), ["circles"])
        self.assertEqual(findings(a, b, Source("app/c.h", "#pragma once\n")), [])

    def test_may_meet_again_without_a_circle(self):
        a = Source("app/a.h", '#pragma once\n\n#include "app/b.h"\n#include "app/c.h"\n')
        b = Source("app/b.h", '#pragma once\n\n#include "app/c.h"\n')
        self.assertEqual(findings(a, b, Source("app/c.h", "#pragma once\n")), [])

    def test_has_no_circle_of_folders(self):
        a = Source("tests/one/a.cpp", '#include "tests/two/b.h"\n')
        b = Source("tests/two/b.h", "#pragma once\n")
        c = Source("tests/two/c.cpp", '#include "tests/one/d.h"\n')
        d = Source("tests/one/d.h", "#pragma once\n")
        self.assertEqual(findings(a, b, c, d), ["folder_circles"])
        self.assertEqual(findings(a, b, d), [])

    def test_has_one_stem_for_all_sides_of_a_capability(self):
        virtual = "#pragma once\n\nstruct A {\n    virtual void f() = 0;\n};\n"
        header = Source("platform/clock.h", virtual)
        sides = [
            Source(path, "#pragma once\n")
            for path in ("platform/macos/clock_mac.h", "platform/linux/x11/clock_x11.h",
                         "platform/simulated/simulated_clock.h")
        ]
        self.assertEqual(findings(header, *sides), [])
        self.assertEqual(findings(header, *sides[1:]), ["stems"])
        renamed = Source("platform/simulated/virtual_clock.h", "#pragma once\n")
        self.assertEqual(findings(header, *sides[:2], renamed), ["stems"])
        self.assertEqual(findings(Source("platform/clock.h", "#pragma once\n"), *sides[1:]), [])
        self.assertEqual(findings(header, Source("platform/clock.cpp", "")), [])

    def test_has_no_needless_excuse_for_another_stem(self):
        virtual = "#pragma once\n\nstruct A {\n    virtual void f() = 0;\n};\n"
        sides = [
            Source(path, "#pragma once\n")
            for path in ("platform/macos/ui/event_monitors_mac.h",
                         "platform/simulated/simulated_event_monitors.h")
        ]
        header = Source("platform/ui/event_monitors.h", virtual)
        self.assertEqual(findings(header, *sides), [])
        late = Source("platform/linux/qt/event_monitors_linux.h", "#pragma once\n")
        self.assertEqual(findings(header, *sides, late), ["stems"])

    def test_has_no_header_that_nobody_includes(self):
        header = Source("app/a.h", "#pragma once\n")
        other = Source("app/b.h", "#pragma once\n")
        source = Source("app/a.cpp", '#include "app/a.h"\n')
        self.assertEqual(list(rules.unused_headers([header, source])), [])
        unused = [path for _, path, *_ in rules.unused_headers([header, other, source])]
        self.assertEqual(unused, [other.path])

    def test_includes_only_what_is_there(self):
        a = Source("app/a.h", '#pragma once\n\n#include "app/b.h"\n')
        self.assertEqual([rule for rule, *_ in rules.judge([a])], ["missing_files"])
        self.assertEqual(list(rules.judge([a, Source("app/b.h", "#pragma once\n")])), [])


class WhatTheCompilerReadTest(unittest.TestCase):
    def test_stays_within_the_rooms(self):
        def seen(*paths):
            return len(list(deps.breaches([[Path(path) for path in paths]])))

        self.assertEqual(seen("capture/a.cpp", "capture/a.h", "settings/b.h", "platform/c.h"), 0)
        self.assertEqual(seen("capture/a.cpp", "setup_windows/b.h"), 1)
        self.assertEqual(seen("platform/linux/qt/a.cpp", "/usr/include/xcb/xcb.h"), 1)
        self.assertEqual(seen("platform/linux/x11/a.cpp", "/usr/include/xcb/xcb.h"), 0)
        self.assertEqual(seen("tests/a.cpp", "platform/linux/x11/b.h", "capture/c.h"), 0)

    def test_is_read_from_what_ninja_says(self):
        listing = (
            "a.o: #deps 2, deps mtime 1 (VALID)\n    ../../app/main.cpp\n    ../../app/b.h\n\n"
            "old.o: #deps 1, deps mtime 1 (STALE)\n    ../../app/main.cpp\n"
        )
        objects = list(deps.objects_of(listing, deps.ROOT / "build/development"))
        self.assertEqual(objects, [[Path("app/main.cpp"), Path("app/b.h")]])


class TheProgramTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        Path(self.root, "app").mkdir()

    def write(self, path, text):
        Path(self.root, path).write_text(text, encoding="utf-8")

    def test_fails_on_a_breach_and_passes_without(self):
        self.write("app/a.cpp", "int f();\n")
        self.assertTrue(tidy.check_rules(self.root))
        self.write("app/a.cpp", "int f() { return rand(); }\n")
        self.assertFalse(tidy.check_rules(self.root))

    def test_fails_on_a_file_that_is_not_formatted(self):
        self.write(".clang-format", "BasedOnStyle: LLVM\n")
        self.write("app/a.cpp", "int f();\n")
        self.assertTrue(tidy.check_format(self.root, "clang-format-19"))
        self.write("app/a.cpp", "int  f( );\n")
        self.assertFalse(tidy.check_format(self.root, "clang-format-19"))

    def test_fails_on_python_that_cannot_be_right_or_that_nobody_uses(self):
        self.write("app/a.py", "def f():\n    return 1\n\n\nprint(f())\n")
        self.assertTrue(tidy.check_python(self.root))
        self.write("app/a.py", "def f():\n    return 1\n\n\nprint(f().size)\n")
        self.assertFalse(tidy.check_python(self.root))
        self.write("app/a.py", "def f():\n    return 1\n\n\nprint(1)\n")
        self.assertFalse(tidy.check_python(self.root))


class LintTest(unittest.TestCase):
    """The compiler that is clang-tidy, with a cache of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / ".clang-tidy").symlink_to(Path(rules.__file__).parents[2] / ".clang-tidy")
        (self.folder / "a.h").write_text("int* made();\n")

    def lint(self, body):
        """Whether this function passes; what passed has left an object and what it depends on."""
        (self.folder / "a.cpp").write_text('#include "a.h"\n\nint* made() {\n' + body + "}\n")
        lint = Path(rules.__file__).with_name("lint")
        result = subprocess.run(
            [lint, "clang++-19", "-Wall", "-MD", "-MT", "a.o", "-MF", "a.d",
             "-o", "a.o", "-c", "a.cpp"],
            cwd=self.folder, env={**os.environ, "CCACHE_DIR": str(self.folder / "cache")},
            check=False, capture_output=True)
        left = (self.folder / "a.o").exists()
        if left:
            self.assertRegex((self.folder / "a.d").read_text(), r"^a\.o:.*/lint .*\ba\.h\b")
            (self.folder / "a.o").unlink()
        self.assertEqual(left, result.returncode == 0)
        return left

    def test_what_passed_passes_again_from_the_cache(self):
        self.assertTrue(self.lint("    return nullptr;\n"))
        self.assertTrue(self.lint("    return nullptr;\n"))

    def test_a_finding_fails_however_often_it_is_asked_for(self):
        self.assertFalse(self.lint("    return 0;\n"))
        self.assertFalse(self.lint("    return 0;\n"))

    def test_a_warning_of_the_compiler_is_a_finding(self):
        self.assertFalse(self.lint("    int unused;\n    return nullptr;\n"))

    def test_a_comment_that_is_gone_excuses_nothing(self):
        self.assertTrue(self.lint("    return 0; // NOLINT(modernize-use-nullptr)\n"))
        self.assertFalse(self.lint("    return 0;\n"))


if __name__ == "__main__":
    unittest.main()
