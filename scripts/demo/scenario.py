"""Which application opens which link in the demonstration, and where each must arrive."""

import shutil
from dataclasses import dataclass


@dataclass(frozen=True)
class Program:
    """An application or a browser. `place` is left, top, width and height of its first window; further ones are to the
    right of it."""

    identifier: str
    title: str
    place: tuple
    icon: str = ""  # its name in the icon theme


@dataclass(frozen=True)
class Link:
    source: Program
    opener: str
    url: str
    decidedBy: str  # what has to decide, in the words of `fernhop explain`
    browser: Program


# Real ones, from the distribution; their window class is, or begins with, their desktop-file ID.
DILLO = Program("dillo", "Dillo", (590, 60, 330, 230))
NETSURF = Program("netsurf-gtk", "NetSurf", (590, 330, 670, 190)) if shutil.which("netsurf-gtk") else DILLO
# Small ones of our own.
READER = Program("org.example.Reader", "Reader", (590, 680, 330, 80), "web-browser")
WORK = Program("org.example.Work", "Work browser", (590, 560, 330, 80), "applications-office")

MAIL = Program("org.example.Mail", "Mail", (10, 60, 550, 130), "mail-read")
CHAT = Program("org.example.Chat", "Chat", (10, 300, 550, 170), "user-available")
NOTES = Program("org.example.Notes", "Notes", (10, 560, 550, 130), "accessories-text-editor")

REAL_BROWSERS = tuple(dict.fromkeys((DILLO, NETSURF)))
SMALL_BROWSERS = (READER, WORK)
APPLICATIONS = (MAIL, CHAT, NOTES)

# The browser that the desktop used before Fernhop: it becomes the fallback.
DEFAULT = READER
URL_RULES = (("*://*/news/*", DILLO), ("intranet", WORK))
APP_RULES = ((MAIL, WORK), (CHAT, NETSURF))


def links(pages):
    """The links; `pages` is the address of the web server for real browsers."""
    return (
        Link(MAIL, "xdg-open", f"{pages}/news/today?from=mail&lang=%F0", "urlRule", DILLO),
        Link(MAIL, "gio open", "https://shop.example.org/cart?item=3&cut=a%7Cb#top", "appRule", WORK),
        Link(CHAT, "xdg-open", f"{pages}/weather", "appRule", NETSURF),
        Link(CHAT, "gio open", "https://INTRANET.example.org/wiki/%c3%a9t%c3%a9", "urlRule", WORK),
        Link(CHAT, "xdg-open", f"{pages}/news/sport", "urlRule", DILLO),
        Link(NOTES, "gio open", "https://example.org/?q=$HOME&b=%60x%60", "fallback", READER),
        Link(NOTES, "xdg-open", "http://example.org/a%20b?100%25", "fallback", READER),
    )
