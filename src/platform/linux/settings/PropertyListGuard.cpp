#include "platform/linux/settings/PropertyListGuard.h"

#include "platform/Utf8.h"
#include "platform/linux/settings/PropertyList.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view magic = "bplist00";
constexpr std::size_t trailerSize = 32;

/// An object counts one, and one more for each so many bytes that a copy of it would hold.
constexpr std::size_t bytesToCountAsElement = 512;

/// The kinds of objects that hold others or a length, by the upper half of their first byte.
enum class Marker : unsigned {
    data = 0x4,
    ascii = 0x5,
    utf16 = 0x6,
    array = 0xA,
    set = 0xC,
    dictionary = 0xD
};

/// Walks over the objects of one binary property list, as the table at its end lists them.
class BinaryShape {
  public:
    explicit BinaryShape(std::string_view list) : bytes(list) {}

    bool isSafe() {
        if (bytes.size() < magic.size() + trailerSize || !bytes.starts_with(magic) || !readTrailer())
            return false;
        weights.assign(objectCount, 0);
        heights.assign(objectCount, 0);
        return visit(rootObject, propertyListLimit::depth + 1);
    }

  private:
    static constexpr std::uint32_t inProgress = UINT32_MAX;

    std::string_view bytes;
    std::size_t offsetSize = 0;
    std::size_t referenceSize = 0;
    std::size_t objectCount = 0;
    std::size_t rootObject = 0;
    std::size_t tableStart = 0;
    std::vector<std::uint32_t> weights; ///< of each object with all below it; zero: not visited yet
    std::vector<std::uint8_t> heights;  ///< containers on the longest way down from it

    std::uint64_t integer(std::size_t position, std::size_t size) const {
        std::uint64_t value = 0;
        for (const char byte : bytes.substr(position, size))
            value = (value << 8U) | static_cast<unsigned char>(byte);
        return value;
    }

    bool readTrailer() {
        const std::size_t trailer = bytes.size() - trailerSize;
        offsetSize = static_cast<std::size_t>(integer(trailer + 6, 1));
        referenceSize = static_cast<std::size_t>(integer(trailer + 7, 1));
        objectCount = integer(trailer + 8, 8);
        rootObject = integer(trailer + 16, 8);
        tableStart = integer(trailer + 24, 8);
        return offsetSize >= 1 && offsetSize <= 8 && referenceSize >= 1 && referenceSize <= 8 &&
               tableStart >= magic.size() && tableStart < trailer && objectCount >= 1 &&
               objectCount <= propertyListLimit::elements &&
               objectCount <= (trailer - tableStart) / offsetSize && rootObject < objectCount;
    }

    struct Object {
        Marker marker;
        std::size_t count;    ///< of elements or bytes
        std::size_t contents; ///< position
    };

    /// Nothing when the object, its references included, does not lie before the table.
    std::optional<Object> object(std::size_t index) const {
        const std::uint64_t position = integer(tableStart + index * offsetSize, offsetSize);
        if (position < magic.size() || position >= tableStart)
            return std::nullopt;
        const auto first = static_cast<unsigned char>(bytes[position]);
        Object found{static_cast<Marker>(first >> 4U), first & 0xFU, position + 1};
        if (found.count == 0xF && hasLongCount(found.marker) && !readLongCount(found))
            return std::nullopt;
        const std::size_t unit =
            isContainer(found.marker) ? referenceSize * referencesPerElement(found.marker) : 1;
        if (found.contents > tableStart || found.count > (tableStart - found.contents) / unit)
            return std::nullopt;
        return found;
    }

    bool readLongCount(Object &found) const {
        if (found.contents >= tableStart)
            return false;
        const auto first = static_cast<unsigned char>(bytes[found.contents]);
        const std::size_t size = std::size_t{1} << (first & 0xFU);
        if ((first >> 4U) != 0x1 || size > 8 || found.contents + 1 + size > tableStart)
            return false;
        found.count = integer(found.contents + 1, size);
        found.contents += 1 + size;
        return true;
    }

    static bool isContainer(Marker marker) {
        return marker == Marker::array || marker == Marker::set || marker == Marker::dictionary;
    }
    static bool hasLongCount(Marker marker) {
        return isContainer(marker) || marker == Marker::data || marker == Marker::ascii ||
               marker == Marker::utf16;
    }
    static std::size_t referencesPerElement(Marker marker) { return marker == Marker::dictionary ? 2 : 1; }

    /// Weighs an object once and everything below it. The recursion ends at `depthLeft`, and a way back to an
    /// object that is being weighed is refused.
    bool visit(std::size_t index, std::size_t depthLeft) {
        if (index >= objectCount || depthLeft == 0 || weights[index] == inProgress)
            return false;
        if (weights[index] != 0)
            return heights[index] < depthLeft;
        const std::optional<Object> found = object(index);
        if (!found)
            return false;
        if (!isContainer(found->marker)) {
            if (!holdsText(*found))
                return false;
            weights[index] = static_cast<std::uint32_t>(1 + found->count / bytesToCountAsElement);
            return true;
        }
        weights[index] = inProgress;
        return weighContainer(index, *found, depthLeft);
    }

    /// Whether an object, if it is a text, is one: no character is null, and none is half.
    bool holdsText(const Object &leaf) const {
        if (leaf.marker == Marker::ascii) {
            const std::string_view text = bytes.substr(leaf.contents, leaf.count);
            return std::all_of(text.begin(), text.end(),
                               [](char byte) { return static_cast<signed char>(byte) > 0; });
        }
        return leaf.marker != Marker::utf16 || holdsUtf16(leaf);
    }

    bool holdsUtf16(const Object &text) const {
        if (text.count > (tableStart - text.contents) / 2)
            return false;
        bool isHalf = false;
        for (std::size_t number = 0; number < text.count; ++number) {
            const std::uint64_t unit = integer(text.contents + 2 * number, 2);
            const bool isSecondHalf = unit >= 0xDC00 && unit <= 0xDFFF;
            if (unit == 0 || isHalf != isSecondHalf)
                return false;
            isHalf = unit >= 0xD800 && unit <= 0xDBFF;
        }
        return !isHalf;
    }

    bool weighContainer(std::size_t index, const Object &container, std::size_t depthLeft) {
        std::size_t weight = 1;
        std::uint8_t height = 0;
        const std::size_t references = container.count * referencesPerElement(container.marker);
        for (std::size_t number = 0; number < references; ++number) {
            const std::uint64_t child = integer(container.contents + number * referenceSize, referenceSize);
            if (!visit(child, depthLeft - 1))
                return false;
            weight += weights[child];
            height = std::max(height, heights[child]);
            if (weight > propertyListLimit::elements)
                return false;
        }
        weights[index] = static_cast<std::uint32_t>(weight);
        heights[index] = static_cast<std::uint8_t>(height + 1);
        return true;
    }
};

constexpr std::string_view whitespace = " \t\r\n";

/// Walks over the markup of one property list.
class XmlShape {
  public:
    explicit XmlShape(std::string_view bytes) : rest(bytes) {}

    bool isSafe() { return takeProlog() && takeBody(); }

  private:
    std::string_view rest;
    std::size_t depth = 0;
    std::size_t elements = 0;

    bool takePrefix(std::string_view prefix) {
        if (!rest.starts_with(prefix))
            return false;
        rest.remove_prefix(prefix.size());
        return true;
    }

    /// Goes behind the next `end` and returns what stood before it; nothing when there is none.
    std::optional<std::string_view> takeThrough(std::string_view end) {
        const std::size_t found = rest.find(end);
        if (found == std::string_view::npos)
            return std::nullopt;
        const auto content = rest.substr(0, found);
        rest.remove_prefix(found + end.size());
        return content;
    }

    void skipWhitespace() { rest.remove_prefix(std::min(rest.find_first_not_of(whitespace), rest.size())); }

    /// A declaration ends at its first `end`, unless a quotation mark is open there.
    bool takeDeclaration(std::string_view end) {
        const auto content = takeThrough(end);
        return content && content->find('[') == std::string_view::npos &&
               std::ranges::count(*content, '"') % 2 == 0;
    }

    bool takeProlog() {
        for (skipWhitespace(); !takePrefix("<plist"); skipWhitespace()) {
            const bool taken = takePrefix("<!--")        ? takeThrough("-->").has_value()
                               : takePrefix("<!DOCTYPE") ? takeDeclaration(">")
                               : takePrefix("<?")        ? takeDeclaration("?>")
                                                         : false;
            if (!taken)
                return false;
        }
        return takeDeclaration(">");
    }

    bool takeBody() {
        while (!rest.empty()) {
            rest.remove_prefix(std::min(rest.find('<'), rest.size()));
            if (rest.empty())
                return true;
            const bool taken = takePrefix("<!--")        ? takeThrough("-->").has_value()
                               : takePrefix("<![CDATA[") ? takeThrough("]]>").has_value()
                               : takePrefix("</")        ? takeClosingTag()
                               : takePrefix("<")         ? takeOpeningTag()
                                                         : false;
            if (!taken)
                return false;
        }
        return true;
    }

    static bool isContainer(std::string_view name) { return name == "dict" || name == "array"; }

    static std::string_view withoutBlanksAtEnd(std::string_view text) {
        return text.substr(0, text.find_last_not_of(whitespace) + 1);
    }

    bool takeOpeningTag() {
        auto name = withoutBlanksAtEnd(takeThrough(">").value_or(std::string_view()));
        const bool isEmpty = name.ends_with('/');
        if (isEmpty)
            name = withoutBlanksAtEnd(name.substr(0, name.size() - 1));
        if (!isPlainName(name) || ++elements > propertyListLimit::elements)
            return false;
        if (isContainer(name) && !isEmpty)
            ++depth;
        return depth <= propertyListLimit::depth;
    }

    bool takeClosingTag() {
        const auto name = withoutBlanksAtEnd(takeThrough(">").value_or(std::string_view()));
        if (isContainer(name) && depth > 0)
            --depth;
        return isPlainName(name);
    }

    /// Only `plist` has attributes, and a quoted attribute may hold what looks like a tag.
    static bool isPlainName(std::string_view name) {
        return !name.empty() && std::all_of(name.begin(), name.end(),
                                            [](char letter) { return letter >= 'a' && letter <= 'z'; });
    }
};

} // namespace

bool isSafeBinaryPropertyList(std::string_view bytes) {
    return BinaryShape(bytes).isSafe();
}

bool isSafeXmlPropertyList(std::string_view bytes) {
    return bytes.find('\0') == std::string_view::npos && isValidUtf8(bytes) && XmlShape(bytes).isSafe();
}

} // namespace fernhop::freedesktop
