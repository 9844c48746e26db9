#include "macos/double/Inspection.h"

#import <AppKit/NSResponder.h>
#include <objc/runtime.h>

namespace fernhop::macos_double {

namespace {

std::map<std::string, long> &ledger() {
    static std::map<std::string, long> counts;
    return counts;
}

void enter(Class type, long change) {
    const std::string name = class_getName(type); // no object is made: there may be no pool
    if ((ledger()[name] += change) == 0)
        ledger().erase(name);
}

} // namespace

const std::map<std::string, long> &liveObjects() {
    return ledger();
}

} // namespace fernhop::macos_double

@implementation FNCountedObject

+ (id)allocWithZone:(NSZone *)zone {
    fernhop::macos_double::enter(self, 1);
    return [super allocWithZone:zone];
}

- (void)dealloc {
    fernhop::macos_double::enter([self class], -1);
    [super dealloc];
}

@end

@implementation NSResponder
@end
