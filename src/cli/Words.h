#pragma once

#include <string>
#include <vector>

namespace fernhop::cli {

/// Marks what the option parser must take as it stands. Without it the parser would read "-https://x" as a
/// cluster of short options, "[a,b]" as a list, "{}" as nothing and "++" as the end of a command; and "--"
/// would lose its meaning inside commands.
///
/// Every word that can be no option and no command's name gets the mark, and after "--" every word does; the
/// "--" itself goes. In "--option=value" the value gets it.
[[nodiscard]] std::vector<std::string> protectedWords(const std::vector<std::string> &words);

/// The word without its mark, as it was typed.
[[nodiscard]] std::string unprotected(std::string word);

/// A text that quotes words, without any mark.
[[nodiscard]] std::string withoutMarks(std::string text);

} // namespace fernhop::cli
