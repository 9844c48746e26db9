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
    std::size_t count = 0;
    return replaceUtf8Characters(text,
                                 [&](const auto &character, std::string_view bytes) -> std::string_view {
                                     if (++count > longestText)
                                         return count == longestText + 1 ? ellipsis : std::string_view();
                                     if (!character)
                                         return replacement;
                                     return breaksLine(character->value) ? " " : bytes;
                                 });
}

std::string menuLabel(std::string_view title) {
    std::string label = shownText(title);
    for (auto place = label.find('_'); place != std::string::npos; place = label.find('_', place + 2))
        label.insert(place, 1, '_');
    return label;
}

} // namespace fernhop::freedesktop
