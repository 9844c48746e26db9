#!/usr/bin/python3
"""A small application that is not a browser and has links in it: each opens by the number key beside it.

    linkapp.py ID TITLE X Y OPENER URL [OPENER URL]...
"""

import subprocess
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk, Pango  # noqa: E402

OPENERS = {"xdg-open": ["xdg-open"], "gio open": ["gio", "open"]}


class LinkWindow(Gtk.Window):
    def __init__(self, title, links):
        super().__init__(title=title)
        self.links = links
        self.set_default_size(550, 40)
        box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL, spacing=6, margin=12)
        heading = Gtk.Label(xalign=0)
        heading.set_markup(f"<big><b>{GLib.markup_escape_text(title)}</b></big>")
        box.add(heading)
        for number, (opener, url) in enumerate(links, 1):
            label = Gtk.Label(label=f"{number}   {url}   ({opener})", xalign=0, ellipsize=Pango.EllipsizeMode.END)
            button = Gtk.Button()
            button.add(label)
            button.connect("clicked", lambda _, index=number - 1: self.open(index))
            box.add(button)
        self.add(box)
        self.connect("key-press-event", self.pressed)
        self.connect("destroy", Gtk.main_quit)

    def pressed(self, _, event):
        index = event.keyval - Gdk.KEY_1
        if 0 <= index < len(self.links):
            self.open(index)

    def open(self, index):
        opener, url = self.links[index]
        subprocess.Popen(OPENERS[opener] + [url], stdin=subprocess.DEVNULL)


def main(identifier, title, x, y, *rest):
    GLib.set_prgname(identifier)
    Gdk.set_program_class(identifier)
    window = LinkWindow(title, list(zip(rest[::2], rest[1::2])))
    window.show_all()
    window.move(int(x), int(y))
    Gtk.main()


if __name__ == "__main__":
    main(*sys.argv[1:])
