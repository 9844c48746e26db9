"""The SDK's declarations as one index that answers questions, read once and kept."""

import hashlib
import json
import os
from pathlib import Path

import declarations
import names

# What the sources stand on, with what those frameworks stand on themselves.
FRAMEWORKS = ("Runtime", "CoreFoundation", "Foundation", "CoreGraphics", "CoreServices", "QuartzCore", "AppKit",
              "ApplicationServices", "UniformTypeIdentifiers")
ROOT = "NSObject"


class SdkIndex:
    """Questions about the SDK. Classes and protocols are named as in Objective-C, selectors too."""

    def __init__(self, tables):
        self.classes = tables["classes"]
        self.protocols = tables["protocols"]
        self.functions = tables["functions"]
        self.constants = set(tables["constants"])
        self.enums = tables["enums"]
        self.aliases = tables["aliases"]
        self.types = set(tables["types"])

    def protocol(self, name):
        """The entry of a protocol, or None. The declarations tell a protocol that shares a class's name by "Protocol"."""
        return self.protocols.get(f"{name}Protocol") or self.protocols.get(name)

    def ancestry(self, name):
        """The entries that an object of the class or protocol answers with, its own first."""
        pending, seen = [name], set()
        while pending:
            current = pending.pop(0)
            if current is None or current in seen:
                continue
            seen.add(current)
            for entry in (self.classes.get(current), self.protocol(current)):
                if entry:
                    yield entry
                    pending += [entry["super"], *entry["protocols"]]

    def superclasses(self, name):
        while name in self.classes:
            yield name
            name = self.classes[name]["super"]

    def everything(self):
        yield from self.classes.values()
        yield from self.protocols.values()

    def nearestClass(self, name):
        return names.nearest(name, [*self.classes, *self.protocols])

    def everyName(self):
        """All names but selectors, for the nearest one to a name that is not there."""
        return [*self.classes, *self.protocols, *self.functions, *self.constants, *self.aliases, *self.enums]


def load(folder, cache):
    """The index of the declarations in `folder`. It is kept in the folder `cache` as long as neither they nor the way to read
    them change."""
    sources = [folder / f"{name}.d.ts" for name in FRAMEWORKS]
    digest = hashlib.sha256()
    for path in [Path(declarations.__file__), *sources]:
        digest.update(path.read_bytes())
    kept = cache / f"index-{digest.hexdigest()[:16]}.json"
    if not kept.exists():
        _keep(kept, _read(sources))
    return SdkIndex(json.loads(kept.read_text(encoding="utf-8")))


def _read(sources):
    tables = declarations.empty()
    for path in sources:
        try:
            declarations.read(path.read_text(encoding="utf-8"), tables)
        except declarations.Unreadable as problem:
            raise declarations.Unreadable(f"{path.name}: {problem}") from problem
    return tables


def _keep(path, tables):
    """Two checks at once may both write; each writes the whole."""
    path.parent.mkdir(parents=True, exist_ok=True)
    unfinished = path.with_suffix(f".{os.getpid()}")
    unfinished.write_text(json.dumps(tables), encoding="utf-8")
    unfinished.replace(path)
