#include "platform/linux/settings/PropertyListCoding.h"

#include "platform/Utf8.h"
#include "platform/linux/settings/PropertyListGuard.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

namespace {

/// What libplist writes is malloc's memory. Its own functions for this are named otherwise from version 2.3
/// on, and only for programs with a heap of their own.
struct Free {
    void operator()(char *bytes) const { std::free(bytes); }
};
using Bytes = std::unique_ptr<char, Free>;

std::string binaryForm(const PropertyListNode &tree) {
    char *bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(tree.get(), &bytes, &length);
    const Bytes owner(bytes);
    return bytes ? std::string(bytes, length) : std::string();
}

std::string xmlForm(const PropertyListNode &tree) {
    char *bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(tree.get(), &bytes, &length);
    const Bytes owner(bytes);
    return bytes ? std::string(bytes, length) : std::string();
}

/// In XML a number can stand for half a character that is nothing by itself; libplist takes it.
bool namesHalfCharacters(std::string_view bytes, const PropertyListNode &tree) {
    return bytes.find("&#") != std::string_view::npos && !isValidUtf8(xmlForm(tree));
}

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
    const std::string binary = binaryForm(tree);
    std::string xml = xmlForm(tree);
    if (const PropertyListNode again = decodePropertyList(xml); again && binaryForm(again) == binary)
        return xml;
    return decodePropertyList(binary) ? std::optional(binary) : std::nullopt;
}

} // namespace fernhop::freedesktop
