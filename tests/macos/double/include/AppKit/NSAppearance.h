#pragma once
#import <double/CountedObject.h>

typedef NSString *NSAppearanceName;
extern "C" NSAppearanceName const NSAppearanceNameAqua;
extern "C" NSAppearanceName const NSAppearanceNameDarkAqua;

@interface NSAppearance : FNCountedObject {
    NSAppearanceName _name;
}
+ (NSAppearance *)appearanceNamed:(NSAppearanceName)name;
+ (NSAppearance *)currentDrawingAppearance;
@property(readonly, copy) NSAppearanceName name;
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName> *)appearances;
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block;
@end
