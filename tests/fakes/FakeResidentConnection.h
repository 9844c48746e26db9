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

    std::optional<CommandResult> answer;    ///< nothing: no Fernhop is running
    std::optional<std::string> openFailure; ///< why links cannot be delivered
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

    std::optional<std::string> open(const std::vector<Url> &links) override {
        if (resident.openFailure)
            return resident.openFailure;
        for (const auto &link : links)
            resident.opened.push_back(link.absoluteString());
        return std::nullopt;
    }

  private:
    FakeResident &resident;
};

} // namespace fernhop::fakes
