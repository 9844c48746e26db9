#pragma once

#include "platform/linux/base/Files.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

/// What was read from files, each kept until the file changes. The value of a file that cannot be read is
/// that of no bytes. Not for several threads at once.
template <typename Value>
class ParsedFiles {
  public:
    using Parser = std::function<Value(const std::optional<std::string> &bytes)>;

    explicit ParsedFiles(Parser fileParser) : parser(std::move(fileParser)) {}

    /// The value of the file as it is now; valid until the next call.
    const Value &at(const std::string &path) {
        const auto identity = FileIdentity::of(path);
        auto &entry = entries[path];
        if (!entry || !entry->isSettled || entry->identity != identity) {
            const bool isSettled = !identity || identity->isSettled();
            entry = Entry{identity, isSettled, parser(identity ? readFile(path) : std::nullopt)};
        }
        return entry->value;
    }

  private:
    struct Entry {
        std::optional<FileIdentity> identity;
        bool isSettled; ///< a change after the reading shows in the identity
        Value value;
    };

    Parser parser;
    std::map<std::string, std::optional<Entry>> entries;
};

} // namespace fernhop::freedesktop
