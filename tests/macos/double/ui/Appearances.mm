#include "macos/double/ui/System.h"

#import <AppKit/NSAppearance.h>

NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";

namespace {

NSAppearanceName currentName = nil;

} // namespace

@implementation NSAppearance

@synthesize name = _name;

+ (NSAppearance *)appearanceNamed:(NSAppearanceName)name {
    NSAppearance *appearance = [[self new] autorelease];
    appearance->_name = [name copy];
    return appearance;
}

+ (NSAppearance *)currentDrawingAppearance {
    return [self appearanceNamed:currentName ? currentName : fernhop::macos_double::system().appearance];
}

- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName> *)appearances {
    return [appearances containsObject:_name] ? _name : nil;
}

- (void)performAsCurrentDrawingAppearance:(void (^)(void))block {
    NSAppearanceName former = currentName;
    currentName = _name;
    block();
    currentName = former;
}

- (void)dealloc {
    [_name release];
    [super dealloc];
}

@end
