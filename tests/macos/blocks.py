"""A block that outlives the function around it must not hold what dies with the function (a C++
reference, a C++ object's `this`), and a block for another queue must not use what belongs to the
main thread. No compiler says either."""

from apple_clang import Kind, walk
from clang.cindex import TypeKind

MAIN_THREAD = "main-thread"
REFERENCES = (TypeKind.LVALUEREFERENCE, TypeKind.RVALUEREFERENCE)


def contains(outer, inner):
    start, end = outer.extent.start.offset, outer.extent.end.offset
    return (inner.location.file is not None
            and inner.location.file.name == outer.location.file.name
            and start <= inner.location.offset < end)


def captures(block):
    for use in walk(block):
        if use.kind == Kind.CXX_THIS_EXPR:
            yield use, "the block holds a C++ object's `this`"
        elif use.kind == Kind.DECL_REF_EXPR and use.referenced is not None:
            variable = use.referenced
            if variable.type.kind in REFERENCES and not contains(block, variable):
                yield use, f"the block holds the reference {variable.spelling}"


def is_for_main_thread(declaration):
    """Whether a method or property is of a class that is bound to the main thread."""
    owner = declaration.semantic_parent
    while owner is not None:
        children = list(owner.get_children())
        if any(c.kind == Kind.ANNOTATE_ATTR and c.spelling == MAIN_THREAD for c in children):
            return True
        owner = next((c.referenced for c in children if c.kind == Kind.OBJC_SUPER_CLASS_REF), None)
    return False


def is_to_another_queue(call):
    arguments = list(call.get_arguments())
    if call.spelling != "dispatch_async" or not arguments:
        return False
    return all(use.spelling != "dispatch_get_main_queue" for use in walk(arguments[0]))


def off_main_thread(call):
    for use in walk(list(call.get_arguments())[1]):
        if use.kind in (Kind.OBJC_MESSAGE_EXPR, Kind.MEMBER_REF_EXPR) and use.referenced:
            if is_for_main_thread(use.referenced):
                yield use, f"{use.spelling} is for the main thread"


def breaches(path, declarations):
    for declaration in declarations:
        if declaration.location.file is None or declaration.location.file.name != path:
            continue
        for cursor in walk(declaration):
            found = ()
            if cursor.kind == Kind.BLOCK_EXPR:
                found = captures(cursor)
            elif cursor.kind == Kind.CALL_EXPR and is_to_another_queue(cursor):
                found = off_main_thread(cursor)
            for use, text in found:
                yield f"{path}:{use.location.line}: {text}"
