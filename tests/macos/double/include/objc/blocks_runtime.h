#pragma once
// GNUstep's headers expect this name; the functions are those of the blocks runtime.
#include <Block.h>
