"""The settings portal of a desktop, for tests: portal.py COLOR-SCHEME. Its scheme is changed by the method Change."""

import sys

from gi.repository import Gio, GLib

INTROSPECTION = """
<node>
  <interface name="org.freedesktop.portal.Settings">
    <method name="Read">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <method name="Change"><arg type="u" direction="in"/></method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  </interface>
</node>"""
INTERFACE = Gio.DBusNodeInfo.new_for_xml(INTROSPECTION).interfaces[0]
NAMESPACE, KEY = "org.freedesktop.appearance", "color-scheme"
scheme = GLib.Variant("u", int(sys.argv[1]))


def call(bus, _sender, path, interface, method, arguments, invocation):
    global scheme
    if method == "Read":
        invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", scheme),)))
        return
    scheme = GLib.Variant("u", arguments.unpack()[0])
    bus.emit_signal(None, path, interface, "SettingChanged", GLib.Variant("(ssv)", (NAMESPACE, KEY, scheme)))
    invocation.return_value(None)


def acquired(bus, _name):
    bus.register_object("/org/freedesktop/portal/desktop", INTERFACE, call, None, None)


Gio.bus_own_name(Gio.BusType.SESSION, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, acquired, None, None)
GLib.MainLoop().run()
