#include "platform/linux/base/KeyFile.h"

#include "platform/Utf8.h"
#include "platform/linux/base/Text.h"

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

/// What GLib does not see at the end of a group's line: what follows a zero byte, and stray continuation
/// bytes, as it goes from character to character.
std::string_view withoutUnseen(std::string_view text) {
    text = trimmed(text.substr(0, text.find('\0')));
    const auto close = text.find(']');
    const auto isUnseen = [](char byte) { return (byte & 0xC0) == 0x80 || byte == ' ' || byte == '\t'; };
    if (close != std::string_view::npos && std::ranges::all_of(text.substr(close + 1), isUnseen))
        text = text.substr(0, close + 1);
    return text;
}

/// What an escape's letter stands for; nothing for a letter that has no meaning.
std::optional<char> unescaped(char letter) {
    switch (letter) {
    case 's':
        return ' ';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    case '\\':
        return '\\';
    default:
        return std::nullopt;
    }
}

std::string withoutEscapes(std::string_view raw) {
    std::string text;
    text.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const auto character = raw[i] == '\\' && i + 1 < raw.size() ? unescaped(raw[i + 1]) : std::nullopt;
        text += character.value_or(raw[i]);
        i += character ? 1 : 0;
    }
    return text;
}

} // namespace

KeyFileLine KeyFileLine::parse(std::string_view line) {
    const auto text = trimmed(line);
    if (text.empty() || text.front() == '#')
        return {};
    const auto header = withoutUnseen(line);
    if (header.size() >= 2 && header.front() == '[' && header.back() == ']')
        return {KeyFileLine::Kind::group, header.substr(1, header.size() - 2), std::nullopt};
    const auto equals = text.find('=');
    if (equals == std::string_view::npos)
        return {KeyFileLine::Kind::key, text, std::nullopt};
    return {KeyFileLine::Kind::key, trimmed(text.substr(0, equals)), trimmed(text.substr(equals + 1))};
}

std::optional<KeyFileGroup> KeyFileGroup::read(std::string_view contents, std::string_view group) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (contents.starts_with(byteOrderMark))
        contents.remove_prefix(byteOrderMark.size());
    KeyFileLine line;
    while (!contents.empty() && line.kind == KeyFileLine::Kind::blank)
        line = KeyFileLine::parse(takePiece(contents, '\n'));
    if (line.kind != KeyFileLine::Kind::group || line.name != group)
        return std::nullopt;
    KeyFileGroup found;
    while (!contents.empty()) {
        const auto bytes = takePiece(contents, '\n');
        line = KeyFileLine::parse(bytes);
        // What begins like another group ends this one, even if it is written wrongly.
        if (line.kind == KeyFileLine::Kind::group || line.name.starts_with('['))
            break;
        if (line.value && bytes.find('\0') == std::string_view::npos)
            found.values.emplace_back(line.name, *line.value);
    }
    return found;
}

std::optional<std::string_view> KeyFileGroup::raw(std::string_view key) const {
    const auto hasKey = [&](const auto &value) { return value.first == key; };
    const auto found = std::find_if(values.rbegin(), values.rend(), hasKey);
    return found == values.rend() ? std::nullopt : std::optional(found->second);
}

std::string KeyFileGroup::text(std::string_view key) const {
    return withoutEscapes(raw(key).value_or(std::string_view()));
}

std::optional<std::string> KeyFileGroup::localizedText(std::string_view key,
                                                       const std::vector<std::string> &locales) const {
    const auto usable = [&](std::string_view name) -> std::optional<std::string_view> {
        const auto value = raw(name);
        return value && isValidUtf8(*value) ? value : std::nullopt;
    };
    for (const auto &locale : locales) {
        if (const auto value = usable(std::string(key) + '[' + locale + ']'))
            return withoutEscapes(*value);
    }
    const auto value = usable(key);
    return value ? std::optional(withoutEscapes(*value)) : std::nullopt;
}

bool KeyFileGroup::isTrue(std::string_view key) const {
    const auto value = raw(key);
    return value == "true" || value == "1";
}

std::vector<std::string> KeyFileGroup::list(std::string_view key) const {
    std::vector<std::string> elements;
    std::string_view rest = raw(key).value_or(std::string_view());
    std::string element;
    const auto finish = [&] {
        if (!element.empty())
            elements.push_back(withoutEscapes(element));
        element.clear();
    };
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const bool escapes = rest[i] == '\\' && i + 1 < rest.size();
        if (escapes && rest[i + 1] == ';')
            element += rest[++i];
        else if (escapes)
            element.append(rest.substr(i++, 2));
        else if (rest[i] == ';')
            finish();
        else
            element += rest[i];
    }
    finish();
    return elements;
}

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
        const auto line = KeyFileLine::parse(lines[position]);
        if (line.kind == KeyFileLine::Kind::group)
            current = line.name;
        else if (line.kind == KeyFileLine::Kind::key && current == group && line.name == key)
            found.push_back(position);
    }
    return found;
}

std::optional<std::string> KeyFileText::value(std::string_view group, std::string_view key) const {
    const auto found = occurrences(group, key);
    if (found.empty())
        return std::nullopt;
    return std::string(KeyFileLine::parse(lines[found.back()]).value.value_or(std::string_view()));
}

// After the last line of the group's first part that says something, so that blank lines before the next
// group stay where they are.
std::optional<std::size_t> KeyFileText::endOfGroup(std::string_view group) const {
    std::optional<std::size_t> end;
    if (group.empty())
        end = 0;
    bool inside = group.empty();
    for (std::size_t position = 0; position < lines.size(); ++position) {
        const auto line = KeyFileLine::parse(lines[position]);
        if (line.kind == KeyFileLine::Kind::group) {
            if (end && inside)
                return end;
            inside = line.name == group;
        }
        if (inside && !trimmed(lines[position]).empty())
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

} // namespace fernhop::freedesktop
