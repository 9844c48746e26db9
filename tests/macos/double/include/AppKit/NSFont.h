#pragma once
#import <double/CountedObject.h>

typedef CGFloat NSFontWeight;
extern "C" const NSFontWeight NSFontWeightRegular;
extern "C" const NSFontWeight NSFontWeightMedium;
extern "C" const NSFontWeight NSFontWeightSemibold;

@interface NSFont : FNCountedObject {
    CGFloat _pointSize;
    NSFontWeight _weight;
}
+ (NSFont *)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight;
@property(readonly) CGFloat pointSize;
@end
