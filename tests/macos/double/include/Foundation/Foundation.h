#pragma once
// GNUstep's Foundation, and what it lacks.
#include <Block.h>
#include_next <Foundation/Foundation.h>

@interface NSFileManager (Home)
@property(readonly, copy) NSURL *homeDirectoryForCurrentUser;
@end

@interface NSDirectoryEnumerator (Descendants)
- (void)skipDescendants;
@end

@interface NSString (LocalizedContainment)
- (BOOL)localizedCaseInsensitiveContainsString:(NSString *)string;
@end

typedef unsigned int FourCharCode;
