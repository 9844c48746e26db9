"""Reads the TypeScript declarations of the macOS SDK: what its frameworks have, as names and counts of arguments.

The declarations are generated from the SDK's own headers, one statement or member a line. A selector stands there without
its colons, each part after the first capitalised: `initWithTitle:action:` is `initWithTitleAction`."""

import re

BLOCK = re.compile(r"^declare (class|interface) (\w+)(?:<.*?>)?(?: extends ([^{]*?))?(?: implements ([^{]*?))? \{")
FUNCTION = re.compile(r"^declare function (\w+)\$?(?:<.*?>)?(\(.*\)): (.*);$")
CONSTANT = re.compile(r"^declare const (\w+)\$?: (.*);$")
VALUES = re.compile(r"^declare const (\w+): \{$")
VALUE = re.compile(r"^  (\w+): (-?\d+),$")
ALIAS = re.compile(r"^interop\.Enum<typeof (\w+)>$")
TYPE = re.compile(r"^type (\w+) =")
MEMBER = re.compile(r"^  (static )?(readonly )?(get |set )?(\w+)\$?\??(?:<.*?>)?([(:])(.*);$")
IGNORED = re.compile(r"^\s*(//|: |readonly \[)")  # remarks of the generator, fields without a name, what only JavaScript has
CLOSING = {"(": ")", "<": ">", "{": "}", "[": "]"}


class Unreadable(Exception):
    """A line of an unknown form: the check stops rather than miss a part of the SDK."""


def pieces(text, separator=","):
    """`text` cut at each separator that stands outside of all brackets; "=>" closes none."""
    depth, start, found = 0, 0, []
    for place, letter in enumerate(text.replace("=>", "  ")):
        if letter in CLOSING:
            depth += 1
        elif letter in CLOSING.values():
            depth -= 1
        elif letter == separator and depth == 0:
            found.append(text[start:place].strip())
            start = place + 1
    found.append(text[start:].strip())
    return [piece for piece in found if piece]


def arguments(text):
    """The arguments of a parenthesised list; TypeScript's own `this` is none."""
    return [piece for piece in pieces(text[1:-1]) if not piece.startswith("this:")]


def signature(text):
    """The types of a result and the arguments, from "(name: type): result"."""
    depth = 0
    for place, letter in enumerate(text):
        depth += (letter == "(") - (letter == ")")
        if depth == 0:
            return [text[place + 1:].lstrip(": "), *(typeOf(argument) for argument in arguments(text[:place + 1]))]
    raise Unreadable(text)


def typeOf(argument):
    """The type of an argument that is written as "name: type"."""
    return argument.partition(":")[2].strip()


def names(text):
    """The names of a list of types, without what they are generic over."""
    return [re.sub(r"<.*", "", piece, flags=re.S).strip() for piece in pieces(text or "")]


def empty():
    """An empty index. `classes` and `protocols` have the members of each by name, a
    signature is a list of types, the result's first; `enums` the values of each
    enumeration, whose names lack what they have in common; `aliases` the former names of such values."""
    return {"classes": {}, "protocols": {}, "functions": {}, "constants": [], "enums": {}, "aliases": {}, "types": []}


def read(text, index):
    """Adds what the declarations `text` of one framework have to `index`."""
    block = None
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("  "):
            if block is not None and not IGNORED.match(line):
                block(line, number)
        elif line.startswith(("declare ", "type ")):
            block = _statement(line, number, index)


def _statement(line, number, index):
    """Takes one statement; the result takes the lines of its body, None leaves them alone."""
    if found := BLOCK.match(line):
        return _type(found, index)
    if found := VALUES.match(line):
        return _values(index["enums"].setdefault(found[1], {}))
    if found := FUNCTION.match(line):
        index["functions"][found[1]] = [found[3], *(typeOf(argument) for argument in arguments(found[2]))]
    elif found := CONSTANT.match(line):
        if alias := ALIAS.match(found[2]):
            index["aliases"][found[1]] = alias[1]
        else:
            index["constants"].append(found[1])
    elif found := TYPE.match(line):
        index["types"].append(found[1])
    else:
        raise Unreadable(f"line {number}: {line}")
    return None


def _type(found, index):
    kind, name = found[1], found[2]
    if kind == "class" and name in index["protocols"]:
        # The value side of a protocol: it has nothing that the protocol lacks.
        return None
    entry = {"super": None, "protocols": names(found[4]), "instance": {}, "static": {}}
    if kind == "interface":
        entry["protocols"] = names(found[3])
        index["protocols"][name] = entry
    else:
        entry["super"] = next(iter(names(found[3])), None)
        known = index["classes"].setdefault(name, entry)
        known["protocols"] += [protocol for protocol in entry["protocols"] if protocol not in known["protocols"]]
        entry = known
    return _members(entry)


def _values(values):
    def take(line, number):
        if found := VALUE.match(line):
            values[found[1]] = int(found[2])

    return take


def _members(entry):
    def take(line, number):
        found = MEMBER.match(line)
        if not found:
            raise Unreadable(f"line {number}: {line}")
        static, readonly, accessor, name, mark, rest = found.groups()
        member = entry["static" if static else "instance"].setdefault(name, {"signatures": [], "property": None, "type": None})
        if accessor or mark == ":":
            writable = accessor == "set " or (not accessor and not readonly)
            member["property"] = "readwrite" if writable or member["property"] == "readwrite" else "readonly"
            member["type"] = rest.strip() if mark == ":" else member["type"]
        else:
            member["signatures"].append(signature(mark + rest))

    return take
