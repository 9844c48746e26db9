#include "rules/WildcardPattern.h"

#include "platform/Text.h"

#include <string>
#include <vector>

namespace fernhop {

namespace {

/// Whether the "*" at this position is a star: with a combining mark after it, four bytes at most, it is
/// another character.
bool isStar(std::string_view pattern, std::size_t position) {
    const auto found = text::firstOccurrence(pattern.substr(position, 5), "*", 0);
    return found && found->start == 0;
}

/// The pieces between the stars, empty ones included.
std::vector<std::string_view> piecesOf(std::string_view pattern) {
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    for (auto star = pattern.find('*'); star != std::string_view::npos; star = pattern.find('*', star + 1))
        if (isStar(pattern, star)) {
            pieces.push_back(pattern.substr(start, star - start));
            start = star + 1;
        }
    pieces.push_back(pattern.substr(start));
    return pieces;
}

} // namespace

bool unicodeWildcardMatches(std::string_view text, std::string_view pattern) {
    const std::vector<std::string_view> pieces = piecesOf(pattern);
    std::size_t position = 0;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        if (pieces[index].empty())
            continue;
        const auto found = text::firstOccurrence(text, pieces[index], position);
        if (!found || (index == 0 && found->start != 0))
            return false;
        position = found->end;
    }
    return pieces.back().empty() || text::endsWith(text, pieces.back());
}

bool asciiWildcardMatches(const ByteIndex &text, const ScannedPattern &scannedPattern) {
    const std::string_view whole = text.text();
    const std::string_view pattern = scannedPattern.text();
    std::size_t star = scannedPattern.starFrom(0);
    if (star == std::string_view::npos)
        return whole.starts_with(pattern) && whole.ends_with(pattern);
    if (!whole.starts_with(pattern.substr(0, star)))
        return false;
    for (std::size_t position = star;;) {
        const std::size_t start = star + 1;
        star = scannedPattern.starFrom(start);
        const std::string_view piece = pattern.substr(start, star - start);
        if (star == std::string_view::npos)
            // The last piece ends the text and lies after the others, so it need not be searched for.
            return piece.size() <= whole.size() - position && whole.ends_with(piece);
        const std::size_t found = text.find(piece, position);
        if (found == std::string_view::npos)
            return false;
        position = found + piece.size();
    }
}

} // namespace fernhop
