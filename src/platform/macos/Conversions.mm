#include "platform/macos/Conversions.h"

#include "platform/UnicodeText.h"

#include <variant>

namespace fernhop::macos {

namespace {

std::u16string unitsOf(NSString *string) {
    static_assert(sizeof(unichar) == sizeof(char16_t));
    std::u16string units([string length], u'\0');
    [string getCharacters:reinterpret_cast<unichar *>(units.data()) range:NSMakeRange(0, units.size())];
    return units;
}

NSString *stringOf(const std::u16string &units) {
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(units.data())
                                   length:units.size()];
}

bool isBoolean(NSNumber *number) {
    // The two Booleans are single objects; a number with the same value is another object.
    return number == [NSNumber numberWithBool:YES] || number == [NSNumber numberWithBool:NO];
}

PropertyValue valueOfNumber(NSNumber *number) {
    if (isBoolean(number))
        return {static_cast<bool>([number boolValue])};
    const std::string_view type = [number objCType];
    if (type == @encode(double) || type == @encode(float))
        return {[number doubleValue]};
    return {std::int64_t{[number longLongValue]}};
}

PropertyData dataOf(NSData *data) {
    return {{static_cast<const char *>([data bytes]), [data length]}};
}

PropertyArray valuesOf(NSArray *array) {
    PropertyArray result;
    for (id member in array)
        if (auto value = fromPropertyList(member))
            result.push_back(std::move(*value));
    return result;
}

PropertyDictionary valuesOf(NSDictionary *dictionary) {
    PropertyDictionary result;
    for (id key in dictionary) {
        const auto name = textOf(key);
        auto value = fromPropertyList([dictionary objectForKey:key]);
        if (name && value)
            result.emplace(*name, std::move(*value));
    }
    return result;
}

id objectOf(const std::string &text) {
    return toNSString(text);
}

id objectOf(std::int64_t number) {
    return [NSNumber numberWithLongLong:number];
}

id objectOf(double number) {
    return [NSNumber numberWithDouble:number];
}

id objectOf(bool truth) {
    return [NSNumber numberWithBool:truth];
}

id objectOf(const PropertyData &data) {
    return [NSData dataWithBytes:data.bytes.data() length:data.bytes.size()];
}

id objectOf(const PropertyDate &date) {
    return [NSDate dateWithTimeIntervalSinceReferenceDate:date.seconds];
}

id objectOf(const PropertyArray &array) {
    NSMutableArray *result = [NSMutableArray arrayWithCapacity:array.size()];
    for (const PropertyValue &value : array)
        [result addObject:toPropertyList(value)];
    return result;
}

id objectOf(const PropertyDictionary &dictionary) {
    NSMutableDictionary *result = [NSMutableDictionary dictionaryWithCapacity:dictionary.size()];
    for (const auto &[key, value] : dictionary)
        [result setObject:toPropertyList(value) forKey:toNSString(key)];
    return result;
}

} // namespace

NSString *toNSString(std::string_view text) {
    return stringOf(text::withoutLoneSurrogates(text::toUtf16(text)));
}

std::string fromNSString(NSString *string) {
    return text::toUtf8(text::withoutLoneSurrogates(unitsOf(string)));
}

std::optional<std::string> textOf(id object) {
    if (![object isKindOfClass:[NSString class]])
        return std::nullopt;
    return fromNSString(object);
}

NSURL *toNSURL(const Url &url) {
    return [NSURL URLWithString:toNSString(url.absoluteString())];
}

std::optional<Url> fromNSURL(NSURL *url) {
    return Url::parse(fromNSString([url absoluteString]));
}

id toPropertyList(const PropertyValue &value) {
    return std::visit([](const auto &content) { return objectOf(content); }, value.value);
}

std::optional<PropertyValue> fromPropertyList(id object) {
    if (auto text = textOf(object))
        return PropertyValue{std::move(*text)};
    if ([object isKindOfClass:[NSNumber class]])
        return valueOfNumber(object);
    if ([object isKindOfClass:[NSData class]])
        return PropertyValue{dataOf(object)};
    if ([object isKindOfClass:[NSDate class]])
        return PropertyValue{PropertyDate{[static_cast<NSDate *>(object) timeIntervalSinceReferenceDate]}};
    if ([object isKindOfClass:[NSArray class]])
        return PropertyValue{valuesOf(static_cast<NSArray *>(object))};
    if ([object isKindOfClass:[NSDictionary class]])
        return PropertyValue{valuesOf(static_cast<NSDictionary *>(object))};
    return std::nullopt;
}

} // namespace fernhop::macos
