// Operations that GNUstep's strings lack compared with the Mac's, by ICU: full case mapping, canonical
// equivalence, the rules of a locale.

#include "platform/UnicodeText.h"
#include "platform/linux/text/ComparisonForm.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>
#include <unicode/ucol.h>
#include <unicode/ustring.h>

#include <memory>
#include <string>
#include <vector>

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

namespace {

using namespace fernhop::text;

using Find = NSRange (*)(NSString *, SEL, NSString *, NSStringCompareOptions, NSRange, NSLocale *);
using Compare = NSComparisonResult (*)(NSString *, SEL, NSString *, NSStringCompareOptions, NSRange, id);

Find gnustepFind;
Compare gnustepCompare;

const UChar *unicode(const std::u16string &units) {
    return units.data();
}

std::u16string unitsOf(NSString *string, NSRange range) {
    std::u16string units(range.length, u'\0');
    [string getCharacters:reinterpret_cast<unichar *>(units.data()) range:range];
    return units;
}

std::u16string unitsOf(NSString *string) {
    return unitsOf(string, NSMakeRange(0, [string length]));
}

NSString *stringOf(const std::u16string &units) {
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(units.data())
                                   length:units.size()];
}

std::string localeName(id locale) {
    return [locale isKindOfClass:[NSLocale class]] ? [[locale localeIdentifier] UTF8String] : "";
}

ComparisonForm formOf(const std::string &text, NSStringCompareOptions options, id locale) {
    return options & NSCaseInsensitiveSearch ? ComparisonForm::caseless(text, caseRules({localeName(locale)}))
                                             : ComparisonForm::plain(text);
}

NSRange find(NSString *self, SEL, NSString *piece, NSStringCompareOptions options, NSRange range,
             NSLocale *locale) {
    constexpr NSStringCompareOptions known = NSCaseInsensitiveSearch | NSBackwardsSearch | NSAnchoredSearch;
    constexpr NSStringCompareOptions atTheEnd = NSBackwardsSearch | NSAnchoredSearch;
    const auto direction = options & atTheEnd;
    if ((options & ~known) != 0 || (direction != 0 && direction != atTheEnd))
        return gnustepFind(self, @selector(rangeOfString:options:range:locale:), piece, options, range,
                           locale);
    const std::string text = toUtf8(unitsOf(self, range));
    const ComparisonForm sought = formOf(toUtf8(unitsOf(piece)), options, locale);
    const ComparisonForm form = formOf(text, options, locale);
    if (direction == atTheEnd)
        return form.endsWith(sought) ? NSMakeRange(range.location, range.length) : NSMakeRange(NSNotFound, 0);
    const auto found = form.find(sought, 0);
    if (!found)
        return NSMakeRange(NSNotFound, 0);
    const auto units = [&text](std::size_t start, std::size_t end) {
        return toUtf16(std::string_view(text).substr(start, end - start)).size();
    };
    return NSMakeRange(range.location + units(0, found->start), units(found->start, found->end));
}

NSRange findWithoutLocale(NSString *self, SEL selector, NSString *piece, NSStringCompareOptions options,
                          NSRange range) {
    return find(self, selector, piece, options, range, nil);
}

NSComparisonResult resultOf(int order) {
    return order < 0 ? NSOrderedAscending : order > 0 ? NSOrderedDescending : NSOrderedSame;
}

NSComparisonResult collate(NSString *self, NSString *other, const std::string &locale) {
    UErrorCode status = U_ZERO_ERROR;
    // GNUstep's name for the locale of a process without one; in ICU that name has a different sorting order.
    const bool isRoot = locale.empty() || locale == "en_US_POSIX";
    const std::unique_ptr<UCollator, decltype(&ucol_close)> collator(
        ucol_open(isRoot ? "" : locale.c_str(), &status), ucol_close);
    ucol_setStrength(collator.get(), UCOL_SECONDARY);
    const auto left = unitsOf(self);
    const auto right = unitsOf(other);
    return resultOf(ucol_strcoll(collator.get(), unicode(left), static_cast<int32_t>(left.size()),
                                 unicode(right), static_cast<int32_t>(right.size())));
}

NSComparisonResult compare(NSString *self, SEL selector, NSString *other, NSStringCompareOptions options,
                           NSRange range, id locale) {
    if (options == NSCaseInsensitiveSearch && [locale isKindOfClass:[NSLocale class]])
        return collate([self substringWithRange:range], other, localeName(locale));
    return gnustepCompare(self, selector, other, options, range, locale);
}

NSComparisonResult compareInCurrentLocale(NSString *self, SEL, NSString *other) {
    return collate(self, other, localeName([NSLocale currentLocale]));
}

NSComparisonResult compareWithoutCase(NSString *self, SEL, NSString *other) {
    const auto form = [](NSString *string) {
        return formOf(toUtf8(unitsOf(string)), NSCaseInsensitiveSearch, nil);
    };
    return resultOf(form(self).bytes().compare(form(other).bytes()));
}

NSString *lowercase(NSString *self, SEL) {
    const auto units = unitsOf(self);
    std::u16string lower(units.size() * 3, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const auto length = u_strToLower(lower.data(), static_cast<int32_t>(lower.size()), unicode(units),
                                     static_cast<int32_t>(units.size()), "", &status);
    lower.resize(static_cast<std::size_t>(length));
    return stringOf(lower);
}

bool isString(Class type) {
    while (type && type != [NSString class])
        type = class_getSuperclass(type);
    return type != Nil;
}

/// Converts a function to the runtime's type, or back. The intermediate type suppresses the compiler's
/// warning.
template <typename To, typename From>
To asFunction(From function) {
    return reinterpret_cast<To>(reinterpret_cast<void (*)()>(function));
}

/// Replaces `selector` in all string classes.
template <typename Function>
void replace(SEL selector, Function function) {
    std::vector<Class> classes(static_cast<std::size_t>(objc_getClassList(nullptr, 0)));
    const int count = objc_getClassList(classes.data(), static_cast<int>(classes.size()));
    const char *types = method_getTypeEncoding(class_getInstanceMethod([NSString class], selector));
    for (int index = 0; index < count; ++index)
        if (isString(classes[static_cast<std::size_t>(index)]))
            class_replaceMethod(classes[static_cast<std::size_t>(index)], selector, asFunction<IMP>(function),
                                types);
}

IMP implementation(SEL selector) {
    return class_getMethodImplementation([NSString class], selector);
}

} // namespace

/// Its loading replaces the methods.
@interface FNUnicode : NSObject
@end

@implementation FNUnicode
+ (void)load {
    gnustepFind = asFunction<Find>(implementation(@selector(rangeOfString:options:range:locale:)));
    gnustepCompare = asFunction<Compare>(implementation(@selector(compare:options:range:locale:)));
    replace(@selector(rangeOfString:options:range:locale:), find);
    replace(@selector(rangeOfString:options:range:), findWithoutLocale);
    replace(@selector(compare:options:range:locale:), compare);
    replace(@selector(localizedCaseInsensitiveCompare:), compareInCurrentLocale);
    replace(@selector(caseInsensitiveCompare:), compareWithoutCase);
    replace(@selector(lowercaseString), lowercase);
}
@end

@implementation NSString (AsOnTheMac)

// GNUstep treats a leading U+FEFF as a byte order mark.
+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length {
    return [[[self alloc] initWithBytes:characters
                                 length:length * sizeof(unichar)
                               encoding:NSUTF16LittleEndianStringEncoding] autorelease];
}

- (BOOL)localizedCaseInsensitiveContainsString:(NSString *)string {
    return [self rangeOfString:string
                       options:NSCaseInsensitiveSearch
                         range:NSMakeRange(0, [self length])
                        locale:[NSLocale currentLocale]]
               .location != NSNotFound;
}

@end

@implementation NSUUID (AsOnTheMac)

// GNUstep's UUIDs are completely random, without version and variant.
- (NSString *)UUIDString {
    unsigned char bytes[16];
    [self getUUIDBytes:bytes];
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    NSMutableString *text = [NSMutableString stringWithCapacity:36];
    for (int index = 0; index < 16; ++index)
        [text appendFormat:index == 4 || index == 6 || index == 8 || index == 10 ? @"-%02X" : @"%02X",
                           bytes[index]];
    return text;
}

@end
