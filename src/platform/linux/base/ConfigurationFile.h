#pragma once

#include <sys/stat.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// The bytes of a regular file of reasonable size (16 MiB); nothing for everything else. Never blocks on
/// pipes and devices.
[[nodiscard]] std::optional<std::string> readConfigurationFile(const std::string &path);

/// The bytes of a file that is going to be changed: none when there is no file yet, nothing when there is one
/// that cannot be read, which must not be overwritten.
[[nodiscard]] std::optional<std::string> readForChange(const std::string &path);

/// Replaces a file, or makes it and the folders above it, in one step: a reader sees the old bytes or the
/// new, also after a power cut. A symbolic link stays one, its target is replaced; the permissions stay.
/// False, and nothing changed, when that cannot be done.
[[nodiscard]] bool replaceConfigurationFile(const std::string &path, const std::string &bytes);

/// Whether `replaceConfigurationFile` has the permission to do its work.
[[nodiscard]] bool canReplaceConfigurationFile(const std::string &path);

/// What was read from a file, kept until the file changes. The value of a file that cannot be read is that of
/// no bytes.
template <typename Value>
class ParsedFiles {
  public:
    using Parser = std::function<Value(const std::optional<std::string> &bytes)>;

    explicit ParsedFiles(Parser fileParser) : parser(std::move(fileParser)) {}

    /// The value of the file as it is now; valid until the next call.
    const Value &at(const std::string &path) {
        const auto state = State::of(path);
        auto &entry = entries[path];
        if (!entry || !state.isSettled || !(entry->state == state))
            entry = Entry{state, parser(state.exists ? readConfigurationFile(path) : std::nullopt)};
        return entry->value;
    }

  private:
    struct State {
        bool exists = false;
        bool isSettled = true; ///< old enough that a change after our look shows in the times
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        timespec modified{};
        timespec changed{};

        static State of(const std::string &path) {
            struct stat found {};
            if (stat(path.c_str(), &found) != 0)
                return {};
            using namespace std::chrono;
            const auto age = system_clock::now().time_since_epoch() - seconds(found.st_ctim.tv_sec) -
                             duration_cast<system_clock::duration>(nanoseconds(found.st_ctim.tv_nsec));
            return {true,          age > milliseconds(100), found.st_dev, found.st_ino,
                    found.st_size, found.st_mtim,           found.st_ctim};
        }

        bool operator==(const State &other) const {
            const auto same = [](const timespec &left, const timespec &right) {
                return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
            };
            return exists == other.exists && device == other.device && inode == other.inode &&
                   size == other.size && same(modified, other.modified) && same(changed, other.changed);
        }
    };

    struct Entry {
        State state;
        Value value;
    };

    Parser parser;
    std::map<std::string, std::optional<Entry>> entries;
};

} // namespace fernhop::freedesktop
