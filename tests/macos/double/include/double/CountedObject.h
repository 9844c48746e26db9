#pragma once
#import <Foundation/Foundation.h>

/// Base class of the double's classes: each living object is listed in the ledger.
@interface FNCountedObject : NSObject
@end
