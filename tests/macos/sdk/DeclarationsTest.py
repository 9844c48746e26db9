import unittest

import toy
import declarations
import names


class Declarations(unittest.TestCase):
    def setUp(self):
        self.index = toy.index()

    def testClassesKnowWhatTheyStandOn(self):
        self.assertEqual(self.index.classes["NSFastToy"]["super"], "NSToy")
        self.assertEqual(self.index.classes["NSToy"]["protocols"], ["NSCoding"])
        self.assertEqual(self.index.classes["NSObject"]["protocols"], ["NSObjectProtocol"])

    def testProtocolsAreNoClasses(self):
        self.assertNotIn("NSToyDelegate", self.index.classes)
        self.assertEqual(self.index.protocols["NSToyDelegate"]["protocols"], ["NSObjectProtocol"])
        self.assertIs(self.index.protocol("NSObject"), self.index.protocols["NSObjectProtocol"])

    def testMembers(self):
        toyClass = self.index.classes["NSToy"]
        self.assertEqual(toyClass["instance"]["initWithTitleAction"]["signatures"], [["this", "string", "string | null"]])
        self.assertEqual(toyClass["static"]["toyWithTitleSpeed"]["signatures"],
                         [["InstanceType<This>", "string", "interop.Enum<typeof NSToySpeed>"]])
        self.assertEqual(toyClass["static"]["sharedToy"]["property"], "readonly")
        self.assertEqual(toyClass["instance"]["title"]["property"], "readwrite")
        self.assertEqual(toyClass["instance"]["arguments"]["property"], "readonly")

    def testFunctionsWithTheirTypes(self):
        self.assertEqual(self.index.functions, {"NSToyBeep": ["void"], "NSToyLog": ["void", "string"],
                                                "NSToyMove": ["boolean", "NSToy", "(p1: NSToy, p2: number) => void | null"]})

    def testValuesAndFormerNames(self):
        self.assertEqual(self.index.enums["NSToyOrder"], {"Ascending": -1, "Same": 0})
        self.assertEqual(self.index.aliases, {"NSOldToySpeed": "NSToySpeed"})
        self.assertEqual(self.index.constants, {"NSToyDidMoveNotification"})

    def testWhatCannotBeReadIsNoSilence(self):
        for text in ("declare module 'x' {", "declare class NSToy {\n  title;\n}"):
            with self.subTest(text), self.assertRaises(declarations.Unreadable):
                toy.index(text)


class Names(unittest.TestCase):
    def testSelectorsLoseTheirColons(self):
        self.assertEqual(names.declared("initWithTitle:action:"), "initWithTitleAction")
        self.assertEqual(names.declared("URL"), "URL")
        self.assertEqual(names.count("openURLs:withApplicationAtURL:configuration:completionHandler:"), 4)

    def testAccessors(self):
        self.assertEqual(names.setterOf("setURL:"), ("uRL", "URL"))
        self.assertEqual(names.setterOf("settle:"), ())
        self.assertEqual(names.getterOf("isMoving"), ("isMoving", "moving"))
        self.assertEqual(names.getterOf("island"), ("island",))

    def testUsualPrefixes(self):
        self.assertEqual(list(names.usualPrefixes("NSEventModifierFlags")), ["NSEventModifierFlags", "NSEventModifierFlag", "NSEventModifier"])
        self.assertIn("NSDirectoryEnumeration", names.usualPrefixes("NSDirectoryEnumerationOptions"))


if __name__ == "__main__":
    unittest.main()
