#!/usr/bin/python3
"""Attacks Fernhop from outside, on private buses and in private folders: hostile input, shortage, kills. Prints what was tried,
what failed and what was seen; exit status 1 when anything failed.

    attack.py [--short] [--only NAME] BUILD_FOLDER
"""

import argparse
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "session"))

import bus
import files
import links
from outcome import Outcome
from table import table

# Each attack with its count in the short form and in the long one.
ATTACKS = [
    (links.ordinaryLinks, 150, 100_000),
    (links.hugeLinks, 5, 1100),
    (links.fewDescriptors, 60, 200),
    (links.fewProcesses, 20, 100),
    (links.kills, 5, 200),
    (links.manyStarts, 50, 200),
    (links.mixedHosts, 5, 500),
    (links.interpreters, 1, 1),
    (files.damagedSettings, 10, 1000),
    (files.unreadableSettings, 3, 20),
    (files.damagedEntries, 10, 1000),
    (files.manyEntries, 500, 20_000),
    (bus.giantLinks, 2, 40),
    (bus.hostileCalls, 500, 100_000),
]


def spaced(name):
    return "".join(" " + letter.lower() if letter.isupper() else letter for letter in name)


def carryOut(attack, build, count):
    started = time.monotonic()
    try:
        outcome = attack(build, count)
    except Exception as error:  # an attack that Fernhop does not survive must not hide the others
        outcome = Outcome(count, 1, seen=f"{type(error).__name__}: {error}")
    row = {"attack": spaced(attack.__name__), "tried": str(outcome.tried), "failed": str(outcome.failed), "twice": str(outcome.twice),
           "seconds": f"{time.monotonic() - started:.0f}", "seen": outcome.seen}
    print("  ".join(row.values()), flush=True)
    return row


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("build", type=Path, help="folder of a build")
    parser.add_argument("--short", action="store_true", help="small counts, for each run of the tests")
    parser.add_argument("--only", metavar="NAME", help="the attacks with this in their names")
    arguments = parser.parse_args()
    rows = [carryOut(attack, arguments.build.resolve(), short if arguments.short else full) for attack, short, full in ATTACKS
            if not arguments.only or arguments.only.lower() in attack.__name__.lower()]
    failed = [row["attack"] for row in rows if row["failed"] != "0"]
    print("\n" + table(rows) + "\n")
    print(f"{len(rows)} attacks, {len(rows) - len(failed)} withstood" + (f"; failed: {', '.join(failed)}" if failed else ""))
    return 1 if failed or not rows else 0


if __name__ == "__main__":
    sys.exit(main())
