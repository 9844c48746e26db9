"""Walks the compiler's syntax trees and collects what the sources use: messages, calls, constants, and their own classes."""

import re
from dataclasses import dataclass, field
from pathlib import Path

OBJECT = re.compile(r"^(?:const |__kindof |__unsafe_unretained |__strong )*(\w+)\s*(?:<(.*)>)?\s*\*?(?: ?(?:const|_Nullable|_Nonnull|__strong))*$")
PROTOCOLS = re.compile(r"^\w+(?:, ?\w+)*$")
UNTYPED = {"id", "Class", "instancetype"}


@dataclass(frozen=True)
class Place:
    path: Path
    line: int


@dataclass(frozen=True)
class Message:
    """A message that is sent. `receiver` is the name of a class or None for id and Class; `static` is true for a class."""

    place: Place
    selector: str
    receiver: str | None
    static: bool
    protocols: tuple = ()


@dataclass(frozen=True)
class Call:
    """A function that is called, with how many arguments; None where only its address is taken."""

    place: Place
    name: str
    arguments: int | None


@dataclass(frozen=True)
class Constant:
    """A variable or a value of an enumeration (then with its enumeration's name as the headers have it)."""

    place: Place
    name: str
    value: bool
    enumeration: str


@dataclass(frozen=True)
class Method:
    """A method that a class of ours implements; `types` are the result's and the arguments', as the compiler writes them."""

    place: Place
    owner: str
    selector: str
    static: bool
    types: tuple


@dataclass
class OwnClass:
    """A class or category of ours: what it stands on, and the methods it declares or implements."""

    parent: str | None = None
    protocols: set = field(default_factory=set)
    instance: set = field(default_factory=set)
    static: set = field(default_factory=set)


@dataclass
class Uses:
    """All that was found in some sources."""

    messages: set = field(default_factory=set)
    calls: set = field(default_factory=set)
    constants: set = field(default_factory=set)
    methods: set = field(default_factory=set)
    selectors: set = field(default_factory=set)
    classes: dict = field(default_factory=dict)

    def add(self, other):
        for name in ("messages", "calls", "constants", "methods", "selectors"):
            getattr(self, name).update(getattr(other, name))
        for name, found in other.classes.items():
            known = self.classes.setdefault(name, OwnClass())
            known.parent = known.parent or found.parent
            known.protocols |= found.protocols
            known.instance |= found.instance
            known.static |= found.static


def typeName(written):
    """A receiver's type as (class or None, protocols): "NSArray<NSString *> *" is an NSArray, "id<NSCopying>" anything."""
    found = OBJECT.match(written.strip())
    if not found:
        return None, ()
    inside = found[2] or ""
    protocols = tuple(part.strip() for part in inside.split(",")) if PROTOCOLS.match(inside) else ()
    return (None if found[1] in UNTYPED else found[1]), protocols


def _written(kind):
    """A type as the compiler's readable dump has it: its name and, where that is another, what it plainly is."""
    written, plain = kind["qualType"], kind.get("desugaredQualType", "")
    return f"'{written}':'{plain}'" if plain and plain != written else f"'{written}'"


class Walker:
    """Collects the uses in one source's trees; `ours(path)` says which files' uses count, `folder` is what paths begin in."""

    def __init__(self, folder, ours):
        self.folder = folder
        self.ours = ours
        self.uses = Uses()
        self.files = {}

    def walk(self, tree):
        # Each tree of a dump names its file anew, and then only where file or line change.
        self.file, self.line = "", 0
        self._node(tree, None)

    def _node(self, node, owner):
        begin = self._locate(node)
        handler = getattr(self, "_" + node.get("kind", ""), None)
        if handler and begin and (path := self._path(begin[0])):
            owner = handler(node, Place(path, begin[1]), owner) or owner
        for child in node.get("inner", ()):
            self._node(child, owner)

    def _locate(self, node):
        """Follows the places that a node mentions, in the dump's order; the result is where it begins."""
        self._step(node.get("loc"))
        bounds = node.get("range") or {}
        begin = self._step(bounds.get("begin"))
        self._step(bounds.get("end"))
        return begin

    def _step(self, place):
        if not place:
            return None
        if "expansionLoc" in place:
            self._step(place.get("spellingLoc"))
            return self._step(place["expansionLoc"])
        self.file = place.get("file", self.file)
        self.line = place.get("line", self.line)
        return self.file, self.line

    def _path(self, file):
        if file not in self.files:
            path = (self.folder / file).resolve()
            self.files[file] = path if self.ours(path) else None
        return self.files[file]

    def _ObjCMessageExpr(self, node, place, owner):
        kind = node["receiverKind"]
        if kind == "instance":
            receiver, protocols = self._receiver(node)
            static = self._isClass(node)
        else:
            receiver, protocols = typeName((node.get("superType") or node["classType"])["qualType"])
            static = kind != "super (instance)"
        self.uses.messages.add(Message(place, node["selector"], receiver, static, protocols))

    @staticmethod
    def _type(node):
        kind = node["inner"][0].get("type", {}) if node.get("inner") else {}
        return kind.get("qualType", "id"), kind.get("desugaredQualType", "")

    def _receiver(self, node):
        written, plain = self._type(node)
        return typeName(plain if plain and not plain.startswith("id") and "type-parameter" not in plain else written)

    def _isClass(self, node):
        return any(re.match(r"Class\b", text) for text in self._type(node))

    def _CallExpr(self, node, place, owner):
        callee = node["inner"][0]
        while callee.get("kind") in ("ImplicitCastExpr", "ParenExpr") and callee.get("inner"):
            callee = callee["inner"][0]
        target = callee.get("referencedDecl", {})
        if target.get("kind") == "FunctionDecl":
            self.uses.calls.add(Call(place, target["name"], len(node["inner"]) - 1))

    def _DeclRefExpr(self, node, place, owner):
        target = node.get("referencedDecl", {})
        kind = target.get("kind")
        if kind == "FunctionDecl":
            self.uses.calls.add(Call(place, target["name"], None))
        elif kind in ("VarDecl", "EnumConstantDecl"):
            enumeration = target.get("type", {}).get("qualType", "") if kind == "EnumConstantDecl" else ""
            self.uses.constants.add(Constant(place, target["name"], kind == "EnumConstantDecl", enumeration))

    def _ObjCSelectorExpr(self, node, place, owner):
        self.uses.selectors.add((place, node["selector"]))

    def _own(self, name):
        return self.uses.classes.setdefault(name, OwnClass())

    def _ObjCInterfaceDecl(self, node, place, owner):
        own = self._own(node["name"])
        own.parent = own.parent or node.get("super", {}).get("name")
        own.protocols |= {protocol["name"] for protocol in node.get("protocols", ())}
        return node["name"]

    def _ObjCCategoryDecl(self, node, place, owner):
        name = node["interface"]["name"]
        self._own(name).protocols |= {protocol["name"] for protocol in node.get("protocols", ())}
        return name

    def _ObjCImplementationDecl(self, node, place, owner):
        return f"@{node['name']}"

    def _ObjCCategoryImplDecl(self, node, place, owner):
        return f"@{node['interface']['name']}"

    def _ObjCMethodDecl(self, node, place, owner):
        if owner is None:
            return
        own = self._own(owner.lstrip("@"))
        (own.instance if node.get("instance") else own.static).add(node["name"])
        if owner.startswith("@"):
            parameters = [child["type"] for child in node.get("inner", ()) if child["kind"] == "ParmVarDecl"]
            types = tuple(_written(kind) for kind in (node["returnType"], *parameters))
            self.uses.methods.add(Method(place, owner[1:], node["name"], not node.get("instance"), types))
