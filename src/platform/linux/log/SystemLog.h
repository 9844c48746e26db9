#pragma once

#include "platform/Log.h"

namespace fernhop::freedesktop {

/// The journal where there is one, else syslog, as "fernhop". Besides, standard error where somebody may be
/// reading it: when it is a terminal, a file or a pipe, and not the journal's own socket, which would show
/// each line twice. Lines that one of them would lose for their length are shortened, and say so.
class SystemLog final : public Log {
  public:
    /// `errorOutput` is an open file descriptor, or none (-1); it must outlive this object.
    explicit SystemLog(int errorOutput = 2);

    void log(const std::string &format) override;

  private:
    int errorOutput;
};

} // namespace fernhop::freedesktop
