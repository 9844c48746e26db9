#include "DesktopSession.h"

#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace fernhop::desktoptest {

DesktopSession::DesktopSession() {
    for (const auto &id : {mail, chat})
        home.writeDesktopEntry(id, "[Desktop Entry]\nType=Application\nName=" + id + "\nExec=true\n");
    home.writeDesktopEntry("web-for-mail", mailBrowser.desktopEntry());
    home.writeDesktopEntry("web-for-chat", chatBrowser.desktopEntry());
}

void DesktopSession::begin(const support::Environment &display) {
    environment = environment + display;
    startBus();
    startFernhop();
    EXPECT_EQ(fernhop({"app-rules", "set", mail, "web-for-mail"}), 0) << output();
    EXPECT_EQ(fernhop({"app-rules", "set", chat, "web-for-chat"}), 0) << output();
}

nlohmann::json DesktopSession::status() {
    EXPECT_EQ(fernhop({"status", "--json"}), 0) << output();
    return nlohmann::json::parse(output(), nullptr, false);
}

bool DesktopSession::sourceBecomes(const std::string &id) {
    return support::waitUntil([&] { return status().value("source", nlohmann::json()) == id; });
}

std::vector<std::string> linksOf(const support::RecordingBrowser &browser, std::size_t count) {
    (void)support::waitUntil([&] { return browser.links().size() >= count; });
    return browser.links();
}

} // namespace fernhop::desktoptest
