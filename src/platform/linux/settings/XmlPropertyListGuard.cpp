#include "platform/Utf8.h"
#include "platform/linux/settings/PropertyListCoding.h"
#include "platform/linux/settings/PropertyListGuard.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace fernhop::freedesktop {

namespace {

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

    /// Goes behind the next `end`; `content` is what stood before it.
    bool takeThrough(std::string_view end, std::string_view &content) {
        const std::size_t found = rest.find(end);
        if (found == std::string_view::npos)
            return false;
        content = rest.substr(0, found);
        rest.remove_prefix(found + end.size());
        return true;
    }

    bool takeThrough(std::string_view end) {
        std::string_view content;
        return takeThrough(end, content);
    }

    void skipWhitespace() { rest.remove_prefix(std::min(rest.find_first_not_of(whitespace), rest.size())); }

    /// A declaration ends at its first `end`, unless a quotation mark is open there.
    bool takeDeclaration(std::string_view end) {
        std::string_view content;
        return takeThrough(end, content) && content.find('[') == std::string_view::npos &&
               std::count(content.begin(), content.end(), '"') % 2 == 0;
    }

    bool takeProlog() {
        for (skipWhitespace(); !takePrefix("<plist"); skipWhitespace()) {
            const bool taken = takePrefix("<!--")        ? takeThrough("-->")
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
            const bool taken = takePrefix("<!--")        ? takeThrough("-->")
                               : takePrefix("<![CDATA[") ? takeThrough("]]>")
                               : takePrefix("</")        ? takeClosingTag()
                               : takePrefix("<")         ? takeOpeningTag()
                                                         : false;
            if (!taken)
                return false;
        }
        return true;
    }

    static bool isContainer(std::string_view name) { return name == "dict" || name == "array"; }

    bool takeTagName(std::string_view &name) {
        std::string_view content;
        if (!takeThrough(">", content))
            return false;
        name = content.substr(0, content.find_last_not_of(whitespace) + 1);
        return true;
    }

    bool takeOpeningTag() {
        std::string_view name;
        if (!takeTagName(name))
            return false;
        const bool isEmpty = name.ends_with('/');
        if (isEmpty)
            name.remove_suffix(1);
        name = name.substr(0, name.find_last_not_of(whitespace) + 1);
        if (!isPlainName(name) || ++elements > propertyListLimit::elements)
            return false;
        if (isContainer(name) && !isEmpty)
            ++depth;
        return depth <= propertyListLimit::depth;
    }

    bool takeClosingTag() {
        std::string_view name;
        if (!takeTagName(name) || !isPlainName(name))
            return false;
        if (isContainer(name) && depth > 0)
            --depth;
        return true;
    }

    /// Only `plist` has attributes, and a quoted attribute may hold what looks like a tag.
    static bool isPlainName(std::string_view name) {
        return !name.empty() && std::all_of(name.begin(), name.end(),
                                            [](char letter) { return letter >= 'a' && letter <= 'z'; });
    }
};

} // namespace

bool isSafeXmlPropertyList(std::string_view bytes) {
    return bytes.find('\0') == std::string_view::npos && isValidUtf8(bytes) && XmlShape(bytes).isSafe();
}

} // namespace fernhop::freedesktop
