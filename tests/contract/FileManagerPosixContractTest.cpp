#include "contract/FileManagerContract.h"
#include "contract/RealDisk.h"
#include "platform/linux/applications/PosixFileManager.h"

namespace fernhop::contract {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Posix, FileManagerContract, RealDisk<freedesktop::PosixFileManager>);

TEST(PosixFileManagerTest, EveryPathHasADisplayNameInUtf8) {
    const freedesktop::PosixFileManager files("/home");
    EXPECT_EQ(files.displayNameAtPath("/"), "/");
    EXPECT_EQ(files.displayNameAtPath("/a/b/"), "b");
    EXPECT_EQ(files.displayNameAtPath("b"), "b");
    EXPECT_EQ(files.displayNameAtPath("/br\xFCh\xC3"), "br\xEF\xBF\xBDh\xEF\xBF\xBD");
}

TEST(PosixFileManagerTest, OnlyFileUrlsHaveEnumerators) {
    const freedesktop::PosixFileManager files("/home");
    const auto web = Url::parse("http://host/tmp");
    ASSERT_TRUE(web);
    EXPECT_FALSE(files.enumeratorAtUrl(*web));
    EXPECT_TRUE(files.enumeratorAtUrl(Url::fileUrl("/tmp")));
}

} // namespace
} // namespace fernhop::contract
