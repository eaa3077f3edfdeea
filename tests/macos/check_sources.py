"""check_sources.py FILE... -- FLAGS...: what a compiler does not see in Objective-C++ files."""

import sys

import blocks
import menus
import overrides
from apple_clang import parse


def breaches(path, flags):
    declarations = parse(path, flags)
    yield from overrides.breaches(path, declarations)
    yield from blocks.breaches(path, declarations)
    yield from menus.breaches(path, declarations)


def main():
    split = sys.argv.index("--")
    found = [text for path in sys.argv[1:split] for text in breaches(path, sys.argv[split + 1 :])]
    print("\n".join(found))
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
