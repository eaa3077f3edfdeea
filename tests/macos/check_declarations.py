"""check_declarations.py TABLE UMBRELLA -- FLAGS...: what the headers that UMBRELLA includes declare
must stand in TABLE with the same types, nullability and value, and nothing else may stand there."""

import os
import re
import sys
from pathlib import Path

import symbol_table
from apple_clang import CONTAINERS, METHODS, Kind, class_name, is_class_method, parse

# What a declaration may carry besides its type, and the two spellings of one thing.
NOT_THE_TYPE = re.compile(
    r"\b(?:API_AVAILABLE_MAC\s*\([^)]*\)|NS_DESIGNATED_INITIALIZER|NS_RETURNS_INNER_POINTER"
    r"|DECL_MAIN_THREAD|CF_RETURNS_RETAINED|NS_RETURNS_RETAINED|NS_NOESCAPE|NS_UNAVAILABLE"
    r"|__kindof)")
LINKAGE = re.compile(
    r'^(?:FOUNDATION_EXPORT|APPKIT_EXTERN|CF_EXPORT|extern "C"|static(?: inline)?)\s+')
EAST_CONST = re.compile(r"(\w+\s*(?:<\w+>)?\s*(?:_Nonnull)?)\s*\bconst\b")


def normal(signature):
    text = re.sub(r"//.*", "", signature).strip()
    if not text.startswith("@"):
        text = re.sub(r"\{.*\}", "", text)
    text = EAST_CONST.sub(r"const \1", LINKAGE.sub("", NOT_THE_TYPE.sub("", text).strip()))
    if re.match(r"[-+]\s*\(", text):
        text = normal_method(text)
    return re.sub(r"\s+", "", text).rstrip(";")


def normal_method(text):
    """A method without the names of its parameters, nullability as a mark behind each type."""
    parts, depth, piece = [text[0]], 0, ""
    for character in text[1:].rstrip("; ") + "(":
        if character == "(":
            depth += 1
            if depth == 1:
                label = re.search(r"\w+:?$", piece.strip())
                parts.append(label.group() if label else "")
                piece = ""
                continue
        elif character == ")":
            depth -= 1
            if depth == 0:
                nullable = "?" if re.match(r"\s*nullable\b", piece) else ""
                kept = re.sub(r"^\s*(?:nullable|nonnull|out|inout)\b", "", piece)
                parts.append(f"({kept}{nullable})")
                piece = ""
                continue
        piece += character
    # What follows the last type is a parameter's name, if it had one, or the whole selector.
    if len(parts) > 4:
        parts[-1] = ""
    return " ".join(parts)


class Comparison:
    def __init__(self, table, root):
        self.table = {(row["kind"], row["name"]): row["signature"] for row in table}
        self.root = root
        self.seen, self.breaches = set(), []

    def declare(self, kinds, name, cursor, differs):
        key = next(((kind, name) for kind in kinds if (kind, name) in self.table), None)
        where = f"{os.path.relpath(cursor.location.file.name, self.root)}:{cursor.location.line}"
        if key is None:
            self.breaches.append(f"{where}: {name} is not in the table")
            return
        self.seen.add(key)
        if difference := differs(self.table[key]):
            self.breaches.append(f"{where}: {name} is {difference[0]}; table: {difference[1]}")

    def compare(self, kinds, name, cursor):
        here = source_of(cursor)
        self.declare(kinds, name, cursor, lambda row: None if normal(here) == normal(row) else (
            normal(here), normal(row)))

    def compare_value(self, enumerator):
        value = enumerator.enum_value
        self.declare(("constant",), enumerator.spelling, enumerator, lambda row: None
                     if value == int(re.search(r"= (-?\d+)", row).group(1)) else (value, row))

    def walk(self, cursor):
        location = cursor.location.file
        if location is None or not Path(location.name).resolve().is_relative_to(self.root):
            return
        if cursor.kind in CONTAINERS:
            self.walk_container(cursor)
        elif cursor.kind == Kind.FUNCTION_DECL:
            self.compare(("function", "inline"), cursor.spelling, cursor)
        elif cursor.kind == Kind.VAR_DECL:
            self.compare(("global",), cursor.spelling, cursor)
        elif cursor.kind == Kind.ENUM_DECL:
            for child in cursor.get_children():
                if child.kind == Kind.ENUM_CONSTANT_DECL:
                    self.compare_value(child)

    def walk_container(self, container):
        owner, children = class_name(container), list(container.get_children())
        places = {place(c) for c in children if c.kind == Kind.OBJC_PROPERTY_DECL}
        for child in children:
            if child.kind == Kind.OBJC_PROPERTY_DECL:
                self.compare(("property",), f"{owner}.{child.spelling}", child)
            elif child.kind in METHODS and place(child) not in places:
                sign = "+" if is_class_method(child) else "-"
                self.compare(("method",), f"{sign}[{owner} {child.spelling}]", child)


def place(cursor):
    return cursor.location.line, cursor.location.column


def source_of(cursor):
    """The declaration as it is written, up to its semicolon or the end of its body."""
    data = Path(cursor.location.file.name).read_bytes()
    end = cursor.extent.end.offset
    while data[end - 1 : end] not in (b";", b"}") and data[end : end + 1] not in (b";", b"{"):
        end += 1
    return re.sub(r"\s+", " ", data[cursor.extent.start.offset : end].decode())


def main():
    table, umbrella, flags = sys.argv[1], sys.argv[2], sys.argv[4:]
    comparison = Comparison(symbol_table.rows(table), Path(umbrella).resolve().parent)
    for declaration in parse(umbrella, flags):
        comparison.walk(declaration)
    for kind, name in sorted(comparison.table.keys() - comparison.seen):
        if kind not in ("class", "protocol", "typedef", "struct", "macro", "category"):
            comparison.breaches.append(f"{name} is in the table and is not declared")
    print("\n".join(comparison.breaches))
    print(f"{len(comparison.seen)} declarations compared")
    sys.exit(1 if comparison.breaches else 0)


if __name__ == "__main__":
    main()
