#include "DesktopSession.h"
#include "support/KdeSession.h"
#include "support/PrivateDisplay.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

/// A session of a desktop, by the name that it has in XDG_CURRENT_DESKTOP. `browser` is the default browser.
class DesktopLinks : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override {
        if (!support::PrivateDisplay::isAvailable() || !support::isInstalled("xdg-open"))
            GTEST_SKIP() << "Xvfb, openbox or xdg-utils is not installed";
        if (GetParam() == "XFCE" &&
            (!support::isInstalled("exo-open") || !support::isInstalled("xfce4-mime-helper")))
            GTEST_SKIP() << "exo-utils or xfce4-settings is not installed";
        if (GetParam() == "KDE" && !support::isKdeInstalled())
            GTEST_SKIP() << "kde-cli-tools is not installed";
        if (GetParam() == "LXQt" && !support::isInstalled("qtxdg-mat"))
            GTEST_SKIP() << "qtxdg-tools is not installed";
        support::writeKdeSystem(session.home);
        display = std::make_unique<support::PrivateDisplay>(session.home);
        session.begin(display->environment() + desktop());
        ASSERT_EQ(session.fernhop({"default", "web"}), 0) << session.output();
    }

    static support::Environment desktop() {
        support::Environment variables{{"XDG_CURRENT_DESKTOP", GetParam()}, {"NO_AT_BRIDGE", "1"}};
        if (GetParam() == "KDE")
            variables = variables + support::kdeSession();
        return variables;
    }

    /// Opens links as any application does. Some openers end before their handler has started.
    void open(const Links &links) {
        for (const auto &link : links) {
            const auto before = session.browser.links().size();
            ASSERT_EQ(session.run({"xdg-open", link}), 0) << session.output();
            ASSERT_EQ(linksOf(session.browser, before + 1).size(), before + 1) << link << session.output();
        }
    }

    DesktopSession session;
    std::unique_ptr<support::PrivateDisplay> display;
};

std::string nameOf(const testing::TestParamInfo<std::string> &info) {
    return info.param.empty() ? "Unnamed" : info.param;
}

INSTANTIATE_TEST_SUITE_P(Sessions, DesktopLinks, testing::Values("GNOME", "KDE", "XFCE", "LXQt", "sway", ""),
                         nameOf);

TEST_P(DesktopLinks, PassThroughFernhopOnlyWhileRoutingIsOn) {
    ASSERT_EQ(session.fernhop({"routing", "on"}), 0) << session.output();
    const auto status = session.status();
    EXPECT_EQ(status["routing"], true);
    EXPECT_EQ(status["problems"], nlohmann::json::array());

    // Only Fernhop sends a link of this kind to the browser for Mail.
    ASSERT_EQ(session.fernhop({"url-rules", "add", "work.example", "web-for-mail"}), 0) << session.output();
    const Links work{"https://work.example/a%2Fb?x=1&y=%7C#z", "http://work.example/"};
    for (const auto &link : work)
        ASSERT_EQ(session.run({"xdg-open", link}), 0) << session.output();
    auto routed = linksOf(session.mailBrowser, 2);
    std::sort(routed.rbegin(), routed.rend());
    EXPECT_EQ(routed, work);
    open({"https://example.org/?q=a+b"});

    ASSERT_EQ(session.fernhop({"routing", "off"}), 0) << session.output();
    EXPECT_EQ(session.status()["routing"], false);
    ASSERT_EQ(session.fernhop({"quit"}), 0) << session.output();
    ASSERT_EQ(session.resident->wait(), 0);
    open(work);
    EXPECT_EQ(session.browser.links(), (Links{"https://example.org/?q=a+b", work[0], work[1]}));
    EXPECT_EQ(session.mailBrowser.links().size(), 2U);
    EXPECT_EQ(session.residentPid(), 0) << "a link started Fernhop while routing was off";
}

} // namespace
} // namespace fernhop::desktoptest
