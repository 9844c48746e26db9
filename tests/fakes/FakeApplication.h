#pragma once

#include "platform/Application.h"
#include "platform/Log.h"
#include "platform/Sound.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::fakes {

/// The application object. `terminate` asks the controller like the real one and records its reply.
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

/// Records each line, unparsed.
class FakeLog : public Log {
  public:
    std::vector<std::string> lines;

    void log(const std::string &format) override { lines.push_back(format); }
};

/// Counts the beeps.
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
