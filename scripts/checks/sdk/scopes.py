"""Finds code that stands where the compiler's dump of what is ours would not show it."""

import re

from symbols import SILENT

CLASSES = re.compile(r"@(?:interface|implementation|protocol)\b.*?@end", re.S)
DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.M)
SEEN = re.compile(r"namespace fernhop\b|\b\w*ernhop\w*[^;{}]*$|\bmain\s*\(")


def blank(pattern, text):
    """`text` with what matches made empty, line for line."""
    return pattern.sub(lambda found: re.sub(r"[^\n]", " ", found[0]), text)


def outside(text):
    """The lines where a body begins outside of namespace fernhop, of a class and of main."""
    for pattern in (SILENT, DIRECTIVE, CLASSES):
        text = blank(pattern, text)
    depth, start = 0, 0
    for place, letter in enumerate(text):
        if letter == "{":
            if depth == 0 and not SEEN.search(text[start:place]):
                yield text.count("\n", 0, place) + 1
            depth += 1
        elif letter == "}":
            depth -= 1
        if depth == 0 and letter in ";}":
            start = place + 1
