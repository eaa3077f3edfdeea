"""Holds the tree to its own rules. `tidy.py rules` judges the sources, `tidy.py format` asks
clang-format, `tidy.py python` asks pylint and vulture about all Python; each prints every breach as
file:line and fails if there is one."""

import argparse
import os
import subprocess
import sys
from pathlib import Path

import rules
from source import Source

TEXT_SUFFIXES = {
    ".h", ".cpp", ".mm", ".m", ".py", ".sh", ".cmake", ".txt", ".json", ".md", ".in", ".html",
    ".js", ".plist", ".desktop", ".yml", ".svg", "",
}
# Programs that are wrong on purpose, and declarations that are spelled as their makers spell them.
NOT_OURS_TO_JUDGE = {"bad", "decl", "libc"}
NOT_SOURCES = {"build", "__pycache__"}
PYLINT = ("/usr/bin/python3", "-m", "pylint", "--rcfile", Path(__file__).with_name("pylintrc"))
# What http.server calls by these names looks unused otherwise.
VULTURE = ("/usr/bin/python3", "-m", "vulture", "--ignore-names", "do_GET,do_POST,log_message")


def files_of(root):
    for folder, folders, names in os.walk(root):
        folders[:] = sorted(
            name for name in folders
            if name not in NOT_SOURCES | NOT_OURS_TO_JUDGE and not name.startswith(".")
        )
        for name in sorted(names):
            path = Path(folder, name)
            if path.suffix in TEXT_SUFFIXES and not name.startswith("."):
                yield path


def sources_of(root):
    return [
        Source(path.relative_to(root).as_posix(), path.read_text(encoding="utf-8"))
        for path in files_of(root)
    ]


def check_rules(root):
    sources = sources_of(root)
    breaches = [*rules.judge(sources), *rules.unused_headers(sources)]
    for rule, path, line, message in breaches:
        print(f"{path}:{line}: {message} [{rule}]")
    print(f"{len(sources)} files, {len(breaches)} breaches")
    return not breaches


def check_format(root, clang_format):
    files = [path for path in files_of(root) if path.suffix in (".h", ".cpp", ".mm", ".m")]
    result = subprocess.run([clang_format, "--dry-run", "--Werror", *files], check=False)
    return result.returncode == 0


def check_python(root):
    files = [path.relative_to(root) for path in files_of(root) if path.suffix == ".py"]
    results = [subprocess.run([*command, *files], cwd=root, check=False)
               for command in (PYLINT, VULTURE)]
    return all(result.returncode == 0 for result in results)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("what", choices=("rules", "format", "python"))
    parser.add_argument("--root", type=Path, default=Path(__file__).resolve().parents[2])
    parser.add_argument("--clang-format", default="clang-format-19")
    arguments = parser.parse_args()
    root = arguments.root.resolve()
    if arguments.what == "rules":
        passed = check_rules(root)
    elif arguments.what == "format":
        passed = check_format(root, arguments.clang_format)
    else:
        passed = check_python(root)
    sys.exit(0 if passed else 1)


if __name__ == "__main__":
    main()
