#include "contract/FileManagerContract.h"
#include "fakes/FakeApplications.h"

namespace fernhop::contract {
namespace {

/// A disk in memory.
class FakeDisk {
  public:
    [[nodiscard]] const FileManager &files() const { return disk; }
    [[nodiscard]] std::string root() const { return "/Applications"; }
    [[nodiscard]] std::string home() const { return disk.home; }
    void addFile(const std::string &path) { disk.addPath(path); }
    void addFolder(const std::string &path) { disk.addPath(path); }
    void makeUnreadable(const std::string &folder) { disk.unreadableFolders.insert(folder); }

  private:
    fakes::FakeApplications disk;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, FileManagerContract, FakeDisk);

} // namespace
} // namespace fernhop::contract
