"""Holds what the compiler really read of each object against the rooms: directly or by way of
others, an object sees nothing of a room that its own may not include. Takes the folder of a build
that Ninja made."""

import re
import subprocess
import sys
from pathlib import Path

import rules

ROOT = Path(__file__).resolve().parents[2]


def reachable(room):
    """The room itself and all that it may see through others."""
    seen, pending = set(), [room]
    while pending:
        current = pending.pop()
        if current not in seen:
            seen.add(current)
            pending.extend(rules.ROOMS[current])
    return seen


def objects_of(listing, build):
    """Each object's files, the source first, as paths below the root where they lie there."""
    for part in re.split(r"\n(?=\S)", listing):
        head, *files = part.splitlines()
        if "(VALID)" not in head:
            continue
        paths = [Path(build, name.strip()).resolve() for name in files if name.strip()]
        if paths and paths[0].exists():
            yield [p.relative_to(ROOT) if p.is_relative_to(ROOT) else p for p in paths]


def breaches(objects):
    for source, *files in objects:
        room = None if source.is_absolute() else rules.room_of(source)
        if room is None:
            continue
        for path in files:
            seen = None if path.is_absolute() else rules.room_of(path)
            if seen is not None and seen not in reachable(room):
                yield f"{source} sees {path}, and {room} may not see {seen}"
            for prefix, speakers in rules.DISPLAY_SYSTEMS.items():
                may = {r for r in rules.ROOMS if reachable(r) & set(speakers)}
                if path.is_absolute() and f"/include/{prefix}" in str(path) and room not in may:
                    yield f"{source} sees {path}, and {room} may not speak to the display system"


def main():
    build = Path(sys.argv[1]).resolve()
    listing = subprocess.run(
        ["ninja", "-C", build, "-t", "deps"], check=True, capture_output=True, text=True).stdout
    objects = list(objects_of(listing, build))
    judged = sum(rules.room_of(source) is not None for source, *_ in objects)
    found = sorted(set(breaches(objects)))
    print("\n".join(found))
    print(f"{judged} objects, {len(found)} breaches")
    sys.exit(0 if judged and not found else 1)


if __name__ == "__main__":
    main()
