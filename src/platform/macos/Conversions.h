#pragma once

#include "platform/PropertyValue.h"
#include "platform/Url.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

/// All conversions between values of the core and Foundation. Returned objects are autoreleased.
namespace fernhop::macos {

/// The text as a string; each byte that is not valid UTF-8 becomes U+FFFD.
[[nodiscard]] NSString *toNSString(std::string_view text);
/// The string as UTF-8, zero characters included; a lone surrogate becomes U+FFFD. Empty for nil.
[[nodiscard]] std::string fromNSString(NSString *string);
/// The text of an object that is a string; nothing for nil and any other object.
[[nodiscard]] std::optional<std::string> textOf(id object);

/// The URL with the same text.
[[nodiscard]] NSURL *toNSURL(const Url &url);
/// The URL with the same text, resolved against its base; nothing for nil and for a URL without a scheme.
[[nodiscard]] std::optional<Url> fromNSURL(NSURL *url);

/// The value as an object of a property list.
[[nodiscard]] id toPropertyList(const PropertyValue &value);
/// The value of an object of a property list; nothing for nil and for an object that property lists cannot
/// contain. A number is a Boolean only if it was made as one. Members of other classes are omitted.
[[nodiscard]] std::optional<PropertyValue> fromPropertyList(id object);

} // namespace fernhop::macos
