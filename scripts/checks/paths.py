#!/usr/bin/env python3
"""Checks that no file mentions the machine it was written on: the folder of the checkout, its parent, the home folder and
any person's home. Homes in examples belong to "user", "me" and their like.

    paths.py [ROOT]
"""

import os
import re
import sys
from pathlib import Path

from sources import Fault, files, lines

EXAMPLE_OWNERS = {"user", "me", "someone", "somebody", "ada", "ann", "bob", "alice", "test", "tester", "nobody", "u", "linuxbrew", "name"}
HOME = re.compile(r"(?<![\w.}$)~-])/(?:(?:home|Users)/([A-Za-z0-9_][\w.-]*)|root/[\w.])")
# Folders that exist on every system do not identify a machine.
COMMON = {"/", "/tmp", "/var", "/var/tmp", "/usr", "/usr/src", "/usr/local", "/usr/local/src", "/opt", "/srv", "/home", "/mnt",
          "/media", "/root", "/src", "/build", "/builds", "/app", "/data", "/Users", "/etc", "/run", "/bin", "/lib", "/dev"}


def privateFolders(root, home):
    checkout = root.resolve()
    folders = {str(checkout), str(checkout.parent), str(Path(home).resolve()) if home else "/"}
    return sorted(folders - COMMON)


def check(root, home=None):
    # A host follows the two slashes of a link, not a folder.
    private = [(folder, re.compile(r"(?<![\w.}$)~-])(?<!:/)" + re.escape(folder) + r"(?![\w-])")) for folder in privateFolders(root, home)]
    for path in files(root):
        if b"\0" in (root / path).read_bytes()[:4096]:
            continue
        for number, line in enumerate(lines(root, path), 1):
            for folder, pattern in private:
                if pattern.search(line):
                    yield Fault(path, number, f"names a folder of this machine: {folder}")
            for found in HOME.finditer(line):
                if (found.group(1) or "root").lower() not in EXAMPLE_OWNERS:
                    yield Fault(path, number, f"names somebody's home folder: {found.group()}")


def main(arguments):
    root = Path(arguments[1] if len(arguments) > 1 else ".")
    faults = list(check(root, os.environ.get("HOME")))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
