#pragma once

#include "platform/macos/Reference.h"
#include "platform/ui/Image.h"

#import <AppKit/AppKit.h>

#include <string>
#include <utility>

namespace fernhop::macos {

/// A description of an image together with the image itself, so that it is loaded once however often it
/// shows. Main thread only.
class NativeImage : public ui::Image {
  public:
    /// `loaded` is not nil and not changed any more.
    NativeImage(Source imageSource, double sideInPoints, bool tintable, Reference<NSImage> loaded)
        : Image(std::move(imageSource), sideInPoints, tintable), image(std::move(loaded)) {}

    const Reference<NSImage> image;
};

/// The icon that the system shows for the file at `path`, `side` points wide and high; never null.
[[nodiscard]] ui::ImageReference iconOfFile(const std::string &path, double side);

/// The image to show: the one that was loaded, or one made from the description; autoreleased. Nil for null,
/// and for a description of what is not there.
[[nodiscard]] NSImage *toNSImage(const ui::ImageReference &image);

} // namespace fernhop::macos
