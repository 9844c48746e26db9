#pragma once

#include "platform/ResidentConnection.h"

#include <utility>

namespace fernhop::fakes {

/// What passed between the client and the running Fernhop; open to the test, which may hand out several
/// connections to it.
struct FakeResident {
    struct Call {
        std::vector<std::string> arguments;
        std::string input;
    };

    std::optional<CommandResult> answer; ///< none: no Fernhop runs
    std::optional<std::string> obstacle; ///< why links cannot be delivered
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
        if (resident.obstacle)
            return resident.obstacle;
        for (const auto &link : links)
            resident.opened.push_back(link.absoluteString());
        return std::nullopt;
    }

  private:
    FakeResident &resident;
};

} // namespace fernhop::fakes
