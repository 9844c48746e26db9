#include "cli/CommandParser.h"

#include "platform/Version.h"

#include <gtest/gtest.h>

namespace fernhop::cli {
namespace {

template <typename Kind>
Kind parsed(const std::vector<std::string> &words) {
    const auto outcome = parseCommand(words);
    if (const auto *answer = std::get_if<CommandResult>(&outcome)) {
        ADD_FAILURE() << answer->errors;
        return {};
    }
    const auto *command = std::get_if<Kind>(&std::get<Command>(outcome));
    EXPECT_NE(command, nullptr);
    return command ? *command : Kind{};
}

/// The error about wrong usage; empty when there is none.
std::string complaint(const std::vector<std::string> &words) {
    const auto outcome = parseCommand(words);
    const auto *answer = std::get_if<CommandResult>(&outcome);
    if (!answer || answer->status == 0)
        return "";
    EXPECT_EQ(answer->status, 2);
    EXPECT_EQ(answer->output, "");
    EXPECT_TRUE(answer->errors.starts_with("fernhop: ")) << answer->errors;
    return answer->errors;
}

std::string answered(const std::vector<std::string> &words) {
    const auto outcome = parseCommand(words);
    const auto *answer = std::get_if<CommandResult>(&outcome);
    EXPECT_TRUE(answer && answer->status == 0 && answer->errors.empty());
    return answer ? answer->output : "";
}

TEST(CommandParser, RunsWithoutArguments) {
    parsed<command::Run>({});
    parsed<command::Run>({"--"});
}

TEST(CommandParser, KnowsEveryCommand) {
    EXPECT_EQ(parsed<command::Open>({"open", "a:1", "b:2"}).urls, (std::vector<std::string>{"a:1", "b:2"}));
    EXPECT_FALSE(parsed<command::Status>({"status"}).json);
    EXPECT_TRUE(parsed<command::Status>({"status", "--json"}).json);
    EXPECT_TRUE(parsed<command::ListApps>({"apps", "--json"}).json);
    EXPECT_TRUE(parsed<command::ListBrowsers>({"browsers", "--json"}).json);
    EXPECT_TRUE(parsed<command::ListURLRules>({"url-rules", "list", "--json"}).json);
    EXPECT_TRUE(parsed<command::ListAppRules>({"app-rules", "list", "--json"}).json);
    EXPECT_EQ(parsed<command::RemoveURLRule>({"url-rules", "remove", "7"}).id, "7");
    EXPECT_EQ(parsed<command::RemoveAppRule>({"app-rules", "remove", "org.a"}).app, "org.a");
    EXPECT_EQ(parsed<command::SetDefault>({"default", "org.b"}).browser, "org.b");
    parsed<command::Refresh>({"refresh"});
    parsed<command::Quit>({"quit"});
}

TEST(CommandParser, TakesArgumentsInOrder) {
    const auto added = parsed<command::AddURLRule>({"url-rules", "add", "docs.example", "org.b"});
    EXPECT_EQ(added.pattern, "docs.example");
    EXPECT_EQ(added.browser, "org.b");
    const auto edited = parsed<command::EditURLRule>({"url-rules", "edit", "7", "docs.example", "org.b"});
    EXPECT_EQ(edited.id, "7");
    EXPECT_EQ(edited.pattern, "docs.example");
    EXPECT_EQ(edited.browser, "org.b");
    const auto set = parsed<command::SetAppRule>({"app-rules", "set", "org.a", "org.b"});
    EXPECT_EQ(set.app, "org.a");
    EXPECT_EQ(set.browser, "org.b");
}

TEST(CommandParser, TakesTheSourceOfALink) {
    EXPECT_EQ(parsed<command::Explain>({"explain", "a:1"}).source, std::nullopt);
    const auto explained = parsed<command::Explain>({"explain", "--source", "org.a", "--json", "a:1"});
    EXPECT_EQ(explained.source, "org.a");
    EXPECT_EQ(explained.url, "a:1");
    EXPECT_TRUE(explained.json);
    EXPECT_EQ(parsed<command::Explain>({"explain", "a:1", "--source=org.a"}).source, "org.a");
    EXPECT_EQ(parsed<command::Explain>({"explain", "a:1", "--source", "-x"}).source, "-x");
}

TEST(CommandParser, TakesOnAndOff) {
    EXPECT_TRUE(parsed<command::SwitchRouting>({"routing", "on"}).on);
    EXPECT_FALSE(parsed<command::SwitchRouting>({"routing", "off"}).on);
    EXPECT_TRUE(parsed<command::RestoreOnQuit>({"restore-on-quit", "on"}).on);
    EXPECT_FALSE(parsed<command::RestoreOnQuit>({"restore-on-quit", "off"}).on);
    EXPECT_NE(complaint({"routing", "maybe"}), "");
    EXPECT_NE(complaint({"restore-on-quit", "1"}), "");
}

TEST(CommandParser, TakesFiles) {
    EXPECT_EQ(parsed<command::Export>({"export"}).file, "");
    EXPECT_EQ(parsed<command::Export>({"export", "-"}).file, "-");
    EXPECT_EQ(parsed<command::Export>({"export", "a b.json"}).file, "a b.json");
    EXPECT_EQ(parsed<command::Import>({"import", "-"}).file, "-");
}

TEST(CommandParser, MatchMayReadItsInput) {
    const auto match = parsed<command::Match>({"match", "*.pdf"});
    EXPECT_EQ(match.pattern, "*.pdf");
    EXPECT_TRUE(match.urls.empty());
    EXPECT_EQ(parsed<command::Match>({"match", "*", "a:1", "b:2"}).urls.size(), 2U);
}

TEST(CommandParser, RefusesUnknownArguments) {
    EXPECT_NE(complaint({"launch"}), "");
    EXPECT_NE(complaint({"--json"}), "");
    EXPECT_NE(complaint({"status", "--jsn"}), "");
    EXPECT_NE(complaint({"status", "-json"}), "");
    EXPECT_NE(complaint({"open", "--json", "a:1"}), "");
    EXPECT_NE(complaint({"status", "more"}), "");
    EXPECT_NE(complaint({"status", "refresh"}), "");
    EXPECT_NE(complaint({"url-rules", "list", "url-rules"}), "");
    EXPECT_NE(complaint({"https://docs.example/"}), "");
    EXPECT_NE(complaint({"status", "--json=no"}), "");
    EXPECT_NE(complaint({"explain", "--json=a:1"}), "");
    EXPECT_NE(complaint({"--", "status"}), "");
    EXPECT_NE(complaint({""}), "");
}

TEST(CommandParser, RefusesMissingArguments) {
    for (const std::vector<std::string> &words :
         std::vector<std::vector<std::string>>{{"open"},
                                               {"explain"},
                                               {"explain", "a:1", "--source"},
                                               {"match"},
                                               {"url-rules"},
                                               {"url-rules", "add", "p"},
                                               {"url-rules", "edit", "7", "p"},
                                               {"url-rules", "remove"},
                                               {"app-rules"},
                                               {"app-rules", "set", "a"},
                                               {"app-rules", "remove"},
                                               {"routing"},
                                               {"default"},
                                               {"restore-on-quit"},
                                               {"import"}})
        EXPECT_NE(complaint(words), "") << words.front();
}

TEST(CommandParser, ALinkThatBeginsWithAHyphenIsNotAnOption) {
    EXPECT_EQ(parsed<command::Open>({"open", "-https://x"}).urls.front(), "-https://x");
    EXPECT_EQ(parsed<command::Open>({"open", "--https://x"}).urls.front(), "--https://x");
    EXPECT_EQ(parsed<command::Open>({"open", "-h:1"}).urls.front(), "-h:1");
    EXPECT_EQ(parsed<command::Open>({"open", "--json://x?a=b"}).urls.front(), "--json://x?a=b");
    EXPECT_EQ(parsed<command::Explain>({"explain", "--json", "-x/y"}).url, "-x/y");
}

TEST(CommandParser, NothingAfterTwoHyphensIsAnOption) {
    EXPECT_EQ(parsed<command::Open>({"open", "--", "--help", "-h", "--", "--json"}).urls,
              (std::vector<std::string>{"--help", "-h", "--", "--json"}));
    EXPECT_EQ(parsed<command::Match>({"match", "a", "--", "-x"}).urls.front(), "-x");
    EXPECT_EQ(parsed<command::Match>({"match", "--", "--json"}).pattern, "--json");
    EXPECT_EQ(parsed<command::AddURLRule>({"url-rules", "add", "--", "-a", "-b"}).browser, "-b");
    EXPECT_EQ(parsed<command::Explain>({"explain", "--source", "--", "--json", "a:1"}).source, "--json");
}

TEST(CommandParser, ArgumentsAreNotInterpreted) {
    for (const std::string odd : {"{}", "[a,b]", "[]", "%%", "++", "", " ", "\x01", "\x01x", "=", "-",
                                  "@file", "a\nb", "\xff", "status", "list", "on"}) {
        EXPECT_EQ(parsed<command::Open>({"open", odd, "a:1"}).urls, (std::vector<std::string>{odd, "a:1"}))
            << odd;
        EXPECT_EQ(parsed<command::Match>({"match", odd}).pattern, odd);
        EXPECT_EQ(parsed<command::AddURLRule>({"url-rules", "add", odd, odd}).browser, odd);
        EXPECT_EQ(parsed<command::Explain>({"explain", "--source", odd, "a:1"}).source, odd);
        EXPECT_EQ(parsed<command::Explain>({"explain", "--source=" + odd, "a:1"}).source, odd);
    }
}

TEST(CommandParser, UsageErrorsAreSafeForTheTerminal) {
    const auto text = complaint({"status", "a\x1b[31m\x01"});
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
    EXPECT_EQ(text.find('\x01'), std::string::npos);
    EXPECT_NE(text.find("\\x1b[31m"), std::string::npos) << text;
}

TEST(CommandParser, PrintsHelpAndVersion) {
    EXPECT_EQ(answered({"--version"}), std::string("fernhop ") + programVersion() + "\n");
    const auto help = answered({"--help"});
    for (const char *command :
         {"open", "explain", "match", "status", "apps", "browsers", "url-rules", "app-rules", "routing",
          "default", "restore-on-quit", "export", "import", "refresh", "quit", "--help", "--version"})
        EXPECT_NE(help.find(command), std::string::npos) << command;
    EXPECT_EQ(answered({"-h"}), help);
    EXPECT_NE(answered({"url-rules", "add", "--help"}).find("PATTERN"), std::string::npos);
    EXPECT_NE(answered({"explain", "--help"}).find("--source"), std::string::npos);
}

} // namespace
} // namespace fernhop::cli
