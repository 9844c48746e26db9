#pragma once
#import <double/CountedObject.h>

@interface NSResponder : FNCountedObject
@end
