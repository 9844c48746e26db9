"""How one name is written in two languages: selectors and values of enumerations, in Objective-C and in the declarations."""

import difflib
import re

WORD = re.compile(r"[A-Z]+(?![a-z])|[A-Z][a-z0-9]*|[a-z0-9]+")
NEAR = 0.6


def declared(selector):
    """`initWithTitle:action:` as the declarations have it: `initWithTitleAction`."""
    first, *others = selector.split(":")
    return first + "".join(part[:1].upper() + part[1:] for part in others)


def count(selector):
    """How many arguments a selector takes."""
    return selector.count(":")


def setterOf(selector):
    """The names that the property behind a setter can have: `setTitle:` sets `title`, `setURL:` sets `URL`."""
    found = re.fullmatch(r"set([A-Z]\w*):", selector)
    return (found[1][0].lower() + found[1][1:], found[1]) if found else ()


def getterOf(selector):
    """The names that the property behind a getter can have: `isEnabled` and `enabled` read `enabled`."""
    if ":" in selector:
        return ()
    found = re.fullmatch(r"is([A-Z])(\w*)", selector)
    return (selector, found[1].lower() + found[2]) if found else (selector,)


def nearest(name, candidates):
    """The candidate that looks most like `name`, or none that is near."""
    close = difflib.get_close_matches(name, candidates, 1, NEAR)
    return close[0] if close else None


def words(name):
    return WORD.findall(name)


def usualPrefixes(enumeration):
    """What the values of an enumeration usually begin with: its name, in the singular, or without its last word."""
    parts = words(enumeration)
    yield enumeration
    if enumeration.endswith("s"):
        yield enumeration[:-1]
    if len(parts) > 2:
        yield enumeration[:len(enumeration) - len(parts[-1])]


def valueForms(enumeration, forms):
    """The forms that a value's full name can have: pairs of what stands before and after the declared name."""
    if enumeration in forms:
        return [forms[enumeration]]
    return [(prefix, "") for prefix in usualPrefixes(enumeration)]
