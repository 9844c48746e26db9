#pragma once

#include "cli/CommandParser.h"

#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fernhop::cli {

using Path = std::vector<std::string>;
using Words = std::set<std::string>;

/// The commands and options that the help texts list.
class HelpTree {
  public:
    struct Node {
        Words commands;
        Words options; ///< long ones, with their hyphens
    };

    HelpTree() { visit({}); }

    [[nodiscard]] const std::map<Path, Node> &nodes() const { return found; }

    [[nodiscard]] bool has(const Path &path) const { return found.contains(path); }

  private:
    void visit(const Path &path) {
        Path words = path;
        words.emplace_back("--help");
        const auto outcome = parseCommand(words);
        Node &node = found[path];
        read(std::get<CommandResult>(outcome).output, node);
        for (const auto &command : Words(node.commands)) {
            words.back() = command;
            visit(words);
        }
    }

    static void read(const std::string &help, Node &node) {
        std::istringstream lines(help);
        std::string line;
        std::string section;
        while (std::getline(lines, line)) {
            if (!line.starts_with("  "))
                section = line;
            else if (section == "Commands:" && line[2] != ' ')
                node.commands.insert(line.substr(2, line.find(' ', 2) - 2));
            else if (section == "Options:" && line.starts_with("  -"))
                node.options.insert(longOption(line));
        }
    }

    static std::string longOption(const std::string &line) {
        const auto start = line.find("--");
        return line.substr(start, line.find(' ', start) - start);
    }

    std::map<Path, Node> found;
};

} // namespace fernhop::cli
