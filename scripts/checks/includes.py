#!/usr/bin/env python3
"""Checks what the sources include: only downwards on the floors, no cycles of files or folders, no toolkit or system header in
portable folders, and no preprocessor conditional on the operating system there.

    includes.py [ROOT]
"""

import fnmatch
import re
import sys
from pathlib import Path
from typing import NamedTuple

from sources import Fault, code, includes, lines

MAIN = "src/main/"
SYSTEM = re.compile(r"\b(__linux__|__linux|__gnu_linux__|__unix__|__APPLE__|__MACH__|_WIN32|__FreeBSD__|__OpenBSD__|"
                    r"__NetBSD__|__GLIBC__|TARGET_OS_\w+|__has_include)\b")
CONDITIONAL = re.compile(r"^\s*#\s*(if|ifdef|ifndef|elif|elifdef|elifndef)\b")

# Header-only or portable libraries, the same on every system.
PORTABLE_LIBRARIES = ("nlohmann/", "simdjson.h", "CLI/")
STANDARD_HEADERS = set("""
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
    clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore
    set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view strstream
    syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
    variant vector version
""".split())


class Floor(NamedTuple):
    backend: str  # empty: the core
    number: int
    folder: str


class Floors:
    def __init__(self, text):
        rows = (line.split() for line in text.splitlines() if line.strip() and not line.startswith("#"))
        self.rows = [self.parsed(floor, pattern) for floor, pattern in rows]

    @staticmethod
    def parsed(text, pattern):
        backend, _, number = text.rpartition(".")
        return Floor(backend, int(number), pattern)

    def of(self, path):
        for floor in self.rows:
            if fnmatch.fnmatchcase(str(path), floor.folder):
                return floor
        return None


def resolve(root, include):
    """The project's file for a quoted include; nothing when it is not among the sources (a generated one, for example)."""
    for base in (Path("src"), Path("tests"), include.path.parent):
        candidate = base / include.name
        if (root / candidate).is_file():
            return candidate
    return None


def isPortable(path, floors):
    floor = floors.of(path)
    return path.parts[0] == "src" and not (floor and floor.backend) and not str(path).startswith(MAIN)


def allowedInPortable(include):
    if include.name in STANDARD_HEADERS:
        return True
    return include.name.startswith(PORTABLE_LIBRARIES)


def floorFault(include, target, floors):
    above, below = floors.of(include.path), floors.of(target)
    if above is None or below is None:
        return None
    if above.backend != below.backend:
        return sideFault(include, target, above, below)
    if below.number > above.number:
        return f"{target} is on a floor above (scripts/checks/floors.txt)"
    return None


def sideFault(include, target, above, below):
    """The fault when the core includes a backend, a backend the core, or one backend another."""
    if not above.backend:
        return None if str(include.path).startswith(MAIN) else f"only a backend or a main includes {target}"
    if below.backend:
        return f"one backend includes another's {target}"
    return None if below.number == 0 else f"a backend includes {target}, which is above the platform's interfaces"


def checkPath(root, path, floors):
    if path.parts[0] == "src" and floors.of(path) is None:
        yield Fault(path, 1, "is on no floor: see scripts/checks/floors.txt")
    portable = isPortable(path, floors)
    for include in includes(root, path):
        target = resolve(root, include)
        if path.parts[0] == "src" and target:
            if target.parts[0] == "tests":
                yield Fault(path, include.line, f"the product includes the tests' {target}")
            message = floorFault(include, target, floors)
            if message:
                yield Fault(path, include.line, message)
        elif portable and not target and not allowedInPortable(include):
            yield Fault(path, include.line, f"toolkit or system header <{include.name}> in a portable folder")
    if portable:
        for number, line in enumerate(lines(root, path), 1):
            if CONDITIONAL.match(line) and SYSTEM.search(line):
                yield Fault(path, number, "conditional on the operating system: let CMake choose a whole file instead")


def circles(graph):
    """The cycles that a traversal of the graph finds, each as the list of its files."""
    finished, path, onPath = set(), [], set()

    def visit(node):
        if node in onPath:
            yield path[path.index(node):] + [node]
            return
        if node in finished:
            return
        path.append(node)
        onPath.add(node)
        for target in graph.get(node, []):
            yield from visit(target)
        onPath.discard(path.pop())
        finished.add(node)

    for node in graph:
        yield from visit(node)


def ofFolders(graph, floors):
    """The same graph between the folders in the list of floors."""
    folders = {}
    for path, targets in graph.items():
        own = floors.of(path)
        needed = {floors.of(target) for target in targets} - {own, None}
        if own:
            folders.setdefault(own.folder, set()).update(floor.folder for floor in needed)
    return {folder: sorted(needed) for folder, needed in folders.items()}


def check(root):
    floors = Floors((Path(__file__).parent / "floors.txt").read_text(encoding="utf-8"))
    graph = {}
    for path in code(root):
        yield from checkPath(root, path, floors)
        found = (resolve(root, include) for include in includes(root, path))
        graph[path] = [target for target in found if target]
    for circle in circles(graph):
        yield Fault(circle[0], 1, "includes run in a circle: " + " > ".join(map(str, circle)))
    for circle in circles(ofFolders(graph, floors)):
        yield Fault(Path(circle[0]), 1, "folders need each other in a circle: " + " > ".join(circle))


def main(arguments):
    root = Path(arguments[1] if len(arguments) > 1 else ".")
    faults = list(check(root))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
