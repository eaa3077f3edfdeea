"""check_symbols.py TABLE OBJECT...: every class, C function, constant and selector of the platform
that the Mach-O objects use must stand in TABLE, unless the objects define it themselves or it is
the compiler's, the C or C++ library's or the portable code's."""

import re
import sys

import mach_o
import symbol_table

RUNTIME = re.compile(
    r"""__Z                                              # C++: Trovel's own and the library's
      | ___(?:cxa|gxx|clang|objc|stack_chk|CFConstant|NSArray0|NSDictionary0)
      | __objc | _objc_ | __Unwind | __Block | __NSConcrete
      | _(?:mem(?:cpy|move|set|cmp|chr)|strlen|strcmp|bzero|free|malloc|abort|unlink)$
    """,
    re.VERBOSE,
)
CLASS = re.compile(r"_OBJC_(?:META)?CLASS_\$_(\w+)$")
# Type encodings and instance variables, which lie beside the selectors.
NOT_A_SELECTOR = re.compile(r"\.cxx|_|[a-zA-Z]\w*_$|T[^:]*,")


def unknown(table, objects):
    rows = symbol_table.rows(table)
    names = {row["name"] for row in rows}
    selectors = set().union(*(symbol_table.selectors(row) for row in rows))
    defined = set().union(*(o.defined for o in objects))
    for symbol in sorted(set().union(*(o.undefined for o in objects)) - defined):
        named_class = CLASS.match(symbol)
        name = named_class.group(1) if named_class else symbol[1:]
        if name not in names and (named_class or not RUNTIME.match(symbol)):
            yield f"{name} is not in the table"
    own = {m.group(1) for s in defined if (m := re.match(r"[-+]\[\w+(?:\(\w+\))? (\S+)\]", s))}
    used = set().union(*(o.method_names for o in objects))
    for selector in sorted(used - own - selectors):
        if not NOT_A_SELECTOR.match(selector):
            yield f"the selector {selector} is not in the table"


def main():
    breaches = list(unknown(sys.argv[1], [mach_o.read(path) for path in sys.argv[2:]]))
    print("\n".join(breaches))
    sys.exit(1 if breaches else 0)


if __name__ == "__main__":
    main()
