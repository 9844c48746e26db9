#include "platform/Application.h"
#include "platform/ui/Alert.h"
#include "platform/ui/Button.h"
#include "platform/ui/ControlSize.h"
#include "platform/ui/MenuItem.h"

#import <AppKit/AppKit.h>

// The core's values equal those of the system, so they are converted by a cast.
namespace fernhop::macos {

namespace {

template <typename Core, typename System>
constexpr bool areTheSame(Core core, System system) {
    return static_cast<long>(core) == static_cast<long>(system);
}

} // namespace

static_assert(areTheSame(ActivationPolicy::regular, NSApplicationActivationPolicyRegular));
static_assert(areTheSame(ActivationPolicy::accessory, NSApplicationActivationPolicyAccessory));
static_assert(areTheSame(ActivationPolicy::prohibited, NSApplicationActivationPolicyProhibited));
static_assert(areTheSame(TerminateReply::cancel, NSTerminateCancel));
static_assert(areTheSame(TerminateReply::now, NSTerminateNow));
static_assert(areTheSame(TerminateReply::later, NSTerminateLater));
static_assert(areTheSame(ui::alertFirstButtonReturn, NSAlertFirstButtonReturn));
static_assert(areTheSame(ui::ControlState::off, NSControlStateValueOff));
static_assert(areTheSame(ui::ControlState::on, NSControlStateValueOn));
static_assert(areTheSame(ui::ControlSize::regular, NSControlSizeRegular));
static_assert(areTheSame(ui::ControlSize::large, NSControlSizeLarge));
static_assert(areTheSame(ui::ImagePosition::none, NSNoImage));
static_assert(areTheSame(ui::ImagePosition::imageOnly, NSImageOnly));
static_assert(areTheSame(ui::ImagePosition::leading, NSImageLeading));

} // namespace fernhop::macos
