#include "platform/linux/applications/PosixFileManager.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fernhop::freedesktop {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

class DirectoryWalkTest : public testing::Test {
  protected:
    void add(const std::string &path) const { home.write(root + path, ""); }

    /// What the walk meets, relative to its folder.
    [[nodiscard]] Texts walk(const std::string &folder) const {
        Texts met;
        const auto walk = DirectoryWalk::over(folder);
        while (const auto path = walk ? walk->next() : std::nullopt)
            met.push_back(path->substr(folder.size()));
        return met;
    }

    support::TemporaryHome home;
    std::string root = home.root() + "/tree";
};

TEST_F(DirectoryWalkTest, FilesComeBeforeFoldersAndAllByName) {
    for (const auto *path : {"/z", "/b/2", "/b/1", "/a/x/y", "/c"})
        add(path);
    EXPECT_EQ(walk(root), (Texts{"/c", "/z", "/a", "/a/x", "/a/x/y", "/b", "/b/1", "/b/2"}));
}

TEST_F(DirectoryWalkTest, SymbolicLinkCyclesEnd) {
    add("/a/file");
    fs::create_directory_symlink(root, root + "/a/back");
    fs::create_directory_symlink(".", root + "/self");
    fs::create_symlink("loop", root + "/loop");
    EXPECT_EQ(walk(root), (Texts{"/loop", "/a", "/a/file", "/a/back", "/self"}));
}

TEST_F(DirectoryWalkTest, ALinkToAFolderIsEnteredOnce) {
    add("/tree/file");
    home.write(home.root() + "/elsewhere/file", "");
    fs::create_directory_symlink(home.root() + "/elsewhere", root + "/one");
    fs::create_directory_symlink(home.root() + "/elsewhere", root + "/two");
    EXPECT_EQ(walk(root), (Texts{"/one", "/one/file", "/tree", "/tree/file", "/two"}));
}

TEST_F(DirectoryWalkTest, TheFolderItselfMayBeALink) {
    add("/file");
    fs::create_directory_symlink(root, home.root() + "/link");
    EXPECT_EQ(walk(home.root() + "/link"), Texts{"/file"});
}

TEST_F(DirectoryWalkTest, PathsBeyondTheSystemsLengthEndTheWalkThere) {
    const std::string name(200, 'd');
    fs::create_directories(root);
    const fs::path before = fs::current_path();
    fs::current_path(root);
    for (int depth = 0; depth < 30; ++depth) {
        fs::create_directory(name);
        fs::current_path(name);
    }
    fs::current_path(before);
    const auto met = walk(root);
    EXPECT_GT(met.size(), 10U);
    EXPECT_LE(met.size(), 30U);
}

TEST_F(DirectoryWalkTest, AnyFileNameIsFound) {
    for (const auto *path : {"/a b", "/\xFF\xFE", "/new\nline", "/%41", "/\xC3\xA9"})
        add(path);
    EXPECT_EQ(walk(root).size(), 5U);
}

} // namespace
} // namespace fernhop::freedesktop
