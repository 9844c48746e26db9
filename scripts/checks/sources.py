"""The project's own sources for the checks: text files below a root, found without version control."""

import re
from dataclasses import dataclass
from pathlib import Path

CODE_FOLDERS = ("src", "tests", "benchmarks", "fuzz")
CODE_SUFFIXES = {".h", ".cpp", ".mm", ".m", ".c"}
SKIPPED_FOLDERS = {".git", "__pycache__"}
INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"]')


@dataclass(frozen=True)
class Fault:
    """A fault, in a form for people and editors."""

    path: Path
    line: int
    message: str

    def __str__(self):
        return f"{self.path}:{self.line}: {self.message}"


@dataclass(frozen=True)
class Include:
    path: Path
    line: int
    name: str
    system: bool


def files(root):
    """Every file of the tree, relative to `root`, except build results and files of version control."""
    pending = [Path(".")]
    while pending:
        folder = pending.pop()
        for entry in sorted((root / folder).iterdir()):
            path = folder / entry.name
            if entry.is_symlink():
                continue
            if entry.is_dir():
                built = folder == Path(".") and entry.name.startswith("build")
                if entry.name not in SKIPPED_FOLDERS and not built:
                    pending.append(path)
            elif entry.is_file():
                yield path


def code(root, folders=CODE_FOLDERS):
    """The C++ and Objective-C++ files of `folders`, in order."""
    return sorted(path for path in files(root) if path.suffix in CODE_SUFFIXES and path.parts[0] in folders)


def lines(root, path):
    return (root / path).read_text(encoding="utf-8", errors="replace").splitlines()


def includes(root, path):
    for number, line in enumerate(lines(root, path), 1):
        found = INCLUDE.match(line)
        if found:
            yield Include(path, number, found.group(2), found.group(1) == "<")
