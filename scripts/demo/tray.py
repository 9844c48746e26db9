"""Fernhop's icon in the panel's tray, operated by pointer and keys."""

TRAY = "^wrapper-2.0$"  # the panel runs its tray in a process of its own, which has this class
MENU = "_NET_WM_WINDOW_TYPE_POPUP_MENU"
BEFORE_BROWSERS = 2  # the items of the menu that can be chosen above its browsers


class Tray:
    """Operates the menu, whose first submenu is the one with the URL rules; its first item adds a rule."""

    def __init__(self, desktop, browserCount):
        self.desktop = desktop
        self.browserCount = browserCount

    def showRule(self):
        """Opens the menu down to the browsers of the first URL rule."""
        self.openRules()
        self.desktop.press("Down", "Right")
        self.waitForMenus(3)

    def addRule(self, pattern):
        """Opens the dialog for a new URL rule and types a pattern; returns its window."""
        self.openRules()
        self.desktop.press("Return")
        window = self.desktop.waitFor("the dialog", lambda: self.desktop.window("fernhop"))
        self.desktop.processes.output("xdotool", "type", pattern)
        return window

    def close(self):
        """Closes all menus, or the dialog."""
        while self.menus():
            count = len(self.menus())
            self.desktop.press("Escape")
            self.desktop.waitFor("the menu to close", lambda: len(self.menus()) < count)
        while self.desktop.window("fernhop"):
            self.desktop.press("Escape")
            self.desktop.waitFor("the dialog to close", lambda: not self.desktop.window("fernhop"))

    def openRules(self):
        left, top, width, height = self.desktop.waitFor("the icon", self.icon)
        self.desktop.click(left + width // 2, top + height // 2)
        self.waitForMenus(1)
        self.desktop.press("Home", *["Down"] * (BEFORE_BROWSERS + self.browserCount), "Right")
        self.waitForMenus(2)

    def waitForMenus(self, count):
        self.desktop.waitFor(f"menu number {count}", lambda: len(self.menus()) == count)

    def menus(self):
        return [window for window in self.windows() if self.isMenu(window)]

    def icon(self):
        """The position of the icon, once it exists."""
        others = [window for window in self.windows() if not self.isMenu(window)]
        return self.desktop.geometry(others[0]) if others else None

    def windows(self):
        return self.desktop.processes.output("xdotool", "search", "--onlyvisible", "--class", TRAY, check=False).split()

    def isMenu(self, window):
        return MENU in self.desktop.processes.output("xprop", "-id", window, "_NET_WM_WINDOW_TYPE", check=False)
