"""A toy of an SDK: its declarations, headers that stand for it, and a backend of one file that uses it rightly."""

import json
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

sys.path[:0] = [str(Path(__file__).resolve().parents[3] / "scripts/checks" / part) for part in ("sdk", "")]

import declarations
import availability
from check import Check
from explained import Explained
from sdkindex import SdkIndex

DECLARATIONS = """\
/// <reference types="toy" />

declare const NSToyDidMoveNotification: string;

declare const NSOldToySpeed: interop.Enum<typeof NSToySpeed>;

declare const NSToySpeed: {
  Slow: 0,
  Fast: 2,
};

declare const NSToyOrder: {
  Ascending: -1,
  Same: 0,
};

declare function NSToyBeep(): void;

declare function NSToyLog(format: string): void;

declare function NSToyMove(toy: NSToy, handler: (p1: NSToy, p2: number) => void | null): boolean;

declare interface NSObjectProtocol {
  retain(): this;

  release(): void;

  readonly hash: number;
}

declare class NSObjectProtocol extends NativeObject implements NSObjectProtocol {
}

declare class NSObject extends NativeObject implements NSObjectProtocol {
  init(): this;

  static alloc<This extends abstract new (...args: any) => any>(this: This): InstanceType<This>;
}

declare interface NSToyDelegate extends NSObjectProtocol {
  toyDidMove?(notification: NSObject): void;

  toyShouldMoveToPlace?(toy: NSToy, place: number): boolean;
}

declare class NSToyDelegate extends NativeObject implements NSToyDelegate {
}

declare class NSToy<ObjectType = interop.Object> extends NSObject implements NSCoding {
  static readonly sharedToy: NSToy;

  static toyWithTitleSpeed<This extends abstract new (...args: any) => any>(this: This, title: string, speed: interop.Enum<typeof NSToySpeed>): InstanceType<This>;

  initWithTitleAction(title: string, action: string | null): this;

  title: string;

  moving: boolean;

  readonly URL: NSURL;

  // @ts-ignore MemberDecl.tsIgnore
  weak: boolean;

  get arguments$(): NSArray;

  isMoving(): boolean;

  setTitle(title: string): void;
}

declare class NSString extends NSObject {
}

declare class NSURL extends NSObject {
}

declare class NSFastToy extends NSToy {
}
"""

HEADER = """\
#pragma once
#define YES ((BOOL)1)
#define NSToyMacro 7
typedef double NSToySeconds;
typedef signed char BOOL;
@class NSString, NSURL;
enum NSToySpeed : long { NSToySpeedSlow, NSToySpeedFast = 2 };
enum NSToyOrder : long { NSOrderedAscending = -1, NSOrderedSame };
@protocol NSObject
- (instancetype)retain;
- (void)release;
@end
@interface NSObject <NSObject>
- (instancetype)init;
+ (instancetype)alloc;
@end
@protocol NSToyDelegate <NSObject>
- (void)toyDidMove:(NSObject *)notification;
@end
@interface NSToy : NSObject
@property(retain) NSString *title;
@property(getter=isMoving) BOOL moving;
@property(readonly) NSURL *URL;
+ (NSToy *)sharedToy;
- (instancetype)initWithTitle:(NSString *)title action:(SEL)action;
@end
@interface NSFastToy : NSToy
@end
extern NSString *const NSToyDidMoveNotification;
extern "C" void NSToyBeep(void);
extern "C" void NSToyLog(const char *format, ...);
extern "C" BOOL NSToyMove(NSToy *toy, void (^handler)(NSToy *, long));
"""

SOURCE = """\
#import <Toy/Toy.h>

@interface FernhopMover : NSObject <NSToyDelegate>
- (void)press:(id)sender;
@end

@implementation FernhopMover
- (void)press:(id)sender {
    [sender setTitle:nullptr];
}
- (void)toyDidMove:(NSObject *)notification {
    NSToyLog("%p %d", notification, 1);
}
@end

namespace fernhop {

long use() {
    NSToy *toy = [[NSFastToy alloc] initWithTitle:NSToyDidMoveNotification action:@selector(press:)];
    toy.title = (id)[[NSToy sharedToy] URL];
    if (toy.moving)
        NSToyBeep();
    NSToyMove(toy, ^(NSToy *moved, long) { [moved release]; });
    return NSToySpeedFast + NSOrderedSame;
}

} // namespace fernhop
"""

EXPLAINED = "form NSToyOrder NSOrdered*\nmacro YES the language's true\ntype BOOL a truth\n"


def index(text=DECLARATIONS):
    tables = declarations.empty()
    declarations.read(text, tables)
    return SdkIndex(tables)


class Tree(unittest.TestCase):
    """A checkout with the toy's backend and double in it, and a build folder that knows how to compile it."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = (Path(folder.name) / "checkout").resolve()
        self.build = self.root / "build"
        self.header = self.write("tests/macos/double/include/Toy/Toy.h", HEADER)
        self.source = self.write("src/platform/macos/Toy.mm", SOURCE)
        self.compiled(self.source)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def compiled(self, *sources):
        command = f"{shutil.which('clang++')} -isystem {self.root}/tests/macos/double/include -x objective-c++ -fblocks -std=c++20 -O1 -Wall"
        entries = [{"directory": str(self.root), "file": str(path), "command": f"{command} -o {path.stem}.o -c {path}"} for path in sources]
        self.write("build/compile_commands.json", json.dumps(entries))

    def edit(self, path, before, after):
        text = path.read_text(encoding="utf-8")
        self.assertIn(before, text)
        path.write_text(text.replace(before, after), encoding="utf-8")

    def line(self, path, words):
        return next(number for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1) if words in line)

    def check(self, explained=EXPLAINED, dates=""):
        return Check(self.build, self.root, index(), Explained(explained), availability.read(dates))

    def faults(self, **given):
        found, _ = self.check(**given).run()
        return [str(fault) for fault in found]

    def assertFault(self, path, at, *said):
        """One fault alone, in that file and the line that holds `at`, with all the words."""
        found = self.faults()
        self.assertEqual(len(found), 1, found)
        self.assertTrue(found[0].startswith(f"{path}:{self.line(path, at)}: "), found)
        for words in said:
            self.assertIn(words, found[0])
