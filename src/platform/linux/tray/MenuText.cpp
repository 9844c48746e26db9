#include "platform/linux/tray/MenuText.h"

#include "platform/Utf8.h"

#include <cstddef>

namespace fernhop::freedesktop {
namespace {

constexpr std::size_t longestText = 1000; // characters
constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr std::string_view ellipsis = "…";

bool breaksLine(char32_t character) {
    const bool isControl = character < 0x20 || (character >= 0x7F && character <= 0x9F);
    return isControl || character == 0x2028 || character == 0x2029;
}

} // namespace

std::string shownText(std::string_view text) {
    std::string shown;
    for (std::size_t count = 0; !text.empty(); ++count) {
        if (count == longestText)
            return shown.append(ellipsis);
        const auto character = firstUtf8Character(text);
        const std::size_t length = character ? character->length : 1;
        if (!character)
            shown.append(replacement);
        else if (breaksLine(character->value))
            shown.push_back(' ');
        else
            shown.append(text.substr(0, length));
        text.remove_prefix(length);
    }
    return shown;
}

std::string menuLabel(std::string_view title) {
    std::string label = shownText(title);
    for (auto place = label.find('_'); place != std::string::npos; place = label.find('_', place + 2))
        label.insert(place, 1, '_');
    return label;
}

} // namespace fernhop::freedesktop
