#pragma once

#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// A word of a command line.
struct CommandWord {
    std::string text;
    bool hasLink; ///< a link becomes a part of it, or all of it
};

/// Whether a link in these words would be read as a program, or as a part of one: by a shell ("sh -c LINK"),
/// another interpreter ("perl -e LINK"), or a program that hands its arguments to a shell ("ssh HOST LINK").
/// Behind the text of a program a link is an argument, which is safe: "sh -c 'browser "$1"' sh LINK".
/// `words` are everything that is run, a link that is appended included.
[[nodiscard]] bool readsLinkAsProgram(const std::vector<CommandWord> &words);

} // namespace fernhop::freedesktop
