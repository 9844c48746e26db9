#!/usr/bin/env python3
"""Has CMake plan the build of Fernhop.app for a Mac, which nothing else here does, and looks at what would be built and installed.

    DarwinBuildTest.py CHECKOUT NAME=VALUE...

The values are CMake's own, of the build that runs this: compilers, and where packages were found."""

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

# What CMake would ask a Mac for.
MAC = {"CMAKE_SYSTEM_NAME": "Darwin", "CMAKE_SYSTEM_PROCESSOR": "arm64", "CMAKE_OSX_ARCHITECTURES": "arm64",
       "CMAKE_INSTALL_NAME_TOOL": "/bin/true", "CMAKE_SIZEOF_VOID_P": "8",
       # Newer versions of simdjson ask for threads, which the Mac's C library has.
       "CMAKE_HAVE_LIBC_PTHREAD": "ON",
       # What only Linux has is found by it.
       "CMAKE_DISABLE_FIND_PACKAGE_PkgConfig": "ON",
       **{f"CMAKE_{language}_COMPILER_WORKS": "ON" for language in ("C", "CXX", "OBJCXX")}}
RESOURCES = {"Fernhop.icns", "ContactEmail.png", "MenuBarIconDark.png", "MenuBarIconLight.png", "X.png", "discord.png", "redbook.png"}


def run(*command, cwd):
    done = subprocess.run(command, cwd=cwd, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode:
        raise AssertionError(f"{' '.join(map(str, command))}:\n{done.stdout}")
    return done.stdout


class DarwinBuild(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = Path(folder.name)
        cls.build = cls.root / "build"
        (cls.root / "sdk/usr").mkdir(parents=True)
        presets = json.loads((checkout / "CMakePresets.json").read_text(encoding="utf-8"))["configurePresets"]
        (preset,) = (preset["cacheVariables"] for preset in presets if preset["name"] == "macos")
        given = {**MAC, "CMAKE_OSX_SYSROOT": cls.root / "sdk", "CMAKE_EXPORT_COMPILE_COMMANDS": "ON", **preset, **outer}
        run("cmake", "-S", checkout, "-B", cls.build, "-G", "Ninja", "-Wno-dev", *(f"-D{name}={value}" for name, value in given.items()),
            cwd=cls.root)

    def testCompilesForTheOldestSystemAndCountsReferencesByHand(self):
        commands = {Path(entry["file"]).name: entry["command"] for entry in json.loads((self.build / "compile_commands.json").read_bytes())}
        for flag in ("-mmacosx-version-min=11.0", "-fno-objc-arc", "-std=c++20"):
            self.assertIn(flag, commands["MacDelegate.mm"])
        self.assertNotIn("tests/", "".join(commands.values()), "nothing of the double")

    def testLinksTheFrameworks(self):
        rules = (self.build / "build.ninja").read_text(encoding="utf-8")
        for framework in ("AppKit", "CoreServices", "Foundation", "QuartzCore"):
            self.assertIn(f"-framework {framework}", rules)

    def testInstallsOneBundleWithAllThatBelongsInIt(self):
        inside = [f"src/main/Fernhop.app/Contents/Resources/{name}" for name in RESOURCES]
        run("ninja", "-C", self.build, *inside, cwd=self.root)
        run("cmake", "--install", self.build, "--prefix", "stage", cwd=self.root)
        stage = self.root / "stage"
        self.assertEqual([path.name for path in stage.iterdir()], ["Fernhop.app"])
        contents = stage / "Fernhop.app/Contents"
        self.assertEqual((contents / "Info.plist").read_bytes(), (self.build / "Info.plist").read_bytes())
        self.assertEqual({path.name for path in (contents / "Resources").iterdir()}, RESOURCES)
        self.assertIn("Fernhop.app/Contents/MacOS/Fernhop:", (self.build / "build.ninja").read_text(encoding="utf-8"))


if __name__ == "__main__":
    checkout = Path(sys.argv[1]).resolve()
    outer = dict(argument.split("=", 1) for argument in sys.argv[2:])
    unittest.main(argv=sys.argv[:1])
