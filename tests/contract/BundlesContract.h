#pragma once

#include "catalog/ApplicationCatalog.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace fernhop::contract {

using Schemes = std::vector<std::string>;

/// What the core relies on with every backend. Included once in each executable, which lists the backends.
template <typename Machine>
class BundlesContract : public testing::Test {
  protected:
    [[nodiscard]] std::unique_ptr<Bundle> open(const std::string &name) const {
        return machine.bundles().bundleWithUrl(machine.urlOf(name));
    }

    Machine machine;
};

TYPED_TEST_SUITE_P(BundlesContract);

TYPED_TEST_P(BundlesContract, MissingBundlesDoNotOpen) {
    EXPECT_FALSE(this->open("falcon"));
}

TYPED_TEST_P(BundlesContract, AnApplicationHasItsIdentifierAndName) {
    this->machine.install("Falcon", {"http"});
    const auto bundle = this->open("Falcon");
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier(), "Falcon");
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleDisplayName"), PropertyValue{"Falcon"});
}

TYPED_TEST_P(BundlesContract, SchemesAreInADictionaryInAnArray) {
    this->machine.install("falcon", {"http", "HTTPS"});
    const auto bundle = this->open("falcon");
    ASSERT_TRUE(bundle);
    const PropertyDictionary type{{"CFBundleURLSchemes", {PropertyArray{{"http"}, {"HTTPS"}}}}};
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleURLTypes"), PropertyValue{PropertyArray{{type}}});
}

TYPED_TEST_P(BundlesContract, MissingKeysAreAbsent) {
    this->machine.install("falcon", {});
    const auto bundle = this->open("falcon");
    ASSERT_TRUE(bundle);
    for (const auto *key : {"CFBundleURLTypes", "NoSuchKey", "", "cfbundledisplayname"})
        EXPECT_EQ(bundle->objectForInfoDictionaryKey(key), std::nullopt) << key;
}

TYPED_TEST_P(BundlesContract, AnUnlistedApplicationOpensWithoutIdentifier) {
    this->machine.installUnlisted("helper");
    const auto bundle = this->open("helper");
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(bundle->objectForInfoDictionaryKey("CFBundleDisplayName"), PropertyValue{"helper"});
}

TYPED_TEST_P(BundlesContract, AnOpenBundleKeepsWhatItRead) {
    this->machine.install("falcon", {"http"});
    const auto bundle = this->open("falcon");
    this->machine.remove("falcon");
    EXPECT_FALSE(this->open("falcon"));
    EXPECT_EQ(bundle->bundleIdentifier(), "falcon");
    EXPECT_TRUE(bundle->objectForInfoDictionaryKey("CFBundleURLTypes"));
}

TYPED_TEST_P(BundlesContract, TheRunningApplicationsIdentifierIsNotEmpty) {
    EXPECT_NE(this->machine.bundles().mainBundleIdentifier().value_or("none"), "");
}

TYPED_TEST_P(BundlesContract, ACatalogListsInstalledApplications) {
    this->machine.install("falcon", {"http"});
    this->machine.install("Editor", {});
    this->machine.installUnlisted("helper");
    const ApplicationCatalog catalog(this->machine.files(), this->machine.bundles(), this->machine.layout());
    EXPECT_EQ(
        catalog.installedApplications({}),
        (std::vector<InstalledApplication>{{"Editor", "Editor", this->machine.urlOf("Editor"), {}},
                                           {"falcon", "falcon", this->machine.urlOf("falcon"), {"http"}}}));
}

REGISTER_TYPED_TEST_SUITE_P(BundlesContract, MissingBundlesDoNotOpen, AnApplicationHasItsIdentifierAndName,
                            SchemesAreInADictionaryInAnArray, MissingKeysAreAbsent,
                            AnUnlistedApplicationOpensWithoutIdentifier, AnOpenBundleKeepsWhatItRead,
                            TheRunningApplicationsIdentifierIsNotEmpty, ACatalogListsInstalledApplications);

} // namespace fernhop::contract
