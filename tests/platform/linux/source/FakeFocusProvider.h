#pragma once

#include "platform/linux/source/FocusProvider.h"

#include <memory>
#include <utility>
#include <vector>

namespace fernhop::fakes {

/// A session whose focused application a test sets.
class FakeFocusProvider : public freedesktop::FocusProvider {
  public:
    std::shared_ptr<RunningApplication> front;
    std::vector<freedesktop::RaiseRequest> raised;
    std::function<void(std::shared_ptr<RunningApplication>)> observer;

    /// An application comes to the front; one that no desktop entry describes when there is no ID.
    void activate(std::optional<std::string> id) {
        front = std::make_shared<freedesktop::DesktopApplication>(std::move(id));
        if (observer)
            observer(front);
    }

    std::string name() override { return "fake"; }
    std::shared_ptr<RunningApplication> frontmost() override { return front; }
    void observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) override {
        observer = std::move(activated);
    }
    bool raise(const freedesktop::RaiseRequest &request) override {
        raised.push_back(request);
        return true;
    }
};

} // namespace fernhop::fakes
