// Settings of the sanitizers for every program that uses the double. Our leaks are reported; memory that
// GNUstep and its runtime allocate once and keep until the process ends is not.

#import <Foundation/Foundation.h>
#include <objc/message.h>
#include <sanitizer/lsan_interface.h>

#include <initializer_list>

extern "C" const char *__lsan_default_suppressions();

const char *__lsan_default_suppressions() {
    return "leak:objc_malloc\n" // the runtime's own tables: objects come from elsewhere
           "leak:class_copyMethodList\n";
}

namespace {

/// Sends a message without arguments. Message expressions in this file cannot be used while the program is
/// being loaded.
id send(id receiver, const char *message) {
    const SEL selector = sel_registerName(message);
    return objc_msg_lookup(receiver, selector)(receiver, selector);
}

id classNamed(const char *name) {
    return reinterpret_cast<id>(objc_getClass(name));
}

/// Makes classes allocate their permanent objects while leaks are not counted.
[[maybe_unused]] const bool startedUp = [] {
    const __lsan::ScopedDisabler notCounted;
    const id pool = send(classNamed("NSAutoreleasePool"), "new");
    for (const char *name :
         {"NSArray", "NSMutableArray", "NSDictionary", "NSMutableDictionary", "NSSet", "NSData", "NSDate",
          "NSNull", "NSNumber", "NSString", "NSMutableString", "NSURL"})
        send(classNamed(name), "class");
    send(pool, "release");
    return true;
}();

} // namespace
