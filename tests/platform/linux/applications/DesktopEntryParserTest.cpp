#include "platform/linux/applications/DesktopEntryParser.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

std::optional<DesktopEntry> parse(const std::string &keys, const Texts &locales = {}) {
    return parseDesktopEntry("[Desktop Entry]\n" + keys, locales);
}

/// An entry that can be launched, with `keys` besides.
DesktopEntry launchable(const std::string &keys, const Texts &locales = {}) {
    const auto entry = parse("Type=Application\nName=A\nExec=a\n" + keys, locales);
    EXPECT_TRUE(entry) << keys;
    return entry.value_or(DesktopEntry());
}

TEST(DesktopEntryParserTest, EveryKeyIsTakenOver) {
    const auto entry =
        launchable("Name=Falcon\nExec=falcon --new %u\nTryExec=/opt/falcon\nStartupWMClass=Falcon-bin\n"
                   "Icon=falcon\nPath=/srv/my\\sfiles\nMimeType=text/html;x-scheme-handler/http;\n"
                   "NoDisplay=true\nDBusActivatable=true\nStartupNotify=true\nTerminal=true\n");
    EXPECT_EQ(entry.name, "Falcon");
    EXPECT_EQ(entry.unlocalizedName, "Falcon");
    EXPECT_EQ(entry.exec, "falcon --new %u");
    EXPECT_EQ(entry.tryExec, "/opt/falcon");
    EXPECT_EQ(entry.startupWMClass, "Falcon-bin");
    EXPECT_EQ(entry.icon, "falcon");
    EXPECT_EQ(entry.workingDirectory, "/srv/my files");
    EXPECT_EQ(entry.schemes, Texts{"http"});
    EXPECT_TRUE(entry.noDisplay);
    EXPECT_TRUE(entry.dbusActivatable);
    EXPECT_TRUE(entry.startupNotify);
    EXPECT_TRUE(entry.terminal);
}

TEST(DesktopEntryParserTest, WhatIsNotSaidIsEmptyOrFalse) {
    const auto entry = launchable("");
    EXPECT_EQ(entry.tryExec + entry.startupWMClass + entry.icon + entry.workingDirectory, "");
    EXPECT_EQ(entry.schemes, Texts{});
    EXPECT_FALSE(entry.noDisplay || entry.dbusActivatable || entry.startupNotify || entry.terminal);
}

TEST(DesktopEntryParserTest, OnlyApplicationsAreTaken) {
    EXPECT_TRUE(parse("Type=Application\nExec=a\n"));
    EXPECT_FALSE(parse("Exec=a\n"));
    EXPECT_FALSE(parse("Type=Link\nURL=http://x\nExec=a\n"));
    EXPECT_FALSE(parse("Type=Directory\nExec=a\n"));
    EXPECT_FALSE(parse("Type=application\nExec=a\n"));
}

TEST(DesktopEntryParserTest, AHiddenEntryIsNone) {
    EXPECT_FALSE(parse("Type=Application\nExec=a\nHidden=true\n"));
    EXPECT_TRUE(parse("Type=Application\nExec=a\nHidden=false\n"));
}

TEST(DesktopEntryParserTest, AnApplicationCanBeLaunched) {
    EXPECT_FALSE(parse("Type=Application\n"));
    EXPECT_FALSE(parse("Type=Application\nExec=\n"));
    EXPECT_FALSE(parse("Type=Application\nExec=a \"open quote\n"));
    EXPECT_FALSE(parse("Type=Application\nExec=a %z\n"));
    EXPECT_TRUE(parse("Type=Application\nDBusActivatable=true\n"));
}

TEST(DesktopEntryParserTest, TheNameIsTheOneInTheUsersLanguage) {
    const auto entry = launchable("Name=Web Browser\nName[de]=Netz\n", {"de_AT", "de"});
    EXPECT_EQ(entry.name, "Netz");
    EXPECT_EQ(entry.unlocalizedName, "Web Browser");
    EXPECT_EQ(launchable("Name=Web Browser\nName[de]=Netz\n", {"fr"}).name, "Web Browser");
}

TEST(DesktopEntryParserTest, SchemesAreThoseOfSchemeHandlerTypesAsWritten) {
    EXPECT_EQ(launchable("MimeType=x-scheme-handler/HTTP;text/x-scheme-handler/ftp; x-scheme-handler/https ;"
                         "X-Scheme-Handler/irc;x-scheme-handler/;application/http;x-scheme-handlers/gopher")
                  .schemes,
              (Texts{"HTTP", "https", "irc"}));
}

TEST(DesktopEntryParserTest, LinesMayEndAsOnWindows) {
    const auto entry = parseDesktopEntry(
        "[Desktop Entry]\r\nType=Application\r\nName=A\r\nExec=a %u\r\nNoDisplay=true\r\n", {});
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->exec, "a %u");
    EXPECT_TRUE(entry->noDisplay);
}

TEST(DesktopEntryParserTest, AProgramWhoseNameIsNoUtf8KeepsItsBytes) {
    EXPECT_EQ(launchable("Exec=/opt/br\xFCh\n").exec, "/opt/br\xFCh");
}

TEST(DesktopEntryParserTest, AnExecLineWithANulIsNone) {
    EXPECT_FALSE(parse("Type=Application\nExec=a\0b\n"s));
}

} // namespace
} // namespace fernhop::freedesktop
