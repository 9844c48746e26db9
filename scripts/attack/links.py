"""Attacks by links: many, long, in a shortage, while Fernhop is killed, and at programs that would interpret them."""

import time

from outcome import Outcome, outcomeOf
from session import Session, waitUntil

SOAK_SETTLES = 1000  # links after which descriptors and memory no longer grow

SLOW_BROWSER = """import sys, time
with open(sys.argv[1], "ab") as record:
    record.write(b"argument=" + sys.argv[2].encode() + b"\\0")
time.sleep(0.3)
"""


def numbered(name, count, start=0):
    return [f"https://{name}.example/{number}?a=%2F&b=%25#{number}" for number in range(start, start + count)]


def ordinaryLinks(build, count):
    """Nothing is lost, opened twice or left behind, however many links come."""
    with Session(build) as session:
        session.startFernhop()
        first = numbered("soak", min(count, SOAK_SETTLES))
        session.openAll(first)
        lost = session.awaitLinks(first)
        descriptors, memory = session.descriptors(), session.memory()
        for start in range(len(first), count, 1000):
            links = numbered("soak", min(1000, count - start), start)
            session.openAll(links)
            lost |= session.awaitLinks(links)
        twice = sum(number > 1 for number in session.arrived().values())
        now, grown = session.descriptors(), session.memory()
        leaks = now > descriptors or grown > memory * 1.05
        return Outcome(count, len(lost) + twice + leaks, twice,
                       f"descriptors {descriptors} -> {now}, memory {memory} -> {grown} KiB")


def hugeLinks(build, count):
    """What is too long to be opened is refused, and the links after it open."""
    with Session(build) as session:
        session.startFernhop("--nofile=128")
        before = session.descriptors()
        # It fits the argument of an opener, but three times as long when encoded it fits none of a browser.
        link = "https://long.example/" + "ä" * 60000
        refused = sum(session.open(f"{link}?{number}").returncode != 0 for number in range(count))
        many = ["https://long.example/" + "a" * 100000 + f"?{number}" for number in range(count)]
        session.openAll(many)
        outcome = outcomeOf(session, many)
        session.open("https://after.example/")
        outcome.tried += count + 1
        outcome.failed += count - refused + len(session.awaitLinks({"https://after.example/"}))
        outcome.failed += session.descriptors() > before + 2
        outcome.seen = f"{refused} of {count} over-long ones refused; descriptors {before} -> {session.descriptors()}"
        return outcome


def fewDescriptors(build, count):
    """Links wait for descriptors."""
    with Session(build) as session:
        session.startFernhop("--nofile=20")
        links = numbered("descriptors", count)
        status = session.open(*links).returncode
        return outcomeOf(session, links, f"limit 20; exit status {status}")


def fewProcesses(build, count):
    """Links wait for processes."""
    with Session(build, asUser=True) as session:
        if session.user is None:
            return Outcome(0, seen="not done: only root can count an ordinary user's processes from nothing")
        session.write(session.top / "slow.py", SLOW_BROWSER)
        session.addEntry("web", f"Exec=/usr/bin/python3 {session.top}/slow.py {session.top}/record %u\n"
                                "MimeType=x-scheme-handler/http;x-scheme-handler/https;\n")
        session.startFernhop("--nproc=20")
        links = numbered("processes", count)
        status = session.open(*links).returncode
        return outcomeOf(session, links, f"limit 20; exit status {status}")


def kills(build, count):
    """Fernhop is killed every 0.3 seconds while links come."""
    with Session(build) as session:
        session.startFernhop()
        links, running = [], []
        for number in range(count):
            fresh = numbered("kill", 4, 4 * number)
            links += fresh
            running += [session.startOpening(link) for link in fresh]
            time.sleep(0.3)
            session.killFernhop()
        ended = waitUntil(lambda: all(process.poll() is not None for process in running))
        outcome = outcomeOf(session, links, f"{count} kills", mayDouble=True)
        outcome.failed += not ended
        return outcome


def manyStarts(build, count):
    """Many links at once that find no Fernhop start one."""
    with Session(build) as session:
        links = numbered("start", count)
        most, running = 0, [session.startOpening(link) for link in links]
        while any(process.poll() is None for process in running):
            most = max(most, len(session.residents()))
        outcome = outcomeOf(session, links, f"at most {most} at a time")
        outcome.failed += most > 1
        return outcome


def mixedHosts(build, count):
    """Texts whose host a browser would read differently once they are encoded."""
    with Session(build) as session:
        session.startFernhop()
        wrong = 0
        for number in range(count):
            session.open(f"https://good{number}.example\\@evil.example/", f" https://good{number}.example/\t")
        waitUntil(lambda: sum(session.arrived().values()) >= count)
        for link in session.arrived():
            wrong += not link.startswith("https://good") or "%5C" in link or "@evil" in link.split("/")[2]
        return Outcome(2 * count, wrong, seen=f"{sum(session.arrived().values())} opened")


# The Exec lines of entries that would give a link to an interpreter as program text.
INTERPRETED = [
    "sh -c browser\\\\ %u", "sh -c true;%u", "sh -c firefox${IFS}%u", 'sh -c "browser %u"', "sh -c %u", 'bash -lc "exec %u"',
    'sh -ec "true %u"', "env sh -c %u", 'env -S "sh -c %u"', 'env FOO=1 /bin/sh -c "browser \'%u\'"', "busybox sh -c %u",
    'nice -n 5 sh -c "x %U"', "setsid sh -c %u", "timeout 5 sh -c %u", 'python3 -c "import os; os.system(\'%u\')"',
    'perl -e "system(q(%u))"', "xargs sh -c %u", 'dash -c "eval %u"', "sh -xc %u", "sh -o errexit -c %u", "sh -c -- %u", "sh -s %u -c %u",
]


def interpreters(build, count):
    """No link is ever run by a shell or another interpreter."""
    del count
    with Session(build) as session:
        touched = session.top / "touched"
        links = [f"https://x/;touch$IFS$(){touched};", f"https://x/$(touch$IFS{touched})", f"https://x/';touch$IFS{touched};'",
                 f"touch$IFS{touched}://x", f"https://x/&touch$IFS{touched}&"]
        session.startFernhop()
        astray = []
        for form in INTERPRETED:
            session.addEntry("web", f"Exec={form}\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n")
            session.fernhop("refresh")
            session.open(*links)
            time.sleep(0.2)
            if touched.exists():
                touched.unlink()
                astray.append(form)
        return Outcome(len(INTERPRETED) * len(links), len(astray), seen="; ".join(astray))
