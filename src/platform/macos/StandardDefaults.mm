#include "platform/macos/StandardDefaults.h"

#include "platform/macos/Conversions.h"

namespace fernhop::macos {

namespace {

NSUserDefaults *defaults() {
    return [NSUserDefaults standardUserDefaults];
}

/// The value of `object` if it has this type.
template <typename Type>
std::optional<Type> contentOf(id object) {
    const auto value = fromPropertyList(object);
    const Type *content = value ? value->as<Type>() : nullptr;
    return content ? std::optional(*content) : std::nullopt;
}

} // namespace

std::optional<PropertyDictionary> StandardDefaults::dictionaryForKey(std::string_view key) const {
    @autoreleasepool {
        return contentOf<PropertyDictionary>([defaults() dictionaryForKey:toNSString(key)]);
    }
}

std::optional<std::string> StandardDefaults::dataForKey(std::string_view key) const {
    @autoreleasepool {
        const auto data = contentOf<PropertyData>([defaults() dataForKey:toNSString(key)]);
        return data ? std::optional(data->bytes) : std::nullopt;
    }
}

std::optional<std::string> StandardDefaults::stringForKey(std::string_view key) const {
    @autoreleasepool {
        return textOf([defaults() stringForKey:toNSString(key)]);
    }
}

bool StandardDefaults::boolForKey(std::string_view key) const {
    @autoreleasepool {
        return [defaults() boolForKey:toNSString(key)];
    }
}

// The system reports no failure: it keeps every value of these types, and writes the domain later.
bool StandardDefaults::setObject(std::optional<PropertyValue> value, std::string_view key) {
    @autoreleasepool {
        if (value)
            [defaults() setObject:toPropertyList(*value) forKey:toNSString(key)];
        else
            [defaults() removeObjectForKey:toNSString(key)];
    }
    return true;
}

bool StandardDefaults::setBool(bool value, std::string_view key) {
    @autoreleasepool {
        [defaults() setBool:value forKey:toNSString(key)];
    }
    return true;
}

// Only this process writes the domain, and only on its main thread.
bool StandardDefaults::update(const std::function<void()> &change) {
    change();
    return true;
}

} // namespace fernhop::macos
