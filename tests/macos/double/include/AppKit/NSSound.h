#pragma once
#import <Foundation/Foundation.h>

extern "C" void NSBeep(void);
