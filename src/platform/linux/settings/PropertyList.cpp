#include "platform/linux/settings/PropertyList.h"

#include "platform/Utf8.h"
#include "platform/linux/settings/PropertyListGuard.h"

#include <plist/plist.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

namespace fernhop::freedesktop {

namespace {

/// What libplist writes is malloc's memory. Its own functions for this are named otherwise from version 2.3
/// on, and only for programs with a heap of their own.
struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

std::string written(const PropertyListNode &tree, decltype(&plist_to_xml) write) {
    char *bytes = nullptr;
    std::uint32_t length = 0;
    write(tree.get(), &bytes, &length);
    const std::unique_ptr<char, Free> owner(bytes);
    return bytes ? std::string(bytes, length) : std::string();
}

/// In XML a number can stand for half a character that is nothing by itself; libplist takes it.
bool namesHalfCharacters(std::string_view bytes, const PropertyListNode &tree) {
    return bytes.find("&#") != std::string_view::npos && !isValidUtf8(written(tree, plist_to_xml));
}

std::optional<PropertyArray> arrayValue(plist_t node) {
    PropertyArray values;
    plist_array_iter started = nullptr;
    plist_array_new_iter(node, &started);
    const std::unique_ptr<void, Free> iterator(started);
    for (plist_t item = nullptr; plist_array_next_item(node, iterator.get(), &item), item; item = nullptr) {
        auto value = propertyValue(item);
        if (!value)
            return std::nullopt;
        values.push_back(std::move(*value));
    }
    return values;
}

std::optional<PropertyDictionary> dictionaryValue(plist_t node) {
    PropertyDictionary values;
    plist_dict_iter started = nullptr;
    plist_dict_new_iter(node, &started);
    const std::unique_ptr<void, Free> iterator(started);
    while (true) {
        char *key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &key, &item);
        const std::unique_ptr<char, Free> owner(key);
        if (!item)
            return values;
        auto value = propertyValue(item);
        if (!value)
            return std::nullopt;
        values.insert_or_assign(key, std::move(*value));
    }
}

PropertyDate dateValue(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return PropertyDate{seconds + microseconds / 1e6};
}

/// The value of a node that libplist has a function `get` for.
template <typename Value>
Value scalar(plist_t node, void (*get)(plist_t, Value *)) {
    Value value{};
    get(node, &value);
    return value;
}

bool fitsAsText(std::string_view text) {
    return text.size() <= propertyListLimit::bytes && isValidUtf8(text) &&
           text.find('\0') == std::string_view::npos;
}

/// Makes the node of each kind of value, for containers down to `depthLeft` levels.
struct NodeMaker {
    std::size_t depthLeft;

    PropertyListNode operator()(const std::string &text) const {
        return PropertyListNode(fitsAsText(text) ? plist_new_string(text.c_str()) : nullptr);
    }
    PropertyListNode operator()(std::int64_t number) const {
        return PropertyListNode(plist_new_uint(static_cast<std::uint64_t>(number)));
    }
    PropertyListNode operator()(double number) const { return PropertyListNode(plist_new_real(number)); }
    PropertyListNode operator()(bool truth) const {
        return PropertyListNode(plist_new_bool(truth ? std::uint8_t{1} : std::uint8_t{0}));
    }
    PropertyListNode operator()(const PropertyData &data) const {
        const bool fits = data.bytes.size() <= propertyListLimit::bytes;
        return PropertyListNode(fits ? plist_new_data(data.bytes.data(), data.bytes.size()) : nullptr);
    }
    PropertyListNode operator()(const PropertyDate &date) const {
        const double seconds = std::floor(date.seconds);
        using Limits = std::numeric_limits<std::int32_t>;
        if (!(seconds >= Limits::min() && seconds <= Limits::max()))
            return nullptr;
        const double microseconds = std::floor((date.seconds - seconds) * 1e6);
        return PropertyListNode(
            plist_new_date(static_cast<std::int32_t>(seconds), static_cast<std::int32_t>(microseconds)));
    }
    PropertyListNode operator()(const PropertyArray &values) const {
        PropertyListNode array(plist_new_array());
        for (const PropertyValue &value : values) {
            PropertyListNode item = below(value);
            if (!item)
                return nullptr;
            plist_array_append_item(array.get(), item.release());
        }
        return array;
    }
    PropertyListNode operator()(const PropertyDictionary &values) const {
        PropertyListNode dictionary(plist_new_dict());
        for (const auto &[key, value] : values) {
            PropertyListNode item = fitsAsText(key) ? below(value) : nullptr;
            if (!item)
                return nullptr;
            plist_dict_set_item(dictionary.get(), key.c_str(), item.release());
        }
        return dictionary;
    }

    PropertyListNode below(const PropertyValue &value) const {
        return depthLeft == 0 ? nullptr : std::visit(NodeMaker{depthLeft - 1}, value.value);
    }
};

} // namespace

void PropertyListFree::operator()(void *node) const {
    plist_free(node);
}

PropertyListNode decodePropertyList(std::string_view bytes) {
    if (bytes.size() > propertyListLimit::bytes)
        return nullptr;
    plist_t tree = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (isSafeBinaryPropertyList(bytes))
        plist_from_bin(bytes.data(), length, &tree);
    else if (isSafeXmlPropertyList(bytes))
        plist_from_xml(bytes.data(), length, &tree);
    PropertyListNode root(tree);
    return root && namesHalfCharacters(bytes, root) ? nullptr : std::move(root);
}

std::optional<std::string> encodePropertyList(const PropertyListNode &tree) {
    const std::string binary = written(tree, plist_to_bin);
    std::string xml = written(tree, plist_to_xml);
    if (const PropertyListNode again = decodePropertyList(xml);
        again && written(again, plist_to_bin) == binary)
        return xml;
    return decodePropertyList(binary) ? std::optional(binary) : std::nullopt;
}

std::optional<PropertyValue> propertyValue(void *node) {
    switch (plist_get_node_type(node)) {
    case PLIST_STRING: {
        std::uint64_t length = 0;
        const char *text = plist_get_string_ptr(node, &length);
        return PropertyValue{std::string(text, length)};
    }
    case PLIST_DATA: {
        std::uint64_t length = 0;
        const char *bytes = plist_get_data_ptr(node, &length);
        return PropertyValue{PropertyData{bytes ? std::string(bytes, length) : std::string()}};
    }
    case PLIST_UINT:
        return PropertyValue{static_cast<std::int64_t>(scalar(node, plist_get_uint_val))};
    case PLIST_REAL:
        return PropertyValue{scalar(node, plist_get_real_val)};
    case PLIST_BOOLEAN:
        return PropertyValue{scalar(node, plist_get_bool_val) != 0};
    case PLIST_DATE:
        return PropertyValue{dateValue(node)};
    case PLIST_ARRAY: {
        auto values = arrayValue(node);
        return values ? std::optional(PropertyValue{std::move(*values)}) : std::nullopt;
    }
    case PLIST_DICT: {
        auto values = dictionaryValue(node);
        return values ? std::optional(PropertyValue{std::move(*values)}) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

PropertyListNode propertyListNode(const PropertyValue &value) {
    return std::visit(NodeMaker{propertyListLimit::depth - 1}, value.value);
}

} // namespace fernhop::freedesktop
