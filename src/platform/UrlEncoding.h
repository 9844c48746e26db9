#pragma once

#include <string>
#include <string_view>

namespace fernhop {

/// The components of a URL's text as RFC 3986 cuts it (its appendix B), each without its delimiter but with
/// what is inside as it stands. No validity is implied.
struct UrlComponents {
    std::string_view scheme; ///< empty when the text does not begin with a scheme and a colon
    std::string_view authority;
    std::string_view path;
    std::string_view query;
    std::string_view fragment;
    bool hasAuthority = false;
    bool hasQuery = false;
    bool hasFragment = false;
};

/// Cuts `text` at the delimiters.
[[nodiscard]] UrlComponents urlComponents(std::string_view text);

/// The text with every byte percent-encoded that RFC 3986 does not allow where it stands, and every "%" that
/// starts no escape. `text` must begin with a scheme, which is kept as it is.
[[nodiscard]] std::string percentEncoded(const UrlComponents &components);

/// The bytes of a file-system path as a URL's path component.
[[nodiscard]] std::string percentEncodedPath(std::string_view path);

/// The text with its percent escapes replaced by the bytes they stand for.
[[nodiscard]] std::string percentDecoded(std::string_view text);

} // namespace fernhop
