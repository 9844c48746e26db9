#include "platform/linux/applications/ExecLine.h"

#include "platform/linux/applications/ProgramText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view blanks = " \t\n\r";

/// Reads one word after the other from a line.
class WordReader {
  public:
    explicit WordReader(std::string_view execLine) : line(execLine) {}

    /// Goes to the next word; false at the end of the line.
    bool findWord() {
        position = line.find_first_not_of(blanks, position);
        return position != std::string_view::npos;
    }

    /// Reads the word that was found; false at a quote that stays open or a backslash that ends the line.
    bool readWord(ExecWord &word) {
        while (position < line.size() && blanks.find(line[position]) == std::string_view::npos) {
            if (!readPiece(word))
                return false;
        }
        return true;
    }

  private:
    bool readPiece(ExecWord &word) {
        const char character = line[position++];
        if (character == '"' || character == '\'')
            return readQuoted(character, word);
        if (character != '\\') {
            word.text += character;
            return true;
        }
        if (position == line.size())
            return false;
        word.text += line[position++];
        return true;
    }

    bool readQuoted(char quote, ExecWord &word) {
        word.quoted = true;
        while (position < line.size()) {
            const char character = line[position++];
            if (character == quote)
                return true;
            const bool escapes = quote == '"' && character == '\\' && position < line.size() &&
                                 std::string_view("\"`$\\").find(line[position]) != std::string_view::npos;
            word.text += escapes ? line[position++] : character;
        }
        return false;
    }

    std::string_view line;
    std::size_t position = 0;
};

constexpr std::string_view urlCodes = "uUfF";
constexpr std::string_view deprecatedCodes = "dDnNvm"; // to be removed from the line and ignored
constexpr std::string_view otherCodes = "ick%";

bool contains(std::string_view codes, char code) {
    return codes.find(code) != std::string_view::npos;
}

/// Whether the word is nothing but one field code out of `codes`.
bool isAlone(const ExecWord &word, std::string_view codes) {
    return word.text.size() == 2 && word.text[0] == '%' && contains(codes, word.text[1]);
}

/// Calls `literal` with each character and `code` with each field code of a word. False when a "%" begins no
/// known code.
template <typename Literal, typename Code>
bool forEachPiece(std::string_view text, Literal literal, Code code) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            literal(text[i]);
            continue;
        }
        if (++i == text.size() || !(contains(urlCodes, text[i]) || contains(deprecatedCodes, text[i]) ||
                                    contains(otherCodes, text[i])))
            return false;
        code(text[i]);
    }
    return true;
}

/// Whether there is a field code in the word that `matches`.
template <typename Predicate>
bool hasCode(const ExecWord &word, Predicate matches) {
    bool found = false;
    const auto note = [&](char code) { found = found || matches(code); };
    return forEachPiece(
               word.text, [](char) {}, note) &&
           found;
}

bool hasUrlCode(const ExecWord &word) {
    return hasCode(word, [](char code) { return contains(urlCodes, code); });
}

/// Whether the word says itself what it will be: only "%%" stands for the same always.
bool isFixed(const ExecWord &word) {
    return !hasCode(word, [](char code) { return code != '%'; });
}

bool hasKnownCodes(const ExecWord &word) {
    return forEachPiece(
        word.text, [](char) {}, [](char) {});
}

/// Whether a URL is in a text that looks like one for an interpreter, known or not.
bool hasUrlInText(const ExecWord &word) {
    return hasUrlCode(word) && !isAlone(word, urlCodes) &&
           (word.quoted || word.text.find_first_of(" \t\r\n;|&$(){}`'\"\\") != std::string::npos);
}

bool readsUrlAsProgram(const std::vector<ExecWord> &words) {
    std::vector<CommandWord> command;
    for (const auto &word : words)
        command.push_back({word.text, hasUrlCode(word)});
    // Without a code the URL becomes the last argument.
    if (std::none_of(words.begin(), words.end(), hasUrlCode))
        command.push_back({"", true});
    return std::any_of(words.begin(), words.end(), hasUrlInText) || readsLinkAsProgram(command);
}

/// The words of a line that is written correctly; nothing for any other.
std::optional<std::vector<ExecWord>> correctWords(const DesktopEntry &entry) {
    auto words = execWords(entry.exec);
    if (!words || words->empty() || words->front().text.empty() || !isFixed(words->front()))
        return std::nullopt;
    return std::all_of(words->begin(), words->end(), hasKnownCodes) ? std::move(words) : std::nullopt;
}

/// The words of a line that can be launched; nothing for any other.
std::optional<std::vector<ExecWord>> validWords(const DesktopEntry &entry) {
    auto words = correctWords(entry);
    return words && !readsUrlAsProgram(*words) ? std::move(words) : std::nullopt;
}

bool takesMany(const std::vector<ExecWord> &words) {
    const auto first = std::find_if(words.begin(), words.end(), hasUrlCode);
    return first != words.end() && isAlone(*first, "UF");
}

/// Fills an entry's words for one launch.
class Expansion {
  public:
    Expansion(const DesktopEntry &desktopEntry, const std::vector<std::string> &urlsToOpen)
        : entry(desktopEntry), urls(urlsToOpen) {}

    std::vector<std::string> arguments(const std::vector<ExecWord> &words) {
        for (const auto &word : words)
            add(word);
        if (!std::exchange(urlsPlaced, true))
            result.insert(result.end(), urls.begin(), urls.end());
        return std::move(result);
    }

  private:
    void add(const ExecWord &word) {
        if (isAlone(word, urlCodes)) {
            if (!std::exchange(urlsPlaced, true))
                result.insert(result.end(), urls.begin(), urls.end());
        } else if (isAlone(word, "i")) {
            if (!entry.icon.empty())
                result.insert(result.end(), {"--icon", entry.icon});
        } else if (!isAlone(word, deprecatedCodes)) {
            result.push_back(filled(word.text));
        }
    }

    std::string filled(std::string_view text) {
        std::string argument;
        forEachPiece(
            text, [&](char literal) { argument += literal; }, [&](char code) { argument += value(code); });
        return argument;
    }

    /// What stands for a code inside of an argument.
    std::string value(char code) {
        if (contains(urlCodes, code) && !std::exchange(urlsPlaced, true))
            return urls.empty() ? std::string() : urls.front();
        switch (code) {
        case '%':
            return "%";
        case 'c':
            return entry.name.value_or("");
        case 'k':
            return entry.path;
        default:
            return {};
        }
    }

    const DesktopEntry &entry;
    const std::vector<std::string> &urls;
    std::vector<std::string> result;
    bool urlsPlaced = false; // the first code takes the URLs, any further one stands for nothing
};

} // namespace

std::optional<std::vector<ExecWord>> execWords(std::string_view exec) {
    WordReader reader(exec);
    std::vector<ExecWord> words;
    while (reader.findWord()) {
        if (!reader.readWord(words.emplace_back()))
            return std::nullopt;
    }
    return words;
}

bool interpretsUrls(const DesktopEntry &entry) {
    const auto words = correctWords(entry);
    return words && readsUrlAsProgram(*words);
}

bool hasValidExec(const DesktopEntry &entry) {
    return validWords(entry).has_value();
}

std::optional<std::vector<std::string>> execArguments(const DesktopEntry &entry,
                                                      const std::vector<std::string> &urls) {
    const auto words = validWords(entry);
    if (!words || (urls.size() > 1 && !takesMany(*words)))
        return std::nullopt;
    return Expansion(entry, urls).arguments(*words);
}

std::vector<std::vector<std::string>> execLaunches(const DesktopEntry &entry,
                                                   const std::vector<std::string> &urls) {
    if (auto together = execArguments(entry, urls))
        return {std::move(*together)};
    std::vector<std::vector<std::string>> launches;
    for (const auto &url : urls) {
        if (auto arguments = execArguments(entry, {url}))
            launches.push_back(std::move(*arguments));
    }
    return launches;
}

} // namespace fernhop::freedesktop
