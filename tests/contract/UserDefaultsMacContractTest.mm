#include "contract/UserDefaultsContract.h"
#include "macos/double/Recorder.h"
#include "platform/macos/StandardDefaults.h"

namespace fernhop::contract {
namespace {

/// The standard domain, empty.
struct StandardBackend {
    StandardBackend() { macos_double::reset(); }

    macos::StandardDefaults defaults;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, UserDefaultsContract, StandardBackend);

} // namespace
} // namespace fernhop::contract
