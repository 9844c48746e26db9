#pragma once

#include <string_view>

namespace fernhop::freedesktop {

// libplist frees and writes trees by recursion, and a binary property list may name one object any number of
// times, each of which becomes a copy. So what it is given is looked through first: these functions accept
// nothing that would come out deeper or larger than `propertyListLimit` allows. They are strict about form
// where that keeps their reading of a file and libplist's the same, and about text, of which libplist would
// drop what is wrong without a word; they do not say that a file is well-formed.

/// Whether libplist may be given these bytes as an XML property list.
[[nodiscard]] bool isSafeXmlPropertyList(std::string_view bytes);

/// Whether libplist may be given these bytes as a binary property list.
[[nodiscard]] bool isSafeBinaryPropertyList(std::string_view bytes);

} // namespace fernhop::freedesktop
