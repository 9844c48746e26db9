"""A private, invisible desktop: display, session bus, window manager and panel, and a temporary home folder."""

import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

from processes import Processes

SCREEN = "1280x800x24"
PATIENCE = 20.0

# A panel with a window list, a tray and a clock, so that the panel does not show its first-start dialog.
PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
        <value type="int" value="3"/>
        <value type="int" value="4"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="tasklist"/>
    <property name="plugin-2" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
    </property>
    <property name="plugin-3" type="string" value="systray"/>
    <property name="plugin-4" type="string" value="clock"/>
  </property>
</channel>
"""


class Desktop:
    """For a `with` statement: at its end, all started processes are ended and the home folder is removed."""

    def __init__(self):
        self.top = Path(tempfile.mkdtemp(prefix="fernhop-demo."))
        self.home = self.top / "home"
        self.prefix = self.home / ".local"
        self.data = self.prefix / "share"
        self.config = self.home / ".config"
        self.runtime = self.top / "run"
        for folder in (self.data / "applications", self.config, self.runtime):
            folder.mkdir(parents=True, mode=0o700)
        self.log = open(self.top / "log", "w", encoding="utf-8")
        self.processes = Processes(self.variables(), self.log)

    def variables(self):
        """The environment of the private session, without references to the surrounding one."""
        return {
            "PATH": f"{self.prefix}/bin:/usr/local/bin:/usr/bin:/bin",
            "HOME": str(self.home),
            "TMPDIR": str(self.top),
            "LANG": "C.UTF-8",
            "XDG_CONFIG_HOME": str(self.config),
            "XDG_DATA_HOME": str(self.data),
            "XDG_CACHE_HOME": str(self.home / ".cache"),
            "XDG_STATE_HOME": str(self.home / ".local/state"),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "XDG_DATA_DIRS": "/usr/local/share:/usr/share",
            "XDG_CONFIG_DIRS": "/etc/xdg",
            "XDG_SESSION_TYPE": "x11",
            "GSETTINGS_BACKEND": "memory",
            "GDK_BACKEND": "x11",
            "NO_AT_BRIDGE": "1",
        }

    def __enter__(self):
        try:
            self.begin()
        except BaseException:
            self.__exit__()
            raise
        return self

    def begin(self):
        start, environment = self.processes.start, self.processes.environment
        display = self.processes.startAnnouncing("Xvfb", "-displayfd", "{fd}", "-screen", "0", SCREEN, "-nolisten", "tcp")
        environment["DISPLAY"] = f":{display}"
        environment["DBUS_SESSION_BUS_ADDRESS"] = self.processes.startAnnouncing(
            "dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog", "--print-address={fd}")
        start("openbox")
        self.waitFor("the window manager", lambda: "window id" in self.rootProperty("_NET_SUPPORTING_WM_CHECK"))
        channel = self.config / "xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
        channel.parent.mkdir(parents=True)
        channel.write_text(PANEL, encoding="utf-8")
        start("xfce4-panel")
        self.waitFor("the panel's tray", self.hasTray)

    def rootProperty(self, name):
        return self.processes.output("xprop", "-root", name, check=False)

    def hasTray(self):
        answer = self.processes.output(
            "gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/org/freedesktop/DBus",
            "--method", "org.freedesktop.DBus.NameHasOwner", "org.kde.StatusNotifierWatcher", check=False)
        return "true" in answer

    def waitFor(self, what, holds):
        """The first true result of `holds`; an error with `what` on timeout."""
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            answer = holds()
            if answer:
                return answer
            time.sleep(0.05)
        raise RuntimeError(f"waited in vain for {what}")

    def windows(self, className):
        """The windows of an application, the oldest first."""
        found = self.processes.output("xdotool", "search", "--onlyvisible", "--class", f"^{className}$", check=False)
        return sorted(found.split(), key=int)

    def window(self, className):
        """The oldest window of an application, if it has one."""
        return next(iter(self.windows(className)), None)

    def isInFront(self, className):
        active = self.processes.output("xdotool", "getactivewindow", check=False).strip()
        return active in self.windows(className)

    def place(self, window, left, top, width, height):
        self.processes.output("xdotool", "windowsize", "--sync", window, str(width), str(height), "windowmove", "--sync", window, str(left),
                              str(top), check=False)

    def activate(self, className):
        """Brings an application's window to the front, like a click on it."""
        window = self.waitFor(f"the window of {className}", lambda: self.window(className))
        self.processes.output("xdotool", "windowactivate", "--sync", window)
        return window

    def press(self, *keys):
        self.processes.output("xdotool", "key", "--clearmodifiers", *keys)

    def click(self, left, top):
        self.processes.output("xdotool", "mousemove", str(left), str(top), "click", "1")

    def geometry(self, window):
        """Left, top, width and height on the screen; nothing when the window is gone."""
        shown = self.processes.output("xdotool", "getwindowgeometry", "--shell", window, check=False)
        values = dict(line.split("=") for line in shown.splitlines())
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")) if values else None

    def screenshot(self, path):
        path.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-silent", "-window", "root", str(path)], env=self.processes.environment,
                       stdin=subprocess.DEVNULL, check=True)

    def __exit__(self, *_):
        self.processes.stop()
        self.log.close()
        os.chdir("/")
        shutil.rmtree(self.top, ignore_errors=True)
