#pragma once
#import <Foundation/Foundation.h>

typedef NSString *NSUserInterfaceItemIdentifier;
