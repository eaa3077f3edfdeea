"""check_flags.py COMPILE_COMMANDS: how the build for a Mac compiles. Every source says which
standard it is of, Objective-C++ is counted by ARC, and a user's newer SDK may warn without stopping
the build."""

import json
import shlex
import sys

STANDARDS = {"-std=c++23", "-std=c++2b"}


def breaches(source, flags):
    if not STANDARDS & set(flags):
        yield f"{source} is compiled without a standard"
    if source.endswith(".mm") and "-fobjc-arc" not in flags:
        yield f"{source} is compiled without ARC"
    if "-Werror" in flags:
        yield f"{source} takes warnings for errors"


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        commands = json.load(file)
    found = [text for command in commands
             for text in breaches(command["file"], shlex.split(command["command"]))]
    print("\n".join(found) or f"{len(commands)} commands")
    is_mac_build = any(command["file"].endswith(".mm") for command in commands)
    sys.exit(1 if found or not is_mac_build else 0)


if __name__ == "__main__":
    main()
