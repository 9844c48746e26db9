#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Key files ("[Group]", "key=value"): the format of desktop entries and of many desktops' settings.
namespace fernhop::freedesktop {

/// One line of a key file, taken apart as GLib does. Views into the line.
struct KeyFileLine {
    enum class Kind {
        blank, ///< or a comment
        group,
        key ///< anything else, with or without "="
    };
    Kind kind = Kind::blank;
    std::string_view name;                 ///< of the group or key, without the blanks around it
    std::optional<std::string_view> value; ///< what follows "=", without the blanks around it

    [[nodiscard]] static KeyFileLine parse(std::string_view line);
};

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
    /// value without locale; nothing when there is none in valid UTF-8.
    [[nodiscard]] std::optional<std::string> localizedText(std::string_view key,
                                                           const std::vector<std::string> &locales) const;

    /// Whether the value is "true" (or "1", as old entries have it).
    [[nodiscard]] bool isTrue(std::string_view key) const;

    /// The elements of a list separated by semicolons, "\;" being a semicolon in an element. Empty elements
    /// are left out.
    [[nodiscard]] std::vector<std::string> list(std::string_view key) const;

  private:
    std::vector<std::pair<std::string_view, std::string_view>> values;
};

/// The text of a key file ("[Group]", "key=value") that other programs and people write too. Changing a key
/// leaves every other byte as it was, whatever it is: comments, order, unknown groups, lines that are none. A
/// value. Keys above the first group are in the group "".
class KeyFileText {
  public:
    explicit KeyFileText(std::string_view bytes);

    /// The whole text.
    [[nodiscard]] std::string bytes() const;

    /// The value as written, without the white space around it; nothing when the key is absent. Of several,
    /// the last, as desktops read them. A key without "=" has an empty value.
    [[nodiscard]] std::optional<std::string> value(std::string_view group, std::string_view key) const;

    /// Makes `value` the only one of `key`: in the place of the first there is, else at the end of the group,
    /// which is added when it is missing. `value` holds no line break.
    void set(std::string_view group, std::string_view key, std::string_view value);

    /// Removes every occurrence of `key`.
    void remove(std::string_view group, std::string_view key);

  private:
    using Lines = std::vector<std::string>;

    [[nodiscard]] std::vector<std::size_t> occurrences(std::string_view group, std::string_view key) const;
    [[nodiscard]] std::optional<std::size_t> endOfGroup(std::string_view group) const;
    void insert(std::size_t position, std::string line);
    void removeLines(const std::vector<std::size_t> &positions, std::size_t from);

    Lines lines; ///< each with its line break, which the last may lack
};

} // namespace fernhop::freedesktop
