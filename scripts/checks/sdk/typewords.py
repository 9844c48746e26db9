"""Whether a type of Objective-C can be what the declarations call by a word of TypeScript's."""

import re

from declarations import pieces

ORNAMENTS = re.compile(r"\b(?:const|volatile|_Nullable|_Nonnull|_Null_unspecified|__strong|__kindof|__unsafe_unretained|oneway|enum|struct)\b")
NUMBERS = re.compile(r"(?:unsigned |signed )?(?:char|short|int|long|long long|float|double|long double)|unsigned|signed")
TRUTHS = {"BOOL", "bool", "Boolean", "_Bool"}
# One structure by two names; GNUstep has its own tag for each.
STRUCTURES = {"CGRect": {"NSRect", "_NSRect"}, "CGPoint": {"NSPoint", "_NSPoint"}, "CGSize": {"NSSize", "_NSSize"}, "_NSRange": {"NSRange"}}


class Type:
    """A type as the compiler writes it: "'NSInteger':'long'" is written NSInteger and plainly long. Where the compiler does not say
    what a name stands for, `typedefs` does."""

    def __init__(self, text, typedefs):
        written, _, plain = text.partition("':'")
        self.written = self._bare(written.strip("'"))
        self.plain = self._bare(plain.strip("'")) or self.written
        if self.plain == self.written:
            self.plain = self._bare(typedefs.get(self.plain, self.plain).rpartition("':'")[2].strip("'"))

    @staticmethod
    def _bare(text):
        return re.sub(r"\s+", " ", ORNAMENTS.sub(" ", text)).strip()

    def isObject(self):
        return bool(re.fullmatch(r"(?:id|Class|instancetype)\b.*|\w+ ?(?:<.*>)? ?\*", self.plain)) or self.written.endswith("Ref")

    def isClass(self, name):
        return any(re.fullmatch(rf"{name}\b ?(?:<.*>)? ?\*", text) for text in (self.written, self.plain))

    def adopts(self, name):
        return any(re.search(rf"<.*\b{name}\b.*>", text) for text in (self.written, self.plain))


def agrees(word, kind, index):
    """Whether the type `kind` (compiler's) can be the type `word` (declarations')."""
    return any(_agrees(part, kind, index) for part in pieces(word, "|") if part != "null")


def _agrees(word, kind, index):
    if word in ("this", "interop.Object") or word.startswith("InstanceType<"):
        return kind.isObject()
    if word == "void":
        return kind.plain == "void"
    if word == "boolean":
        return kind.written in TRUTHS
    if word == "number":
        return bool(NUMBERS.fullmatch(kind.plain)) and kind.written not in TRUTHS
    if word == "string":
        return kind.isClass("NSString") or kind.written == "SEL" or bool(re.fullmatch(r"(?:unsigned |signed )?char \*", kind.plain))
    if found := re.fullmatch(r"interop\.Enum<typeof (\w+)>", word):
        return kind.written == found[1]
    if word.startswith("("):
        return "(^" in kind.plain or "(*" in kind.plain
    if word.startswith("interop.Pointer"):
        return "*" in kind.plain or kind.written.endswith("Ref")
    return _named(re.sub(r"<.*", "", word), kind, index)


def _named(name, kind, index):
    if kind.isClass(name) or kind.adopts(name) or name in (kind.written, kind.plain):
        return True
    if name in STRUCTURES:
        return bool(STRUCTURES[name] & {kind.written, kind.plain})
    # What a collection is generic over is any object; what else has no name in the SDK is told by nothing.
    return name not in index.classes and not index.protocol(name) and kind.isObject()


def difference(name, here, forms, typedefs, index):
    """What differs, in words, between the types `here` and each of the `forms` that the SDK has for them; nothing if one agrees."""
    kinds = [Type(text, typedefs) for text in here]
    wrong = [[place for place, (word, kind) in enumerate(zip(form, kinds)) if not agrees(word, kind, index)] for form in forms]
    if not forms or not all(wrong):
        return None
    place = wrong[0][0]
    what = f"argument {place}" if place else "result"
    return f"{name}: its {what} is {forms[0][place]} in the SDK, and {kinds[place].written} here"
