#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

constexpr std::string_view head = "[Desktop Entry]\nType=X-XFCE-Helper\nX-XFCE-Category=WebBrowser\nName=B\n";

std::optional<XfceHelper> parse(const std::string &rest) {
    return XfceHelper::parse(std::string(head) + rest);
}

DesktopEntry entryWith(const std::string &exec) {
    DesktopEntry entry;
    entry.id = "b";
    entry.path = "/usr/share/applications/b.desktop";
    entry.name = "Browser";
    entry.exec = exec;
    return entry;
}

bool startsWith(const DesktopEntry &entry, const std::string &command) {
    const auto text = helperFileFor(entry);
    return text && text->find("X-XFCE-CommandsWithParameter=" + command + ";\n") != std::string::npos;
}

TEST(XfceHelper, NamesItsProgramOrListsBinaries) {
    const auto direct = parse("X-XFCE-Commands=b;\nX-XFCE-CommandsWithParameter=b \"%s\";\n");
    ASSERT_TRUE(direct);
    EXPECT_TRUE(direct->isUsable());
    const auto listed =
        parse("X-XFCE-Binaries=no-such;sh;\nX-XFCE-Commands=%B;\nX-XFCE-CommandsWithParameter=%B;\n");
    ASSERT_TRUE(listed);
    EXPECT_EQ(listed->binaries, (std::vector<std::string>{"no-such", "sh"}));
    EXPECT_TRUE(listed->isUsable());
    const auto missing =
        parse("X-XFCE-Binaries=no-such;\nX-XFCE-Commands=%B;\nX-XFCE-CommandsWithParameter=%B;\n");
    ASSERT_TRUE(missing);
    EXPECT_FALSE(missing->isUsable());
}

TEST(XfceHelper, IsNothingElse) {
    EXPECT_FALSE(XfceHelper::parse(""));
    EXPECT_FALSE(XfceHelper::parse("[Desktop Entry]\nType=Application\nExec=b\n"));
    EXPECT_FALSE(XfceHelper::parse("[Desktop Entry]\nType=X-XFCE-Helper\nX-XFCE-Category=MailReader\nName=B\n"
                                   "X-XFCE-Commands=b;\nX-XFCE-CommandsWithParameter=b;\n"));
    EXPECT_FALSE(parse("X-XFCE-Commands=b;\n"));
    EXPECT_FALSE(parse("X-XFCE-Commands=%B;\nX-XFCE-CommandsWithParameter=%B;\n"));
}

TEST(XfceHelper, IsMadeOfAnExecLine) {
    EXPECT_TRUE(startsWith(entryWith("/opt/b --new-window %u"), R"("/opt/b" "--new-window" "%s")"));
    EXPECT_TRUE(startsWith(entryWith("\"/opt/my b\" %U"), R"("/opt/my b" "%s")"));
    EXPECT_TRUE(startsWith(entryWith("b --url=%u"), R"("b" "--url=%s")"));
    EXPECT_TRUE(startsWith(entryWith("b"), R"("b" "%s")"));
    EXPECT_TRUE(startsWith(entryWith("b 100%% %c %m %u"), R"("b" "100%" "Browser" "%s")"));
    EXPECT_TRUE(startsWith(entryWith("flatpak run b @@u %u @@"), R"("flatpak" "run" "b" "@@u" "%s" "@@")"));
}

TEST(XfceHelper, LeavesWhatXfceCannotExpressToGio) {
    const std::string throughGio = R"(gio launch "/usr/share/applications/b.desktop" "%s")";
    EXPECT_TRUE(startsWith(entryWith("sh -c \"a;b\" %u"), throughGio));
    EXPECT_TRUE(startsWith(entryWith(R"(b 'x"y' %u)"), throughGio));
    EXPECT_TRUE(startsWith(entryWith("b %%s %u"), throughGio));
    EXPECT_TRUE(startsWith(entryWith("b 'unclosed"), throughGio));
    EXPECT_TRUE(startsWith(entryWith(""), throughGio));
    auto terminal = entryWith("b %u");
    terminal.terminal = true;
    EXPECT_TRUE(startsWith(terminal, throughGio));
    terminal.path = "/odd;path/b.desktop";
    EXPECT_EQ(helperFileFor(terminal), std::nullopt);
}

TEST(XfceHelper, UnderstandsWhatWasMade) {
    auto entry = entryWith("b %u");
    entry.name = "Line\nbreak";
    entry.icon = "icon";
    const auto text = helperFileFor(entry);
    ASSERT_TRUE(text);
    const auto helper = XfceHelper::parse(*text);
    ASSERT_TRUE(helper);
    EXPECT_TRUE(helper->isOurs);
    EXPECT_TRUE(helper->isUsable());
    EXPECT_NE(text->find("\nName=Line break\nIcon=icon\n"), std::string::npos);
}

} // namespace
} // namespace fernhop::freedesktop
