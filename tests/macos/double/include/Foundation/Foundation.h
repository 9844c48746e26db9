#pragma once
// GNUstep's Foundation, and below what it lacks of the system's.
#include <Block.h>
#include_next <Foundation/Foundation.h>
