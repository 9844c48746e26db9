#pragma once

#include <chrono>
#include <string>

/// The program file that this process runs, and upgrades that replace it. Any thread.
namespace fernhop::freedesktop {

/// The path that the program was started from, whatever is there now; empty when it cannot be told. It is
/// read at the first call.
[[nodiscard]] const std::string &ownProgramPath();

/// The path of a program that is installed in the same folder as this one.
[[nodiscard]] std::string programBeside(const std::string &name);

/// Whether another file is in this program's place, written completely or not. Not while the place is empty.
[[nodiscard]] bool ownProgramWasReplaced();

/// Pauses between the attempts to reach programs that an upgrade is replacing: each twice as long as the one
/// before, three seconds in all.
class Pauses {
  public:
    /// Sleeps for the next pause; false at once when it is time to give up.
    [[nodiscard]] bool wait();

  private:
    static constexpr std::chrono::milliseconds longest{1600};
    std::chrono::milliseconds next{25};
};

} // namespace fernhop::freedesktop
