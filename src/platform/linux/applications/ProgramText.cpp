#include "platform/linux/applications/ProgramText.h"

#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/base/PassOnPrograms.h"
#include "platform/linux/base/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace fernhop::freedesktop {
namespace {

using CommandWords = std::vector<CommandWord>;

/// Programs that read program text, and where on their command line.
struct Interpreters {
    enum class Reads {
        text,      ///< its option brings text for itself or for a shell
        shellText, ///< the same, and that text may use the words behind it, as $1 or $@
        words,     ///< its option brings words (of env), to which those behind it are added
        all        ///< every argument may become text
    };

    Reads reads;
    bool runsFiles;             ///< without such an option it runs a file, the first word that is no option
    std::string_view letters;   ///< of the options whose value is text
    std::string_view longNames; ///< the same, without their dashes
    std::string_view programs;  ///< file names; a version may follow ("python3.11")
};

using Reads = Interpreters::Reads;

constexpr std::array<Interpreters, 13> table = {{
    {Reads::shellText, true, "c", "command init-command init-file rcfile",
     "ash bash bash-static csh dash elvish fish hush ksh lksh mksh nu oksh osh posh rbash rc rksh sash sh "
     "tcsh "
     "xonsh yash zsh"},
    {Reads::text, true, "c", "command", "expect gjs gjs-console guile ipython jython pypy python"},
    {Reads::text, true, "eE", "eval", "groovy julia lua luajit octave perl R Rscript ruby scala"},
    {Reads::text, true, "ep", "eval print require import", "bun deno node nodejs qjs"},
    {Reads::text, true, "rBRE", "run process-begin process-code process-end", "php php-cgi"},
    {Reads::text, true, "cCe", "command encodedcommand", "powershell pwsh"},
    {Reads::text, false, "e", "eval execute", "emacs emacsclient"},
    {Reads::text, false, "cS", "cmd", "ex gvim nvim vi view vim"},
    {Reads::text, false, "e", "eval-command init-eval-command", "gdb"},
    {Reads::text, false, "c", "command session-command", "flock kdesu kdesudo runuser script su xdg-su"},
    {Reads::text, false, "ex", "command execute",
     "Eterm alacritty aterm foot gnome-terminal kitty konsole lxterm lxterminal mate-terminal mlterm "
     "qterminal "
     "rxvt sakura st terminator terminology tilix urxvt uxterm wezterm x-terminal-emulator xfce4-terminal "
     "xterm"},
    {Reads::words, false, "S", "split-string", "env"},
    {Reads::all, false, "", "",
     "awk cmd cmd.exe entr eval gawk gksu gksudo hyprctl i3-msg make mawk nawk original-awk parallel screen "
     "sed "
     "sg socat ssh swaymsg tclsh tmux watch wish"},
}};

/// The interpreters that a word names, "sh" for "/bin/sh" and for "--command=sh"; null for other programs.
const Interpreters *interpreterNamed(std::string_view word) {
    constexpr std::string_view option = "--command=";
    if (word.starts_with(option))
        word.remove_prefix(option.size());
    const auto name = fileNameOf(word);
    const auto found = std::ranges::find_if(table, [&](const Interpreters &each) {
        return std::ranges::any_of(nonEmptyPieces(each.programs, ' '),
                                   [&](auto program) { return isNameWithVersion(name, program); });
    });
    return found == table.end() ? nullptr : found;
}

// Looking at nested programs takes longer than reading a line. No entry that means well comes near these.
constexpr std::size_t mostWords = 256;
constexpr std::size_t mostBytes = 8192;

bool isTooLong(const CommandWords &words) {
    std::size_t bytes = 0;
    for (const auto &word : words)
        bytes += word.text.size();
    return words.size() > mostWords || bytes > mostBytes;
}

bool isOption(std::string_view word) {
    return word.size() > 1 && (word.front() == '-' || word.front() == '+');
}

/// Whether the word is an option that brings program text, alone ("-c", "--eval"), among other letters
/// ("-lc") or with the text attached ("-ecode", "--eval=code"). Long options may be shortened.
bool bringsText(const Interpreters &interpreters, std::string_view word) {
    if (!isOption(word))
        return false;
    if (!word.starts_with("--"))
        return word.find_first_of(interpreters.letters, 1) != std::string_view::npos;
    const auto name = word.substr(2, word.find('=') - 2);
    return !name.empty() && std::ranges::any_of(nonEmptyPieces(interpreters.longNames, ' '),
                                                [&](auto longName) { return longName.starts_with(name); });
}

bool haveLink(CommandWords::const_iterator first, CommandWords::const_iterator last) {
    return std::any_of(first, last, [](const CommandWord &word) { return word.hasLink; });
}

/// The words of a text, those with a `mark` counted as links.
CommandWords wordsOf(std::string text, std::string_view separators, char mark) {
    for (char &character : text)
        if (separators.find(character) != std::string_view::npos)
            character = ' ';
    CommandWords words;
    for (auto &word : execWords(text).value_or(std::vector<ExecWord>()))
        words.push_back({word.text, word.text.find(mark) != std::string::npos});
    return words;
}

/// Whether a shell's text makes another interpreter read one of its arguments. Any variable may be one.
bool passesArgumentsOn(const std::string &text) {
    return readsLinkAsProgram(wordsOf(text, ";|&(){}`\n", '$'));
}

/// Whether the text is a part of the option itself.
bool hasTextAttached(std::string_view option) {
    return option.starts_with("--") && option.find('=') != std::string_view::npos;
}

/// `words` as env makes them out of the text that its option at `option` brings.
CommandWords split(const CommandWords &words, CommandWords::const_iterator option) {
    const bool isAttached = hasTextAttached(option->text);
    const auto text = isAttached ? option->text.substr(option->text.find('=') + 1) : std::next(option)->text;
    CommandWords result(words.begin(), option);
    std::ranges::move(wordsOf(text, "", '\0'), std::back_inserter(result));
    result.insert(result.end(), option + (isAttached ? 1 : 2), words.end());
    return result;
}

/// One command line, looked at from an interpreter in it.
class Reading {
  public:
    Reading(const CommandWords &commandWords, CommandWords::const_iterator interpreterWord,
            const Interpreters &which)
        : words(commandWords), at(interpreterWord), interpreters(which) {}

    [[nodiscard]] bool readsLink() const {
        if (interpreters.reads == Reads::all)
            return haveLink(at + 1, words.end());
        for (auto word = at + 1; word != words.end(); ++word)
            if (bringsText(interpreters, word->text) && readsLinkBehind(word))
                return true;
        return runsLinkAsFile();
    }

  private:
    [[nodiscard]] bool readsLinkBehind(CommandWords::const_iterator option) const {
        const auto text = option + (hasTextAttached(option->text) ? 0 : 1);
        if (option->hasLink || text == words.end() || text->hasLink)
            return haveLink(option, words.end());
        // Which word is the text, if more options come first?
        if (text != option && isOption(text->text) && !bringsText(interpreters, text->text))
            return haveLink(text, words.end());
        if (interpreters.reads == Reads::words)
            return readsLinkAsProgram(split(words, option));
        return interpreters.reads == Reads::shellText && haveLink(text, words.end()) &&
               passesArgumentsOn(text->text);
    }

    /// Whether the file that it runs is named by the link.
    [[nodiscard]] bool runsLinkAsFile() const {
        if (!interpreters.runsFiles)
            return false;
        const auto file =
            std::find_if(at + 1, words.end(), [](const auto &word) { return !isOption(word.text); });
        return file != words.end() && file->hasLink && isRun();
    }

    /// Whether the interpreter is what the line runs, not a word that happens to have its name.
    [[nodiscard]] bool isRun() const {
        return std::all_of(words.begin(), at, [](const CommandWord &word) {
            const bool isAssignment = word.text.find('=') < word.text.find(' ');
            return isOption(word.text) || isAssignment || isPassOnProgram(fileNameOf(word.text));
        });
    }

    const CommandWords &words;
    const CommandWords::const_iterator at;
    const Interpreters &interpreters;
};

} // namespace

bool readsLinkAsProgram(const CommandWords &words) {
    for (auto word = words.begin(); word != words.end(); ++word) {
        const auto *interpreters = interpreterNamed(word->text);
        if (interpreters && (isTooLong(words) || Reading(words, word, *interpreters).readsLink()))
            return true;
    }
    return false;
}

} // namespace fernhop::freedesktop
