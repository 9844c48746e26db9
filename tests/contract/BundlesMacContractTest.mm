#include "contract/BundlesContract.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/SystemBundles.h"
#include "platform/macos/SystemFiles.h"
#include "support/TemporaryHome.h"

#include <filesystem>

namespace fernhop::contract {
namespace {

/// Application bundles in a private folder.
class MacMachine {
  public:
    [[nodiscard]] const Bundles &bundles() const { return systemBundles; }
    [[nodiscard]] const FileManager &files() const { return systemFiles; }
    [[nodiscard]] ApplicationLayout layout() const { return {{Url::fileUrl(home.home())}, "app"}; }
    [[nodiscard]] Url urlOf(const std::string &name) const { return Url::fileUrl(pathOf(name) + "/"); }
    void install(const std::string &name, const Schemes &schemes) {
        PropertyArray list;
        for (const auto &scheme : schemes)
            list.push_back({scheme});
        PropertyDictionary information{{"CFBundleIdentifier", {name}}, {"CFBundleDisplayName", {name}}};
        if (!list.empty())
            information["CFBundleURLTypes"] = {
                PropertyArray{{PropertyDictionary{{"CFBundleURLSchemes", {std::move(list)}}}}}};
        write(name, information);
    }
    void installUnlisted(const std::string &name) { write(name, {{"CFBundleDisplayName", {name}}}); }
    void remove(const std::string &name) { std::filesystem::remove_all(pathOf(name)); }

  private:
    [[nodiscard]] std::string pathOf(const std::string &name) const {
        return home.home() + "/" + name + ".app";
    }
    void write(const std::string &name, const PropertyDictionary &information) {
        @autoreleasepool {
            NSData *data =
                [NSPropertyListSerialization dataWithPropertyList:macos::toPropertyList({information})
                                                           format:NSPropertyListXMLFormat_v1_0
                                                          options:0
                                                            error:NULL];
            home.write(pathOf(name) + "/Contents/Info.plist",
                       {static_cast<const char *>([data bytes]), [data length]});
        }
    }

    support::TemporaryHome home;
    macos::SystemBundles systemBundles;
    macos::SystemFiles systemFiles;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, BundlesContract, MacMachine);

} // namespace
} // namespace fernhop::contract
