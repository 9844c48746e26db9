#!/usr/bin/env python3
"""Checks every class, selector, function, constant and value that the macOS backend uses against the declarations of the SDK.

    check.py BUILD SOURCE

BUILD is the folder of a build of the backend (its compile_commands.json says how each source is compiled), SOURCE the folder
whose src/ is checked."""

import argparse
import re
import sys
from dataclasses import replace
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))

import availability
import compilation
import explained
import fetch
import headers
import scopes
import sdkindex
import syntaxtree
import values
from declarations import Unreadable
from doubles import DoubleChecks
from messages import MessageChecks
from responders import Responders
from sources import Fault
from symbols import SymbolChecks

DOUBLE = Path("tests/macos/double/include")
# What the double needs for itself.
HELPERS = DOUBLE / "double"
SELECTOR = re.compile(r'"([a-zA-Z]\w*(?::(?:\w+:)*)?)"')
# Fewer than these, and something was not looked at.
LEAST = {"messages": 400, "classes": 50, "methods of ours": 60, "functions": 8, "constants": 40}


def backendSources(source):
    """The backend's own files, as text."""
    return sorted(path for folder in ("platform/macos", "main") for path in (source / "src" / folder).rglob("*")
                  if path.suffix == ".mm" or (path.suffix == ".h" and "#import" in path.read_text(encoding="utf-8")))


class Check:
    """One run over the backend below `source`, as the build in `build` compiles it, against `index`; `known` is what is explained, `dates`
    what is too new or too old."""

    def __init__(self, build, source, index, known, dates):
        self.source = source
        self.index = index
        self.known = known
        self.dates = dates
        self.commands = compilation.commands(build, self.ours)
        self.texts = backendSources(source)

    def ours(self, path):
        return path.is_relative_to(self.source / "src")

    def double(self, path):
        return path.is_relative_to(self.source / DOUBLE) and not path.is_relative_to(self.source / HELPERS)

    def unseen(self):
        """What the compiler does not show: sources that no build compiles, and code in nobody's namespace."""
        seen = {command.file for command in self.commands}
        for path in self.texts:
            if path.suffix == ".mm" and path not in seen:
                yield Fault(path, 1, "this build does not compile it, so it is not checked")
            for line in scopes.outside(path.read_text(encoding="utf-8")):
                yield Fault(path, line, "code outside of namespace fernhop and of classes is not checked")

    def named(self):
        """The selectors that the product's texts name: menus and controls have their actions by name."""
        return {name for path in (self.source / "src").rglob("*") if path.suffix in (".h", ".cpp", ".mm")
                for name in SELECTOR.findall(path.read_text(encoding="utf-8", errors="replace"))}

    def uses(self, renamed):
        """What the sources hold together; `renamed` as a command has it."""
        gathered = syntaxtree.Uses()
        protocols = headers.protocols(self.commands[0], self.texts)
        for protocol in protocols:
            gathered.classes[protocol.name] = syntaxtree.OwnClass(instance={method.selector for method in protocol.methods})
        names = [protocol.name for protocol in protocols]
        for found in compilation.each(lambda command: self._usesOf(replace(command, renamed=renamed), names), self.commands):
            gathered.add(found)
        return gathered

    def _usesOf(self, command, protocols):
        walker = syntaxtree.Walker(command.folder, self.ours)
        for tree in compilation.trees(command, protocols):
            walker.walk(tree)
        return walker.uses

    def run(self):
        """The faults, and how much was checked."""
        command = self.commands[0]
        imports = headers.imports([*self.texts, *(self.source / DOUBLE).rglob("*.h")])
        declared = headers.read(command, imports, self.index.classes)
        uses = self.uses(declared.renamed())
        responders = Responders(self.index)
        folders = command.systemFolders()
        symbols = SymbolChecks(uses, declared, values.Values(self.index, self.known.forms()), self.known,
                               lambda path: any(path.is_relative_to(folder) for folder in folders))
        messages = MessageChecks(uses, responders, self.known, declared, symbols.ofSdk("class"), self.named())
        double = DoubleChecks(declared, responders, symbols, self.double)
        dates = availability.AvailabilityChecks(uses, self.dates, self.known, messages.ancestors)
        wanted = {constant.name for constant in symbols.constants() if constant.value} | double.values()
        measured = values.measured(command, imports, wanted) if wanted else {}
        faults = {*messages.faults(), *symbols.functionFaults(), *symbols.constantFaults(measured), *symbols.nameFaults(self.texts), *symbols.headerFaults(self.texts),
                  *double.faults(measured), *dates.faults()}
        return faults, self.counts(uses, symbols)

    def counts(self, uses, symbols):
        classes = {message.receiver for message in uses.messages if message.receiver in self.index.classes}
        return {"messages": len(uses.messages), "selectors": len({message.selector for message in uses.messages}),
                "classes": len(classes), "methods of ours": len(uses.methods),
                "functions": len({call.name for call in symbols.functions()}),
                "constants": len({constant.name for constant in symbols.constants()})}


def report(check, least):
    """Prints what is wrong and what was checked; the result is the exit status. `least` is how much there must be of each kind."""
    found, counts = check.run() if check.commands else (set(), dict.fromkeys(least, 0))
    faults = sorted({*found, *check.unseen()}, key=lambda fault: (str(fault.path), fault.line, fault.message))
    for fault in faults:
        inside = fault.path.is_relative_to(check.source)
        print(replace(fault, path=fault.path.relative_to(check.source)) if inside else fault)
    said = ", ".join(f"{count} {name}" for name, count in counts.items())
    print(f"{len(check.commands)} sources: {said} checked against {fetch.PACKAGE} {fetch.VERSION}; {len(faults)} faults")
    few = [f"{counts[name]} {name}" for name, least in least.items() if counts[name] < least]
    if few:
        print(f"only {', '.join(few)}: this cannot be the whole backend")
    return 1 if faults or few else 0


def main():
    words = argparse.ArgumentParser(description="checks the macOS backend against the SDK's declarations")
    words.add_argument("build", type=Path)
    words.add_argument("source", type=Path)
    words.add_argument("--cache", type=Path, default=fetch.cacheFolder(), help="where the declarations are kept")
    given = words.parse_args()
    try:
        index = sdkindex.load(fetch.declarations(given.cache), given.cache)
        return report(Check(given.build.resolve(), given.source.resolve(), index, explained.load(), availability.load()), LEAST)
    except fetch.Missing as problem:
        print(f"sdk: the declarations of the macOS SDK are missing, so nothing was checked: {problem}", file=sys.stderr)
    except (Unreadable, compilation.CompilerFailed) as problem:
        print(f"sdk: {problem}", file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main())
