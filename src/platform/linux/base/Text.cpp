#include "platform/linux/base/Text.h"

#include <algorithm>

namespace fernhop::freedesktop {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view takePiece(std::string_view &rest, char separator) {
    const auto end = std::min(rest.find(separator), rest.size());
    const auto piece = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return piece;
}

std::vector<std::string_view> pieces(std::string_view text, char separator) {
    std::vector<std::string_view> found;
    while (!text.empty())
        found.push_back(takePiece(text, separator));
    return found;
}

std::vector<std::string_view> nonEmptyPieces(std::string_view text, char separator) {
    auto found = pieces(text, separator);
    std::erase(found, std::string_view());
    return found;
}

std::vector<char *> pointersTo(std::vector<std::string> &texts) {
    std::vector<char *> pointers;
    for (auto &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace fernhop::freedesktop
