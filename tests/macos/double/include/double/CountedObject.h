#pragma once
#import <Foundation/Foundation.h>

/// Root of the double's classes: each object is entered in the ledger while it lives.
@interface FNCountedObject : NSObject
@end
