#include "platform/linux/log/SystemLog.h"

#include "platform/LogLine.h"

#include <glib.h>
#include <poll.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>

namespace fernhop::freedesktop {

namespace {

constexpr const char *identifier = "fernhop";

/// What does not fit a datagram (208 KiB by default) GLib sends as a file, whose descriptor it never closes
/// (2.74): after a thousand such lines nothing could be started any more.
constexpr std::size_t longestJournalLine = std::size_t{32} * 1024;

/// The usual daemons take messages of 8 KiB, of which their own header takes some.
constexpr std::size_t longestSyslogLine = std::size_t{7} * 1024;

bool sendToJournal(const std::string &line) {
    const std::string message = shortenedLogLine(line, longestJournalLine);
    const std::string priority = std::to_string(LOG_WARNING);
    const std::array<GLogField, 3> fields{
        GLogField{"MESSAGE", message.data(), static_cast<gssize>(message.size())},
        GLogField{"PRIORITY", priority.c_str(), -1}, GLogField{"SYSLOG_IDENTIFIER", identifier, -1}};
    return g_log_writer_journald(G_LOG_LEVEL_WARNING, fields.data(), fields.size(), nullptr) ==
           G_LOG_WRITER_HANDLED;
}

void sendToSyslog(const std::string &line) {
    syslog(LOG_USER | LOG_WARNING, "%s", shortenedLogLine(line, longestSyslogLine).c_str());
}

bool mayBeRead(int output) {
    struct stat status {};
    return ::fstat(output, &status) == 0 &&
           (S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode) || ::isatty(output) == 1);
}

/// Keeps a pipe whose reader has gone from ending the process.
class PipeSignalBlock {
  public:
    PipeSignalBlock() {
        sigemptyset(&pipeSignal);
        sigaddset(&pipeSignal, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipeSignal, &before);
    }
    ~PipeSignalBlock() {
        const timespec now{};
        if (raised)
            sigtimedwait(&pipeSignal, nullptr, &now);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }
    PipeSignalBlock(const PipeSignalBlock &) = delete;
    PipeSignalBlock &operator=(const PipeSignalBlock &) = delete;

    void noteError(int error) { raised = error == EPIPE; }

  private:
    sigset_t pipeSignal{};
    sigset_t before{};
    bool raised = false;
};

/// Writes the line only where that does not wait for a reader: a terminal that was stopped, say, must not
/// stop the routing of links. A pipe that can be written to at all takes `PIPE_BUF` bytes in one piece.
void writeLine(int output, const std::string &line) {
    pollfd ready{output, POLLOUT, 0};
    if (::poll(&ready, 1, 0) != 1 || (ready.revents & POLLOUT) == 0)
        return;
    const std::string text = shortenedLogLine(line, PIPE_BUF - 1) + '\n';
    PipeSignalBlock block;
    if (::write(output, text.data(), text.size()) < 0)
        block.noteError(errno);
}

} // namespace

SystemLog::SystemLog(int output) : errorOutput(output) {
    openlog(identifier, LOG_PID, LOG_USER);
}

void SystemLog::log(const std::string &format) {
    const std::string line = logLine(format);
    if (!sendToJournal(line))
        sendToSyslog(line);
    if (mayBeRead(errorOutput))
        writeLine(errorOutput, line);
}

} // namespace fernhop::freedesktop
