#include "platform/LogLine.h"

#include "platform/Utf8.h"

namespace fernhop {

namespace {

std::string hexadecimal(char32_t value, int digits) {
    std::string text;
    for (int digit = digits - 1; digit >= 0; --digit)
        text += "0123456789ABCDEF"[(value >> (4U * static_cast<unsigned>(digit))) & 0xFU];
    return text;
}

bool isBetween(char32_t character, char32_t first, char32_t last) {
    return character >= first && character <= last;
}

/// Whether a character affects how a line is displayed: controls (C0, delete, C1), direction marks,
/// embeddings, overrides and isolates, line and paragraph separators, the byte-order mark.
bool isControl(char32_t character) {
    return character < 0x20 || isBetween(character, 0x7F, 0x9F) || character == 0x061C ||
           isBetween(character, 0x200E, 0x200F) || isBetween(character, 0x2028, 0x202E) ||
           isBetween(character, 0x2066, 0x2069) || character == 0xFEFF;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

} // namespace

std::string logLine(std::string_view format) {
    bool followsPercent = false;
    return replaceUtf8Characters(format, [&](const auto &character, std::string_view bytes) {
        const bool isSecondPercent = followsPercent && bytes == "%";
        followsPercent = bytes == "%" && !isSecondPercent;
        if (!character)
            return "\\x" + hexadecimal(static_cast<unsigned char>(bytes.front()), 2);
        if (isControl(character->value))
            return "\\u" + hexadecimal(character->value, 4);
        return isSecondPercent ? std::string() : std::string(bytes);
    });
}

std::string shortenedLogLine(std::string_view line, std::size_t most) {
    if (line.size() <= most)
        return std::string(line);
    constexpr std::string_view before = "[... ";
    constexpr std::string_view after = " bytes ...]";
    const std::size_t room = most - before.size() - after.size() - std::to_string(line.size()).size();
    std::size_t headEnd = room / 4 * 3;
    while (isContinuation(line[headEnd]))
        --headEnd;
    std::size_t tailStart = line.size() - room / 4;
    while (tailStart < line.size() && isContinuation(line[tailStart]))
        ++tailStart;
    std::string shortened(line.substr(0, headEnd));
    shortened.append(before).append(std::to_string(tailStart - headEnd)).append(after);
    return shortened.append(line.substr(tailStart));
}

} // namespace fernhop
