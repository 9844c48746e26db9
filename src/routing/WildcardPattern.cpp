#include "routing/WildcardPattern.h"

#include "platform/Ascii.h"
#include "platform/Text.h"
#include "routing/ByteSearch.h"

#include <vector>

namespace fernhop {

namespace {

/// The pieces between the stars, empty ones included. A star that carries a combining mark is another
/// character.
std::vector<std::string_view> piecesOf(std::string_view pattern) {
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    while (const auto star = text::firstOccurrence(pattern, "*", start)) {
        pieces.push_back(pattern.substr(start, star->start - start));
        start = star->end;
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

bool asciiWildcardMatches(std::string_view text, std::string_view pattern) {
    const std::size_t firstStar = pattern.find('*');
    if (firstStar == std::string_view::npos)
        return text.starts_with(pattern) && text.ends_with(pattern);

    // The first and the last piece have only one place to be; what is between them is searched in what they
    // leave.
    const std::size_t lastStar = pattern.rfind('*');
    const std::string_view first = pattern.substr(0, firstStar);
    const std::string_view last = pattern.substr(lastStar + 1);
    if (text.size() < first.size() + last.size() || !text.starts_with(first) || !text.ends_with(last))
        return false;
    text = text.substr(first.size(), text.size() - first.size() - last.size());

    std::string_view middle = pattern.substr(firstStar, lastStar - firstStar);
    while (!middle.empty()) {
        middle.remove_prefix(1);
        const std::string_view piece = middle.substr(0, middle.find('*'));
        const std::size_t found = findBytes(text, piece);
        if (found == std::string_view::npos)
            return false;
        text.remove_prefix(found + piece.size());
        middle.remove_prefix(piece.size());
    }
    return true;
}

bool wildcardMatches(std::string_view text, std::string_view pattern) {
    return ascii::isAscii(text) && ascii::isAscii(pattern) ? asciiWildcardMatches(text, pattern)
                                                           : unicodeWildcardMatches(text, pattern);
}

} // namespace fernhop
