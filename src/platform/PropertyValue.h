#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace fernhop {

struct PropertyValue;

/// A list of values, and values by UTF-8 keys.
using PropertyArray = std::vector<PropertyValue>;
using PropertyDictionary = std::map<std::string, PropertyValue, std::less<>>;

/// Bytes that are not text.
struct PropertyData {
    std::string bytes;

    bool operator==(const PropertyData &) const = default;
};

/// A point in time, in seconds since 2001-01-01 00:00:00 UTC (the epoch of property lists).
struct PropertyDate {
    double seconds;

    bool operator==(const PropertyDate &) const = default;
};

/// A value in a property list: the type of settings and of the values in an Info.plist.
struct PropertyValue {
    std::variant<std::string, std::int64_t, double, bool, PropertyData, PropertyDate, PropertyArray,
                 PropertyDictionary>
        value;

    /// The value as `Type`; null when it has another type.
    template <typename Type>
    [[nodiscard]] const Type *as() const {
        return std::get_if<Type>(&value);
    }

    bool operator==(const PropertyValue &) const = default;
};

} // namespace fernhop
