#include "catalog/ApplicationCatalog.h"
#include "fakes/FakeApplications.h"
#include "platform/linux/applications/DesktopBundles.h"
#include "platform/linux/applications/PosixFileManager.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fernhop {
namespace {

using Schemes = std::vector<std::string>;

/// Bundles in memory.
class FakeMachine {
  public:
    [[nodiscard]] const Bundles &bundles() const { return disk; }
    [[nodiscard]] const FileManager &files() const { return disk; }
    [[nodiscard]] ApplicationLayout layout() const { return {{Url::fileUrl("/Applications")}, "app"}; }
    [[nodiscard]] Url urlOf(const std::string &name) const { return Url::fileUrl(pathOf(name)); }
    void install(const std::string &name, const Schemes &schemes) {
        disk.installApplication(pathOf(name), name, name, schemes);
    }
    void installUnlisted(const std::string &name) {
        disk.install(pathOf(name), {std::nullopt, {{"CFBundleDisplayName", {name}}}});
    }
    void remove(const std::string &name) { disk.remove(pathOf(name)); }

  private:
    [[nodiscard]] static std::string pathOf(const std::string &name) {
        return "/Applications/" + name + ".app";
    }

    fakes::FakeApplications disk;
};

/// Desktop entries in private folders.
class LinuxMachine {
  public:
    [[nodiscard]] const Bundles &bundles() const { return desktopBundles; }
    [[nodiscard]] const FileManager &files() const { return manager; }
    [[nodiscard]] ApplicationLayout layout() const { return freedesktop::applicationLayout(places); }
    [[nodiscard]] Url urlOf(const std::string &name) const { return Url::fileUrl(pathOf(name)); }
    void install(const std::string &name, const Schemes &schemes) {
        std::string types;
        for (const auto &scheme : schemes)
            types += "x-scheme-handler/" + scheme + ";";
        write(name, "MimeType=" + types + "\n");
    }
    void installUnlisted(const std::string &name) { write(name, "NoDisplay=true\n"); }
    void remove(const std::string &name) { std::filesystem::remove(pathOf(name)); }

  private:
    [[nodiscard]] std::string pathOf(const std::string &name) const {
        return home.applications() + "/" + name + ".desktop";
    }
    void write(const std::string &name, const std::string &keys) {
        home.write(pathOf(name),
                   "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=/bin/true %u\n" + keys);
    }

    support::TemporaryHome home;
    freedesktop::ApplicationPlaces places{{home.applications()}, {}, {}, home.home()};
    freedesktop::InstalledDesktopEntries entries{places};
    freedesktop::DesktopBundles desktopBundles{entries};
    freedesktop::PosixFileManager manager{home.home()};
};

template <typename Machine>
class BundlesContract : public testing::Test {
  protected:
    [[nodiscard]] std::unique_ptr<Bundle> open(const std::string &name) const {
        return machine.bundles().bundleWithUrl(machine.urlOf(name));
    }

    Machine machine;
};

using Machines = testing::Types<FakeMachine, LinuxMachine>;
TYPED_TEST_SUITE(BundlesContract, Machines);

TYPED_TEST(BundlesContract, WhereNothingIsNothingOpens) {
    EXPECT_FALSE(this->open("falcon"));
    EXPECT_FALSE(this->machine.bundles().bundleWithUrl(Url::fileUrl("/")));
}

TYPED_TEST(BundlesContract, AnApplicationHasItsIdentifierAndName) {
    this->machine.install("Falcon", {"http"});
    const auto bundle = this->open("Falcon");
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier(), "Falcon");
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleDisplayName"), PropertyValue{"Falcon"});
}

TYPED_TEST(BundlesContract, SchemesStandInADictionaryInAnArray) {
    this->machine.install("falcon", {"http", "HTTPS"});
    const auto bundle = this->open("falcon");
    ASSERT_TRUE(bundle);
    const PropertyDictionary type{{"CFBundleURLSchemes", {PropertyArray{{"http"}, {"HTTPS"}}}}};
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleURLTypes"), PropertyValue{PropertyArray{{type}}});
}

TYPED_TEST(BundlesContract, WhatIsNotSaidIsAbsent) {
    this->machine.install("falcon", {});
    const auto bundle = this->open("falcon");
    ASSERT_TRUE(bundle);
    for (const auto *key : {"CFBundleURLTypes", "NoSuchKey", "", "cfbundledisplayname"})
        EXPECT_EQ(bundle->objectForInfoDictionaryKey(key), std::nullopt) << key;
}

TYPED_TEST(BundlesContract, AnApplicationThatIsNotToBeListedOpensWithoutIdentifier) {
    this->machine.installUnlisted("helper");
    const auto bundle = this->open("helper");
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleDisplayName"), PropertyValue{"helper"});
}

TYPED_TEST(BundlesContract, AnOpenBundleKeepsWhatItRead) {
    this->machine.install("falcon", {"http"});
    const auto bundle = this->open("falcon");
    this->machine.remove("falcon");
    EXPECT_FALSE(this->open("falcon"));
    EXPECT_EQ(bundle->bundleIdentifier(), "falcon");
    EXPECT_TRUE(bundle->objectForInfoDictionaryKey("CFBundleURLTypes"));
}

TYPED_TEST(BundlesContract, TheRunningApplicationsIdentifierIsNotEmpty) {
    EXPECT_NE(this->machine.bundles().mainBundleIdentifier().value_or("none"), "");
}

TYPED_TEST(BundlesContract, ACatalogListsWhatIsInstalled) {
    this->machine.install("falcon", {"http"});
    this->machine.install("Editor", {});
    this->machine.installUnlisted("helper");
    const ApplicationCatalog catalog(this->machine.files(), this->machine.bundles(), this->machine.layout());
    EXPECT_EQ(
        catalog.installedApplications({}),
        (std::vector<InstalledApplication>{{"Editor", "Editor", this->machine.urlOf("Editor"), {}},
                                           {"falcon", "falcon", this->machine.urlOf("falcon"), {"http"}}}));
}

} // namespace
} // namespace fernhop
