#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// The keys of the first group of a key file, the format of desktop entries. Views into the text that it was
/// read from, which must outlive it.
class KeyFileGroup {
  public:
    /// Reads the first group of `contents` if it has the name `group`; nothing when another group or a key
    /// stands before it. Lines end in LF or CR LF. A line that is no key, comment or group is passed over,
    /// and so is one with a NUL.
    [[nodiscard]] static std::optional<KeyFileGroup> read(std::string_view contents, std::string_view group);

    /// The value of a key as written, blanks around it aside; the last one where the key stands twice.
    /// Nothing when the key is absent.
    [[nodiscard]] std::optional<std::string_view> raw(std::string_view key) const;

    /// The value of a key, its escapes (\s \n \t \r \\) undone, an unknown escape left as written. Empty when
    /// the key is absent.
    [[nodiscard]] std::string text(std::string_view key) const;

    /// The value of a key for the first of `locales` (as "Name[de]") that has one in valid UTF-8, else the
    /// value without locale; empty when there is none in valid UTF-8.
    [[nodiscard]] std::string localizedText(std::string_view key,
                                            const std::vector<std::string> &locales) const;

    /// Whether the value is "true" (or "1", as old entries have it).
    [[nodiscard]] bool isTrue(std::string_view key) const;

    /// The elements of a list separated by semicolons, "\;" being a semicolon in an element. Empty elements
    /// are left out.
    [[nodiscard]] std::vector<std::string> list(std::string_view key) const;

  private:
    void addLine(std::string_view line);

    std::vector<std::pair<std::string_view, std::string_view>> values;
};

} // namespace fernhop::freedesktop
