import contextlib
import io
import unittest

import toy
from check import report
from explained import Explained


class Messages(toy.Tree):
    def testRightUsePasses(self):
        found, counts = self.check().run()
        self.assertEqual([str(fault) for fault in found], [])
        self.assertEqual(counts["functions"], 3)
        self.assertEqual(counts["constants"], 3)
        self.assertEqual(counts["methods of ours"], 2)
        self.assertGreaterEqual(counts["messages"], 7)

    def testMisspeltSelector(self):
        self.edit(self.source, "initWithTitle:NSToyDidMoveNotification action:", "initWithTitel:NSToyDidMoveNotification action:")
        self.assertFault(self.source, "initWithTitel", "-[NSFastToy initWithTitel:action:]", "nearest: initWithTitleAction")

    def testWrongNumberOfArguments(self):
        self.edit(self.source, "initWithTitle:NSToyDidMoveNotification action:@selector(press:)",
                  "initWithTitleAction:NSToyDidMoveNotification")
        self.edit(self.source, "[sender setTitle:nullptr];", "[sender setTitle:nullptr]; [self press:sender];")
        self.assertFault(self.source, "initWithTitleAction", "takes 2 arguments, not 1")

    def testClassMethodSentToAnInstance(self):
        self.edit(self.source, "[[NSToy sharedToy] URL]", "[[toy sharedToy] URL]")
        self.assertFault(self.source, "[toy sharedToy]", "class method, sent to an instance")

    def testInstanceMethodSentToAClass(self):
        self.edit(self.source, "[[NSToy sharedToy] URL]", "[NSToy URL]")
        self.assertFault(self.source, "[NSToy URL]", "+[NSToy URL]", "instance method, sent to the class")

    def testMethodsOfTheRootClassAnswerForClasses(self):
        self.edit(self.source, "[[NSToy sharedToy] URL]", "[NSToy retain]")
        self.assertEqual(self.faults(), [])

    def testClassThatOnlyTheDoubleHas(self):
        self.edit(self.header, "NSFastToy", "NSQuickToy")
        self.edit(self.source, "NSFastToy", "NSQuickToy")
        found = "\n".join(self.faults())
        self.assertIn(f"{self.source}:{self.line(self.source, 'NSQuickToy')}: the SDK has no class NSQuickToy", found)
        self.assertIn(f"{self.header}:{self.line(self.header, 'NSQuickToy')}: the SDK has no NSQuickToy", found)

    def testReadOnlyProperty(self):
        self.edit(self.header, "@property(readonly) NSURL *URL", "@property(retain) NSURL *URL")
        self.edit(self.source, "toy.title = (id)", "toy.URL = ")
        self.assertFault(self.source, "toy.URL", "setURL:", "read-only")

    def testGetterByItsOwnName(self):
        self.edit(self.header, "@property(getter=isMoving)", "@property")
        self.assertFault(self.source, "toy.moving", "-[NSToy moving]", "isMoving")

    def testObjectOfUnknownClass(self):
        self.edit(self.source, "[sender setTitle:nullptr]", "[sender setTitel:nullptr]")
        self.assertFault(self.source, "setTitel", "no class of the SDK", "nearest: setTitle")

    def testSelectorThatNothingAnswersTo(self):
        self.edit(self.source, "@selector(press:)", "@selector(pressed:)")
        found = self.faults()
        self.assertTrue(any("@selector(pressed:)" in fault for fault in found), found)
        self.assertTrue(any("[FernhopMover press:]: nobody calls it" in fault for fault in found), found)

    def testMisrememberedCallback(self):
        self.edit(self.source, "toyDidMove:", "toyDidMoved:")
        self.assertFault(self.source, "toyDidMoved", "[FernhopMover toyDidMoved:]", "nobody calls it", "nearest: toyDidMove")

    def testTypesOfACallback(self):
        self.edit(self.source, "- (void)toyDidMove:(NSObject *)notification {", "- (BOOL)toyShouldMove:(NSToy *)toy toPlace:(long)place {\n    return YES;\n}\n"
                                                                        "- (void)toyDidMove:(NSObject *)notification {")
        self.assertEqual(self.faults(), [])
        self.edit(self.source, "- (BOOL)toyShouldMove", "- (long)toyShouldMove")
        self.assertFault(self.source, "toyShouldMove", "[FernhopMover toyShouldMove:toPlace:]: its result is boolean in the SDK, and long here")

    def testCallbackOfAProtocolThatIsNotAdopted(self):
        self.edit(self.source, "NSObject <NSToyDelegate>", "NSObject")
        self.assertFault(self.source, "toyDidMove:", "neither we nor NSObject")

    def testActionThatIsUsedByName(self):
        self.edit(self.source, "@selector(press:)", "nullptr")
        self.assertFault(self.source, "- (void)press:(id)sender {", "nobody calls it")
        self.write("src/app/Actions.h", 'constexpr auto pressing = "press:";\n')
        self.assertEqual(self.faults(), [])

    def testUnnamedNamespace(self):
        self.edit(self.source, "namespace fernhop {", "namespace {\n\nvoid beside() {\n    [NSToy shardToy];\n}\n\n}\n\nnamespace fernhop {")
        self.assertFault(self.source, "shardToy", "nearest: sharedToy")

    def testExplainedSelector(self):
        self.edit(self.source, "[sender setTitle:nullptr]", "[sender setTitel:nullptr]")
        self.assertEqual(self.faults(explained=toy.EXPLAINED + "selector setTitel: a word of ours\n"), [])

    def testClassOfOursByAnotherName(self):
        self.edit(self.source, "FernhopMover", "Mover")
        self.edit(self.source, "[sender setTitle:nullptr]", "[sender setTitel:nullptr]")
        self.assertFault(self.source, "setTitel", "setTitel:")

    def testProtocolOfOurs(self):
        self.write("src/platform/macos/Linked.h", "#pragma once\n#import <Toy/Toy.h>\n\n@protocol FernhopLinked <NSObject>\n"
                                                  "@property(readonly) long link;\n@end\n")
        self.edit(self.source, "#import <Toy/Toy.h>", '#import "Linked.h"')
        self.edit(self.source, "long use() {", "long use(id<FernhopLinked> linked, NSObject<FernhopLinked> *other) {\n"
                                               "    [other retain];\n    return linked.link + [other link];\n}\n\nlong use() {")
        self.assertEqual(self.faults(), [])
        self.edit(self.source, "[other link]", "(long)[other lynk]")
        self.assertFault(self.source, "lynk", "-[NSObject lynk]")

    def testCategoryOfOurs(self):
        self.edit(self.source, "namespace fernhop {", "@interface NSToy (Fernhop)\n- (void)wind;\n@end\n@implementation NSToy (Fernhop)\n"
                                                      "- (void)wind {\n}\n@end\n\nnamespace fernhop {")
        self.edit(self.source, "long use() {", "long use() {\n    [[NSFastToy alloc] wind];")
        self.assertEqual(self.faults(), [])

    def testTemplates(self):
        self.edit(self.source, "long use() {", "template <typename Type> struct Kept {\n    Type *kept;\n    ~Kept() { [kept release]; }\n};\n\n"
                                               "long use() {\n    Kept<NSToy> kept{nullptr};\n")
        self.assertEqual(self.faults(), [])
        self.edit(self.source, "[kept release]", "[kept releese]")
        self.assertIn("no class of the SDK answers to it (nearest: release)", "\n".join(self.faults()))

    def testProgram(self):
        main = self.write("src/main/ToyMain.mm", "#import <Toy/Toy.h>\n\nint main() {\n    NSToyBeep();\n    return [NSToy shardToy] != nil;\n}\n"
                                                 .replace("nil", "nullptr"))
        self.compiled(self.source, main)
        self.assertFault(main, "shardToy", "nearest: sharedToy")


class Symbols(toy.Tree):
    def testFunctionThatOnlyTheDoubleHas(self):
        self.edit(self.header, "NSToyBeep", "NSToyBleep")
        self.edit(self.source, "NSToyBeep", "NSToyBleep")
        found = "\n".join(self.faults())
        self.assertIn(f"{self.source}:{self.line(self.source, 'NSToyBleep')}: the SDK has no function NSToyBleep (nearest: NSToyBeep)", found)
        self.assertIn(f"{self.header}:{self.line(self.header, 'NSToyBleep')}: the SDK has no function NSToyBleep", found)

    def testArgumentsOfAFunction(self):
        self.edit(self.header, "NSToyBeep(void)", "NSToyBeep(int)")
        self.edit(self.source, "NSToyBeep()", "NSToyBeep(1)")
        found = "\n".join(self.faults())
        self.assertIn(f"{self.source}:{self.line(self.source, 'NSToyBeep')}: NSToyBeep takes 0 arguments, not 1", found)
        self.assertIn("NSToyBeep takes 0 arguments in the SDK, 1 here", found)

    def testConstantThatOnlyTheDoubleHas(self):
        self.edit(self.header, "NSToyDidMoveNotification", "NSToyMovedNotification")
        self.edit(self.source, "NSToyDidMoveNotification", "NSToyMovedNotification")
        found = "\n".join(self.faults())
        self.assertIn("the SDK has no constant NSToyMovedNotification (nearest: NSToyDidMoveNotification)", found)

    def testWrongValue(self):
        self.edit(self.header, "NSToySpeedFast = 2", "NSToySpeedFast")
        found = "\n".join(self.faults())
        self.assertIn(f"{self.source}:{self.line(self.source, 'NSToySpeedFast')}: NSToySpeedFast is 2 in the SDK, and 1 here", found)
        self.assertIn(f"{self.header}:{self.line(self.header, 'NSToySpeedFast')}: NSToySpeedFast is 2 in the SDK, and 1 here", found)

    def testValueWithAWrongPrefix(self):
        self.edit(self.header, "NSToySpeedFast", "NSToyRateFast")
        self.edit(self.source, "NSToySpeedFast", "NSToyRateFast")
        self.assertIn("the SDK has no constant NSToyRateFast", "\n".join(self.faults()))

    def testFormerName(self):
        self.edit(self.header, "NSToySpeedSlow,", "NSToySpeedSlow, NSOldToySpeed = 0,")
        self.edit(self.source, "NSToySpeedFast", "NSOldToySpeed")
        self.assertIn("NSOldToySpeed is a former name of a value of NSToySpeed", "\n".join(self.faults()))
        self.assertEqual(self.faults(explained=toy.EXPLAINED + "old NSOldToySpeed kept on purpose\n"), [])

    def testMacrosAndTypesOfTheHeadersOnly(self):
        self.edit(self.source, "long use() {", "long use() {\n    NSToySeconds wait = NSToyMacro; // NSToyMacro\n    (void)wait;\n    (void)\"NSToyMacro\";")
        found = self.faults()
        self.assertEqual(sorted(fault.split(": ", 1)[1].split(" (")[0] for fault in found),
                         ["the SDK has no macro NSToyMacro", "the SDK has no type NSToySeconds"])

    def testHeaders(self):
        self.write("tests/macos/double/include/Toy/NSFastToy.h", "#import <Toy/Toy.h>\n")
        self.edit(self.source, "#import <Toy/Toy.h>", "#import <Toy/NSFastToy.h>")
        self.assertFault(self.source, "NSFastToy.h", "<Toy/NSFastToy.h> is a part: import <Toy/Toy.h>")

    def testSuperclassInTheDouble(self):
        self.edit(self.header, "@interface NSFastToy : NSToy", "@interface NSFastToy : NSObject")
        self.edit(self.source, "[NSFastToy alloc]", "[NSToy alloc]")
        self.assertFault(self.header, "NSFastToy", "NSFastToy is a NSToy in the SDK, and a NSObject here")

    def testTypesInTheDouble(self):
        for before, after, words in (("BOOL moving", "long moving", "setMoving:]: its argument 1 is boolean in the SDK, and long here"),
                                     ("NSString *title;", "NSURL *title;", "title]: its result is string in the SDK, and NSURL * here"),
                                     ("BOOL NSToyMove", "long NSToyMove", "NSToyMove: its result is boolean in the SDK, and long here"),
                                     ("NSURL *URL", "NSString *URL", "URL]: its result is NSURL in the SDK, and NSString * here")):
            with self.subTest(after):
                self.write("tests/macos/double/include/Toy/Toy.h", toy.HEADER)
                self.edit(self.header, before, after)
                found = self.faults()
                self.assertTrue(any(words in fault for fault in found), found)

    def testClassThatTheDoubleHasUnderAnotherName(self):
        self.edit(self.header, "@interface NSToy :", "#define NSToy FNToy\n@interface NSToy :")
        self.assertEqual(self.faults(), [])
        self.edit(self.source, "sharedToy", "shardToy")
        self.assertFault(self.source, "shardToy", "+[NSToy shardToy]", "nearest: sharedToy")

    def testProtocolInTheDouble(self):
        self.edit(self.header, "- (void)toyDidMove:", "- (void)toyWillMove:(id)toy;\n- (void)toyDidMove:")
        self.assertFault(self.header, "toyWillMove", "protocol NSToyDelegate has no toyWillMove:")


class Dates(toy.Tree):
    def testTooNew(self):
        found = self.faults(dates="new NSToy.setTitle: 14.0\nnew NSFastToy 15.0\nnew NSToySpeedFast 16.0\n")
        self.assertEqual(sorted(fault.split(": ", 1)[1] for fault in found),
                         ["NSFastToy: there is none before macOS 15.0", "NSToy.setTitle:: there is none before macOS 14.0",
                          "NSToySpeedFast: there is none before macOS 16.0"])

    def testDeprecatedUnlessExplained(self):
        old = "old NSToyBeep use a toy that is silent\n"
        self.assertIn("NSToyBeep: it is deprecated: use a toy that is silent", "\n".join(self.faults(dates=old)))
        self.assertEqual(self.faults(dates=old, explained=toy.EXPLAINED + "old NSToyBeep it must be heard\n"), [])

    def testEntriesThatSayTooLittle(self):
        for text in ("new NSToy\n", "maybe NSToy 14.0\n"):
            with self.subTest(text), self.assertRaises(ValueError):
                self.faults(dates=text)


class Whole(toy.Tree):
    def said(self):
        """The exit status, and what was printed."""
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            status = report(self.check(), {"messages": 7, "functions": 3})
        return status, printed.getvalue()

    def testSummary(self):
        status, printed = self.said()
        self.assertEqual(status, 0, printed)
        self.assertIn("1 sources: ", printed)
        self.assertIn("; 0 faults", printed)

    def testTooLittleIsNoSuccess(self):
        self.source.write_text("#import <Toy/Toy.h>\n", encoding="utf-8")
        status, printed = self.said()
        self.assertEqual(status, 1)
        self.assertIn("only 0 messages, 0 functions", printed)

    def testNothingIsNoSuccess(self):
        self.compiled()
        self.assertEqual(self.said()[0], 1)

    def testSourceThatNoBuildCompiles(self):
        self.write("src/platform/macos/Other.mm", SOURCE_OF_NOTHING)
        status, printed = self.said()
        self.assertEqual(status, 1)
        self.assertIn("src/platform/macos/Other.mm:1: this build does not compile it", printed)

    def testCodeThatTheDumpLeavesOut(self):
        self.edit(self.source, "namespace fernhop {", "static void beside() {\n}\n\nnamespace fernhop {")
        status, printed = self.said()
        self.assertEqual(status, 1)
        self.assertIn(f"src/platform/macos/Toy.mm:{self.line(self.source, 'beside')}: code outside", printed)

    def testFaultsNameFilesOfTheCheckout(self):
        self.edit(self.source, "setTitle:", "setTitel:")
        status, printed = self.said()
        self.assertEqual(status, 1)
        self.assertTrue(printed.startswith(f"src/platform/macos/Toy.mm:{self.line(self.source, 'setTitel')}: "), printed)

    def testEntriesWithoutAReason(self):
        for text in ("macro YES\n", "made-up NSToy because\n"):
            with self.subTest(text), self.assertRaises(ValueError):
                Explained(text)


SOURCE_OF_NOTHING = "namespace fernhop {\n}\n"

if __name__ == "__main__":
    unittest.main()
