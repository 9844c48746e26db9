#pragma once
#import <AppKit/NSUserInterfaceItemIdentification.h>
#import <double/CountedObject.h>

@interface NSTableColumn : FNCountedObject {
    NSUserInterfaceItemIdentifier _identifier;
    CGFloat _width;
}
- (instancetype)initWithIdentifier:(NSUserInterfaceItemIdentifier)identifier;
@property(copy) NSUserInterfaceItemIdentifier identifier;
@property CGFloat width;
@end
