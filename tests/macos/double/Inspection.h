#pragma once

#import <AppKit/NSAlert.h>
#import <AppKit/NSColor.h>
#import <AppKit/NSFont.h>
#import <AppKit/NSImage.h>
#import <AppKit/NSStatusItem.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// A colour as resolved for the current appearance.
struct CGColor {
    std::string description; ///< "controlAccent 0.12 in NSAppearanceNameAqua"
};

/// The state of the double that tests read and set beyond the interface of the system's classes.
namespace fernhop::macos_double {

/// The living objects by class, without those that the double itself keeps.
[[nodiscard]] const std::map<std::string, long> &liveObjects();

/// "role alpha", "nil" for nil.
[[nodiscard]] std::string describe(NSColor *color);
/// The description; "none" for null.
[[nodiscard]] std::string describe(CGColorRef color);
/// "size weight".
[[nodiscard]] std::string describe(NSFont *font);
/// The source of an image: "symbol NAME", "file PATH", "icon PATH" or "drawing"; "nil" for nil.
[[nodiscard]] std::string originOf(NSImage *image);
/// An image with this source; autoreleased.
[[nodiscard]] NSImage *imageOfOrigin(NSString *origin);

/// The steps of an image's drawing handler.
struct Drawn {
    bool answer;
    std::vector<std::string> steps; ///< "set white 1", "stroke 1.8 cap 1: move 4 9.6, line 1 2, close"
};
[[nodiscard]] Drawn draw(NSImage *image);

/// Sets the appearance of the whole system and notifies the views of the open alert.
void setSystemAppearance(NSAppearanceName name);

/// The status items in the bar, in the order of their creation.
[[nodiscard]] std::vector<NSStatusItem *> statusItems();

/// Operates the open alert and returns the response.
using User = std::function<NSModalResponse(NSAlert *alert)>;
void setUser(User user);

} // namespace fernhop::macos_double
