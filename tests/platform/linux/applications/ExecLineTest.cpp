#include "platform/linux/applications/ExecLine.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using Texts = std::vector<std::string>;
using Arguments = std::optional<Texts>;

DesktopEntry entryWith(const std::string &exec) {
    DesktopEntry entry;
    entry.id = "falcon";
    entry.path = "/usr/share/applications/falcon %u.desktop";
    entry.name = "Falcon \"%u\" Browser";
    entry.icon = "falcon icon";
    entry.exec = exec;
    return entry;
}

Arguments expand(const std::string &exec, const Texts &urls = {"http://h/"}) {
    return execArguments(entryWith(exec), urls);
}

/// The words alone, without word of their quoting.
Arguments words(const std::string &exec) {
    const auto read = execWords(exec);
    if (!read)
        return std::nullopt;
    Texts texts;
    for (const auto &word : *read)
        texts.push_back(word.text);
    return texts;
}

TEST(ExecWordsTest, BlanksSeparateWords) {
    EXPECT_EQ(words("a b\tc\n d  "), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(words(""), Texts{});
    EXPECT_EQ(words("  "), Texts{});
}

TEST(ExecWordsTest, DoubleQuotesKeepBlanksInAWord) {
    EXPECT_EQ(words(R"("/opt/my browser" "" x)"), (Texts{"/opt/my browser", "", "x"}));
    EXPECT_EQ(words(R"("a\"b\`c\$d\\e")"), Texts{R"(a"b`c$d\e)"});
    EXPECT_EQ(words(R"("a\nb\ c")"), Texts{R"(a\nb\ c)"}) << "a backslash escapes only what may be escaped";
    EXPECT_EQ(words(R"q("it's | > < ~ & ; * ? # ( )")q"), Texts{"it's | > < ~ & ; * ? # ( )"});
}

TEST(ExecWordsTest, AcceptsTheQuotingThatOtherDesktopsAccept) {
    EXPECT_EQ(words(R"('a "b\' c)"), (Texts{R"(a "b\)", "c"}));
    EXPECT_EQ(words(R"(--x="a b"'c d'e)"), Texts{"--x=a bc de"});
    EXPECT_EQ(words(R"(a\ b \"c)"), (Texts{"a b", "\"c"}));
    EXPECT_EQ(words("a|b;c $x `y` #z"), (Texts{"a|b;c", "$x", "`y`", "#z"})) << "nothing is for a shell";
}

TEST(ExecWordsTest, UnclosedQuotesAreInvalid) {
    for (const auto *exec : {R"(a "b)", R"(a 'b)", R"(a "b\")", R"(a \)", "\"", "'"})
        EXPECT_EQ(words(exec), std::nullopt) << exec;
}

TEST(ExecWordsTest, QuotedWordsAreMarked) {
    EXPECT_EQ(execWords(R"(a "b" c"d" '')"),
              (std::vector<ExecWord>{{"a", false}, {"b", true}, {"cd", true}, {"", true}}));
}

TEST(ExecArgumentsTest, EachUrlCodeIsReplacedByTheUrl) {
    for (const auto *code : {"%u", "%U", "%f", "%F"})
        EXPECT_EQ(expand(std::string("a --x ") + code + " y"), (Texts{"a", "--x", "http://h/", "y"})) << code;
}

TEST(ExecArgumentsTest, TheUrlIsAppendedWhereNoCodeIs) {
    EXPECT_EQ(expand("a --new"), (Texts{"a", "--new", "http://h/"}));
    EXPECT_EQ(expand("a %i %%"), (Texts{"a", "--icon", "falcon icon", "%", "http://h/"}));
}

TEST(ExecArgumentsTest, ACodeMayBePartOfAnArgument) {
    EXPECT_EQ(expand("a --url=%u"), (Texts{"a", "--url=http://h/"}));
    EXPECT_EQ(expand("a --url=%U"), (Texts{"a", "--url=http://h/"}));
    EXPECT_EQ(expand("a <%f>"), (Texts{"a", "<http://h/>"}));
}

TEST(ExecArgumentsTest, OnlyTheFirstCodeTakesTheUrl) {
    EXPECT_EQ(expand("a %u %f %U"), (Texts{"a", "http://h/"}));
    EXPECT_EQ(expand("a --x=%u --y=%u"), (Texts{"a", "--x=http://h/", "--y="}));
}

TEST(ExecArgumentsTest, SeveralUrlsNeedACodeForSeveral) {
    const Texts two{"http://1/", "http://2/"};
    EXPECT_EQ(expand("a %U b", two), (Texts{"a", "http://1/", "http://2/", "b"}));
    EXPECT_EQ(expand("a %F", two), (Texts{"a", "http://1/", "http://2/"}));
    for (const auto *exec : {"a %u", "a %f", "a", "a --x=%U", "a %u %U"})
        EXPECT_EQ(expand(exec, two), std::nullopt) << exec;
}

TEST(ExecArgumentsTest, EveryUrlIsHandedOverInOneLaunchOrSeveral) {
    const Texts two{"http://1/", "http://2/"};
    EXPECT_TRUE(execArguments(entryWith("a %U"), two));
    EXPECT_FALSE(execArguments(entryWith("a %u"), two));
    EXPECT_EQ(execLaunches(entryWith("a %U"), two), (std::vector<Texts>{{"a", "http://1/", "http://2/"}}));
    EXPECT_EQ(execLaunches(entryWith("a %u"), two),
              (std::vector<Texts>{{"a", "http://1/"}, {"a", "http://2/"}}));
    EXPECT_EQ(execLaunches(entryWith("a"), two),
              (std::vector<Texts>{{"a", "http://1/"}, {"a", "http://2/"}}));
    EXPECT_EQ(execLaunches(entryWith("a %u"), {}), (std::vector<Texts>{{"a"}}));
    EXPECT_EQ(execLaunches(entryWith("a %z"), two), (std::vector<Texts>{}));
}

TEST(ExecArgumentsTest, WithoutUrlsTheCodesAreRemoved) {
    EXPECT_EQ(expand("a %u b", {}), (Texts{"a", "b"}));
    EXPECT_EQ(expand("a %F", {}), Texts{"a"});
    EXPECT_EQ(expand("a --url=%u", {}), (Texts{"a", "--url="}));
    EXPECT_EQ(expand("a", {}), Texts{"a"});
}

TEST(ExecArgumentsTest, OtherCodesAreReplacedFromTheEntry) {
    EXPECT_EQ(expand("a %i %c %k %% 100%%", {}),
              (Texts{"a", "--icon", "falcon icon", "Falcon \"%u\" Browser",
                     "/usr/share/applications/falcon %u.desktop", "%", "100%"}));
    auto entry = entryWith("a %i b");
    entry.icon.clear();
    EXPECT_EQ(execArguments(entry, {}), (Texts{"a", "b"})) << "no icon, no option";
}

TEST(ExecArgumentsTest, DeprecatedCodesAreRemoved) {
    EXPECT_EQ(expand("a %d %D %n %N %v %m b %u"), (Texts{"a", "b", "http://h/"}));
    EXPECT_EQ(expand("a x%dy %u"), (Texts{"a", "xy", "http://h/"}));
}

TEST(ExecArgumentsTest, AnUnknownCodeMakesTheLineInvalid) {
    for (const auto *exec : {"a %z", "a %", "a 100% %u", "a %%%", "a % u", "a x%", "%z", "a \"%z\""})
        EXPECT_EQ(expand(exec), std::nullopt) << exec;
}

TEST(ExecArgumentsTest, ALineWithoutProgramIsInvalid) {
    for (const auto *exec : {"", "  ", "\"\"", "%u", "%F x", "/bin/%u", "\"unclosed %u"})
        EXPECT_EQ(expand(exec), std::nullopt) << exec;
}

TEST(ExecArgumentsTest, TheProgramMayNotBeACode) {
    for (const auto *exec : {"%d %u", "%i %u", "%k %u", "%c", "%n", "x%k %u", "%%%d %u"})
        EXPECT_EQ(expand(exec), std::nullopt) << exec << ": the URL, or whatever the entry says, would run";
    EXPECT_EQ(expand("a%%b %u"), (Texts{"a%b", "http://h/"})) << "a percent sign stands for itself";
}

TEST(ExecArgumentsTest, AQuotedCodeMustStandAlone) {
    EXPECT_EQ(expand("a \"%u\""), (Texts{"a", "http://h/"}));
    EXPECT_EQ(expand("sh -c \"firefox %u\""), std::nullopt) << "the URL would become shell text";
    EXPECT_EQ(expand("sh -c 'firefox '%u"), std::nullopt);
    EXPECT_EQ(expand("sh -c \"exec firefox \\\"\\$@\\\"\" sh %u"),
              (Texts{"sh", "-c", "exec firefox \"$@\"", "sh", "http://h/"}));
    EXPECT_EQ(expand("a \"my %c\" %u"), (Texts{"a", "my Falcon \"%u\" Browser", "http://h/"}));
}

TEST(ExecArgumentsTest, NothingInAUrlIsInterpreted) {
    const Texts urls{"http://h/%F0%9F",
                     "http://h/%c3%a9?%u=%U",
                     "http://h/%%",
                     "http://h/$HOME$(x)`y`",
                     "http://h/\"'\\",
                     "http://h/a|b&c;d",
                     "-http://h/",
                     "http://h/a b\tc\nd",
                     "http://h/\xC3\xA9\xFF",
                     "",
                     std::string(100'000, 'x')};
    for (const auto &url : urls) {
        for (const auto *exec : {"a %u", "a %U", "a %f", "a %F", "a", "a \"%u\""})
            EXPECT_EQ(expand(exec, {url}), (Texts{"a", url})) << exec;
        EXPECT_EQ(expand("a --url=%u", {url}), (Texts{"a", "--url=" + url}));
    }
    EXPECT_EQ(expand("a %U", urls)->size(), urls.size() + 1);
}

TEST(ExecArgumentsTest, AValidLineIsOneThatExpands) {
    EXPECT_TRUE(hasValidExec(entryWith("a %u")));
    EXPECT_FALSE(hasValidExec(entryWith("a %z")));
    EXPECT_FALSE(hasValidExec(entryWith("")));
}

} // namespace
} // namespace fernhop::freedesktop
