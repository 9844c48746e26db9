#!/usr/bin/env python3
"""Breaks a small tree in every way that a check must detect, and tests that the check reports it."""

import subprocess
import tempfile
import unittest
from pathlib import Path

import comments
import includes
import paths
import targets

# Composed here, so that this file itself does not contain what the checks search for.
SOMEBODYS_HOME = "/".join(("", "home", "jdoe"))
CHECKS = Path(__file__).resolve().parent
SOUND_TREE = {
    "CMakeLists.txt": "add_subdirectory(src)\n",
    "src/CMakeLists.txt": "add_library(core platform/Sound.h rules/URLRule.h routing/Router.h routing/Router.cpp settings/Preferences.h "
                          "app/AppDelegate.h main/main.cpp platform/linux/sound/Bell.h platform/linux/sound/Bell.cpp)\n",
    "src/platform/Sound.h": "#pragma once\n\n/// Beeps.\nclass Sound {\n  public:\n    virtual ~Sound() = default;\n"
                            "    /// Once.\n    virtual void beep() = 0;\n};\n",
    "src/platform/linux/sound/Bell.h": '#pragma once\n#include "platform/Sound.h"\n',
    "src/platform/linux/sound/Bell.cpp": '#include "platform/linux/sound/Bell.h"\n#include <canberra.h>\n#ifdef __linux__\n#endif\n',
    "src/rules/URLRule.h": "#pragma once\n#include <string>\n",
    "src/routing/Router.h": '#pragma once\n#include "rules/URLRule.h"\n',
    "src/routing/Router.cpp": '#include "routing/Router.h"\n#include "settings/Preferences.h"\n',
    "src/settings/Preferences.h": '#pragma once\n#include "rules/URLRule.h"\n',
    "src/app/AppDelegate.h": '#pragma once\n#include "routing/Router.h"\n',
    "src/main/main.cpp": '#include "app/AppDelegate.h"\n#include "platform/linux/sound/Bell.h"\n#include <gio/gio.h>\nint main() {}\n',
}


class Tree(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name) / "checkout"
        for name, text in SOUND_TREE.items():
            self.write(name, text)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def add(self, name, text):
        """Appends to a file, or creates it and adds it to CMake."""
        path = self.root / name
        if path.exists():
            path.write_text(path.read_text(encoding="utf-8") + text, encoding="utf-8")
        else:
            self.write(name, text)
            self.add("CMakeLists.txt", f"add_library({path.stem} {name})\n")

    def assertFault(self, check, file, words):
        faults = list(check(self.root))
        self.assertTrue(any(str(fault.path) == file and words in fault.message for fault in faults),
                        f"no fault in {file} about '{words}' among: {[str(fault) for fault in faults]}")

    def assertSound(self, check):
        self.assertEqual([str(fault) for fault in check(self.root)], [])


class Includes(Tree):
    def testSoundTreePasses(self):
        self.assertSound(includes.check)

    def testToolkitHeaderInPortableFolder(self):
        for header in ("gio/gio.h", "QWidget", "unistd.h", "sys/stat.h", "AppKit/AppKit.h", "xcb/xcb.h"):
            with self.subTest(header):
                self.write("src/routing/Router.cpp", f"#include <{header}>\n")
                self.assertFault(includes.check, "src/routing/Router.cpp", header)

    def testToolkitHeaderByQuotesOrImport(self):
        self.write("src/routing/Router.cpp", '#include "gio/gio.h"\n')
        self.assertFault(includes.check, "src/routing/Router.cpp", "gio/gio.h")
        self.write("src/routing/Router.cpp", "#import <Foundation/Foundation.h>\n")
        self.assertFault(includes.check, "src/routing/Router.cpp", "Foundation")

    def testConditionalOnTheOperatingSystem(self):
        for line in ("#ifdef __linux__", "#if defined(__APPLE__)", "#  elif _WIN32", "#if __has_include(<gio/gio.h>)"):
            with self.subTest(line):
                self.write("src/routing/Router.cpp", f"{line}\n#endif\n")
                self.assertFault(includes.check, "src/routing/Router.cpp", "operating system")

    def testIncludeOfAFloorAbove(self):
        for lower, upper in (("src/platform/Sound.h", "rules/URLRule.h"), ("src/rules/URLRule.h", "settings/Preferences.h"),
                             ("src/settings/Preferences.h", "routing/Router.h"), ("src/routing/Router.h", "app/AppDelegate.h")):
            with self.subTest(lower):
                self.write(lower, f'#include "{upper}"\n')
                self.assertFault(includes.check, lower, "floor above")

    def testFloorsOfTheUserInterface(self):
        order = ["src/catalog/Names.h", "src/routing/Router.h", "src/dialogs/RuleDialog.h", "src/app/AppDelegate.h", "src/main/main.h"]
        for name in order:
            self.write(name, "")
        for lower, upper in zip(order, order[1:]):
            with self.subTest(lower):
                self.write(lower, f'#include "{upper[4:]}"\n')
                self.assertFault(includes.check, lower, "floor above")

    def testPortableFileIncludesABackend(self):
        self.add("src/routing/Router.cpp", '#include "platform/linux/sound/Bell.h"\n')
        self.assertFault(includes.check, "src/routing/Router.cpp", "only a backend or a main")

    def testBackendIncludesTheCore(self):
        self.add("src/platform/linux/sound/Bell.cpp", '#include "app/AppDelegate.h"\n')
        self.assertFault(includes.check, "src/platform/linux/sound/Bell.cpp", "above the platform's interfaces")

    def testBackendIncludesTheOther(self):
        self.add("src/platform/macos/Bell.h", "")
        self.add("src/platform/linux/sound/Bell.cpp", '#include "platform/macos/Bell.h"\n')
        self.assertFault(includes.check, "src/platform/linux/sound/Bell.cpp", "another's")

    def testProductIncludesTests(self):
        self.add("tests/fakes/FakeSound.h", "")
        self.add("src/routing/Router.cpp", '#include "fakes/FakeSound.h"\n')
        self.assertFault(includes.check, "src/routing/Router.cpp", "the tests'")

    def testCircleOnOneFloor(self):
        self.add("src/routing/Intake.h", '#include "routing/Router.h"\n')
        self.add("src/routing/Router.h", '#include "routing/Intake.h"\n')
        self.assertTrue(any("circle" in fault.message for fault in includes.check(self.root)))

    def testCircleOfFolders(self):
        self.add("src/settings/Catalog.h", '#include "catalog/Names.h"\n')
        self.add("src/catalog/Names.h", "")
        self.assertSound(includes.check)
        self.add("src/catalog/Icons.h", '#include "settings/Preferences.h"\n')
        self.assertTrue(any("folders need each other" in fault.message for fault in includes.check(self.root)))

    def testFloorsWithinABackend(self):
        order = ["base/Text.h", "applications/Entry.h", "log/Log.h", "source/Sender.h", "tray/Icon.h", "stub/Links.h"]
        for name in order:
            self.write(f"src/platform/linux/{name}", "")
        for lower, upper in zip(order, order[1:]):
            with self.subTest(lower):
                self.write(f"src/platform/linux/{lower}", f'#include "platform/linux/{upper}"\n')
                self.assertFault(includes.check, f"src/platform/linux/{lower}", "floor above")

    def testFileOnNoFloor(self):
        self.add("src/attic/Old.h", "")
        self.assertFault(includes.check, "src/attic/Old.h", "no floor")


class Targets(Tree):
    def testSoundTreePasses(self):
        self.assertSound(targets.check)

    def testFileThatCMakeDoesNotKnow(self):
        for name in ("src/routing/Forgotten.cpp", "src/routing/Forgotten.h", "tests/routing/ForgottenTest.cpp", "src/platform/macos/Bell.mm"):
            with self.subTest(name):
                self.write(name, "")
                self.assertFault(targets.check, name, "no CMakeLists.txt")

    def testHeaderOfTheTestsThatATestIncludes(self):
        self.add("tests/routing/RouterTest.cpp", '#include "routing/Oracle.h"\n')
        self.write("tests/routing/Oracle.h", "")
        self.assertSound(targets.check)

    def testHeaderOfTheProductThatASourceIncludes(self):
        self.add("src/routing/Router.cpp", '#include "routing/Forgotten.h"\n')
        self.write("src/routing/Forgotten.h", "")
        self.assertFault(targets.check, "src/routing/Forgotten.h", "no CMakeLists.txt")

    def testMentionInACommentDoesNotCount(self):
        self.write("src/routing/Forgotten.cpp", "")
        self.add("src/CMakeLists.txt", "# routing/Forgotten.cpp\n")
        self.assertFault(targets.check, "src/routing/Forgotten.cpp", "no CMakeLists.txt")

    def testVariablesOfFolders(self):
        self.write("src/routing/Here.cpp", "")
        self.write("src/routing/There.cpp", "")
        self.write("src/routing/CMakeLists.txt", "add_library(x ${CMAKE_CURRENT_SOURCE_DIR}/Here.cpp ${PROJECT_SOURCE_DIR}/src/routing/There.cpp)\n")
        self.assertSound(targets.check)


class Comments(Tree):
    def testSoundTreePasses(self):
        self.assertSound(comments.check)

    def declare(self, text):
        self.write("src/platform/Sound.h", "#pragma once\n\nnamespace fernhop {\n" + text + "\n} // namespace fernhop\n")

    def testDeclarationsWithoutComment(self):
        for text in ("class Sound {\n};", "struct Point {\n    int x;\n};", "enum class Kind { one };", "using Name = int;",
                     "[[nodiscard]] bool matches(int a, int b);", "/// Beeps.\nclass Sound {\n  public:\n    virtual void beep() = 0;\n};",
                     "[[nodiscard]] bool longOne(int a,\n                           int b);", "// Not a contract's comment.\nclass Sound {\n};"):
            with self.subTest(text):
                self.declare(text)
                self.assertFault(comments.check, "src/platform/Sound.h", "no /// comment")

    def testWhatNeedsNone(self):
        for text in ("struct Sound;", "/// A pair.\nusing Left = int;\nusing Right = int;", "enum class Kind { one }; ///< which",
                     "/// A field.\nclass Field {\n  public:\n    int x() const { return value; }\n};",
                     "/// Beeps.\nclass Sound {\n  public:\n    virtual ~Sound() = default;\n\n  private:\n    int volume(int of);\n};",
                     "/// Twice.\ninline int twice(int a) {\n    return doubled(a);\n}"):
            with self.subTest(text):
                self.declare(text)
                self.assertSound(comments.check)

    def testBackendsNeedNone(self):
        self.add("src/platform/linux/sound/Bell.h", "class Bell {\n};\n")
        self.assertSound(comments.check)


class Paths(Tree):
    def testSoundTreePasses(self):
        self.assertSound(paths.check)

    def testHostThatIsCalledAsAFolder(self):
        self.write("README.md", f"Look at https:/{self.root}/src.\n")
        self.assertSound(paths.check)
        self.write("README.md", f"Look at file://{self.root}/src.\n")
        self.assertFault(paths.check, "README.md", "folder of this machine")

    def testFolderOfTheCheckoutAndItsParent(self):
        for folder in (self.root, self.root.parent):
            with self.subTest(folder):
                self.write("README.md", f"Look into {folder}/src.\n")
                self.assertFault(paths.check, "README.md", "folder of this machine")

    def testHomeFolders(self):
        for text in (f"cd {SOMEBODYS_HOME}/src", "CACHE=/" + "Users/jdoe/x", "/" + "root/.cache/x"):
            with self.subTest(text):
                self.write("scripts/x.sh", text + "\n")
                self.assertFault(paths.check, "scripts/x.sh", "home folder")

    def testExamplesMayHaveAHome(self):
        self.write("README.md", "/home/user/.config, /home/me/x, $HOME/.local, https://example.org/home/page, ~/x\n")
        self.assertSound(paths.check)

    def testBinaryFilesAndBuildFoldersAreLeftAlone(self):
        self.write("icon.png", f"\0{SOMEBODYS_HOME}/x")
        self.write("build/dev/log", f"{SOMEBODYS_HOME}/x")
        self.assertSound(paths.check)


class Commands(Tree):
    """The checks that are separate commands: tested by their exit status."""

    def status(self, *command):
        return subprocess.run([str(part) for part in command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode

    def testExitStatusOfTheChecks(self):
        for check in ("includes", "targets", "comments", "paths"):
            with self.subTest(check):
                self.assertEqual(self.status("python3", CHECKS / f"{check}.py", self.root), 0)
        self.write("src/platform/Sound.h", f"#include <gio/gio.h>\nclass Sound {{\n}};\n// {SOMEBODYS_HOME}\n")
        self.write("src/routing/Forgotten.cpp", "")
        for check in ("includes", "targets", "comments", "paths"):
            with self.subTest(check):
                self.assertEqual(self.status("python3", CHECKS / f"{check}.py", self.root), 1)

    def testShellScripts(self):
        self.write("good.sh", "#!/bin/bash\necho fine\n")
        self.assertEqual(self.status(CHECKS / "shell.sh", self.root), 0)
        self.write("run", "#!/bin/bash\nfor f in $(ls *); do rm $f; done\n")
        self.assertNotEqual(self.status(CHECKS / "shell.sh", self.root), 0)

    def testFormatting(self):
        self.write(".clang-format", "BasedOnStyle: LLVM\nIndentWidth: 4\n")
        self.assertEqual(self.status(CHECKS / "format.sh", self.root), 0)
        self.add("src/platform/macos/Bell.mm", "int   main( ){return 0;}\n")
        self.assertNotEqual(self.status(CHECKS / "format.sh", self.root), 0)
        self.assertEqual(self.status(CHECKS / "format.sh", "--fix", self.root), 0)
        self.assertEqual(self.status(CHECKS / "format.sh", self.root), 0)

    def analyse(self, body):
        self.write("src/routing/Router.cpp", body)
        self.write("db/compile_commands.json", f'[{{"directory": "{self.root}", "command": "c++ -c {self.root}/src/routing/Router.cpp", '
                                               f'"file": "{self.root}/src/routing/Router.cpp"}}]')
        self.write(".clang-tidy", (CHECKS.parent.parent / ".clang-tidy").read_text(encoding="utf-8"))
        return self.status(CHECKS / "tidy.sh", self.root / "db", self.root)

    def testStaticAnalysis(self):
        self.assertEqual(self.analyse("int twice(int a) { return a + a; }\n"), 0)
        self.assertNotEqual(self.analyse("#include <string>\n#include <utility>\nvoid take(std::string);\n"
                                         "void give(std::string a) { take(std::move(a)); take(a); }\n"), 0)
        self.assertNotEqual(self.status(CHECKS / "tidy.sh", self.root / "src", self.root), 0)


if __name__ == "__main__":
    unittest.main()
