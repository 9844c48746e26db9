#pragma once

#include "platform/macos/Reference.h"
#include "platform/macos/ui/ActionTarget.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Responds to every selector and reports it to its owner.
@interface FernhopRecordingTarget : NSObject {
    const std::function<void(SEL, id)> *report;
}
@end

namespace fernhop::macos {

/// Replaces the application: records the actions sent to it, with the core's object for the sender.
class RecordingTarget : public ActionTarget {
  public:
    RecordingTarget();

    /// A received action.
    struct Sent {
        std::string selector;
        std::shared_ptr<const Object> sender;
    };
    std::vector<Sent> sent;
    /// Called with each action; nothing by default.
    std::function<void(std::string_view selector, const Object *sender)> perform;

    [[nodiscard]] id target() const override { return receiver.get(); }
    [[nodiscard]] id attachment(const ui::RepresentedObject &value) const override;
    [[nodiscard]] ui::RepresentedObject representedObject(id attachment) const override;

  private:
    std::function<void(SEL, id)> report;
    Reference<FernhopRecordingTarget> receiver;
};

} // namespace fernhop::macos
