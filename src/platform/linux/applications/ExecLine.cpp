#include "platform/linux/applications/ExecLine.h"

#include "platform/linux/applications/ProgramText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view urlCodes = "uUfF";
constexpr std::string_view deprecatedCodes = "dDnNvm"; // to be removed from the line and ignored
constexpr std::string_view knownCodes = "uUfFdDnNvmick%";

bool contains(std::string_view text, char character) {
    return text.find(character) != std::string_view::npos;
}

/// Whether the word is nothing but one field code out of `codes`.
bool isAlone(const ExecWord &word, std::string_view codes) {
    return word.text.size() == 2 && word.text[0] == '%' && contains(codes, word.text[1]);
}

/// The letters of the field codes in a word; nothing when a "%" begins no known code.
std::optional<std::string> codesIn(const ExecWord &word) {
    const std::string_view text = word.text;
    std::string codes;
    for (auto at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 2)) {
        if (at + 1 == text.size() || !contains(knownCodes, text[at + 1]))
            return std::nullopt;
        codes += text[at + 1];
    }
    return codes;
}

bool hasUrlCode(const ExecWord &word) {
    return codesIn(word).value_or("").find_first_of(urlCodes) != std::string::npos;
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
    const auto hasKnownCodes = [](const ExecWord &word) { return codesIn(word).has_value(); };
    if (!words || words->empty() || words->front().text.empty() ||
        !std::all_of(words->begin(), words->end(), hasKnownCodes))
        return std::nullopt;
    // The program says itself what it is: only "%%" stands for the same always.
    const bool isFixed = codesIn(words->front())->find_first_not_of('%') == std::string::npos;
    return isFixed ? std::move(words) : std::nullopt;
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
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == '%')
                argument += value(text[++at]);
            else
                argument += text[at];
        }
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
    constexpr std::string_view blanks = " \t\n\r", escapedInQuotes = "\"`$\\";
    std::vector<ExecWord> words;
    std::optional<char> quote; // that is open
    bool inWord = false;
    for (std::size_t at = 0; at < exec.size(); ++at) {
        const char character = exec[at];
        const bool isLast = at + 1 == exec.size();
        if (!quote && contains(blanks, character)) {
            inWord = false;
            continue;
        }
        if (!std::exchange(inWord, true))
            words.emplace_back();
        auto &word = words.back();
        if (character == quote) {
            quote.reset();
        } else if (!quote && (character == '"' || character == '\'')) {
            quote = character;
            word.quoted = true;
        } else if (!quote && character == '\\' && isLast) {
            return std::nullopt;
        } else {
            const bool escapes = character == '\\' && !isLast &&
                                 (!quote || (quote == '"' && contains(escapedInQuotes, exec[at + 1])));
            word.text += escapes ? exec[++at] : character;
        }
    }
    return quote ? std::nullopt : std::optional(std::move(words));
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
