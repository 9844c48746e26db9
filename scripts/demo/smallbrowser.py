#!/usr/bin/python3
"""A browser that fetches nothing: it records the URL that it received, byte by byte, and shows it.

    smallbrowser.py ID TITLE RECORD URL
"""

import json
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk, Pango  # noqa: E402


def record(path, identifier, urls):
    with open(path, "a", encoding="utf-8") as file:
        for url in urls:
            file.write(json.dumps({"browser": identifier, "url": url}) + "\n")


def show(title, urls):
    window = Gtk.Window(title=title)
    window.set_default_size(330, 80)
    text = GLib.markup_escape_text("\n".join(urls))
    label = Gtk.Label(margin=12, xalign=0, yalign=0, ellipsize=Pango.EllipsizeMode.END)
    label.set_markup(f"<big><b>{GLib.markup_escape_text(title)}</b></big>\n{text}")
    window.add(label)
    window.connect("destroy", Gtk.main_quit)
    window.show_all()
    Gtk.main()


def main(identifier, title, path, *urls):
    record(path, identifier, urls)
    GLib.set_prgname(identifier)
    Gdk.set_program_class(identifier)
    show(title, urls)


if __name__ == "__main__":
    main(*sys.argv[1:])
