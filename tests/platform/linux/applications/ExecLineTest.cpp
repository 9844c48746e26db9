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

constexpr const char *interpretingLines[] = {
    // A URL within a text, whatever its quoting.
    R"(sh -c browser\ %u)", "sh -c true;%u", "sh -c firefox${IFS}%u", R"(sh -c browser\ \'%u\')",
    "unknown-interpreter true;%u", "sh -c %%;%u", R"(python3 -c open\(%u\))",
    // The URL as the text.
    "sh -c %u", "sh -c \"%u\"", "sh -c x%u", "sh -c", "bash -lc %u", "sh -ec %f", "sh -xc %F", "dash -ce %U",
    "/bin/sh -c %u", "bash5 -c %u", "sh -o errexit -c %u", "sh -c -- %u", "bash -c -o errexit %u",
    "bash -c +x %u", "zsh -fc %u", "fish --command=%u", "fish --command %u", "sh -s %u -c %u", "perl -e %u",
    "perl -ne %u", "perl -e%u", "perl -Mstrict -e %u", "python3.11 -c %u", "python3 -Ic%u", "ruby -e %u",
    "node -e %u", "node --eval=%u", "node --ev %u", "node -pe %u", "php -r %u", "lua5.4 -e %u",
    "perl -e 1 -e %u", "guile -c %u", "vim -c %u", "gjs -c %u",
    // The interpreter behind other programs.
    "env sh -c %u", "/usr/bin/env FOO=1 sh -c %u", "nice -n 5 sh -c %u", "setsid sh -c %u",
    "timeout 5 sh -c %u", "busybox sh -c %u", "xargs sh -c %u", "find / -exec sh -c %u ;",
    "flatpak run --command=sh org.example.Web -c %u", "flatpak run --command sh org.example.Web -c %u",
    "xterm -e sh -c %u", "su - user -c %u", "script -qc %u /dev/null", "flock /tmp/lock -c %u", "xterm -e %u",
    "konsole -e %u", "gnome-terminal --command=%u", "ssh host browser %u", "watch %u", "awk %u",
    "tmux new-window browser %u", "eval browser %u",
    // env makes words out of a text.
    "env -S %u", "env -S \"sh -c\" %u", "env -iS \"FOO=1 sh -c\" %u", "env \"--split-string=sh -c\" %u",
    "env -S \"nice sh\" -c %u", "env -S \"env -S 'sh -c'\" %u",
    // A text that has another interpreter read its arguments.
    R"(sh -c "sh -c \"\$1\"" sh %u)", R"(sh -c "eval \"\$@\"" sh %u)", R"(sh -c "true; exec bash -c \$0" %u)",
    R"x(bash -c "(ssh host \"\$1\")" bash %u)x",
    // The URL as the file that is run.
    "sh %u", "sh -x %u", "env sh %u", "python3 %u", "node"};

constexpr const char *harmlessLines[] = {R"(sh -c "browser \"\$1\"" sh %u)",
                                         R"(sh -c "exec browser \"\$@\"" sh %U)",
                                         "sh -c firefox %u",
                                         R"(bash -lc "exec env FOO=1 browser \"\$@\"" bash %u)",
                                         R"(sh -c "a; [ -n \"\$1\" ] && b \"\$1\"" sh %F)",
                                         "env FOO=1 browser %u",
                                         "env -u FOO browser %u",
                                         "env -S \"browser --new\" %u",
                                         "sh /opt/browser.sh %u",
                                         "python3 /opt/browser.py --url %u",
                                         "python3 -m browser %u",
                                         "perl -MHTML::Entities -e 1 %u",
                                         "node --title=x app.js %u",
                                         "xterm -e browser %u",
                                         "gnome-terminal -- browser %u",
                                         "nice browser %u",
                                         "timeout 5 browser %u",
                                         "flatpak run --command=browser org.example.Web @@u %u @@",
                                         "bash-browser %u",
                                         "browser -c %u",
                                         "browser -e %u",
                                         "browser --app=%u",
                                         "browser -c sh %u",
                                         "browser --shell=sh %u"};

TEST(ExecArgumentsTest, NoUrlIsProgramText) {
    for (const auto *exec : interpretingLines) {
        EXPECT_EQ(expand(exec), std::nullopt) << exec;
        EXPECT_TRUE(interpretsUrls(entryWith(exec))) << exec;
    }
    for (const auto *exec : harmlessLines) {
        EXPECT_TRUE(expand(exec)) << exec;
        EXPECT_FALSE(interpretsUrls(entryWith(exec))) << exec;
    }
    EXPECT_FALSE(interpretsUrls(entryWith("a %z"))) << "not a correct line";
}

TEST(ExecArgumentsTest, LongLinesAreReadSoon) {
    std::string line;
    for (int count = 0; count < 100'000; ++count)
        line += "env -S sh -c ";
    EXPECT_TRUE(interpretsUrls(entryWith(line + "x %u"))) << "more than can be looked through";
    EXPECT_FALSE(interpretsUrls(entryWith("browser " + std::string(100'000, 'x') + " %u")));
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
