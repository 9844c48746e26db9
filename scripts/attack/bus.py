"""Attacks over the session bus."""

import random
import time

from gi.repository import Gio, GLib

from links import numbered
from outcome import outcomeOf
from session import Session

OWN = "org.fernhop.Fernhop"
PATH = "/org/fernhop/Fernhop"
METHODS = [(OWN, "OpenLinks", "(aaya{sv})"), (OWN, "Perform", "(asaya{sv})"), ("org.freedesktop.Application", "Open", "(asa{sv})"),
           ("org.freedesktop.Application", "Activate", "(a{sv})"), ("org.freedesktop.Application", "ActivateAction", "(sava{sv})"),
           ("org.freedesktop.DBus.Properties", "Get", "(ss)"), ("org.freedesktop.DBus.Properties", "Set", "(ssv)")]
KEYS = ["activation-token", "desktop-startup-id", "launched-pid", "parent-pid", "control-group", "desktop-file", "version", "x", ""]


def anyValue(random_, signature):
    """A value of a type, of any content."""
    if signature == "s":
        return GLib.Variant("s", "".join(chr(random_.randint(1, 0x2FF)) for _ in range(random_.randint(0, 60))))
    if signature == "ay":
        return GLib.Variant("ay", random_.randbytes(random_.randint(0, 80)))
    if signature == "as":
        return GLib.Variant("as", [anyValue(random_, "s").unpack() for _ in range(random_.randint(0, 5))])
    if signature == "aay":
        return GLib.Variant("aay", [random_.randbytes(random_.randint(0, 80)) for _ in range(random_.randint(0, 5))])
    if signature == "av":
        return GLib.Variant("av", [anyValue(random_, "v").get_variant() for _ in range(random_.randint(0, 3))])
    if signature == "a{sv}":
        return GLib.Variant("a{sv}", {random_.choice(KEYS): anyValue(random_, "v").get_variant()
                                      for _ in range(random_.randint(0, 6))})
    number = random_.choice([0, 1, -1, 2**31 - 1, -2**31, random_.randint(1, 70000)])
    inner = random_.choice([lambda: GLib.Variant("i", number), lambda: GLib.Variant("x", number), lambda: GLib.Variant("d", 1e300),
                            lambda: anyValue(random_, "s"), lambda: anyValue(random_, "ay"), lambda: anyValue(random_, "as"),
                            lambda: GLib.Variant("b", True)])
    return GLib.Variant("v", inner())


def body(random_, signature):
    """Arguments of a method, now and then those of another."""
    if random_.random() < 0.1:
        signature = random_.choice(METHODS)[2]
    parts = {"(aaya{sv})": ["aay", "a{sv}"], "(asaya{sv})": ["as", "ay", "a{sv}"], "(asa{sv})": ["as", "a{sv}"], "(a{sv})": ["a{sv}"],
             "(sava{sv})": ["s", "av", "a{sv}"], "(ss)": ["s", "s"], "(ssv)": ["s", "s", "v"]}[signature]
    return GLib.Variant.new_tuple(*(anyValue(random_, part) for part in parts))


def connect(session):
    return Gio.DBusConnection.new_for_address_sync(
        session.processes.environment["DBUS_SESSION_BUS_ADDRESS"],
        Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)


def giantLinks(build, count):
    """Links of many megabytes open nothing and hold nothing up."""
    with Session(build) as session:
        session.startFernhop()
        bus = connect(session)
        for method, texts in (("Open", "as"), ("OpenLinks", "aay")):
            link = "https://giant.example/" + "\u00e4 " * (count << 19)
            value = GLib.Variant("as", [link]) if texts == "as" else GLib.Variant.new_array(
                GLib.VariantType("ay"), [GLib.Variant.new_from_bytes(GLib.VariantType("ay"), GLib.Bytes.new(link.encode()), True)])
            message = Gio.DBusMessage.new_method_call(OWN, PATH, OWN if texts == "aay" else "org.freedesktop.Application", method)
            message.set_body(GLib.Variant.new_tuple(value, GLib.Variant("a{sv}", {})))
            bus.send_message(message, Gio.DBusSendMessageFlags.NONE)
        bus.flush_sync(None)
        started = time.monotonic()
        wrong = session.fernhop("status").returncode != 0
        answered = time.monotonic() - started
        session.open("https://ordinary.example/")
        outcome = outcomeOf(session, ["https://ordinary.example/"], f"2 links of {3 * count / 2:.0f} MB, status after {answered:.1f} s")
        outcome.failed += wrong
        bus.close_sync(None)
        return outcome


def hostileCalls(build, count):
    """Calls of any content leave Fernhop as it is."""
    random_ = random.Random(7)
    with Session(build) as session:
        session.startFernhop()
        pid = session.owner()
        bus = connect(session)
        for _ in range(count):
            interface, method, signature = random_.choice(METHODS)
            arguments = body(random_, signature)
            if method == "Perform" and "quit" in str(arguments):
                continue
            message = Gio.DBusMessage.new_method_call(OWN, PATH, interface, method)
            message.set_body(arguments)
            message.set_flags(Gio.DBusMessageFlags.NO_AUTO_START)
            bus.send_message(message, Gio.DBusSendMessageFlags.NONE)
        bus.flush_sync(None)
        links = numbered("calls", 5)
        session.openAll(links)
        outcome = outcomeOf(session, links)
        outcome.tried = count
        outcome.failed += session.owner() != pid
        bus.close_sync(None)
        return outcome
