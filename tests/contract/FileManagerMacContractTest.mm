#include "contract/FileManagerContract.h"
#include "contract/RealDisk.h"
#include "macos/double/Recorder.h"
#include "platform/macos/SystemFiles.h"

namespace fernhop::contract {
namespace {

/// The system's file manager in a home that the double gives it.
class FilesAtHome : public macos::SystemFiles {
  public:
    explicit FilesAtHome(const std::string &home) { macos_double::recorder().services.homePath = home; }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, FileManagerContract, RealDisk<FilesAtHome>);

} // namespace
} // namespace fernhop::contract
