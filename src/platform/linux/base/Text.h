#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// The part of a path after its last slash.
[[nodiscard]] inline std::string_view fileNameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// `text` without `ending`, if it ends so. A view into `text`.
[[nodiscard]] inline std::string_view withoutEnding(std::string_view text, std::string_view ending) {
    return text.substr(0, text.size() - (text.ends_with(ending) ? ending.size() : 0));
}

/// `text` without the ASCII white space around it. A view into `text`.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Takes the first piece off `rest`, with the separator that ends it, and returns it without. The last piece
/// needs no separator.
std::string_view takePiece(std::string_view &rest, char separator);

/// The pieces of `text`, each ended by a separator or by the end of the text: "a::b:" has "a", "" and "b",
/// an empty text has none. Views into `text`.
[[nodiscard]] std::vector<std::string_view> pieces(std::string_view text, char separator);

/// The pieces of `text` that are not empty. Views into `text`.
[[nodiscard]] std::vector<std::string_view> nonEmptyPieces(std::string_view text, char separator);

/// The texts as functions of C take them, with a null pointer at the end. Points into `texts`; those
/// functions change none, though they ask for `char *`.
[[nodiscard]] std::vector<char *> pointersTo(std::vector<std::string> &texts);

} // namespace fernhop::freedesktop
