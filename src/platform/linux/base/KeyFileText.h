#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

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

    /// Turns the lines that make GLib reject the whole file into comments, so that nothing of them is lost.
    /// False when the text cannot be saved that way.
    [[nodiscard]] bool makeValid();

  private:
    using Lines = std::vector<std::string>;

    [[nodiscard]] std::vector<std::size_t> occurrences(std::string_view group, std::string_view key) const;
    [[nodiscard]] std::optional<std::size_t> endOfGroup(std::string_view group) const;
    void insert(std::size_t position, std::string line);
    void removeLines(const std::vector<std::size_t> &positions, std::size_t from);

    Lines lines; ///< each with its line break, which the last may lack
};

} // namespace fernhop::freedesktop
