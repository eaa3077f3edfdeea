#!/usr/bin/env python3
"""check_mutant.py NAME MUTANTS BUILD: plants one mistake of the list MUTANTS in a source of the
macOS backend, and passes if the tests that the list names for it then fail.

A mistake in the list is a name, the file in platform/macos and the tests that catch it, the text
that is taken out, and the text that takes its place:

    == name | file | tests
    -text
    +text
"""

import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

TIME_LIMIT = 100


def read(name, path):
    """File, filter, text to take out and text to put in."""
    blocks = path.read_text().split("\n== ")[1:]
    for block in blocks:
        head, *lines = block.split("\n")
        title, source, tests = (part.strip() for part in head.split("|"))
        if title == name:
            out, into = (
                "\n".join(line[1:] for line in lines if line.startswith(mark)) for mark in "-+")
            return source, tests, out, into
    raise SystemExit(f"no mutant is called {name}")


def run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, **options)


def command_for(source, build, mutant, target):
    """How the build compiles the source, said of the mutant."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        if pathlib.Path(entry["file"]) == source:
            words = shlex.split(entry["command"])
            words[words.index("-o") + 1] = str(target)
            words[words.index("-c") + 1] = str(mutant)
            cache = shutil.which("ccache")
            return ([cache] if cache else []) + words
    raise SystemExit(f"the build does not compile {source}")


def main():
    name, *paths = sys.argv[1:]
    mutants, build = (pathlib.Path(path).resolve() for path in paths)
    root = mutants.parents[3]
    file, tests, out, into = read(name, mutants)
    source = root / "platform/macos" / file
    text = source.read_text()
    if text.count(out) != 1:
        raise SystemExit(f"{file} has this {text.count(out)} times:\n{out}")
    folder = build / "mutants" / name
    folder.mkdir(parents=True, exist_ok=True)
    mutant, target, program = folder / source.name, folder / "mutant.o", folder / "mutant"
    mutant.write_text(text.replace(out, into))
    compiled = run(command_for(source, build, mutant, target), cwd=build)
    if compiled.returncode != 0:
        raise SystemExit("the mutant does not compile:\n" + compiled.stderr)
    link = (build / "link.txt").read_text().split()
    linked = run([link[0], str(target), *link[1:], "-o", str(program)], cwd=build)
    if linked.returncode != 0:
        raise SystemExit("the mutant does not link:\n" + linked.stderr)
    try:
        result = run([str(program), f"--gtest_filter={tests}", "--gtest_brief=1"],
                     env={**os.environ, "GTEST_FAIL_FAST": "1"}, timeout=TIME_LIMIT)
    except subprocess.TimeoutExpired:
        print("caught: it never ends")
        return
    finally:
        program.unlink()
    if result.returncode == 0:
        raise SystemExit(f"nobody caught it; {tests} passed:\n{result.stdout}")
    print("caught:\n" + "\n".join((result.stdout + result.stderr).splitlines()[:12]))


main()
