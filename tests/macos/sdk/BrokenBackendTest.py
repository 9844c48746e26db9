"""Breaks copies of the backend's own sources in the ways that memory does, and sees that the check says so.

    BrokenBackendTest.py BUILD SOURCE
"""

import json
import re
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

import toy  # for the checks' folder
import availability
import explained
import fetch
import sdkindex
from check import DOUBLE, Check

BUILD, SOURCE = (Path(argument).resolve() for argument in sys.argv[1:3])
SOURCES = Path("src/platform/macos")


class Backend(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cache = fetch.cacheFolder()
        cls.index = sdkindex.load(fetch.declarations(cache), cache)

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name).resolve() / "checkout"
        for part in ("src", "tests/macos/double"):
            shutil.copytree(SOURCE / part, self.root / part)
        self.touched = set()

    def breakIt(self, before, after, double=False):
        """Puts the text `after` for the first `before` of the backend, and for each in the double's headers if told to; the result
        is where that was, as a fault begins."""
        if double:
            self.replaceInDouble(before, after)
        pattern = self.whole(before)
        for path in sorted((self.root / SOURCES).rglob("*.mm")):
            text = path.read_text(encoding="utf-8")
            found = pattern.search(text)
            if found:
                path.write_text(pattern.sub(after, text), encoding="utf-8")
                self.touched.add(path.relative_to(self.root))
                return f"{path.relative_to(self.root)}:{text.count(chr(10), 0, found.start()) + 1}: "
        return self.fail(f"the backend does not use {before} any more: break something else here")

    @staticmethod
    def whole(words):
        """Finds the words, not as a part of others and not in the name of a header."""
        return re.compile(rf"(?<![\w/]){re.escape(words)}" + (r"(?!\w)" if words[-1].isalnum() else ""))

    def replaceInDouble(self, before, after):
        changed = 0
        for path in (self.root / DOUBLE).rglob("*.h"):
            text = path.read_text(encoding="utf-8")
            made = self.whole(before).sub(after, text)
            changed += made != text
            path.write_text(made, encoding="utf-8")
        self.assertTrue(changed, f"the double does not declare {before} any more: break something else here")

    def faults(self):
        """What is said about the copy, of which only the sources that were broken are compiled."""
        moved = (BUILD / "compile_commands.json").read_text(encoding="utf-8").replace(f"{SOURCE}/", f"{self.root}/")
        build = Path(self.root / "broken")
        build.mkdir(exist_ok=True)
        kept = [entry for entry in json.loads(moved) if Path(entry["file"]) in {self.root / path for path in self.touched}]
        for entry in kept:
            Path(entry["directory"]).mkdir(parents=True, exist_ok=True)
        (build / "compile_commands.json").write_text(json.dumps(kept), encoding="utf-8")
        found, _ = Check(build, self.root, self.index, explained.load(), availability.load()).run()
        return [str(fault).replace(f"{self.root}/", "") for fault in found]

    def assertSaid(self, place, *words):
        found = self.faults()
        self.assertTrue(any(fault.startswith(place) and all(word in fault for word in words) for fault in found),
                        f"nothing about {words} at {place} in {found}")

    def testMisspeltSelector(self):
        self.assertSaid(self.breakIt("imageWithSystemSymbolName:", "imageWithSystemSymbol:"),
                        "+[NSImage imageWithSystemSymbol:accessibilityDescription:]",
                        "nearest: imageWithSystemSymbolNameAccessibilityDescription")

    def testWrongClass(self):
        self.assertSaid(self.breakIt("NSStatusBar", "NSSystemStatusBar", double=True), "the SDK has no class NSSystemStatusBar",
                        "nearest: ")

    def testClassMethodSentToAnInstance(self):
        self.assertSaid(self.breakIt("[NSStatusBar systemStatusBar]", "[[[NSStatusBar alloc] init] systemStatusBar]"),
                        "-[NSStatusBar systemStatusBar]",
                        "class method, sent to an instance")

    def testMissingConstant(self):
        self.assertSaid(self.breakIt("NSLayoutAttributeTrailing", "NSLayoutAttributeTrailingEdge", double=True),
                        "the SDK has no constant NSLayoutAttributeTrailingEdge", "nearest: NSLayoutAttributeTrailing")

    def testWrongValue(self):
        place = self.breakIt("NSTextAlignmentLeft", "NSTextAlignmentLeft")
        self.replaceInDouble("NSTextAlignmentLeft", "NSTextAlignmentLeft = 7, NSTextAlignmentUnused")
        self.assertSaid(place, "NSTextAlignmentLeft is 0 in the SDK, and 7 here")

    def testWrongNumberOfArguments(self):
        self.replaceInDouble("NSBeep(void)", "NSBeep(int)")
        self.assertSaid(self.breakIt("NSBeep()", "NSBeep(1)"), "NSBeep takes 0 arguments, not 1")

    def testMisrememberedCallbacks(self):
        for before, after, near in (("tableViewSelectionDidChange:", "tableViewSelectionChanged:", "tableViewSelection"),
                                    ("numberOfRowsInTableView:", "numberOfRowsOfTableView:", "numberOfRowsInTableView"),
                                    ("controlTextDidChange:", "controlTextChanged:", "controlText")):
            with self.subTest(before):
                place = self.breakIt(before, after)
                self.assertSaid(place, f"{after}]: nobody calls it", f"nearest: {near}")

    def testReadOnlyProperty(self):
        self.assertSaid(self.breakIt("[NSStatusBar systemStatusBar]", "([[NSStatusBar systemStatusBar] setThickness:1], [NSStatusBar systemStatusBar])"),
                        "-[NSStatusBar setThickness:]", "read-only")

    def testTooNew(self):
        self.assertSaid(self.breakIt("[NSMenuItem separatorItem]", "[NSMenuItem sectionHeaderWithTitle:nil]"), "none before macOS 14.0")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
