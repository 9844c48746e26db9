#include "platform/linux/base/KeyFileText.h"

#include "platform/linux/base/GPointer.h"

#include <algorithm>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view blanks = " \t\r\n\v\f";

std::string_view withoutBlanks(std::string_view text) {
    const auto start = text.find_first_not_of(blanks);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

bool isBlankOrComment(std::string_view line) {
    const auto text = withoutBlanks(line);
    return text.empty() || text.front() == '#';
}

/// What GLib does not see at the end of a group's line: what follows a zero byte, and stray continuation
/// bytes, as it goes from character to character.
std::string_view withoutUnseen(std::string_view text) {
    text = withoutBlanks(text.substr(0, text.find('\0')));
    const auto close = text.find(']');
    const auto isUnseen = [](char byte) { return (byte & 0xC0) == 0x80 || byte == ' ' || byte == '\t'; };
    if (close != std::string_view::npos && std::ranges::all_of(text.substr(close + 1), isUnseen))
        text = text.substr(0, close + 1);
    return text;
}

std::optional<std::string_view> groupName(std::string_view line) {
    const auto text = withoutUnseen(line);
    if (text.size() < 2 || text.front() != '[' || text.back() != ']')
        return std::nullopt;
    return text.substr(1, text.size() - 2);
}

std::optional<std::string_view> keyName(std::string_view line) {
    if (isBlankOrComment(line))
        return std::nullopt;
    return withoutBlanks(line.substr(0, line.find('=')));
}

bool isValidForGLib(const std::string &text) {
    const GKeyFilePointer file(g_key_file_new());
    return g_key_file_load_from_data(file.get(), text.c_str(), text.size(), G_KEY_FILE_NONE, nullptr);
}

} // namespace

KeyFileText::KeyFileText(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto end = bytes.find('\n');
        const auto length = end == std::string_view::npos ? bytes.size() : end + 1;
        lines.emplace_back(bytes.substr(0, length));
        bytes.remove_prefix(length);
    }
}

std::string KeyFileText::bytes() const {
    std::string all;
    for (const auto &line : lines)
        all += line;
    return all;
}

std::vector<std::size_t> KeyFileText::occurrences(std::string_view group, std::string_view key) const {
    std::vector<std::size_t> found;
    std::string_view current;
    for (std::size_t position = 0; position < lines.size(); ++position) {
        if (const auto name = groupName(lines[position]))
            current = *name;
        else if (current == group && keyName(lines[position]) == key)
            found.push_back(position);
    }
    return found;
}

std::optional<std::string> KeyFileText::value(std::string_view group, std::string_view key) const {
    const auto found = occurrences(group, key);
    if (found.empty())
        return std::nullopt;
    const std::string_view line = lines[found.back()];
    const auto equals = line.find('=');
    return equals == std::string_view::npos ? "" : std::string(withoutBlanks(line.substr(equals + 1)));
}

// After the last line of the group's first part that says something, so that blank lines before the next
// group stay where they are.
std::optional<std::size_t> KeyFileText::endOfGroup(std::string_view group) const {
    std::optional<std::size_t> end;
    if (group.empty())
        end = 0;
    bool inside = group.empty();
    for (std::size_t position = 0; position < lines.size(); ++position) {
        if (const auto name = groupName(lines[position])) {
            if (end && inside)
                return end;
            inside = *name == group;
        }
        if (inside && !withoutBlanks(lines[position]).empty())
            end = position + 1;
    }
    return end;
}

void KeyFileText::insert(std::size_t position, std::string line) {
    if (position > 0 && !lines[position - 1].ends_with('\n'))
        lines[position - 1] += '\n';
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(position), std::move(line));
}

void KeyFileText::removeLines(const std::vector<std::size_t> &positions, std::size_t from) {
    for (auto index = positions.size(); index > from; --index)
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(positions[index - 1]));
}

void KeyFileText::set(std::string_view group, std::string_view key, std::string_view value) {
    const auto line = std::string(key).append("=").append(value).append("\n");
    const auto found = occurrences(group, key);
    if (!found.empty()) {
        removeLines(found, 1);
        lines[found.front()] = line;
        return;
    }
    auto end = endOfGroup(group);
    if (!end) {
        insert(lines.size(), std::string("[").append(group).append("]\n"));
        end = lines.size();
    }
    insert(*end, line);
}

void KeyFileText::remove(std::string_view group, std::string_view key) {
    removeLines(occurrences(group, key), 0);
}

bool KeyFileText::makeValid() {
    if (isValidForGLib(bytes()))
        return true;
    bool inGroup = false;
    for (auto &line : lines) {
        const bool isGroup = isValidForGLib(line) && !isBlankOrComment(line);
        inGroup = inGroup || isGroup;
        const bool isValid = isGroup || isBlankOrComment(line) || (inGroup && isValidForGLib("[g]\n" + line));
        if (!isValid)
            line = std::string("#").append(line);
    }
    return isValidForGLib(bytes());
}

} // namespace fernhop::freedesktop
