"""A row with a submenu is opened by AppKit's own action, -submenuAction:, sent to the row's
target if there is one. A target of ours does not know it, so automatic enabling makes the row grey:
whoever gives rows submenus sets a target only where there is an action to send to it."""

from apple_clang import Kind, walk

FUNCTIONS = (Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.OBJC_INSTANCE_METHOD_DECL,
             Kind.OBJC_CLASS_METHOD_DECL)


def assigned(cursor):
    """The menu row's property that this statement writes, if it is such a statement."""
    if cursor.kind != Kind.BINARY_OPERATOR:
        return None
    written = next(cursor.get_children(), None)
    if written is None or written.kind != Kind.MEMBER_REF_EXPR or written.referenced is None:
        return None
    owner = written.referenced.semantic_parent
    return written.spelling if owner is not None and owner.spelling == "NSMenuItem" else None


def assignments(cursor, is_conditional=False):
    """What is written to menu rows in a function, and whether under a condition."""
    name = assigned(cursor)
    if name is not None:
        yield name, cursor.location.line, is_conditional
    for child in cursor.get_children():
        yield from assignments(child, is_conditional or cursor.kind == Kind.IF_STMT)


def breaches(path, declarations):
    for declaration in declarations:
        if declaration.location.file is None or declaration.location.file.name != path:
            continue
        for function in walk(declaration):
            if function.kind not in FUNCTIONS:
                continue
            written = list(assignments(function))
            if all(name != "submenu" for name, _, _ in written):
                continue
            for name, line, is_conditional in written:
                if name == "target" and not is_conditional:
                    yield f"{path}:{line}: a row that may have a submenu gets a target"
