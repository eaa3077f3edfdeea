"""A method that a class defines must be declared: in its interface or an extension, in a superclass
or in a protocol that one of them adopts. This finds the misspelt override or delegate method, which
a compiler takes for one more method.

A method that a subclass of the system's adds must bear our name: one without could be called or
overridden under the same name by the system's own class, which declares far from everything."""

from apple_clang import CONTAINERS, METHODS, Kind, class_name, is_class_method


class Declared:
    """The methods that the classes and protocols of a file declare."""

    def __init__(self, declarations):
        self.methods, self.superclass, self.adopted = {}, {}, {}
        for container in declarations:
            if container.kind in CONTAINERS:
                self.add(container)

    def add(self, container):
        name = class_name(container)
        key = (container.kind == Kind.OBJC_PROTOCOL_DECL, name)
        for child in container.get_children():
            if child.kind in METHODS:
                method = (is_class_method(child), child.spelling)
                self.methods.setdefault(key, set()).add(method)
            elif child.kind == Kind.OBJC_SUPER_CLASS_REF:
                self.superclass[name] = child.spelling
            elif child.kind == Kind.OBJC_PROTOCOL_REF:
                self.adopted.setdefault(key, set()).add(child.spelling)

    def knows(self, name, method, is_protocol=False):
        key = (is_protocol, name)
        if method in self.methods.get(key, ()):
            return True
        if any(self.knows(other, method, True) for other in self.adopted.get(key, ())
               if (is_protocol, other) != (True, name)):
            return True
        parent = None if is_protocol else self.superclass.get(name)
        return parent is not None and self.knows(parent, method)


    def is_added(self, name, method):
        """Whether no superclass or protocol of a subclass of the system's knows that method."""
        parent = self.superclass.get(name)
        if parent in (None, "NSObject") or self.knows(parent, method):
            return False
        adopted = self.adopted.get((False, name), ())
        return not any(self.knows(other, method, True) for other in adopted)


def breaches(path, declarations):
    declared = Declared(declarations)
    for implementation in declarations:
        if implementation.kind != Kind.OBJC_IMPLEMENTATION_DECL:
            continue
        for method in implementation.get_children():
            if method.kind not in METHODS or method.spelling.startswith(".cxx"):
                continue
            name, key = implementation.spelling, (is_class_method(method), method.spelling)
            said = f"{path}:{method.location.line}: [{name} {method.spelling}]"
            if not declared.knows(name, key):
                yield f"{said} is declared nowhere"
            elif declared.is_added(name, key) and "trovel" not in method.spelling.lower():
                yield f"{said} may be a name of the system's own"
