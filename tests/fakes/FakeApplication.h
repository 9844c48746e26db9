#pragma once

#include "platform/Application.h"
#include "platform/Log.h"
#include "platform/Sound.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::fakes {

/// The process. `terminate` asks the controller as the real one does and remembers its answer.
class FakeApplication : public Application {
  public:
    std::optional<ActivationPolicy> policy;
    int terminations = 0;
    std::function<TerminateReply()> shouldTerminate;
    std::optional<TerminateReply> lastReply;

    void setActivationPolicy(ActivationPolicy newPolicy) override { policy = newPolicy; }

    void terminate() override {
        ++terminations;
        if (shouldTerminate)
            lastReply = shouldTerminate();
    }
};

/// Remembers each line as it was handed over, unparsed.
class FakeLog : public Log {
  public:
    std::vector<std::string> lines;

    void log(const std::string &format) override { lines.push_back(format); }
};

/// Counts.
class FakeSound : public Sound {
  public:
    int beeps = 0;
    std::function<void()> atBeep; ///< called at each beep

    void beep() override {
        ++beeps;
        if (atBeep)
            atBeep();
    }
};

} // namespace fernhop::fakes
