"""The numbers of enumerations: what a value is here, by the headers that are compiled with, and in the SDK."""

import re

import names

PREFIX = "fernhopValue_"


def measured(command, imports, wanted):
    """The number of each of the `wanted` values, as the compiler counts it with those headers."""
    lines = [f"#import <{name}>" for name in imports]
    lines += [f"constexpr long long {PREFIX}{name} = static_cast<long long>({name});" for name in sorted(wanted)]
    # The dump of a constant holds what it was worked out to.
    dump = command.dump(PREFIX, file="-", feed="\n".join(lines))
    found = {}
    for part in re.split(rf"^Dumping {PREFIX}", dump, flags=re.M)[1:]:
        name = re.match(r"\w+", part)[0]
        found[name] = int(re.search(r"value: Int (-?\d+)", part)[1])
    return found


class Values:
    """Finds a value of an enumeration by its full name."""

    def __init__(self, index, forms):
        self.index = index
        self.forms = forms
        self.full = {}
        for enumeration, members in index.enums.items():
            for member, number in members.items():
                for name in self.fullNames(enumeration, member):
                    self.full.setdefault(name, {})[enumeration] = number

    def fullNames(self, enumeration, member):
        """The full names that a declared one can stand for; a name that the others' words would leave nothing of stays whole."""
        yield member
        for before, after in names.valueForms(enumeration, self.forms):
            yield before + member + after

    def numbers(self, name, enumeration):
        """The numbers that the SDK gives the value, of the enumeration of that name if it has it; none for an unknown one."""
        found = self.full.get(name, {})
        own = enumeration.removeprefix("enum ").lstrip("_")
        return {found[own]} if own in found else set(found.values())

    def nearest(self, name):
        return names.nearest(name, [*self.full, *self.index.constants])


def same(left, right):
    """Whether two numbers are one in 64 bits: headers write the highest as -1 or as unsigned, and flags of 32 bits too."""
    return (left - right) % 2**64 == 0 or (left - right) % 2**32 == 0
