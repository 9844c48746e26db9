#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// A URL as the platform's own URL type understands it. A value that is cheap to copy, always valid, and
/// usable on any thread. How a text is parsed is chosen at link time, one implementation for each platform.
class Url {
  public:
    /// Parses a text that an application delivered. A valid RFC 3986 URI is kept as it is. Otherwise the
    /// characters that RFC 3986 does not allow, and each "%" that does not start an escape, are
    /// percent-encoded as UTF-8, and the result must be a valid URI. Nothing is decoded, normalised or
    /// trimmed. Accepts any bytes; nothing for empty text, or when the result is not a URI.
    [[nodiscard]] static std::optional<Url> parse(std::string_view text);

    /// The file URL of an absolute path. Bytes that are not allowed in a URL path are percent-encoded one by
    /// one, so `path()` returns the same bytes, UTF-8 or not.
    [[nodiscard]] static Url fileUrl(std::string_view absolutePath);

    /// The whole URL, exactly as delivered (or as encoded by `parse`).
    [[nodiscard]] const std::string &absoluteString() const { return text; }

    /// The path component with percent escapes decoded: the file-system path of a file URL. Empty when the
    /// URL has no path. Trailing slashes are removed, except for the root folder.
    [[nodiscard]] std::string path() const;

    /// Whether the scheme is "file".
    [[nodiscard]] bool isFileUrl() const;

    /// Same text, byte for byte.
    bool operator==(const Url &) const = default;

  private:
    explicit Url(std::string absoluteString) : text(std::move(absoluteString)) {}

    std::string text;
};

} // namespace fernhop
