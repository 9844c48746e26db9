#pragma once

#include "platform/FileManager.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace fernhop::contract {

using Paths = std::set<std::string>;

/// What the core relies on with every backend. Included once in each executable, which lists the backends.
template <typename Disk>
class FileManagerContract : public testing::Test {
  protected:
    [[nodiscard]] const FileManager &files() const { return disk.files(); }
    [[nodiscard]] std::string path(const std::string &relative) const { return disk.root() + relative; }
    void add(const std::string &relative) { disk.addFile(path(relative)); }

    [[nodiscard]] std::unique_ptr<DirectoryEnumerator> enumerate(const std::string &relative = "") const {
        return files().enumeratorAtUrl(Url::fileUrl(path(relative)));
    }

    /// The items that the enumeration of the tree visits, in order, relative to the tree.
    [[nodiscard]] std::vector<std::string>
    walk(const std::optional<std::string> &skipping = std::nullopt) const {
        std::vector<std::string> met;
        const auto enumerator = enumerate();
        while (const auto url = enumerator ? enumerator->next() : std::nullopt) {
            EXPECT_TRUE(url->isFileUrl());
            met.push_back(url->path().substr(disk.root().size()));
            if (met.back() == skipping)
                enumerator->skipDescendants();
        }
        return met;
    }

    [[nodiscard]] Paths walked(const std::optional<std::string> &skipping = std::nullopt) const {
        const auto met = walk(skipping);
        const Paths distinct(met.begin(), met.end());
        EXPECT_EQ(distinct.size(), met.size()) << "nothing is met twice";
        return distinct;
    }

    Disk disk;
};

TYPED_TEST_SUITE_P(FileManagerContract);

TYPED_TEST_P(FileManagerContract, TheHomeFolderIsAFileUrl) {
    EXPECT_TRUE(this->files().homeDirectoryForCurrentUser().isFileUrl());
    EXPECT_EQ(this->files().homeDirectoryForCurrentUser().path(), this->disk.home());
}

TYPED_TEST_P(FileManagerContract, FilesAndFoldersExist) {
    this->add("/a/file");
    EXPECT_TRUE(this->files().fileExistsAtPath(this->path("/a/file")));
    EXPECT_TRUE(this->files().fileExistsAtPath(this->path("/a")));
    EXPECT_FALSE(this->files().fileExistsAtPath(this->path("/b")));
    EXPECT_FALSE(this->files().fileExistsAtPath(this->path("/A")));
    EXPECT_FALSE(this->files().fileExistsAtPath(""));
    EXPECT_FALSE(this->files().fileExistsAtPath(std::string("/\0x", 3)));
}

TYPED_TEST_P(FileManagerContract, AMissingFolderHasNoEnumerator) {
    EXPECT_FALSE(this->enumerate("/none"));
}

TYPED_TEST_P(FileManagerContract, AnUnreadableFolderHasNoEnumerator) {
    this->add("/locked/file");
    this->disk.makeUnreadable(this->path("/locked"));
    EXPECT_FALSE(this->enumerate("/locked"));
    EXPECT_TRUE(this->enumerate());
}

TYPED_TEST_P(FileManagerContract, EnumerationVisitsEverythingAtAnyDepth) {
    for (const auto *item : {"/a", "/b/c", "/b/d/e/f", "/with space", "/%41\xC3\xA9"})
        this->add(item);
    EXPECT_EQ(this->walked(),
              (Paths{"/a", "/b", "/b/c", "/b/d", "/b/d/e", "/b/d/e/f", "/with space", "/%41\xC3\xA9"}));
}

TYPED_TEST_P(FileManagerContract, AFolderIsVisitedRightBeforeItsContents) {
    for (const auto *item : {"/a/1", "/a/2", "/b/1", "/c"})
        this->add(item);
    const auto met = this->walk();
    for (std::size_t i = 0; i < met.size(); ++i) {
        const auto folder = met[i].substr(0, met[i].rfind('/'));
        if (folder.empty())
            continue;
        ASSERT_GT(i, 0U);
        EXPECT_TRUE(met[i - 1] == folder || met[i - 1].starts_with(folder + "/")) << met[i];
    }
}

TYPED_TEST_P(FileManagerContract, HiddenItemsAndTheirContentsAreOmitted) {
    for (const auto *item : {"/.file", "/.folder/file", "/a/.b/c", "/a/d.e"})
        this->add(item);
    EXPECT_EQ(this->walked(), (Paths{"/a", "/a/d.e"}));
}

TYPED_TEST_P(FileManagerContract, AnEmptyFolderHasNoItems) {
    this->disk.addFolder(this->path(""));
    const auto enumerator = this->enumerate();
    ASSERT_TRUE(enumerator);
    enumerator->skipDescendants();
    EXPECT_EQ(enumerator->next(), std::nullopt);
    EXPECT_EQ(enumerator->next(), std::nullopt) << "and stays at its end";
}

TYPED_TEST_P(FileManagerContract, SkippedFoldersAreNotEntered) {
    for (const auto *item : {"/a/1", "/a/b/2", "/c/3"})
        this->add(item);
    EXPECT_EQ(this->walked("/a"), (Paths{"/a", "/c", "/c/3"}));
    EXPECT_EQ(this->walked("/a/b"), (Paths{"/a", "/a/1", "/a/b", "/c", "/c/3"}));
}

TYPED_TEST_P(FileManagerContract, SkippingAFileSkipsNothing) {
    for (const auto *item : {"/a", "/b/1", "/b/2"})
        this->add(item);
    EXPECT_EQ(this->walked("/a"), (Paths{"/a", "/b", "/b/1", "/b/2"}));
    EXPECT_EQ(this->walked("/b/1"), (Paths{"/a", "/b", "/b/1", "/b/2"}));
}

TYPED_TEST_P(FileManagerContract, EnumerationContinuesAfterAnUnreadableFolder) {
    for (const auto *item : {"/a/1", "/locked/2", "/z/3"})
        this->add(item);
    this->disk.makeUnreadable(this->path("/locked"));
    EXPECT_EQ(this->walked(), (Paths{"/a", "/a/1", "/locked", "/z", "/z/3"}));
}

TYPED_TEST_P(FileManagerContract, TheDisplayNameIsTheLastComponent) {
    this->add("/A File.app");
    EXPECT_EQ(this->files().displayNameAtPath(this->path("/A File.app")), "A File.app");
    EXPECT_EQ(this->files().displayNameAtPath("/not/there"), "there");
}

REGISTER_TYPED_TEST_SUITE_P(FileManagerContract, TheHomeFolderIsAFileUrl, FilesAndFoldersExist,
                            AMissingFolderHasNoEnumerator, AnUnreadableFolderHasNoEnumerator,
                            EnumerationVisitsEverythingAtAnyDepth, AFolderIsVisitedRightBeforeItsContents,
                            HiddenItemsAndTheirContentsAreOmitted, AnEmptyFolderHasNoItems,
                            SkippedFoldersAreNotEntered, SkippingAFileSkipsNothing,
                            EnumerationContinuesAfterAnUnreadableFolder, TheDisplayNameIsTheLastComponent);

} // namespace fernhop::contract
