"""What the headers that stand for the SDK's declare here: GNUstep's Foundation, the runtime's headers and the double's.

The compiler's textual dump is read, since its JSON does not survive protocols in clang 14."""

import re
from dataclasses import dataclass, field, replace
from pathlib import Path

NODE = re.compile(r"^(?P<indent>[ |`-]*)(?P<kind>\w+) 0x\w+ (?:(?:parent|prev) 0x\w+ )*<(?P<range>(?:<[^>]*>|[^<>])*)>(?P<rest>.*)$")
SUPER = re.compile(r"^(?P<indent>[ |`-]*)super ObjCInterface 0x\w+ '(\w+)'")
CLASS = re.compile(r"^(?P<indent>[ |`-]*)ObjCInterface 0x\w+ '(\w+)'")
FILE = re.compile(r"^([^\s:<>]+):\d+:\d+$")
LINE = re.compile(r"^(?:line|[^\s:<>]+):(\d+):\d+$")
PLACE = re.compile(r"^ (?:<invalid sloc>|\S+:\d+(?::\d+)?)")
QUALIFIERS = re.compile(r"^(?:(?:implicit|used|referenced|constexpr|invalid|undeserialized_declarations|struct|class|union|enum) )*")
TOP = {"TypedefDecl": "type", "TypeAliasDecl": "type", "RecordDecl": "type", "CXXRecordDecl": "type", "EnumDecl": "type",
       "FunctionDecl": "function", "VarDecl": "constant", "EnumConstantDecl": "value", "ObjCInterfaceDecl": "class",
       "ObjCProtocolDecl": "protocol"}
CONTAINERS = {"ObjCInterfaceDecl", "ObjCProtocolDecl", "ObjCCategoryDecl"}
OUTER = {"TranslationUnitDecl", "LinkageSpecDecl", "EnumDecl"}
TYPE = re.compile(r"'[^']*'(?::'[^']*')?")
IMPORT = re.compile(r"^\s*#\s*(?:import|include)\s*<([^>]+/[^>]+|Block\.h)>", re.M)
MACRO = re.compile(r"^#define (\w+)(?: (\w+)$)?")
PROTOCOL = re.compile(r"^\s*@protocol\s+(\w*ernhop\w*)(?!\s*[;,])", re.M)
MARKER = re.compile(r'^# \d+ "([^"]*)"')


@dataclass
class Method:
    """A method as a header declares it, an accessor of a property too; `types` are the result's and the arguments'."""

    selector: str
    static: bool
    line: int
    types: list


@dataclass
class Container:
    """An interface, a protocol or a category as a header declares it; `parent` is the superclass, or of a category its class."""

    kind: str
    name: str
    file: Path
    line: int
    parent: str | None = None
    methods: list = field(default_factory=list)


@dataclass
class Headers:
    """`origins` has the kind and the file of each name at the top; `enums` the enumeration of each value; `functions` the
    types of each one's result and arguments; `macros` the file of each; `typedefs` what
    each stands for; `standIns` the classes that the double has under another name."""

    origins: dict = field(default_factory=dict)
    lines: dict = field(default_factory=dict)
    enums: dict = field(default_factory=dict)
    functions: dict = field(default_factory=dict)
    variadic: set = field(default_factory=set)
    containers: list = field(default_factory=list)
    macros: dict = field(default_factory=dict)
    standIns: dict = field(default_factory=dict)
    typedefs: dict = field(default_factory=dict)

    def renamed(self):
        """Pairs of a class of the double and the class of the SDK that it stands for."""
        return tuple(self.standIns.items())

    def of(self, kind, inside):
        """The names of one kind that come from a file for which `inside(path)`."""
        return {name for name, (found, file) in self.origins.items() if found == kind and inside(file)}


def imports(sources):
    """The framework headers that the sources include, each once, in order."""
    found = {}
    for path in sources:
        for name in IMPORT.findall(path.read_text(encoding="utf-8", errors="replace")):
            found[name] = None
    return list(found)


def read(command, names, classes):
    """What the headers `names` and theirs declare, compiled as `command` compiles a source. `classes` are the SDK's: the double may
    hold one under another name, behind a macro."""
    feed = "".join(f"#import <{name}>\n" for name in names)
    headers = Headers()
    _macros(command.run("-E", "-dD", file="-", feed=feed), command.folder, headers, classes)
    dump = replace(command, renamed=headers.renamed()).run("-fsyntax-only", "-Xclang", "-ast-dump", file="-", feed=feed)
    return _take(dump, command.folder, headers)


def protocols(command, sources):
    """Our own protocols that the sources declare, as containers."""
    found = []
    for path in sources:
        for name in PROTOCOL.findall(path.read_text(encoding="utf-8", errors="replace")):
            found += _take(command.dump(name, file=path), command.folder, Headers()).containers
    return [container for container in found if container.kind == "ObjCProtocolDecl"]


def _take(dump, folder, headers):
    reader = _Reader(folder, headers)
    for line in dump.splitlines():
        reader.take(line)
    return headers


def _macros(text, folder, headers, classes):
    file = ""
    for line in text.splitlines():
        if found := MARKER.match(line):
            file = found[1]
        elif found := MACRO.match(line):
            headers.macros[found[1]] = (folder / file).resolve()
            if found[1] in classes and found[2]:
                headers.standIns[found[2]] = found[1]


def _type(text):
    """The type in a declaration's line: as it is written and, where that is another name, what it plainly is."""
    found = TYPE.search(text)
    return found[0] if found else ""


class _Reader:
    """Takes the dump line by line. `open` are the nodes that the present line stands in: depth, kind and container of each."""

    def __init__(self, folder, headers):
        self.folder = folder
        self.headers = headers
        self.file, self.line = "", 0
        self.files = {}
        self.open = []
        self.enumeration, self.function = "", None

    def take(self, line):
        if found := NODE.match(line):
            self._node(found)
        elif self.open and self.open[-1][2]:
            self._relation(line, *self.open[-1])

    @staticmethod
    def _relation(line, depth, kind, container):
        """A line that names a superclass, a protocol or, of a category, its class."""
        if found := SUPER.match(line):
            container.parent = found[2]
        elif kind == "ObjCCategoryDecl" and (found := CLASS.match(line)) and len(found["indent"]) == depth + 2:
            container.parent = found[2]

    def _node(self, found):
        depth, kind, rest = len(found["indent"]), found["kind"], found["rest"]
        for part in found["range"].split(","):
            self._step(part.strip())
        if kind.endswith("Decl") and (place := PLACE.match(rest)):
            self._step(place[0].strip())
            rest = rest[place.end():]
        while self.open and self.open[-1][0] >= depth:
            self.open.pop()
        self.open.append((depth, kind, self._declaration(kind, QUALIFIERS.sub("", rest.strip()))))

    def _step(self, place):
        """Follows a place: the dump names file and line only where they change."""
        if found := FILE.match(place):
            self.file = self.file if found[1] in ("line", "col") else found[1]
        if found := LINE.match(place):
            self.line = int(found[1])

    def _path(self):
        if self.file not in self.files:
            self.files[self.file] = (self.folder / self.file).resolve()
        return self.files[self.file]

    def _declaration(self, kind, rest):
        """Notes what a node declares; the result is the container that its members go to."""
        outer = self.open[-1] if self.open else (0, "TranslationUnitDecl", None)
        name = rest.split(" ")[0]
        named = re.fullmatch(r"\w+", name)
        if kind in TOP and outer[1] in OUTER and named:
            self.headers.origins.setdefault(name, (TOP[kind], self._path()))
            self.headers.lines[name] = self.line
            self._symbol(kind, name, rest)
        elif kind == "FunctionDecl":
            self.function = None
        elif kind == "EnumDecl":
            self.enumeration = ""
        elif kind == "ParmVarDecl" and outer[1] == "FunctionDecl" and self.function:
            self.headers.functions[self.function].append(_type(rest))
        elif kind == "ParmVarDecl" and outer[1] == "ObjCMethodDecl" and len(self.open) > 1 and self.open[-2][2]:
            self.open[-2][2].methods[-1].types.append(_type(rest))
        elif kind == "ObjCMethodDecl" and outer[2]:
            sign, selector = rest.split(" ")[:2]
            outer[2].methods.append(Method(selector, sign == "+", self.line, [_type(rest)]))
        return self._container(kind, name) if kind in CONTAINERS else None

    def _symbol(self, kind, name, rest):
        if kind == "FunctionDecl":
            self.function = name
            self.headers.functions[name] = [re.split(r" ?\((?![*^])", _type(rest))[0]]
            if "...)" in rest:
                self.headers.variadic.add(name)
        elif kind == "EnumDecl":
            self.enumeration = name
        elif kind == "EnumConstantDecl":
            self.headers.enums[name] = self.enumeration
        elif kind == "TypedefDecl":
            self.headers.typedefs[name] = _type(rest)

    def _container(self, kind, name):
        self.headers.containers.append(Container(kind, name, self._path(), self.line))
        return self.headers.containers[-1]
