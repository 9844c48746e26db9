#!/usr/bin/python3
"""The demonstration: Fernhop on a private desktop. Real applications open links through the desktop's own openers, and each link
must arrive in the browser that the rules choose. Prints where each link went and why, and saves screenshots of all windows, of
the menu, and of a dialog.

    demo.py BUILD_FOLDER FOLDER_FOR_SCREENSHOTS
"""

import json
import shutil
import signal
import sys
import time
from contextlib import contextmanager
from pathlib import Path
from urllib.parse import urlsplit

import scenario
sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "session"))

from desktop import Desktop
from pages import Pages
from table import table
from tray import Tray

HERE = Path(__file__).resolve().parent
PYTHON = "/usr/bin/python3"  # the one that the distribution's GTK belongs to

WINDOW_GAP = 10
SETTLING = 0.5  # seconds for windows to draw themselves, which nothing tells

NEW_PATTERN = "https://docs.example.org/*"

REASONS = {"urlRule": "URL rule", "appRule": "app rule", "fallback": "fallback", "firstBrowser": "first browser", "none": "nothing"}


@contextmanager
def kept(path):
    """Restores a file afterwards: uninstalling uses the list of what was installed for the user."""
    before = path.read_bytes() if path.exists() else None
    try:
        yield
    finally:
        if before is None:
            path.unlink(missing_ok=True)
        else:
            path.write_bytes(before)


class Demonstration:
    def __init__(self, desktop, pages):
        self.desktop = desktop
        self.pages = pages
        self.record = desktop.top / "record"
        self.links = scenario.links(pages.address)
        self.decisions = []
        self.rows = []

    def run(self, buildFolder):
        self.install(buildFolder)
        self.startFernhop()
        self.setRules()
        self.startApplications()
        for link in self.links:
            self.decisions.append(self.open(link))
        self.arrange()
        # Only now, so that a link that arrived twice is noticed too.
        self.rows = [self.row(link, decision) for link, decision in zip(self.links, self.decisions)]

    # Preparing

    def install(self, buildFolder):
        with kept(buildFolder / "install_manifest.txt"):
            self.desktop.processes.output("cmake", "--install", str(buildFolder), "--prefix", str(self.desktop.prefix))
        for browser in scenario.SMALL_BROWSERS:
            self.writeEntry(browser, f"{PYTHON} {HERE}/smallbrowser.py {browser.identifier} \"{browser.title}\" {self.record} %U",
                            "MimeType=x-scheme-handler/http;x-scheme-handler/https;\n")
        for application in scenario.APPLICATIONS:
            self.writeEntry(application, f"{PYTHON} {HERE}/linkapp.py")
        for browser in scenario.REAL_BROWSERS:
            # The entries of small browsers do not declare links; users who want one for that write an entry of their own.
            self.desktop.processes.output(
                "desktop-file-install", f"--dir={self.desktop.data}/applications", "--add-mime-type=x-scheme-handler/http",
                "--add-mime-type=x-scheme-handler/https", f"/usr/share/applications/{browser.identifier}.desktop")
        self.desktop.processes.output("update-desktop-database", f"{self.desktop.data}/applications")

    def writeEntry(self, program, execLine, more=""):
        path = self.desktop.data / "applications" / f"{program.identifier}.desktop"
        path.write_text(f"[Desktop Entry]\nType=Application\nName={program.title}\nExec={execLine}\n"
                        f"Icon={program.icon}\nStartupWMClass={program.identifier}\n{more}", encoding="utf-8")

    def startFernhop(self):
        for scheme in ("http", "https"):
            self.desktop.processes.output("gio", "mime", f"x-scheme-handler/{scheme}", f"{scenario.DEFAULT.identifier}.desktop")
        self.desktop.processes.start("fernhop")
        self.desktop.waitFor("Fernhop", lambda: self.status().get("running"))
        self.fernhop("routing", "on")
        self.desktop.waitFor("the role of default browser", lambda: self.status().get("routing"))

    def setRules(self):
        for pattern, browser in scenario.URL_RULES:
            self.fernhop("url-rules", "add", pattern, browser.identifier)
        for application, browser in scenario.APP_RULES:
            self.fernhop("app-rules", "set", application.identifier, browser.identifier)

    def startApplications(self):
        for application in scenario.APPLICATIONS:
            links = [part for link in self.links if link.source == application for part in (link.opener, link.url)]
            left, top = application.place[:2]
            self.desktop.processes.start(PYTHON, str(HERE / "linkapp.py"), application.identifier, application.title, str(left),
                                         str(top), *links)
        for application in scenario.APPLICATIONS:
            self.desktop.waitFor(f"the window of {application.title}", lambda: self.desktop.window(application.identifier))

    # Opening

    def open(self, link):
        """Opens a link from its application's window; returns the decision that Fernhop reports."""
        self.bringToFront(link.source)
        decision = json.loads(self.fernhop("explain", "--json", "--source", link.source.identifier, link.url))
        self.desktop.press(str(1 + [other for other in self.links if other.source == link.source].index(link)))
        try:
            self.desktop.waitFor("the link", lambda: self.arrivals(link))
            # Not before, or its window would cover the next application's.
            self.desktop.waitFor(f"{link.browser.title} to come to the front", lambda: self.desktop.isInFront(link.browser.identifier))
        except RuntimeError as error:
            print(f"demonstration: {error}", file=sys.stderr)  # the table shows what is wrong
        return decision

    def bringToFront(self, application):
        def isSeen():
            if not self.desktop.isInFront(application.identifier):
                self.desktop.activate(application.identifier)
            return self.status().get("source") == application.identifier

        self.desktop.waitFor(f"Fernhop to see {application.title} in front", isSeen)

    def row(self, link, decision):
        got = self.arrivals(link)
        right = got == [link.browser.title] and decision["because"] == link.decidedBy
        return {
            "link": link.url,
            "source": link.source.title,
            "opened with": link.opener,
            "decided by": self.reason(decision),
            "browser": ", ".join(got) or "none",
            "": "ok" if right else f"WRONG: by {REASONS[link.decidedBy]} to {link.browser.title}",
        }

    def reason(self, decision):
        words = REASONS.get(decision["because"], decision["because"])
        rule = decision.get("urlRule")
        return f"{words} {rule['pattern']}" if decision["because"] == "urlRule" and rule else words

    def arrivals(self, link):
        """The titles of the browsers that received the link, one for each time."""
        titles = {browser.identifier: browser.title for browser in scenario.SMALL_BROWSERS}
        written = self.record.read_text(encoding="utf-8").splitlines() if self.record.exists() else []
        small = [titles[entry["browser"]] for entry in map(json.loads, written) if entry["url"] == link.url]
        return small + self.fetched(link)

    def fetched(self, link):
        """The real browsers that requested the link's page, by their user agents."""
        if not link.url.startswith(self.pages.address):
            return []
        parts = urlsplit(link.url)
        path = parts.path + (f"?{parts.query}" if parts.query else "")
        agents = [agent for asked, agent in self.pages.requests if asked == path]
        return [next((b.title for b in scenario.REAL_BROWSERS if b.title in agent), agent) for agent in agents]

    def arrange(self):
        """Waits for all windows and moves each to where the screenshot shows it completely."""
        for program in scenario.APPLICATIONS + scenario.SMALL_BROWSERS + scenario.REAL_BROWSERS:
            expected = 1 if program in scenario.APPLICATIONS else sum(self.arrivals(link).count(program.title) for link in self.links)
            self.desktop.waitFor(f"the windows of {program.title}", lambda: len(self.desktop.windows(program.identifier)) >= expected)
            left, top, width, height = program.place
            for index, window in enumerate(self.desktop.windows(program.identifier)):
                self.desktop.place(window, left + index * (width + WINDOW_GAP), top, width, height)

    def picture(self, folder):
        """Saves the screenshots; returns their files."""
        pictures = [folder / f"{name}.png" for name in ("screenshot", "menu", "dialog")]
        tray = Tray(self.desktop, len(json.loads(self.fernhop("browsers", "--json"))))
        for path, show in zip(pictures, (lambda: None, tray.showRule, lambda: tray.addRule(NEW_PATTERN))):
            show()
            time.sleep(SETTLING)
            self.desktop.screenshot(path)
            tray.close()
        return pictures

    # The command line

    def fernhop(self, *arguments):
        return self.desktop.processes.output("fernhop", *arguments)

    def status(self):
        try:
            return json.loads(self.desktop.processes.output("fernhop", "status", "--json", check=False))
        except ValueError:
            return {}

    def succeeded(self):
        return len(self.rows) == len(self.links) and all(row[""] == "ok" for row in self.rows)


ENDINGS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)


def interrupted(number, _):
    for ending in ENDINGS:  # tidying up is not interrupted again
        signal.signal(ending, signal.SIG_IGN)
    raise KeyboardInterrupt(number)


def demonstrate(buildFolder, folder):
    pages = Pages()
    try:
        with Desktop() as desktop:
            demonstration = Demonstration(desktop, pages)
            try:
                demonstration.run(buildFolder)
                print(table(demonstration.rows))
                pictures = demonstration.picture(folder)
            finally:
                keepLog(desktop, folder / "log.txt")
    finally:
        pages.close()
    print("\nScreenshots:", *pictures, sep="\n  ")
    return 0 if demonstration.succeeded() else 1


def keepLog(desktop, path):
    desktop.log.flush()
    path.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(desktop.log.name, path)


def main(arguments):
    for number in ENDINGS:
        signal.signal(number, interrupted)
    buildFolder, folder = (Path(argument).resolve() for argument in arguments[1:])
    try:
        return demonstrate(buildFolder, folder)
    except RuntimeError as error:
        print(f"demonstration: {error}; see {folder / 'log.txt'}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        print("demonstration: interrupted", file=sys.stderr)
        return 130


if __name__ == "__main__":
    sys.exit(main(sys.argv))
