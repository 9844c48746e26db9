#pragma once

#include "platform/ResidentConnection.h"

#include <utility>

namespace fernhop::fakes {

/// The messages between the client and the running Fernhop, open to the test; several connections may share
/// them.
struct FakeResident {
    struct Call {
        std::vector<std::string> arguments;
        std::string input;
    };

    std::optional<CommandResult> answer;   ///< nothing: no Fernhop is running
    std::vector<std::string> openProblems; ///< which links are not opened, and why
    std::vector<Call> calls;
    std::vector<std::string> opened;
};

class FakeResidentConnection : public ResidentConnection {
  public:
    explicit FakeResidentConnection(FakeResident &reached) : resident(reached) {}

    std::optional<CommandResult> perform(const std::vector<std::string> &arguments,
                                         std::string_view input) override {
        resident.calls.push_back({arguments, std::string(input)});
        return resident.answer;
    }

    std::vector<std::string> open(const std::vector<Url> &links) override {
        for (const auto &link : links)
            resident.opened.push_back(link.absoluteString());
        return resident.openProblems;
    }

  private:
    FakeResident &resident;
};

} // namespace fernhop::fakes
