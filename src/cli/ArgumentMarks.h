#pragma once

#include <string>
#include <vector>

namespace fernhop::cli {

/// Marks the arguments that the option parser must not interpret. Unmarked, it would read "-https://x" as a
/// group of short options, "[a,b]" as a list, "{}" as nothing and "++" as the end of a command; and "--"
/// would have no effect inside commands.
///
/// Every argument that can be neither an option nor a command's name is marked, and after "--" every
/// argument; the "--" itself is removed. In "--option=value" the value is marked.
[[nodiscard]] std::vector<std::string> protectedArguments(const std::vector<std::string> &words);

/// The argument without its mark, as it was typed.
[[nodiscard]] std::string unprotected(std::string word);

/// A text that quotes arguments, without their marks.
[[nodiscard]] std::string withoutMarks(std::string text);

} // namespace fernhop::cli
