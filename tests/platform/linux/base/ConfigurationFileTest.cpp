#include "platform/linux/base/ConfigurationFile.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace fernhop::freedesktop {
namespace {

namespace files = std::filesystem;

class ConfigurationFile : public testing::Test {
  protected:
    support::TemporaryHome home;
    std::string path = home.config() + "/folder/file";
};

TEST_F(ConfigurationFile, IsMadeWithItsFolders) {
    EXPECT_EQ(readFile(path), std::nullopt);
    EXPECT_EQ(readForChange(path), "");
    EXPECT_TRUE(canReplaceConfigurationFile(path));
    const std::string bytes("a\0b", 3);
    EXPECT_TRUE(replaceConfigurationFile(path, bytes));
    EXPECT_EQ(readFile(path), bytes);
}

TEST_F(ConfigurationFile, KeepsPermissionsAndLinks) {
    home.write(home.home() + "/dotfiles/file", "old");
    files::permissions(home.home() + "/dotfiles/file", files::perms(0640));
    files::create_directories(files::path(path).parent_path());
    files::create_symlink(home.home() + "/dotfiles/file", path);
    EXPECT_TRUE(replaceConfigurationFile(path, "new"));
    EXPECT_TRUE(files::is_symlink(path));
    EXPECT_EQ(readFile(home.home() + "/dotfiles/file"), "new");
    EXPECT_EQ(files::status(path).permissions(), files::perms(0640));
}

TEST_F(ConfigurationFile, LeavesNoTemporaryFile) {
    home.write(path, "old");
    EXPECT_TRUE(replaceConfigurationFile(path, "new"));
    const files::directory_iterator items(files::path(path).parent_path());
    EXPECT_EQ(std::distance(begin(items), end(items)), 1);
}

TEST_F(ConfigurationFile, RefusesPipesAndFolders) {
    files::create_directories(files::path(path).parent_path());
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(readFile(path), std::nullopt);
    EXPECT_EQ(readForChange(path), std::nullopt);
    EXPECT_FALSE(replaceConfigurationFile(path, "new"));
    EXPECT_FALSE(canReplaceConfigurationFile(path));
    EXPECT_FALSE(replaceConfigurationFile(home.config(), "new"));
    EXPECT_FALSE(replaceConfigurationFile(path + "/below", "new"));
}

TEST_F(ConfigurationFile, IsNotReadAboveTheSizeLimit) {
    home.write(path, "x");
    files::resize_file(path, (16 << 20) + 1);
    EXPECT_EQ(readFile(path), std::nullopt);
    EXPECT_EQ(readForChange(path), std::nullopt);
}

TEST_F(ConfigurationFile, IsParsedAgainOnlyWhenItChanged) {
    int parsings = 0;
    ParsedFiles<std::string> parsed([&](const auto &bytes) {
        ++parsings;
        return bytes.value_or("(none)");
    });
    EXPECT_EQ(parsed.at(path), "(none)");
    EXPECT_EQ(parsed.at(path), "(none)");
    EXPECT_EQ(parsings, 1);
    home.write(path, "one");
    EXPECT_EQ(parsed.at(path), "one");
    home.write(path, "two");
    EXPECT_EQ(parsed.at(path), "two");
    usleep(150'000);
    EXPECT_EQ(parsed.at(path), "two");
    const int settled = parsings;
    EXPECT_EQ(parsed.at(path), "two");
    EXPECT_EQ(parsings, settled);
    files::remove(path);
    EXPECT_EQ(parsed.at(path), "(none)");
}

} // namespace
} // namespace fernhop::freedesktop
