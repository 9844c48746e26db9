#include "platform/linux/stub/Report.h"

#include "platform/LogLine.h"

#include <sys/time.h>
#include <syslog.h>

#include <csignal>
#include <cstdio>

namespace fernhop::stub {
namespace {

// Shows the whole of any usual link. A pipe takes this much in one piece.
constexpr std::size_t longestLine = 4000;

volatile std::sig_atomic_t isLate = 0;

/// Interrupts the system calls that wait, again and again: a full pipe or a log daemon that was stopped must
/// not keep this process from its end.
class TimeLimit {
  public:
    TimeLimit() {
        struct sigaction interrupt = {};
        interrupt.sa_handler = [](int) { isLate = 1; };
        sigaction(SIGALRM, &interrupt, &before);
        constexpr itimerval halfSeconds = {{0, 500'000}, {0, 500'000}};
        setitimer(ITIMER_REAL, &halfSeconds, nullptr);
    }
    ~TimeLimit() {
        constexpr itimerval never = {};
        setitimer(ITIMER_REAL, &never, nullptr);
        sigaction(SIGALRM, &before, nullptr);
    }
    TimeLimit(const TimeLimit &) = delete;
    TimeLimit &operator=(const TimeLimit &) = delete;

  private:
    struct sigaction before = {};
};

std::string lineFor(const std::string &sentence) {
    std::string text;
    for (const char character : sentence)
        text.append(character == '%' ? 2 : 1, character); // a log line is a format
    return shortenedLogLine(logLine(text), longestLine);
}

} // namespace

void report(const std::vector<std::string> &sentences) {
    openlog("fernhop-open", LOG_PID, LOG_USER);
    const TimeLimit limit;
    isLate = 0;
    for (auto sentence = sentences.begin(); sentence != sentences.end() && isLate == 0; ++sentence) {
        const auto line = lineFor(*sentence);
        syslog(LOG_WARNING, "%s", line.c_str());
        fprintf(stderr, "fernhop-open: %s\n", line.c_str());
    }
}

} // namespace fernhop::stub
