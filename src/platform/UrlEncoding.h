#pragma once

#include <string>
#include <string_view>

namespace fernhop {

/// The components of a URL's text as in appendix B of RFC 3986, without their delimiters and otherwise
/// unchanged. They need not be valid.
struct UrlComponents {
    std::string_view scheme; ///< empty when the text does not begin with a scheme
    std::string_view authority;
    std::string_view path;
    std::string_view query;
    std::string_view fragment;
    bool hasAuthority = false;
    bool hasQuery = false;
    bool hasFragment = false;
};

/// Splits `text` at the delimiters.
[[nodiscard]] UrlComponents urlComponents(std::string_view text);

/// The URL's text with each byte percent-encoded that RFC 3986 does not allow in its place, and each "%" that
/// does not start an escape. There must be a scheme, which is kept as it is.
[[nodiscard]] std::string percentEncoded(const UrlComponents &components);

/// The path component of a URL for the bytes of a file-system path.
[[nodiscard]] std::string percentEncodedPath(std::string_view path);

/// The text with its percent escapes decoded.
[[nodiscard]] std::string percentDecoded(std::string_view text);

} // namespace fernhop
