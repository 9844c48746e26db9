#include "catalog/BundleDescription.h"

#include "platform/Text.h"

#include <algorithm>

namespace fernhop {

namespace {

/// The array in `value`; null when it is none, or when any of its elements is not an `Element`.
template <typename Element>
const PropertyArray *arrayOf(const PropertyValue &value) {
    const auto *array = value.as<PropertyArray>();
    const auto isElement = [](const PropertyValue &item) { return item.as<Element>() != nullptr; };
    return array != nullptr && std::all_of(array->begin(), array->end(), isElement) ? array : nullptr;
}

void addSchemes(const PropertyDictionary &urlType, std::set<std::string> &schemes) {
    const auto found = urlType.find("CFBundleURLSchemes");
    if (found == urlType.end())
        return;
    if (const auto *list = arrayOf<std::string>(found->second)) {
        for (const auto &scheme : *list)
            schemes.insert(text::lowercased(*scheme.as<std::string>()));
    }
}

} // namespace

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

std::set<std::string> declaredSchemes(const Bundle &bundle) {
    std::set<std::string> schemes;
    const auto value = bundle.objectForInfoDictionaryKey("CFBundleURLTypes");
    if (const auto *urlTypes = value ? arrayOf<PropertyDictionary>(*value) : nullptr) {
        for (const auto &urlType : *urlTypes)
            addSchemes(*urlType.as<PropertyDictionary>(), schemes);
    }
    return schemes;
}

} // namespace fernhop
