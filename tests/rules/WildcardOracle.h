#pragma once

#include <string_view>
#include <vector>

namespace fernhop::tests {

/// The wildcard match of ASCII text in its simplest form, which the matcher is compared with: it tries every
/// position for every piece and takes no short cut.
inline bool wildcardOracle(std::string_view text, std::string_view pattern) {
    std::vector<std::string_view> pieces(1, pattern.substr(0, 0));
    for (std::size_t index = 0, start = 0; index < pattern.size(); ++index) {
        if (pattern[index] == '*') {
            start = index + 1;
            pieces.push_back(pattern.substr(start, 0));
        } else {
            pieces.back() = pattern.substr(start, index + 1 - start);
        }
    }

    std::size_t position = 0;
    for (std::size_t number = 0; number < pieces.size(); ++number) {
        if (pieces[number].empty())
            continue;
        std::size_t place = position;
        while (place <= text.size() && text.substr(place, pieces[number].size()) != pieces[number])
            ++place;
        if (place > text.size())
            return false;
        if (number == 0 && place != 0)
            return false;
        position = place + pieces[number].size();
    }
    const std::string_view last = pieces.back();
    return last.size() <= text.size() && text.substr(text.size() - last.size()) == last;
}

} // namespace fernhop::tests
