#pragma once

#include "support/Waiting.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <string>

namespace fernhop::support {

/// The pipe through which a server reports, with a line of text, that it is ready.
class ReadyPipe {
  public:
    ReadyPipe() { (void)!pipe2(ends.data(), O_CLOEXEC); }
    ~ReadyPipe() {
        close(ends[0]);
        closeWriter();
    }
    ReadyPipe(const ReadyPipe &) = delete;
    ReadyPipe &operator=(const ReadyPipe &) = delete;

    [[nodiscard]] int writer() const { return ends[1]; }

    /// The line that the server wrote, without its line end; only a part when the server ended or on timeout.
    /// Called once, after the server was started.
    [[nodiscard]] std::string readLine() {
        closeWriter();
        std::string line;
        pollfd waiting{ends[0], POLLIN, 0};
        const int milliseconds = static_cast<int>(std::chrono::milliseconds(patience).count());
        char byte = 0;
        while (poll(&waiting, 1, milliseconds) == 1 && read(ends[0], &byte, 1) == 1 && byte != '\n')
            line.push_back(byte);
        return line;
    }

  private:
    void closeWriter() {
        if (ends[1] >= 0)
            close(ends[1]);
        ends[1] = -1;
    }

    std::array<int, 2> ends{-1, -1};
};

} // namespace fernhop::support
