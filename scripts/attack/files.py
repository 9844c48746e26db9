"""Attacks by files: settings and desktop entries that are damaged, hostile or many."""

import os
import random
import time

from links import numbered
from outcome import Outcome, outcomeOf
from session import Session

ENTRY = b"[Desktop Entry]\nType=Application\nName=Victim\nName[de]=Opfer\nExec=true --new %u\nIcon=victim\nTryExec=true\n" \
        b"MimeType=x-scheme-handler/http;x-scheme-handler/https;text/html;\nActions=a;\n\n[Desktop Action a]\nExec=true\n"


def damaged(random_, text):
    """The text with some bytes changed, left out, doubled or cut off."""
    data = bytearray(text)
    for _ in range(random_.randint(1, 8)):
        if not data:
            break
        position = random_.randrange(len(data))
        change = random_.randrange(5)
        if change == 0:
            data[position] = random_.randrange(256)
        elif change == 1:
            del data[position:position + random_.randint(1, 20)]
        elif change == 2:
            data[position:position] = data[position:position + 40] * random_.randint(1, 50)
        elif change == 3:
            data[position:position] = random_.randbytes(random_.randint(1, 30))
        else:
            del data[position:]
    return bytes(data)


def damagedSettings(build, count):
    """Rules that cannot be read are told, kept, and stop no link."""
    random_ = random.Random(7)
    with Session(build) as session:
        session.startFernhop()
        session.fernhop("url-rules", "add", "*", "web")
        file = session.config / "fernhop/org.fernhop.Fernhop.plist"
        good = file.read_bytes()
        wrong, links = 0, numbered("settings", count)
        for link in links:
            broken = damaged(random_, good)
            file.write_bytes(broken)
            status = session.fernhop("status")
            wrong += status.returncode != 0
            session.open(link)
            wrong += file.read_bytes() != broken
        outcome = outcomeOf(session, links)
        outcome.failed += wrong
        return outcome


def damagedEntries(build, count):
    """Entries of any content neither end Fernhop nor keep links from the browser that a rule names."""
    random_ = random.Random(7)
    with Session(build) as session:
        session.startFernhop()
        session.fernhop("url-rules", "add", "*", "web")
        wrong, links = 0, numbered("entries", count)
        pid = session.owner()
        for number, link in enumerate(links):
            for place in range(20):
                (session.data / f"applications/victim{place}.desktop").write_bytes(damaged(random_, ENTRY))
            wrong += session.fernhop("refresh").returncode != 0
            wrong += session.fernhop("browsers", "--json").returncode != 0
            session.open(link)
            if number % 10 == 0:
                wrong += session.fernhop("explain", link).returncode != 0
        outcome = outcomeOf(session, links)
        outcome.failed += wrong + (session.owner() != pid)
        return outcome


def manyEntries(build, count):
    """Many entries cost no time for each link: an unknown sender has each of them looked at."""
    with Session(build) as session:
        for number in range(count):
            session.addEntry(f"org.example.app{number}", f"Exec=/usr/bin/app{number} %U\n")
        session.startFernhop()
        session.open("https://first.example/")
        links = numbered("many", 20)
        started = time.monotonic()
        for link in links:
            session.open(link)
        each = (time.monotonic() - started) / len(links)
        return outcomeOf(session, links, f"{count} entries, {each * 1000:.1f} ms a link")


def unreadableSettings(build, count):
    """A settings file that may not be read is told by `status`, and written over only once it was kept."""
    with Session(build, asUser=True) as session:
        session.startFernhop()
        session.fernhop("url-rules", "add", "*", "web")
        folder = session.config / "fernhop"
        file = folder / "org.fernhop.Fernhop.plist"
        before = file.read_bytes()
        os.chmod(file, 0)
        wrong = session.fernhop("status").stdout.count("Problem:") == 0
        wrong += session.fernhop("export").returncode != 1
        for number in range(count):
            session.fernhop("url-rules", "add", f"new{number}", "web")
        kept = [path for path in folder.iterdir() if path.read_bytes() == before]
        wrong += len(kept) != 1
        wrong += not file.stat().st_mode & 0o600 == 0o600
        return Outcome(count + 2, wrong, seen=f"{len(kept)} copy kept")
