#!/usr/bin/env python3
"""Checks that every C++ and Objective-C++ file is named by a CMakeLists.txt of its folder or of one above it, so that none
is left unbuilt and unchecked.

    targets.py [ROOT]
"""

import re
import sys
from pathlib import Path

from sources import Fault, code, files, lines

COMMENT = re.compile(r"#.*")
TOKEN = re.compile(r'[^\s()"]+')
FOLDER_VARIABLES = re.compile(r"^\$\{(CMAKE_CURRENT_SOURCE_DIR|CMAKE_CURRENT_LIST_DIR)\}/")
ROOT_VARIABLES = re.compile(r"^\$\{(PROJECT_SOURCE_DIR|CMAKE_SOURCE_DIR|Fernhop_SOURCE_DIR)\}/")


def listedFiles(root):
    """Every path that a CMakeLists.txt names, taken from its folder."""
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


def check(root):
    named = listedFiles(root)
    for path in code(root):
        if path not in named:
            yield Fault(path, 1, "no CMakeLists.txt names this file")


def main(arguments):
    root = Path(arguments[1] if len(arguments) > 1 else ".")
    faults = list(check(root))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
