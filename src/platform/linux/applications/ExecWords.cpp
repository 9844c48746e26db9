#include "platform/linux/applications/ExecLine.h"

#include <cstddef>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view blanks = " \t\n\r";

/// Reads one word after the other from a line.
class WordReader {
  public:
    explicit WordReader(std::string_view execLine) : line(execLine) {}

    /// The next word; nothing at the end of the line, or at a quote that stays open (`isBroken`).
    std::optional<ExecWord> next() {
        position = line.find_first_not_of(blanks, position);
        if (position == std::string_view::npos)
            return std::nullopt;
        ExecWord word;
        while (position < line.size() && blanks.find(line[position]) == std::string_view::npos) {
            if (!readPiece(word)) {
                broken = true;
                return std::nullopt;
            }
        }
        return word;
    }

    [[nodiscard]] bool isBroken() const { return broken; }

  private:
    bool readPiece(ExecWord &word) {
        const char character = line[position++];
        if (character == '"' || character == '\'')
            return readQuoted(character, word);
        if (character != '\\') {
            word.text += character;
            return true;
        }
        if (position == line.size())
            return false;
        word.text += line[position++];
        return true;
    }

    bool readQuoted(char quote, ExecWord &word) {
        word.quoted = true;
        while (position < line.size()) {
            const char character = line[position++];
            if (character == quote)
                return true;
            const bool escapes = quote == '"' && character == '\\' && position < line.size() &&
                                 std::string_view("\"`$\\").find(line[position]) != std::string_view::npos;
            word.text += escapes ? line[position++] : character;
        }
        return false;
    }

    std::string_view line;
    std::size_t position = 0;
    bool broken = false;
};

} // namespace

std::optional<std::vector<ExecWord>> execWords(std::string_view exec) {
    WordReader reader(exec);
    std::vector<ExecWord> words;
    while (auto word = reader.next())
        words.push_back(std::move(*word));
    return reader.isBroken() ? std::nullopt : std::optional(std::move(words));
}

} // namespace fernhop::freedesktop
