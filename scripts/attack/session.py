"""A private session without a display: a bus, Fernhop as the handler of links, and browsers that write down what they get."""

import os
import shutil
import signal
import subprocess
import tempfile
import time
from collections import Counter
from pathlib import Path

from processes import Processes, descendants, send

PATIENCE = 60.0  # seconds for what must come; long, as a loaded machine is not a failure
ORDINARY_USER = 65534  # "nobody", who has no processes elsewhere

BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:path={runtime}/bus</listen><auth>EXTERNAL</auth>
<servicedir>{data}/dbus-1/services</servicedir>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
<allow user="*"/></policy>
<limit name="max_message_size">1000000000</limit><limit name="max_incoming_bytes">1000000000</limit>
<limit name="max_outgoing_bytes">1000000000</limit><limit name="max_replies_per_connection">50000</limit></busconfig>
"""

HANDLER = "MimeType=x-scheme-handler/http;x-scheme-handler/https;\n"


def waitUntil(holds, patience=PATIENCE):
    """Whether `holds` became true in time."""
    deadline = time.monotonic() + patience
    while not holds():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.02)
    return True


class Session:
    """For a `with` statement: at its end, all started processes are ended and the files are removed. With `asUser`, and run
    by root, everything in it runs as an ordinary user, who is bound by limits and file modes."""

    def __init__(self, build, asUser=False):
        self.build = build
        self.user = ORDINARY_USER if asUser and os.geteuid() == 0 else None
        self.top = Path(tempfile.mkdtemp(prefix="fernhop-attack."))
        self.data = self.top / "data"
        self.config = self.top / "config"
        self.runtime = self.top / "run"
        for folder in (self.data / "applications", self.data / "dbus-1/services", self.config, self.runtime, self.top / "bin",
                       self.top / "lib/fernhop"):
            folder.mkdir(parents=True, mode=0o700)
        self.log = open(self.top / "log", "w+", encoding="utf-8", errors="replace")
        self.processes = Processes(self.variables(), self.log)
        self.resident = None
        self.links = Counter()
        self.position = 0
        self.addBrowser("web")
        self.addEntry("org.fernhop.Fernhop", f"Exec={self.top}/bin/fernhop-open %U\n" + HANDLER)
        self.write(self.config / "mimeapps.list", "[Default Applications]\nx-scheme-handler/http=org.fernhop.Fernhop.desktop\n"
                                                  "x-scheme-handler/https=org.fernhop.Fernhop.desktop\n")

    def variables(self):
        return {"PATH": "/usr/local/bin:/usr/bin:/bin", "HOME": str(self.top), "LANG": "C.UTF-8",
                "XDG_CONFIG_HOME": str(self.config), "XDG_DATA_HOME": str(self.data), "XDG_RUNTIME_DIR": str(self.runtime),
                "XDG_CACHE_HOME": str(self.top / "cache"), "XDG_STATE_HOME": str(self.top / "state"),
                "XDG_DATA_DIRS": str(self.top / "none"), "XDG_CONFIG_DIRS": str(self.top / "none"),
                "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.runtime}/bus", "GSETTINGS_BACKEND": "memory"}

    def __enter__(self):
        try:
            # Copies, as an ordinary user may have no access to the build folder.
            for program in ("bin/fernhop", "bin/fernhop-open", "tests/support/recording-browser"):
                shutil.copy(self.build / program, self.top / "bin")
            self.write(self.top / "bus.conf", BUS.format(runtime=self.runtime, data=self.data))
            if self.user:
                for path in (self.top, *self.top.rglob("*")):
                    os.chown(path, self.user, self.user)
            self.processes.startAnnouncing(*self.asOwner("dbus-daemon", f"--config-file={self.top}/bus.conf", "--nofork",
                                                         "--nopidfile", "--nosyslog", "--print-address={fd}"))
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.processes.stop()
        self.log.close()
        shutil.rmtree(self.top, ignore_errors=True)

    def asOwner(self, *command):
        """The command, as the session's user runs it."""
        if not self.user:
            return command
        return ("setpriv", f"--reuid={self.user}", f"--regid={self.user}", "--clear-groups", *command)

    # Files

    def write(self, path, text):
        path.write_text(text, encoding="utf-8", errors="surrogateescape")
        if self.user:
            os.chown(path, self.user, self.user)

    def addEntry(self, identifier, lines):
        self.write(self.data / f"applications/{identifier}.desktop",
                   f"[Desktop Entry]\nType=Application\nName={identifier}\n{lines}")

    def addBrowser(self, identifier):
        self.addEntry(identifier, f"Exec={self.top}/bin/recording-browser {self.top}/record %u\n" + HANDLER)

    def logged(self):
        """What Fernhop has logged so far."""
        return (self.top / "log").read_text(encoding="utf-8", errors="replace")

    # Fernhop

    def startFernhop(self, *limits):
        """Starts the resident, under limits that `prlimit` takes, and waits until it can be called."""
        self.resident = self.processes.start(*self.asOwner("prlimit", *limits, f"{self.top}/bin/fernhop"))
        if not waitUntil(lambda: self.owner() != 0):
            raise RuntimeError("Fernhop did not start")

    def owner(self):
        """The process that has Fernhop's name on the bus; 0: nobody has it."""
        answer = self.run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/org/freedesktop/DBus",
                          "--method", "org.freedesktop.DBus.GetConnectionUnixProcessID", "org.fernhop.Fernhop").stdout
        digits = "".join(letter for letter in answer.replace("uint32", "") if letter.isdigit())
        return int(digits or 0)

    def residents(self):
        """The processes that are a resident, whoever started them."""
        found = {}
        for pid in descendants(os.getpid()):
            try:
                parent = int(Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[1])
                words = Path(f"/proc/{pid}/cmdline").read_bytes().split(b"\0")
            except OSError:
                continue
            if words[0].endswith(b"/bin/fernhop") and words[1:] in ([b""], []):
                found[pid] = parent
        # A browser that a resident starts looks like the resident until it runs its own program.
        return [pid for pid, parent in found.items() if parent not in found]

    def killFernhop(self):
        for pid in self.residents():
            send(pid, signal.SIGKILL)

    def run(self, *command, patience=PATIENCE, text=None):
        """Runs a program of the session to its end; with status 124, the program hung."""
        try:
            return subprocess.run(self.asOwner(*command), env=self.processes.environment, input=text or "", capture_output=True,
                                  encoding="utf-8", errors="replace", timeout=patience, check=False)
        except subprocess.TimeoutExpired:
            return subprocess.CompletedProcess(command, 124, "", "no end")

    def fernhop(self, *words, **options):
        return self.run(f"{self.top}/bin/fernhop", *words, **options)

    def open(self, *links, **options):
        """Opens links as a desktop does."""
        return self.run(f"{self.top}/bin/fernhop-open", *links, **options)

    def startOpening(self, *links):
        return self.processes.start(*self.asOwner(f"{self.top}/bin/fernhop-open", *links))

    def openAll(self, links, at=4):
        """Opens each link by a process of its own, some at a time."""
        running = []
        for link in links:
            running.append(self.startOpening(link))
            if len(running) >= at:
                running.pop(0).wait()
        for process in running:
            process.wait()

    # What arrived

    def arrived(self):
        """How often each link was opened so far."""
        record = self.top / "record"
        if record.exists():
            with record.open("rb") as file:
                file.seek(self.position)
                fresh = file.read()
            self.position += len(fresh)
            for field in fresh.split(b"\0"):
                if field.startswith(b"argument="):
                    self.links[field.removeprefix(b"argument=").decode(errors="surrogateescape")] += 1
        return self.links

    def awaitLinks(self, links):
        """Waits until all links were opened; those that were not."""
        links = set(links)
        waitUntil(lambda: links <= self.arrived().keys())
        return links - self.arrived().keys()

    # What the resident holds

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.owner()}/fd"))

    def memory(self):
        """Its proportional memory in KiB."""
        for line in Path(f"/proc/{self.owner()}/smaps_rollup").read_text(encoding="ascii").splitlines():
            if line.startswith("Pss:"):
                return int(line.split()[1])
        return 0
