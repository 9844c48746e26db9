#!/usr/bin/env python3
"""Checks that every C++ and Objective-C++ file is listed in a CMakeLists.txt of its folder or of one above it, so that none
is left unbuilt and unchecked. A header that is not the product's may do with being included by such a file.

    targets.py [ROOT]
"""

import re
import sys
from pathlib import Path

from includes import resolve
from sources import Fault, code, files, includes, lines

COMMENT = re.compile(r"#.*")
TOKEN = re.compile(r'[^\s()"]+')
FOLDER_VARIABLES = re.compile(r"^\$\{(CMAKE_CURRENT_SOURCE_DIR|CMAKE_CURRENT_LIST_DIR)\}/")
ROOT_VARIABLES = re.compile(r"^\$\{(PROJECT_SOURCE_DIR|CMAKE_SOURCE_DIR|Fernhop_SOURCE_DIR)\}/")


def listedFiles(root):
    """Every path in a CMakeLists.txt, relative to its folder."""
    named = set()
    for path in files(root):
        if path.name != "CMakeLists.txt":
            continue
        for line in lines(root, path):
            for token in TOKEN.findall(COMMENT.sub("", line)):
                if ROOT_VARIABLES.match(token):
                    named.add(Path(ROOT_VARIABLES.sub("", token)))
                else:
                    named.add(normal(path.parent / FOLDER_VARIABLES.sub("", token)))
    return named


def normal(path):
    parts = []
    for part in path.parts:
        if part == ".." and parts:
            parts.pop()
        elif part != ".":
            parts.append(part)
    return Path(*parts)


def reached(root, sources):
    """The project's files that these include, directly or not."""
    found, pending = set(), list(sources)
    while pending:
        below = {resolve(root, include) for include in includes(root, pending.pop())} - found - {None}
        found |= below
        pending += below
    return found


def check(root):
    sources = code(root)
    named = listedFiles(root)
    compiled = reached(root, [path for path in sources if path in named])
    for path in sources:
        suffices = path.suffix == ".h" and path.parts[0] != "src" and path in compiled
        if path not in named and not suffices:
            yield Fault(path, 1, "no CMakeLists.txt names this file")


def main(arguments):
    root = Path(arguments[1] if len(arguments) > 1 else ".")
    faults = list(check(root))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
