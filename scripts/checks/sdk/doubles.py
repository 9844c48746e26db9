"""Checks that the double of the frameworks is like them: classes and what they inherit from, protocols, types, functions, values.

A method that only the double's classes have does no harm: tests look at them by such ones, and the backend, whose messages
are checked against the SDK, cannot use it."""

from sources import Fault
from syntaxtree import Place
from typewords import difference


class DoubleChecks:
    """`headers` are those compiled with, `ours(path)` says which of them are the double's."""

    def __init__(self, headers, responders, symbols, ours):
        self.headers = headers
        self.responders = responders
        self.index = responders.index
        self.symbols = symbols
        self.explained = symbols.explained
        self.ours = ours
        self.parents = {container.name: container.parent for container in headers.containers if container.kind == "ObjCInterfaceDecl"}

    def containers(self):
        return [container for container in self.headers.containers if self.ours(container.file)]

    def values(self):
        return self.headers.of("value", self.ours)

    def faults(self, measured):
        for container in self.containers():
            yield from self._container(container)
        for name in self.headers.of("function", self.ours):
            yield from self._function(name)
        for name in self.headers.of("constant", self.ours) | self.values():
            if not self.explained.has("constant", name):
                place = Place(self.headers.origins[name][1], self.headers.lines[name])
                yield from self.symbols.constantFault(place, name, self.headers.enums.get(name, ""), measured.get(name))

    def _container(self, container):
        category = container.kind == "ObjCCategoryDecl"
        name = container.parent if category else container.name
        if name not in self.index.classes and not self.index.protocol(name):
            if not self.explained.has("type", name):
                near = self.index.nearestClass(name)
                yield Fault(container.file, container.line, f"the SDK has no {name}" + (f" (nearest: {near})" if near else ""))
            return
        real = self.index.classes.get(name, {}).get("super")
        parent = self._parent(container)
        if parent and parent != real:
            yield Fault(container.file, container.line, f"{name} is a {real} in the SDK, and a {parent} here")
        if container.kind == "ObjCProtocolDecl":
            yield from self._protocol(container)
        yield from self._types(name, container)

    def _parent(self, container):
        """What the class inherits from, not counting classes that are the double's own."""
        parent = container.parent if container.kind == "ObjCInterfaceDecl" else None
        while parent and parent not in self.index.classes:
            parent = self.parents.get(parent)
        return parent

    def _protocol(self, container):
        for method in container.methods:
            if why := self.responders.fault([container.name], method.selector, method.static):
                yield Fault(container.file, method.line, f"protocol {container.name} has no {method.selector} in the SDK ({why})")

    def _types(self, name, container):
        for method in container.methods:
            forms = self.responders.signatures(name, method.selector, method.static)
            yield from self._compare(container.file, method.line, f"[{name} {method.selector}]", method.types, forms)

    def _compare(self, path, line, name, here, forms):
        if said := difference(name, here, forms, self.headers.typedefs, self.index):
            yield Fault(path, line, said)

    def _function(self, name):
        path, line = self.headers.origins[name][1], self.headers.lines[name]
        if self.explained.has("function", name):
            return
        here, real = self.headers.functions[name], self.index.functions.get(name)
        if real is None:
            yield Fault(path, line, f"the SDK has no function {name}")
        elif len(here) != len(real):
            yield Fault(path, line, f"{name} takes {len(real) - 1} arguments in the SDK, {len(here) - 1} here")
        else:
            yield from self._compare(path, line, name, here, [real])
