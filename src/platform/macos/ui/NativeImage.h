#pragma once

#include "platform/macos/Reference.h"
#include "platform/ui/Image.h"

#import <AppKit/AppKit.h>

#include <string>
#include <utility>

namespace fernhop::macos {

/// A description of an image together with the loaded image, so it is loaded only once. Main thread only.
class NativeImage : public ui::Image {
  public:
    /// `loaded` is not nil and must not be changed any more.
    NativeImage(Source imageSource, double sideInPoints, bool tintable, Reference<NSImage> loaded)
        : Image(std::move(imageSource), sideInPoints, tintable), image(std::move(loaded)) {}

    const Reference<NSImage> image;
};

/// The icon that the system shows for the file at `path`, `side` points wide and high; never null.
[[nodiscard]] ui::ImageReference iconOfFile(const std::string &path, double side);

/// The image to show: the loaded one, or one made from the description; autoreleased. Nil for null, and when
/// the described image does not exist.
[[nodiscard]] NSImage *toNSImage(const ui::ImageReference &image);

} // namespace fernhop::macos
