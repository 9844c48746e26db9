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

/// A colour as it came out under the appearance that was current.
struct CGColor {
    std::string description; ///< "controlAccent 0.12 in NSAppearanceNameAqua"
};

/// What tests ask of the double beyond the interface of the system's classes, and what they set in it.
namespace fernhop::macos_double {

/// The objects alive now, by their classes; objects of the double's own keeping are not counted.
[[nodiscard]] const std::map<std::string, long> &liveObjects();

/// "role alpha", "nil" for nil.
[[nodiscard]] std::string describe(NSColor *color);
/// The description; "none" for null.
[[nodiscard]] std::string describe(CGColorRef color);
/// "size weight".
[[nodiscard]] std::string describe(NSFont *font);
/// What an image is made of: "symbol NAME", "file PATH", "icon PATH" or "drawing"; "nil" for nil.
[[nodiscard]] std::string originOf(NSImage *image);
/// An image of this origin; autoreleased.
[[nodiscard]] NSImage *imageOfOrigin(NSString *origin);

/// What an image's drawing handler did.
struct Drawn {
    bool answer;
    std::vector<std::string> steps; ///< "set white 1", "stroke 1.8 cap 1: move 4 9.6, line 1 2, close"
};
[[nodiscard]] Drawn draw(NSImage *image);

/// Makes the whole system look so, and tells the views of the open alert.
void setSystemAppearance(NSAppearanceName name);

/// The status items on the bar, in the order of their making.
[[nodiscard]] std::vector<NSStatusItem *> statusItems();

/// Answers alerts: works on the open one and returns the response.
using User = std::function<NSModalResponse(NSAlert *alert)>;
void setUser(User user);

} // namespace fernhop::macos_double
