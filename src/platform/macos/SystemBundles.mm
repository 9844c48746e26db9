#include "platform/macos/SystemBundles.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"

namespace fernhop::macos {

namespace {

class SystemBundle : public Bundle {
  public:
    explicit SystemBundle(Reference<NSBundle> opened) : bundle(std::move(opened)) {}

    std::optional<std::string> bundleIdentifier() const override {
        @autoreleasepool {
            return textOf([bundle.get() bundleIdentifier]);
        }
    }

    std::optional<PropertyValue> objectForInfoDictionaryKey(std::string_view key) const override {
        @autoreleasepool {
            return fromPropertyList([bundle.get() objectForInfoDictionaryKey:toNSString(key)]);
        }
    }

  private:
    Reference<NSBundle> bundle;
};

} // namespace

std::unique_ptr<Bundle> SystemBundles::bundleWithUrl(const Url &url) const {
    @autoreleasepool {
        auto bundle = Reference<NSBundle>::adopting([[NSBundle alloc] initWithURL:toNSURL(url)]);
        return bundle ? std::make_unique<SystemBundle>(std::move(bundle)) : nullptr;
    }
}

std::optional<std::string> SystemBundles::mainBundleIdentifier() const {
    @autoreleasepool {
        return textOf([[NSBundle mainBundle] bundleIdentifier]);
    }
}

std::optional<Url> SystemBundles::urlForResource(std::string_view name, std::string_view extension) const {
    @autoreleasepool {
        return fromNSURL([[NSBundle mainBundle] URLForResource:toNSString(name)
                                                 withExtension:toNSString(extension)]);
    }
}

} // namespace fernhop::macos
