#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace fernhop {

struct PropertyValue;

/// A list of values, and values by their keys, which are UTF-8 text.
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

/// What a property list can hold: the type of settings and of the values in an application's description.
struct PropertyValue {
    std::variant<std::string, std::int64_t, double, bool, PropertyData, PropertyDate, PropertyArray,
                 PropertyDictionary>
        value;

    /// The value as `Type`, or null when it is of another type.
    template <typename Type>
    [[nodiscard]] const Type *as() const {
        return std::get_if<Type>(&value);
    }

    bool operator==(const PropertyValue &) const = default;
};

} // namespace fernhop
