"""Finds out where a source's code stands, since the compiler's dump shows only what has a certain name."""

import re

# Comments, strings and characters, which hold no names of the code.
SILENT = re.compile(r"//[^\n]*|/\*.*?\*/|@?\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])*'", re.S)
CLASSES = re.compile(r"@(?:interface|implementation|protocol)\b.*?@end", re.S)
DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.M)
UNNAMED = re.compile(r"\bnamespace\s*$")
SEEN = re.compile(rf"namespace fernhop\b|\b\w*ernhop\w*[^;{{}}]*$|\bmain\s*\(|{UNNAMED.pattern}")


def blank(pattern, text):
    """`text` with what matches made empty, line for line."""
    return pattern.sub(lambda found: re.sub(r"[^\n]", " ", found[0]), text)


def bodies(text):
    """What begins a body outside of all others and of classes, and the line where it does."""
    for pattern in (SILENT, DIRECTIVE, CLASSES):
        text = blank(pattern, text)
    depth, start = 0, 0
    for place, letter in enumerate(text):
        if letter == "{":
            if depth == 0:
                yield text[start:place], text.count("\n", 0, place) + 1
            depth += 1
        elif letter == "}":
            depth -= 1
        if depth == 0 and letter in ";}":
            start = place + 1


def outside(text):
    """The lines where a body begins that the dump would not show."""
    return [line for words, line in bodies(text) if not SEEN.search(words)]


def hasUnnamed(text):
    """Whether there is a namespace without a name that is in no other."""
    return any(UNNAMED.search(words) for words, _ in bodies(text))
