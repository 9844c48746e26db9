#pragma once
#import <AppKit/NSSound.h>
#import <Foundation/Foundation.h>
