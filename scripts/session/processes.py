"""Processes that end with a private session, even if they have detached themselves."""

import ctypes
import os
import signal
import subprocess
import time
from pathlib import Path

PR_SET_CHILD_SUBREAPER = 36
PATIENCE = 3.0


class Processes:
    """Starts programs and ends them, with everything that they started: as their subreaper, this process becomes the
    parent of orphaned daemons and browsers, so it can find each one."""

    def __init__(self, environment, log):
        ctypes.CDLL(None, use_errno=True).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        self.environment = environment
        self.log = log

    def start(self, *command, **options):
        """A program in the background; its output goes to the log file."""
        return subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log,
                                start_new_session=True, **options)

    def startAnnouncing(self, *command):
        """A program that writes one line, such as its address, to the descriptor that replaces "{fd}"."""
        reading, writing = os.pipe()
        try:
            self.start(*(part.replace("{fd}", str(writing)) for part in command), pass_fds=(writing,))
        finally:
            os.close(writing)
        with os.fdopen(reading) as pipe:
            line = pipe.readline().strip()
        if not line:
            raise RuntimeError(f"{command[0]} did not start")
        return line

    def output(self, *command, check=True):
        """The output of a program."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=self.log if check else subprocess.DEVNULL, text=True, check=False, timeout=60)
        if check and done.returncode != 0:
            raise RuntimeError(f"{' '.join(command)}: exit status {done.returncode}")
        return done.stdout

    def stop(self):
        """Ends all remaining processes: first by SIGTERM, then by SIGKILL."""
        for number in (signal.SIGTERM, signal.SIGKILL):
            deadline = time.monotonic() + PATIENCE
            asked = set()
            while time.monotonic() < deadline:
                left = descendants(os.getpid())
                for pid in left - asked:
                    send(pid, number)
                asked |= left
                reap()
                if not left:
                    return
                time.sleep(0.05)


def send(pid, number):
    try:
        os.kill(pid, number)
    except ProcessLookupError:
        pass


def reap():
    try:
        while os.waitpid(-1, os.WNOHANG)[0] != 0:
            pass
    except ChildProcessError:
        pass


def descendants(ancestor):
    """Every living process below `ancestor`."""
    children = {}
    for folder in Path("/proc").iterdir():
        if folder.name.isdigit():
            try:
                state, parent = (folder / "stat").read_text().rpartition(")")[2].split()[:2]
            except OSError:
                continue
            if state != "Z":
                children.setdefault(int(parent), set()).add(int(folder.name))
    found, pending = set(), [ancestor]
    while pending:
        below = children.get(pending.pop(), set()) - found
        found |= below
        pending += below
    return found
