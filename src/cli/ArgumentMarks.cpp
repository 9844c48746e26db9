#include "cli/ArgumentMarks.h"

#include <algorithm>
#include <string_view>

namespace fernhop::cli {

namespace {

constexpr char mark = '\x01';

bool isNameCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '-';
}

bool isName(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isNameCharacter);
}

bool mayBeOptionOrCommand(std::string_view word) {
    const bool isLong = word.starts_with("--");
    word.remove_prefix(isLong ? 2 : word.starts_with('-') ? 1 : 0);
    return isName(isLong ? word.substr(0, word.find('=')) : word);
}

/// "--option=value" with the mark on the value. An empty value would otherwise count as missing.
std::string withProtectedValue(std::string word) {
    const auto equals = word.find('=');
    if (equals != std::string::npos)
        word.insert(equals + 1, 1, mark);
    return word;
}

} // namespace

std::vector<std::string> protectedArguments(const std::vector<std::string> &words) {
    std::vector<std::string> result;
    bool optionsEnded = false;
    for (const auto &word : words) {
        if (word == "--" && !optionsEnded)
            optionsEnded = true;
        else if (optionsEnded || !mayBeOptionOrCommand(word))
            result.push_back(mark + word);
        else
            result.push_back(withProtectedValue(word));
    }
    return result;
}

std::string unprotected(std::string word) {
    if (word.starts_with(mark))
        word.erase(0, 1);
    return word;
}

std::string withoutMarks(std::string text) {
    std::erase(text, mark);
    return text;
}

} // namespace fernhop::cli
