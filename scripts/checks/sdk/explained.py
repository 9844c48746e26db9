"""The list of what is right although the declarations do not have it, each with its reason."""

import fnmatch
from pathlib import Path

KINDS = {"function", "constant", "macro", "type", "selector", "method", "value", "form", "old", "header"}


class Explained:
    """`text` has one entry a line: its kind, a name (with * for many) and the reason; "#" begins a remark."""

    def __init__(self, text):
        self.entries = {kind: [] for kind in KINDS}
        for number, line in enumerate(text.splitlines(), 1):
            parts = line.split("#")[0].split(None, 2)
            if not parts:
                continue
            if len(parts) < 3 or parts[0] not in KINDS:
                raise ValueError(f"line {number}: an entry is a kind ({', '.join(sorted(KINDS))}), a name and a reason")
            self.entries[parts[0]].append((parts[1], parts[2]))

    def has(self, kind, name):
        return any(fnmatch.fnmatchcase(name, pattern) for pattern, _ in self.entries[kind])

    def forms(self):
        """How the values of an enumeration are spelt in full, as what stands before and after the declared name."""
        found = {}
        for enumeration, reason in self.entries["form"]:
            before, _, after = reason.split()[0].partition("*")
            found[enumeration] = (before, after)
        return found


def load():
    return Explained((Path(__file__).parent / "explained.txt").read_text(encoding="utf-8"))
