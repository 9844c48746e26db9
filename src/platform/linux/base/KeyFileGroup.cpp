#include "platform/linux/base/KeyFileGroup.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace fernhop::freedesktop {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\v\f";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes the first line off `rest`, without the blanks around it.
std::string_view takeLine(std::string_view &rest) {
    const auto end = std::min(rest.find('\n'), rest.size());
    const auto line = trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

bool isComment(std::string_view line) {
    return line.empty() || line.front() == '#';
}

bool isHeader(std::string_view line) {
    return line.front() == '[';
}

bool isHeaderOf(std::string_view line, std::string_view group) {
    return line.size() == group.size() + 2 && isHeader(line) && line.substr(1, group.size()) == group &&
           line.back() == ']';
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

std::optional<KeyFileGroup> KeyFileGroup::read(std::string_view contents, std::string_view group) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (contents.starts_with(byteOrderMark))
        contents.remove_prefix(byteOrderMark.size());
    std::string_view line;
    while (!contents.empty() && isComment(line))
        line = takeLine(contents);
    if (!isHeaderOf(line, group))
        return std::nullopt;
    KeyFileGroup found;
    while (!contents.empty()) {
        line = takeLine(contents);
        if (isComment(line))
            continue;
        if (isHeader(line))
            break;
        found.addLine(line);
    }
    return found;
}

void KeyFileGroup::addLine(std::string_view line) {
    const auto equals = line.find('=');
    if (equals == std::string_view::npos || line.find('\0') != std::string_view::npos)
        return;
    values.emplace_back(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
}

std::optional<std::string_view> KeyFileGroup::raw(std::string_view key) const {
    const auto hasKey = [&](const auto &value) { return value.first == key; };
    const auto found = std::find_if(values.rbegin(), values.rend(), hasKey);
    return found == values.rend() ? std::nullopt : std::optional(found->second);
}

std::string KeyFileGroup::text(std::string_view key) const {
    return withoutEscapes(raw(key).value_or(std::string_view()));
}

std::string KeyFileGroup::localizedText(std::string_view key, const std::vector<std::string> &locales) const {
    const auto usable = [&](std::string_view name) -> std::optional<std::string_view> {
        const auto value = raw(name);
        return value && isValidUtf8(*value) ? value : std::nullopt;
    };
    for (const auto &locale : locales) {
        if (const auto value = usable(std::string(key) + '[' + locale + ']'))
            return withoutEscapes(*value);
    }
    return withoutEscapes(usable(key).value_or(std::string_view()));
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

} // namespace fernhop::freedesktop
