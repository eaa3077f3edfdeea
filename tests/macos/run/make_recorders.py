#!/usr/bin/env python3
"""make_recorders.py OUTPUT FAKES_FOLDER DECLARATIONS -- CLANG_FLAGS...

Writes an implementation of every class of the declarations that no fake implements. Its properties
keep what they are given, and each of its other methods records its name and answers zero, nil, or a
new object where nil is not allowed."""

import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from apple_clang import METHODS, class_name, is_class_method, parse  # noqa: E402
from clang.cindex import CursorKind as Kind  # noqa: E402

ATTRIBUTES = re.compile(
    r"\b(?:API_AVAILABLE_MAC\s*\([^)]*\)|NS_[A-Z_]+|DECL_MAIN_THREAD|CF_RETURNS_[A-Z_]+)")


def source_of(cursor):
    """A declaration as it is written, in one line, without what is no part of its type."""
    text = pathlib.Path(cursor.location.file.name).read_bytes()
    end = text.index(b";", cursor.extent.end.offset - 1)
    written = text[cursor.extent.start.offset : end].decode()
    return " ".join(ATTRIBUTES.sub(" ", written).split())


def result_of(signature):
    """The type that a method answers with."""
    depth = 0
    for at, letter in enumerate(signature):
        depth += (letter == "(") - (letter == ")")
        if letter == ")" and depth == 0:
            return signature[signature.index("(") + 1 : at]
    raise SystemExit(f"no result type: {signature}")


def body_of(owner, method, signature):
    result = result_of(signature)
    note = f'fakes::mac().record("{owner} {method.spelling}");'
    if method.spelling.startswith("init"):
        return f"self = [super init]; {note} return self;"
    if result in ("void", "IBAction"):
        return note
    is_new = result == "instancetype" and is_class_method(method)
    return f"{note} return {'[[self alloc] init]' if is_new else '{}'};"


def implementation(interface):
    members = list(interface.get_children())
    properties = {
        (m.location.line, m.location.column) for m in members if m.kind == Kind.OBJC_PROPERTY_DECL}
    lines = [f"@implementation {interface.spelling}"]
    for member in members:
        place = (member.location.line, member.location.column)
        if member.kind not in METHODS or place in properties:
            continue
        signature = source_of(member)
        if "unavailable" not in signature and "initWithCoder" not in signature:
            lines.append(f"{signature} {{ {body_of(interface.spelling, member, signature)} }}")
    return [*lines, "@end"]


def main():
    output, fakes, declarations = (pathlib.Path(a) for a in sys.argv[1:4])
    sources = [path.read_text() for path in fakes.glob("*.mm")]
    written = {name for text in sources for name in re.findall(r"@implementation (\w+)", text)}
    unit = [c for c in parse(str(declarations), sys.argv[5:]) if c.kind == Kind.OBJC_INTERFACE_DECL]
    lines = [
        f'#import "{declarations}"',
        '#include "tests/macos/run/fakes/mac.h"',
        '#pragma clang diagnostic ignored "-Weverything"',
    ]
    for interface in unit:
        if class_name(interface) not in written:
            lines += implementation(interface)
    output.write_text("\n".join(lines) + "\n")


main()
