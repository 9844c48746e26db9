"""Checks the functions, constants, values and the names of types and macros that the sources use against the SDK."""

import re
from pathlib import Path

import names
from scopes import SILENT, blank
from sources import Fault
from values import same

INCLUDE = re.compile(r"^[ \t]*#[ \t]*(?:include|import).*$", re.M)
IMPORT = re.compile(r"^[ \t]*#[ \t]*import[ \t]*<(\w+)/([\w/]+)\.h>")
WORD = re.compile(r"\b[A-Za-z_]\w*\b")


def words(text):
    """The names that a source uses, each with the lines it stands in."""
    found = {}
    for number, line in enumerate(INCLUDE.sub("", blank(SILENT, text)).split("\n"), 1):
        for word in WORD.findall(line):
            found.setdefault(word, set()).add(number)
    return found


class SymbolChecks:
    """`inside(path)` says which headers are the SDK's here; what comes from others is none of our business."""

    def __init__(self, uses, headers, values, explained, inside):
        self.uses = uses
        self.headers = headers
        self.values = values
        self.index = values.index
        self.explained = explained
        self.inside = inside
        self.names = self.index.everyName()

    def ofSdk(self, kind):
        return self.headers.of(kind, self.inside)

    def functions(self):
        """What is called; the second part of each is whether it is known to the SDK's declarations."""
        known = self.ofSdk("function")
        for call in self.uses.calls:
            if call.name in known and not self.explained.has("function", call.name):
                yield call

    def functionFaults(self):
        for call in self.functions():
            if call.name not in self.index.functions:
                yield self._missing(call.place.path, call.place.line, "function", call.name, self.index.functions)
                continue
            wanted = len(self.index.functions[call.name]) - 1
            variadic = call.name in self.headers.variadic
            if call.arguments is not None and call.arguments != wanted and not (variadic and call.arguments > wanted):
                yield Fault(call.place.path, call.place.line, f"{call.name} takes {wanted} arguments, not {call.arguments}")

    def constants(self):
        known = self.ofSdk("constant") | self.ofSdk("value")
        for constant in self.uses.constants:
            if constant.name in known and not self.explained.has("constant", constant.name):
                yield constant

    def constantFaults(self, measured):
        for constant in self.constants():
            yield from self.constantFault(constant.place, constant.name, constant.enumeration, measured.get(constant.name))

    def constantFault(self, place, name, enumeration, number):
        """`number` is what the name stands for here, None for a variable."""
        if name in self.index.aliases and not self.explained.has("old", name):
            yield Fault(place.path, place.line, f"{name} is a former name of a value of {self.index.aliases[name]}")
        elif numbers := self.values.numbers(name, enumeration):
            if number is not None and not any(same(number, other) for other in numbers) and not self.explained.has("value", name):
                real = " or ".join(str(other) for other in sorted(numbers))
                yield Fault(place.path, place.line, f"{name} is {real} in the SDK, and {number} here")
        elif name not in self.index.constants and name not in self.index.aliases:
            near = self.values.nearest(name)
            yield Fault(place.path, place.line, f"the SDK has no constant {name}" + (f" (nearest: {near})" if near else ""))

    def nameFaults(self, sources):
        """The types and macros that the texts of the sources mention."""
        types = {**{name: "type" for name in self.ofSdk("type")}, **{name: "class" for name in self.ofSdk("class")},
                 **{name: "protocol" for name in self.ofSdk("protocol")}}
        macros = {name for name, file in self.headers.macros.items() if self.inside(file)}
        for path in sources:
            for word, lines in words(path.read_text(encoding="utf-8", errors="replace")).items():
                kind = "macro" if word in macros else types.get(word)
                if kind and not self._known(word) and not self.explained.has("macro" if kind == "macro" else "type", word):
                    yield self._missing(path, min(lines), kind, word, self.names)

    def headerFaults(self, sources):
        """A framework is imported whole: the declarations do not tell which of its headers brings which, and many of the system's only
        announce the classes that they mention."""
        for path in sources:
            for number, line in enumerate(path.read_text(encoding="utf-8", errors="replace").splitlines(), 1):
                found = IMPORT.match(line)
                if found and found[1] != found[2] and not self.explained.has("header", f"{found[1]}/{found[2]}.h"):
                    yield Fault(path, number, f"<{found[1]}/{found[2]}.h> is a part: import <{found[1]}/{found[1]}.h>")

    def _known(self, name):
        index = self.index
        return (name in index.classes or index.protocol(name) or name in index.enums or name in index.types
                or name in index.constants or name in index.functions or bool(self.values.full.get(name)))

    def _missing(self, path, line, kind, name, candidates):
        near = names.nearest(name, candidates)
        return Fault(Path(path), line, f"the SDK has no {kind} {name}" + (f" (nearest: {near})" if near else ""))
