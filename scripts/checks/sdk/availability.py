"""Checks against a list of what is too new or too old, since the declarations do not state versions."""

from dataclasses import dataclass
from pathlib import Path

from sources import Fault


@dataclass(frozen=True)
class Entry:
    """What is wrong with a name: too new or too old, and the version or the advice that goes with it."""

    new: bool
    remark: str

    def __str__(self):
        return f"there is none before macOS {self.remark}" if self.new else f"it is deprecated: {self.remark}"


def read(text):
    """The entries of a list by name: "new NAME VERSION" or "old NAME ADVICE" a line; "#" begins a remark."""
    found = {}
    for number, line in enumerate(text.splitlines(), 1):
        parts = line.split("#")[0].split(None, 2)
        if parts and (len(parts) < 3 or parts[0] not in ("new", "old")):
            raise ValueError(f"line {number}: an entry is new or old, a name, and a version or an advice")
        if parts:
            found[parts[1]] = Entry(parts[0] == "new", parts[2].strip())
    return found


def load():
    return read((Path(__file__).parent / "availability.txt").read_text(encoding="utf-8"))


class AvailabilityChecks:
    """`classesOf(name)` are the SDK's classes that a class is or inherits from."""

    def __init__(self, uses, entries, explained, classesOf):
        self.uses = uses
        self.entries = entries
        self.explained = explained
        self.classesOf = classesOf

    def faults(self):
        for message in self.uses.messages:
            for name in self.classesOf(message.receiver):
                yield from self._fault(message.place, f"{name}.{message.selector}")
                yield from self._fault(message.place, name)
        for use in (*self.uses.calls, *self.uses.constants):
            yield from self._fault(use.place, use.name)

    def _fault(self, place, name):
        entry = self.entries.get(name)
        if entry and (entry.new or not self.explained.has("old", name)):
            yield Fault(place.path, place.line, f"{name}: {entry}")
