#include "PanelSession.h"

#include "support/Waiting.h"

#include <fstream>
#include <iterator>

namespace fernhop::desktoptest {
namespace {

using support::Environment;

constexpr const char *settingsService = "/usr/share/dbus-1/services/org.xfce.Xfconf.service";

constexpr const char *panelSettings = R"XML(<?xml version="1.0"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="systray"/></property>
</channel>)XML";

} // namespace

std::string contentsOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string PanelSession::missing() {
    for (const char *program : {"Xvfb", "openbox", "xfce4-panel", "xdotool", "gio"})
        if (!support::isInstalled(program))
            return program;
    return contentsOf(settingsService).empty() ? "xfconf" : "";
}

PanelSession::PanelSession() : display(std::make_unique<support::PrivateDisplay>(home)) {
    environment =
        environment + display->environment() + Environment{{"NO_AT_BRIDGE", "1"}, {"GTK_A11Y", "none"}};
    home.write(home.data() + "/dbus-1/services/org.xfce.Xfconf.service", contentsOf(settingsService));
    home.write(home.config() + "/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", panelSettings);
    home.write(home.config() + "/mimeapps.list", "[Default Applications]\nx-scheme-handler/http=web.desktop\n"
                                                 "x-scheme-handler/https=web.desktop\n");
    startBus();
}

void PanelSession::startPanel() {
    // It ends without what it needs to read pictures, which is the machine's.
    const auto panelEnvironment = environment + Environment{{"XDG_DATA_DIRS", "/usr/share"}};
    panel = std::make_unique<support::ChildProcess>(
        support::Command{{"xfce4-panel", "--disable-wm-check"}, panelEnvironment, home.root() + "/panel"});
}

int PanelSession::input(std::vector<std::string> words) {
    words.insert(words.begin(), "xdotool");
    return run(words);
}

int PanelSession::click(int left, int top) {
    return input({"mousemove", std::to_string(left), std::to_string(top), "click", "1"});
}

std::string PanelSession::defaultHandler() {
    (void)run({"gio", "mime", "x-scheme-handler/https"});
    // "Default application for “x-scheme-handler/https”: web.desktop"
    const std::string text = output();
    const std::string line = text.substr(0, text.find('\n'));
    const auto space = line.rfind(' ');
    return line.ends_with(".desktop") ? line.substr(space + 1) : "";
}

} // namespace fernhop::desktoptest
