#!/usr/bin/env python3
"""Checks that contracts are documented at their declarations: in src/platform/*.h and src/platform/ui/*.h, a type or
a function has a comment that begins with /// above it. An override needs none, nor a destructor, a defaulted member or one
whose definition stands on the same line; a declaration right below a documented one, with no empty line between, may share
its comment.

    comments.py [ROOT]
"""

import re
import sys
from pathlib import Path

from sources import Fault, code, lines

TYPE = re.compile(r"^\s*(?:template\s*<.*>\s*)?(?:class|struct|enum(?:\s+class)?)\s+\w+(?:[^;]*$|[^;]*\{)|^\s*using\s+\w+\s*=")
FUNCTION = re.compile(r"^\s*(?:\[\[nodiscard\]\]\s*)?(?:(?:virtual|static|explicit|constexpr|inline|friend)\s+)*"
                      r"[\w:<>,*&\s]*?[\w*&>]\s*[*&]?\b(?P<name>~?\w+)\s*\([^;{]*(?:[;{]|$)")
EXEMPT = re.compile(r"~\w+\(|=\s*default|=\s*delete|\boverride\b|\)(?:\s*const)?\s*\{.*\}$|operator|^\s*(return|if|for|while|switch|else)\b|^\s*explicit\s")


def isContract(path):
    return path.suffix == ".h" and path.parts[:2] == ("src", "platform") and path.parts[2] not in ("linux", "macos")


def declares(line):
    return bool(TYPE.match(line) or FUNCTION.match(line)) and not EXEMPT.search(line)



def ownDepths(text):
    """For each line, whether it is outside of function bodies."""
    bodies = []
    for line in text:
        inBody = bool(bodies) and bodies[-1]
        yield not inBody
        for character in line.split("//")[0]:
            if character == "{":
                scope = re.search(r"\b(namespace|class|struct|enum)\b", line) and not line.rstrip().endswith(";")
                bodies.append(inBody or not scope)
            elif character == "}" and bodies:
                bodies.pop()


def check(root):
    for path in filter(isContract, code(root, ("src",))):
        text = lines(root, path)
        documented, private, continued = False, False, False
        for number, (line, own) in enumerate(zip(text, ownDepths(text)), 1):
            stripped = line.strip()
            if stripped.startswith("///"):
                documented = True
            elif not stripped:
                documented = False
            elif re.match(r"(private|protected):", stripped):
                private = True
            elif stripped.startswith(("public:", "};", "class ", "struct ")):
                private = False
            if own and not continued and not private and not documented and declares(line) and "///<" not in line:
                yield Fault(path, number, f"no /// comment says what this means: {stripped}")
            if own and stripped.endswith("{"):
                documented = False
            continued = bool(stripped) and not stripped.endswith((";", "{", "}", ":", ">")) and not stripped.startswith("//")


def main(arguments):
    root = Path(arguments[1] if len(arguments) > 1 else ".")
    faults = list(check(root))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
