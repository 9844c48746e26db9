// Leaks an object of one of our classes on request; LeakTest runs it.

#include "platform/macos/Reference.h"

#include <cstring>

@interface FernhopForgotten : NSObject {
    char _contents[100];
}
@end

@implementation FernhopForgotten
@end

namespace {

__attribute__((noinline)) void makeAnObject(bool forget) {
    @autoreleasepool {
        FernhopForgotten *object = [[FernhopForgotten alloc] init];
        if (!forget)
            [object release];
    }
}

} // namespace

int main(int count, char **arguments) {
    makeAnObject(count > 1 && std::strcmp(arguments[1], "forget") == 0);
    return 0;
}
