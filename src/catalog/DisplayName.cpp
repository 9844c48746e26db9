#include "catalog/DisplayName.h"

namespace fernhop {

std::string displayName(const Url &appURL, const Bundle *bundle, const FileManager &fileManager) {
    if (bundle != nullptr) {
        for (const auto *key : {"CFBundleDisplayName", "CFBundleName"}) {
            const auto value = bundle->objectForInfoDictionaryKey(key);
            if (const auto *name = value ? value->as<std::string>() : nullptr)
                return *name;
        }
    }
    return fileManager.displayNameAtPath(appURL.path());
}

} // namespace fernhop
