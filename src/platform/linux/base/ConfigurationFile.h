#pragma once

#include "platform/linux/base/Files.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {

/// The contents of a file that is going to be changed: none when there is no file yet, nothing when there is
/// one that cannot be read, which must not be overwritten.
[[nodiscard]] std::optional<std::string> readForChange(const std::string &path);

/// Replaces a configuration file that other programs write too, or makes it and the folders above it. Fails
/// when something that is no regular file is in the way.
Result<> replaceConfigurationFile(const std::string &path, std::string_view bytes);

/// Whether `replaceConfigurationFile` has the permission to do its work.
[[nodiscard]] bool canReplaceConfigurationFile(const std::string &path);

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
