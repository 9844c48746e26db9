#include "contract/UserDefaultsContract.h"
#include "fakes/FakeUserDefaults.h"

namespace fernhop::contract {
namespace {

/// Settings in memory.
struct FakeBackend {
    fakes::FakeUserDefaults defaults;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, UserDefaultsContract, FakeBackend);

} // namespace
} // namespace fernhop::contract
