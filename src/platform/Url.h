#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// A URL as the platform's own URL type understands it. A value: cheap to copy, never invalid, usable on any
/// thread. How a text becomes a URL is chosen at link time, one implementation for each platform.
class Url {
  public:
    /// Makes a URL of a text that an application delivered. A valid RFC 3986 URI is taken as it stands.
    /// Otherwise the characters that RFC 3986 does not allow, and a "%" that starts no escape, are
    /// percent-encoded as UTF-8, and the result must be a valid URI. Nothing is decoded, normalised or
    /// trimmed. Any bytes may be passed; empty text, or text that is still no URI, gives nothing.
    [[nodiscard]] static std::optional<Url> parse(std::string_view text);

    /// The file URL of an absolute path. Bytes that a URL path does not allow are percent-encoded one by one,
    /// so `path()` gives the same bytes back, UTF-8 or not.
    [[nodiscard]] static Url fileUrl(std::string_view absolutePath);

    /// The whole URL, exactly as delivered (or as encoded by `parse`).
    [[nodiscard]] const std::string &absoluteString() const { return text; }

    /// The path component with its percent escapes decoded: the file-system path of a file URL. Empty when
    /// the URL has no path. A trailing slash is not part of the result, except for the root folder.
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
