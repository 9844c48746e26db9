#pragma once

#include "support/TemporaryHome.h"

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace fernhop::support {

/// How a recording browser was started, once.
struct BrowserStart {
    long long nanoseconds = 0; ///< at its first instruction, by CLOCK_MONOTONIC
    pid_t pid = 0;
    pid_t session = 0;
    std::string folder; ///< its working directory
    std::vector<std::string> arguments;
    std::map<std::string, std::string> environment;
    std::vector<std::string> descriptors; ///< "number:target" of each open file
    std::vector<int> blockedSignals;
    std::vector<int> ignoredSignals;
};

/// A small program, installed in a home as a browser, that records how it was started and exits.
class RecordingBrowser {
  public:
    /// Its records go to a file of its own in `home`. Nothing is installed yet.
    RecordingBrowser(const TemporaryHome &home, const std::string &name);

    /// The program and its first argument, for an Exec line.
    [[nodiscard]] std::string exec() const { return program() + " " + file; }

    /// The text of its desktop entry, as a handler of http and https; `more` are further lines.
    [[nodiscard]] std::string desktopEntry(const std::string &more = {}) const;

    /// Every start so far, in the order in which the processes were made (by their identifiers, counted from
    /// this process's own).
    [[nodiscard]] std::vector<BrowserStart> starts() const;

    /// The links that it was started with so far, in the order of the starts.
    [[nodiscard]] std::vector<std::string> links() const;

    [[nodiscard]] static std::string program();

  private:
    std::string name;
    std::string file;
};

} // namespace fernhop::support
