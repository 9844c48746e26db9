#pragma once

// Toll-free: a string of one framework is a string of the other.
typedef const void *CFTypeRef;
typedef const struct __CFString *CFStringRef;

extern "C" void CFRelease(CFTypeRef object);
