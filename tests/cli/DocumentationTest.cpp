#include "cli/HelpTree.h"
#include "support/Folders.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <memory>

namespace fernhop::cli {
namespace {

const std::string packaging = support::sourceFolder() + "/packaging/linux/";

const HelpTree &help() {
    static const HelpTree tree;
    return tree;
}

std::string joined(const Path &path) {
    std::string text;
    for (const auto &word : path)
        text += word + ' ';
    return text;
}

Words splitWords(const std::string &text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

/// An entry of a list in the manual page: "Cm" and what follows.
struct ManualEntry {
    Path path;
    Words options;
};

ManualEntry readEntry(const std::string &line) {
    ManualEntry entry;
    std::istringstream words(line);
    std::string word;
    std::string before;
    bool inPath = true;
    while (words >> word) {
        inPath = inPath && word.find_first_not_of("abcdefghijklmnopqrstuvwxyz-") == std::string::npos;
        if (inPath && help().has([&] {
                Path longer = entry.path;
                longer.push_back(word);
                return longer;
            }()))
            entry.path.push_back(word);
        else
            inPath = false;
        if (before == "Fl" && word != "Fl")
            entry.options.insert("--" + word);
        before = word;
    }
    return entry;
}

std::vector<ManualEntry> manualEntries() {
    std::vector<ManualEntry> entries;
    std::ifstream page(packaging + "man/fernhop.1");
    for (std::string line; std::getline(page, line);)
        if (line.starts_with(".It Cm "))
            entries.push_back(readEntry(line.substr(7)));
    return entries;
}

TEST(HelpTexts, NameTheCommands) {
    EXPECT_EQ(
        help().nodes().at({}).commands,
        (Words{"open", "explain", "match", "status", "apps", "browsers", "url-rules", "app-rules", "routing",
               "default", "restore-on-quit", "export", "import", "dialog", "refresh", "quit"}));
    EXPECT_EQ(help().nodes().at({}).options, (Words{"--help", "--version"}));
    EXPECT_EQ(help().nodes().at({"url-rules"}).commands, (Words{"list", "add", "edit", "remove"}));
    EXPECT_EQ(help().nodes().at({"app-rules"}).commands, (Words{"list", "set", "remove"}));
    EXPECT_EQ(help().nodes().at({"explain"}).options, (Words{"--help", "--json", "--source"}));
}

TEST(ManualPage, DescribesEveryCommandAndOption) {
    std::map<Path, Words> described;
    for (const auto &entry : manualEntries())
        described[entry.path].insert(entry.options.begin(), entry.options.end());
    for (const auto &[path, node] : help().nodes()) {
        if (!node.commands.empty())
            continue;
        ASSERT_TRUE(described.contains(path)) << joined(path);
        Words options = node.options;
        options.erase("--help");
        EXPECT_EQ(described[path], options) << joined(path);
    }
}

TEST(ManualPage, DescribesNothingElse) {
    for (const auto &entry : manualEntries()) {
        ASSERT_FALSE(entry.path.empty());
        EXPECT_TRUE(help().nodes().at(entry.path).commands.empty()) << joined(entry.path);
    }
}

TEST(ManualPage, DescribesEveryOptionInItsOwnEntry) {
    std::ifstream page(packaging + "man/fernhop.1");
    Words described;
    for (std::string line; std::getline(page, line);)
        if (line.starts_with(".It Fl"))
            described.merge(readEntry(line.substr(4)).options);
    described.erase("--h");
    described.erase("--,");
    Words known;
    for (const auto &[path, node] : help().nodes())
        known.insert(node.options.begin(), node.options.end());
    EXPECT_EQ(described, known);
}

/// The output of a shell; nothing when it could not be run.
std::optional<std::string> outputOf(const std::string &command) {
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    for (int character = 0; pipe && (character = std::getc(pipe.get())) != EOF;)
        output += static_cast<char>(character);
    if (!pipe || output.empty())
        return std::nullopt;
    return output;
}

bool hasShell(const std::string &shell) {
    return outputOf(shell + " -c 'echo here' 2>/dev/null") == "here\n";
}

std::string quotedForShell(const std::string &text) {
    std::string result = "'";
    for (const char character : text)
        result += character == '\'' ? "'\\''" : std::string(1, character);
    return result + "'";
}

/// The completions that bash offers for the last word, `last`, of a command line.
Words offeredByBash(const Path &path, const std::string &last) {
    std::string script = "source " + packaging +
                         "completions/fernhop.bash; fernhop() { :; }; COMP_WORDS=(fernhop " + joined(path) +
                         quotedForShell(last) +
                         "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _fernhop; echo . \"${COMPREPLY[@]}\"";
    auto words = splitWords(outputOf("bash --norc -c " + quotedForShell(script)).value_or(""));
    words.erase(".");
    return words;
}

TEST(BashCompletion, OffersTheCommandsAndOptionsOfTheHelp) {
    if (!hasShell("bash"))
        GTEST_SKIP();
    for (const auto &[path, node] : help().nodes()) {
        if (!node.commands.empty()) {
            EXPECT_EQ(offeredByBash(path, ""), node.commands) << joined(path);
        }
        EXPECT_EQ(offeredByBash(path, "-"), node.options) << joined(path);
    }
    EXPECT_EQ(offeredByBash({"routing"}, ""), (Words{"on", "off"}));
    EXPECT_EQ(offeredByBash({"restore-on-quit"}, "of"), Words{"off"});
    EXPECT_EQ(offeredByBash({"url-rules"}, "re"), Words{"remove"});
}

TEST(BashCompletion, OffersIdentifiersWithoutExecutingThem) {
    if (!hasShell("bash"))
        GTEST_SKIP();
    const std::string script =
        "source " + packaging +
        "completions/fernhop.bash; fernhop() { printf '    \"bundleID\": \"%s\",\\n' org.a '$(echo ran)' 'a "
        "b'; }; "
        "COMP_WORDS=(fernhop default ''); COMP_CWORD=2; _fernhop; printf '%s\\n' \"${COMPREPLY[@]}\"";
    EXPECT_EQ(outputOf("bash --norc -c " + quotedForShell(script)), "org.a\n\\$\\(echo\\ ran\\)\na\\ b\n");
}

/// The completions that fish offers, without their descriptions.
Words offeredByFish(const Path &path, const std::string &last) {
    const std::string script = "source " + packaging +
                               "completions/fernhop.fish; function fernhop; end; complete -C " +
                               quotedForShell("fernhop " + joined(path) + last) + "; echo .";
    std::istringstream lines(
        outputOf("HOME=/nonexistent fish --no-config -c " + quotedForShell(script) + " 2>/dev/null")
            .value_or(""));
    Words words;
    for (std::string line; std::getline(lines, line);)
        words.insert(line.substr(0, line.find('\t')));
    words.erase(".");
    return words;
}

TEST(FishCompletion, OffersTheCommandsAndOptionsOfTheHelp) {
    if (!hasShell("fish --no-config"))
        GTEST_SKIP();
    for (const auto &[path, node] : help().nodes()) {
        if (!node.commands.empty()) {
            EXPECT_EQ(offeredByFish(path, ""), node.commands) << joined(path);
        }
        EXPECT_EQ(offeredByFish(path, "--"), node.options) << joined(path);
    }
    EXPECT_EQ(offeredByFish({"routing"}, ""), (Words{"on", "off"}));
}

/// The names in zsh's lists of commands, whose entries have the form "name:description".
std::vector<Words> describedForZsh() {
    std::ifstream file(packaging + "completions/_fernhop");
    std::vector<Words> lists;
    bool inList = false;
    const std::regex item("['\"]([a-z-]+):");
    for (std::string line; std::getline(file, line);) {
        const bool begins =
            line.find("verbs=(") != std::string::npos || line.find("commands=(") != std::string::npos;
        if (begins)
            lists.emplace_back();
        inList = inList || begins;
        if (inList)
            for (std::sregex_iterator match(line.begin(), line.end(), item), end; match != end; ++match)
                lists.back().insert((*match)[1]);
        inList = inList && line.find(')') == std::string::npos;
    }
    return lists;
}

TEST(ZshCompletion, DescribesTheCommandsAndOptionsOfTheHelp) {
    const auto lists = describedForZsh();
    ASSERT_EQ(lists.size(), 3U);
    EXPECT_EQ(lists[0], help().nodes().at({"url-rules"}).commands);
    EXPECT_EQ(lists[1], help().nodes().at({"app-rules"}).commands);
    EXPECT_EQ(lists[2], help().nodes().at({}).commands);
}

TEST(ZshCompletion, IsReadByZsh) {
    if (!hasShell("zsh -f"))
        GTEST_SKIP();
    EXPECT_EQ(outputOf("zsh -f -n " + packaging + "completions/_fernhop 2>&1 && echo fine"), "fine\n");
}

} // namespace
} // namespace fernhop::cli
