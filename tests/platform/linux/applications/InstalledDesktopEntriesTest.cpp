#include "DesktopFixture.h"

#include <sys/stat.h>

#include <set>

namespace fernhop::freedesktop {
namespace {

using Texts = std::vector<std::string>;

class InstalledDesktopEntriesTest : public DesktopFixture {
  protected:
    [[nodiscard]] std::string nameOf(const std::string &id) const {
        const auto entry = entries().entry(id);
        return entry ? entry->name.value_or("(no name)") : "(nothing)";
    }

    [[nodiscard]] Texts allNames() const {
        Texts names;
        for (const auto &entry : entries().all())
            names.push_back(entry.name.value_or(""));
        return names;
    }
};

TEST_F(InstalledDesktopEntriesTest, AnEntryIsFoundByItsID) {
    writeEntry(system("/falcon.desktop"), "Falcon");
    const auto entry = entries().entry("falcon");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->id, "falcon");
    EXPECT_EQ(entry->path, system("/falcon.desktop"));
    EXPECT_EQ(entry->name, "Falcon");
}

TEST_F(InstalledDesktopEntriesTest, FoldersBecomeDashesInAnID) {
    writeEntry(system("/org/x/y.desktop"), "Deep");
    writeEntry(system("/org/x-z.desktop"), "Half Deep");
    EXPECT_EQ(nameOf("org-x-y"), "Deep");
    EXPECT_EQ(nameOf("org-x-z"), "Half Deep");
    EXPECT_EQ(entries().entryAtPath(system("/org/x/y.desktop"))->id, "org-x-y");
    EXPECT_EQ(nameOf("org/x/y"), "(nothing)") << "an ID is no path";
    EXPECT_EQ(nameOf("y"), "(nothing)");
}

TEST_F(InstalledDesktopEntriesTest, TheFingerprintFollowsEveryChange) {
    writeEntry(system("/org/x/y.desktop"), "Deep");
    const auto found = entries();
    std::set<std::size_t> fingerprints{found.fingerprint()};
    EXPECT_EQ(found.fingerprint(), *fingerprints.begin()) << "nothing has changed";
    home.write(system("/mimeinfo.cache"), "[MIME Cache]\n");
    EXPECT_EQ(found.fingerprint(), *fingerprints.begin()) << "nothing of an entry has changed";
    const auto expectNew = [&](const char *why) {
        EXPECT_TRUE(fingerprints.insert(found.fingerprint()).second) << why;
    };
    writeEntry(user("/new.desktop"), "New");
    expectNew("a new entry");
    writeEntry(system("/org/x/y.desktop"), "Deeper");
    expectNew("a changed one");
    std::filesystem::rename(system("/org/x/y.desktop"), system("/org/x/z.desktop"));
    expectNew("another name");
    std::filesystem::remove(user("/new.desktop"));
    expectNew("one less");
    home.writeProgram(programs() + "/tool", "");
    expectNew("a program that an entry may have waited for");
}

TEST_F(InstalledDesktopEntriesTest, InvalidIDsFindNothing) {
    writeEntry(user("/.hidden.desktop"), "Hidden");
    writeEntry(user("/a/.hidden.desktop"), "Hidden");
    writeEntry(user("/.desktop"), "No name");
    writeEntry(home.data() + "/outside.desktop", "Outside");
    const Texts identifiers{"",
                            ".",
                            "..",
                            ".hidden",
                            "a-.hidden",
                            "../outside",
                            "-",
                            "----",
                            "Falcon",
                            std::string("a\0b", 3),
                            "a\xFF",
                            "a-",
                            "-a",
                            "a.desktop",
                            std::string(100'000, '-'),
                            std::string(100'000, 'x')};
    for (const auto &id : identifiers)
        EXPECT_EQ(nameOf(id), "(nothing)") << id.substr(0, 20);
}

TEST_F(InstalledDesktopEntriesTest, TheFirstFolderWithTheIDDecides) {
    writeEntry(system("/falcon.desktop"), "System's");
    EXPECT_EQ(nameOf("falcon"), "System's");
    writeEntry(user("/falcon.desktop"), "User's");
    EXPECT_EQ(nameOf("falcon"), "User's");
    EXPECT_EQ(allNames(), Texts{"User's"});
}

TEST_F(InstalledDesktopEntriesTest, TheFirstFileDecidesHoweverItSpellsTheID) {
    writeEntry(system("/a-b.desktop"), "System's");
    writeEntry(user("/a/b.desktop"), "User's");
    EXPECT_EQ(nameOf("a-b"), "User's");
    EXPECT_EQ(allNames(), Texts{"User's"});
    writeEntry(user("/a-b.desktop"), "User's, direct");
    EXPECT_EQ(nameOf("a-b"), "User's, direct");
    EXPECT_EQ(allNames(), Texts{"User's, direct"});
}

TEST_F(InstalledDesktopEntriesTest, InvalidEntriesMaskLaterFolders) {
    const Texts masks{"[Desktop Entry]\nType=Application\nName=A\nExec=a\nHidden=true\n",
                      "[Desktop Entry]\nHidden=true\n",
                      "[Desktop Entry]\nType=Application\nName=A\nExec=a\nTryExec=/nowhere/at-all\n",
                      "[Desktop Entry]\nType=Link\nURL=http://x\n",
                      "",
                      "nonsense"};
    writeEntry(system("/falcon.desktop"), "System's");
    for (const auto &mask : masks) {
        home.write(user("/falcon.desktop"), mask);
        EXPECT_EQ(nameOf("falcon"), "(nothing)") << mask;
        EXPECT_EQ(allNames(), Texts{}) << mask;
    }
}

TEST_F(InstalledDesktopEntriesTest, DanglingLinksMaskNothingAndLinksToDevNullMask) {
    writeEntry(system("/falcon.desktop"), "System's");
    std::filesystem::create_symlink("/nowhere/falcon.desktop", user("/falcon.desktop"));
    EXPECT_EQ(nameOf("falcon"), "System's");
    std::filesystem::remove(user("/falcon.desktop"));
    std::filesystem::create_symlink("/dev/null", user("/falcon.desktop"));
    EXPECT_EQ(nameOf("falcon"), "(nothing)");
}

TEST_F(InstalledDesktopEntriesTest, FoldersNamedLikeEntriesAreIgnored) {
    writeEntry(system("/falcon.desktop"), "System's");
    writeEntry(user("/falcon.desktop/inside.desktop"), "Inside");
    EXPECT_EQ(nameOf("falcon"), "System's");
}

TEST_F(InstalledDesktopEntriesTest, AnEntryWithoutDisplayIsFoundAndMasks) {
    writeEntry(user("/falcon.desktop"), "User's", "NoDisplay=true\n");
    writeEntry(system("/falcon.desktop"), "System's");
    EXPECT_EQ(nameOf("falcon"), "User's");
    EXPECT_EQ(allNames(), Texts{"User's"});
    EXPECT_TRUE(entries().entry("falcon")->noDisplay);
}

TEST_F(InstalledDesktopEntriesTest, TryExecMustBeAProgram) {
    const auto nameWithTryExec = [&](const std::string &program) {
        writeEntry(user("/falcon.desktop"), "Falcon", "TryExec=" + program + "\n");
        return nameOf("falcon");
    };
    home.writeProgram(programs() + "/falcon", "#!/bin/sh\n");
    home.write(programs() + "/text", "no program");
    EXPECT_EQ(nameWithTryExec(""), "Falcon");
    EXPECT_EQ(nameWithTryExec("falcon"), "Falcon");
    EXPECT_EQ(nameWithTryExec(programs() + "/falcon"), "Falcon");
    EXPECT_EQ(nameWithTryExec("missing"), "(nothing)");
    EXPECT_EQ(nameWithTryExec("text"), "(nothing)");
    EXPECT_EQ(nameWithTryExec(programs()), "(nothing)") << "a folder is no program";
}

TEST_F(InstalledDesktopEntriesTest, NamesAreInTheUsersLanguage) {
    writeEntry(user("/falcon.desktop"), "Falcon", "Name[de]=Falke\nName[fr]=Faucon\n");
    const auto entry = entries().entry("falcon");
    EXPECT_EQ(entry->name, "Falke");
    EXPECT_EQ(entry->unlocalizedName, "Falcon");
}

TEST_F(InstalledDesktopEntriesTest, AllHasEachIDOnceInFolderOrder) {
    writeEntry(system("/b.desktop"), "B");
    writeEntry(system("/a.desktop"), "A");
    writeEntry(system("/sub/c.desktop"), "C");
    writeEntry(user("/z.desktop"), "Z");
    home.write(user("/notes.txt"), "[Desktop Entry]\nType=Application\nName=No\nExec=no\n");
    EXPECT_EQ(allNames(), (Texts{"Z", "A", "B", "C"}));
}

TEST_F(InstalledDesktopEntriesTest, NestedFoldersListEachEntryOnce) {
    writeEntry(user("/sub/a.desktop"), "A");
    auto nested = places();
    nested.folders = {user(), user("/sub")};
    EXPECT_EQ(InstalledDesktopEntries(nested).all().size(), 1U);
}

TEST_F(InstalledDesktopEntriesTest, AFileElsewhereHasItsOwnNameAsID) {
    writeEntry(home.home() + "/Desktop/My Falcon.desktop", "Falcon");
    EXPECT_EQ(entries().entryAtPath(home.home() + "/Desktop/My Falcon.desktop")->id, "My Falcon");
    EXPECT_FALSE(entries().entryAtPath(home.home() + "/Desktop/none.desktop"));
}

TEST_F(InstalledDesktopEntriesTest, PipesDoNotBlock) {
    std::filesystem::create_directories(user());
    ASSERT_EQ(mkfifo(user("/pipe.desktop").c_str(), 0600), 0);
    EXPECT_EQ(nameOf("pipe"), "(nothing)");
    EXPECT_EQ(allNames(), Texts{});
}

TEST_F(InstalledDesktopEntriesTest, OversizedFilesAreIgnored) {
    const std::string start = "[Desktop Entry]\nType=Application\nName=Big\nExec=big\n";
    const auto fill = [&](std::size_t size) { return start + std::string(size - start.size(), '#'); };
    home.write(user("/big.desktop"), fill(largestDesktopEntry));
    EXPECT_EQ(nameOf("big"), "Big");
    home.write(user("/big.desktop"), fill(largestDesktopEntry + 1));
    EXPECT_EQ(nameOf("big"), "(nothing)");
}

TEST_F(InstalledDesktopEntriesTest, FileNamesThatAreNotUtf8AreIgnored) {
    writeEntry(user("/br\xFCh.desktop"), "No");
    EXPECT_EQ(allNames(), Texts{});
}

TEST_F(InstalledDesktopEntriesTest, EachCallLooksAtTheDisk) {
    const auto installed = entries();
    EXPECT_FALSE(installed.entry("falcon"));
    writeEntry(user("/falcon.desktop"), "Falcon");
    EXPECT_TRUE(installed.entry("falcon"));
    std::filesystem::remove(user("/falcon.desktop"));
    EXPECT_FALSE(installed.entry("falcon"));
}

} // namespace
} // namespace fernhop::freedesktop
