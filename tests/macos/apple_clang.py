"""libclang's view of an Objective-C++ file, for the checks of this folder."""

import clang.cindex
from clang.cindex import CursorKind as Kind

LLVM = "/usr/lib/llvm-19/lib"

CONTAINERS = (Kind.OBJC_INTERFACE_DECL, Kind.OBJC_PROTOCOL_DECL, Kind.OBJC_CATEGORY_DECL)
METHODS = (Kind.OBJC_INSTANCE_METHOD_DECL, Kind.OBJC_CLASS_METHOD_DECL)
SCOPES = (Kind.LINKAGE_SPEC, Kind.UNEXPOSED_DECL, Kind.NAMESPACE)

clang.cindex.Config.set_library_file(LLVM + "/libclang-19.so.1")


def parse(path, flags):
    """The file's top-level declarations. A file that does not compile is an error."""
    arguments = ["-x", "objective-c++", *flags, "-isystem", LLVM + "/clang/19/include"]
    unit = clang.cindex.Index.create().parse(path, args=arguments)
    errors = [str(note) for note in unit.diagnostics if note.severity >= note.Error]
    if errors:
        raise SystemExit("\n".join(errors))
    return list(declarations(unit.cursor, unit))


def declarations(cursor, unit):
    """What is declared in a scope, the contents of extern "C" and of namespaces included; the
    standard library is long, and none of it is asked for."""
    for child in cursor.get_children():
        if child.kind == Kind.NAMESPACE and child.spelling == "std":
            continue
        if child.kind in SCOPES:
            yield from declarations(child, unit)
        else:
            # A cursor is only good as long as its translation unit.
            child.unit = unit
            yield child


def class_name(container):
    """The class or protocol that an interface, a category or a protocol adds to."""
    if container.kind != Kind.OBJC_CATEGORY_DECL:
        return container.spelling
    references = [c for c in container.get_children() if c.kind == Kind.OBJC_CLASS_REF]
    return references[0].spelling


def is_class_method(method):
    return method.kind == Kind.OBJC_CLASS_METHOD_DECL


def walk(cursor):
    """The cursor and all that lies in it."""
    yield cursor
    for child in cursor.get_children():
        yield from walk(child)
