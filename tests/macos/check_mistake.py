"""check_mistake.py FILE CLANG FLAGS... -- ANALYZER_FLAGS...: the first line of FILE names the tool
that must find its mistake and what that tool says: compile, analyze, sources, or none for a mistake
that is known to pass. The tools are asked in this order, and the first to speak is it."""

import re
import subprocess
import sys

import check_sources


def spoken(command):
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    return re.findall(r"^.*: (?:error|warning): .*$", result.stderr, re.MULTILINE)


def main():
    path, clang, flags = sys.argv[1], sys.argv[2], sys.argv[3 : sys.argv.index("--")]
    analyzer = sys.argv[sys.argv.index("--") + 1 :]
    with open(path, encoding="utf-8") as file:
        tool, _, text = file.readline().removeprefix("// EXPECT ").strip().partition(": ")
    checks = {
        "compile": lambda: spoken([clang, *flags, "-fsyntax-only", path]),
        "analyze": lambda: spoken([clang, *flags, *analyzer, path]),
        "sources": lambda: list(check_sources.breaches(path, flags)),
    }
    for name, check in checks.items():
        if lines := check():
            print(f"{name} says:", *lines, sep="\n")
            sys.exit(0 if name == tool and any(text in line for line in lines) else 1)
    print("nothing found the mistake")
    sys.exit(0 if tool == "none" else 1)


if __name__ == "__main__":
    main()
