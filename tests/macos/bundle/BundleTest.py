#!/usr/bin/env python3
"""Checks what Fernhop.app says of itself to the system, its icon and its images.

    BundleTest.py BUILD_FOLDER CHECKOUT
"""

import json
import plistlib
import re
import struct
import subprocess
import sys
import unittest
from pathlib import Path

PNG = b"\x89PNG\r\n\x1a\n"
SIDES = {b"ic07": 128, b"ic08": 256, b"ic09": 512, b"ic10": 1024, b"ic11": 32, b"ic12": 64, b"ic13": 256, b"ic14": 512}


def chunks(container):
    position = 0
    while position < len(container):
        code, length = struct.unpack_from(">4sI", container, position)
        assert length >= 8, "a chunk shorter than its own head"
        yield code, container[position + 8:position + length]
        position += length


def pngSize(image):
    return struct.unpack_from(">II", image, 16)


class InfoPlist(unittest.TestCase):
    def setUp(self):
        self.path = build / "Info.plist"
        self.info = plistlib.loads(self.path.read_bytes())

    def testIsAPropertyListToAnotherReaderToo(self):
        converted = subprocess.run(["plistutil", "-i", self.path, "-f", "bin"], capture_output=True, check=True).stdout
        self.assertEqual(plistlib.loads(converted), self.info)

    def testNothingIsLeftToFillIn(self):
        self.assertNotRegex(self.path.read_text(encoding="utf-8"), r"@\w+@|\$\{|\$\(")

    def testNamesTheApplicationAndItsProgram(self):
        for key in ("CFBundleName", "CFBundleDisplayName", "CFBundleExecutable", "CFBundleIconFile"):
            self.assertEqual(self.info[key], "Fernhop", key)
        self.assertEqual(self.info["CFBundlePackageType"], "APPL")
        self.assertEqual(self.info["NSPrincipalClass"], "NSApplication")

    def testHasAnIdentifierThatLaunchServicesKeepsAsItIs(self):
        self.assertEqual(self.info["CFBundleIdentifier"], "org.fernhop.fernhop", "it forgets which letters were capitals")

    def testTellsTheVersionOfTheProject(self):
        stated = re.search(r"project\(Fernhop VERSION ([\d.]+)", (checkout / "CMakeLists.txt").read_text(encoding="utf-8"))
        for key in ("CFBundleVersion", "CFBundleShortVersionString"):
            self.assertEqual(self.info[key], stated.group(1), key)

    def testLivesInTheMenuBarAlone(self):
        self.assertIs(self.info["LSUIElement"], True)
        self.assertIs(self.info["NSHighResolutionCapable"], True)

    def testRunsOnTheSystemThatItIsBuiltFor(self):
        self.assertEqual(self.info["LSMinimumSystemVersion"], "11.0")
        self.assertIn('"CMAKE_OSX_DEPLOYMENT_TARGET": "11.0"', (checkout / "CMakePresets.json").read_text(encoding="utf-8"))

    def testIsBuiltByCompilersThatWarnOfMore(self):
        presets = json.loads((checkout / "CMakePresets.json").read_text(encoding="utf-8"))["configurePresets"]
        (settings,) = (preset["cacheVariables"] for preset in presets if preset["name"] == "macos")
        self.assertEqual(settings["FERNHOP_WARNINGS_AS_ERRORS"], "OFF", "it is for whoever has the sources, with the Xcode of the day")

    def testMayBecomeTheDefaultBrowser(self):
        schemes = [scheme for kind in self.info["CFBundleURLTypes"] for scheme in kind["CFBundleURLSchemes"]]
        self.assertEqual(schemes, ["http", "https"])
        documents = [kind for entry in self.info["CFBundleDocumentTypes"] for kind in entry["LSItemContentTypes"]]
        self.assertEqual(documents, ["public.html", "public.xhtml"])

    def testClaimsNoDocumentForItself(self):
        ranks = {entry["LSHandlerRank"] for entry in self.info["CFBundleDocumentTypes"]}
        self.assertEqual(ranks, {"Alternate"})

    def testClaimsNoPagesHandedOffFromOtherDevices(self):
        self.assertNotIn("NSUserActivityTypes", self.info, "nobody takes them")

    def testNamesTheLanguagesOfItsTexts(self):
        self.assertEqual(self.info["CFBundleLocalizations"], ["en", "zh-Hans"])
        self.assertEqual(self.info["CFBundleDevelopmentRegion"], "en")


class Resources(unittest.TestCase):
    def testIconHoldsEachSizeAsAPicture(self):
        (code, content), = chunks((checkout / "packaging/macos/Fernhop.icns").read_bytes())
        self.assertEqual(code, b"icns")
        images = dict(chunks(content))
        self.assertEqual(images.keys(), SIDES.keys())
        for code, side in SIDES.items():
            self.assertTrue(images[code].startswith(PNG), code)
            self.assertEqual(pngSize(images[code]), (side, side), code)

    def testImagesAreThereAndSquare(self):
        for name in ("MenuBarIconLight", "MenuBarIconDark", "ContactEmail", "X", "discord", "redbook"):
            image = (checkout / f"resources/{name}.png").read_bytes()
            self.assertTrue(image.startswith(PNG), name)
            self.assertEqual(*pngSize(image), name)


if __name__ == "__main__":
    build, checkout = map(Path, sys.argv[1:3])
    unittest.main(argv=sys.argv[:1])
