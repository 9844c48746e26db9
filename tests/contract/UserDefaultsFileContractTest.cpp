#include "contract/UserDefaultsContract.h"
#include "platform/linux/settings/PropertyListDefaults.h"
#include "support/TemporaryHome.h"

namespace fernhop::contract {
namespace {

/// Settings in a file.
struct FileBackend {
    support::TemporaryHome home;
    freedesktop::PropertyListDefaults defaults{home.config() + "/fernhop/org.fernhop.Fernhop.plist"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(File, UserDefaultsContract, FileBackend);

} // namespace
} // namespace fernhop::contract
