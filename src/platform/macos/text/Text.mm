#include "platform/Text.h"

#include "platform/UnicodeText.h"
#include "platform/macos/text/ExactString.h"

namespace fernhop::text {

namespace {

NSRange allOf(const ExactString &string) {
    return NSMakeRange(0, string.length());
}

/// The system's locale with this name, without an encoding ("de_DE.UTF-8").
NSLocale *systemLocale(const Locale &locale) {
    const std::string name = locale.name.substr(0, locale.name.find('.'));
    return [[[NSLocale alloc] initWithLocaleIdentifier:ExactString(name).get()] autorelease];
}

bool isWhitespaceOrNewline(NSCharacterSet *set, const Character &character) {
    const bool isInvalidByte = character.length == 1 && character.value >= 0x80;
    return !isInvalidByte && [set longCharacterIsMember:character.value];
}

} // namespace

const Locale &Locale::current() {
    static const Locale locale = [] {
        @autoreleasepool {
            return Locale{exactText([[NSLocale currentLocale] localeIdentifier])};
        }
    }();
    return locale;
}

const Locale &Locale::currentForSorting() {
    return current();
}

std::string_view trimmed(std::string_view text) {
    @autoreleasepool {
        NSCharacterSet *set = [NSCharacterSet whitespaceAndNewlineCharacterSet];
        while (!text.empty() && isWhitespaceOrNewline(set, characterAt(text, 0)))
            text.remove_prefix(characterAt(text, 0).length);
        while (!text.empty() && isWhitespaceOrNewline(set, lastCharacter(text)))
            text.remove_suffix(lastCharacter(text).length);
        return text;
    }
}

std::string lowercased(std::string_view text) {
    @autoreleasepool {
        return exactText([ExactString(text).get() lowercaseString]);
    }
}

std::optional<Occurrence> firstOccurrence(std::string_view text, std::string_view piece, std::size_t from) {
    if (piece.empty() || from > text.size())
        return std::nullopt;
    @autoreleasepool {
        const ExactString string(text);
        const NSUInteger start = string.indexOfByte(from);
        const NSRange found = [string.get() rangeOfString:ExactString(piece).get()
                                                  options:0
                                                    range:NSMakeRange(start, string.length() - start)];
        if (found.location == NSNotFound)
            return std::nullopt;
        return Occurrence{string.byteOfIndex(found.location), string.byteOfIndex(NSMaxRange(found))};
    }
}

bool endsWith(std::string_view text, std::string_view piece) {
    if (piece.empty())
        return true;
    @autoreleasepool {
        const ExactString string(text);
        const NSRange found = [string.get() rangeOfString:ExactString(piece).get()
                                                  options:NSBackwardsSearch | NSAnchoredSearch
                                                    range:allOf(string)];
        return found.location != NSNotFound;
    }
}

bool localizedCaseInsensitiveContains(std::string_view text, std::string_view pattern, const Locale &locale) {
    if (pattern.empty())
        return false;
    @autoreleasepool {
        const ExactString string(text);
        const ExactString piece(pattern);
        if (&locale == &Locale::current())
            return [string.get() localizedCaseInsensitiveContainsString:piece.get()];
        const NSRange found = [string.get() rangeOfString:piece.get()
                                                  options:NSCaseInsensitiveSearch
                                                    range:allOf(string)
                                                   locale:systemLocale(locale)];
        return found.location != NSNotFound;
    }
}

bool caseInsensitiveEqual(std::string_view left, std::string_view right) {
    @autoreleasepool {
        return [ExactString(left).get() caseInsensitiveCompare:ExactString(right).get()] == NSOrderedSame;
    }
}

std::weak_ordering localizedCaseInsensitiveCompare(std::string_view left, std::string_view right,
                                                   const Locale &locale) {
    @autoreleasepool {
        const ExactString first(left);
        const ExactString second(right);
        const NSComparisonResult order = &locale == &Locale::current()
                                             ? [first.get() localizedCaseInsensitiveCompare:second.get()]
                                             : [first.get() compare:second.get()
                                                            options:NSCaseInsensitiveSearch
                                                              range:allOf(first)
                                                             locale:systemLocale(locale)];
        return static_cast<int>(order) <=> 0;
    }
}

std::string makeUuid() {
    @autoreleasepool {
        return exactText([[NSUUID UUID] UUIDString]);
    }
}

} // namespace fernhop::text
