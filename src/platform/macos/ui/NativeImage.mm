#include "platform/macos/ui/NativeImage.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ui/GlyphDrawing.h"
#include "platform/macos/ui/SystemImages.h"

#include <variant>

namespace fernhop::macos {

namespace {

NSSize square(double side) {
    return NSMakeSize(side, side);
}

/// Makes an image from each kind of source; autoreleased, nil when it does not exist.
struct MakeImage {
    const ui::Image &description;

    NSImage *operator()(const ui::ImageFile &file) const {
        NSURL *url = [NSURL fileURLWithPath:toNSString(file.path)];
        NSImage *image = [[[NSImage alloc] initWithContentsOfURL:url] autorelease];
        [image setTemplate:description.isTemplate];
        return image;
    }
    NSImage *operator()(const ui::ApplicationIcon &icon) const {
        return [[NSWorkspace sharedWorkspace] iconForFile:toNSString(icon.path)];
    }
    NSImage *operator()(const ui::SystemSymbol &symbol) const {
        // A symbol is always a template.
        return [NSImage imageWithSystemSymbolName:toNSString(symbol.name) accessibilityDescription:nil];
    }
    NSImage *operator()(const ui::Drawing &drawing) const {
        NSImage *image = imageOfDrawing(drawing, square(description.side));
        [image setTemplate:description.isTemplate];
        return image;
    }
};

NSImage *makeImage(const ui::Image &description) {
    NSImage *image = std::visit(MakeImage{description}, description.source);
    if (description.side > 0)
        [image setSize:square(description.side)];
    return image;
}

/// The description with its image; null when there is none.
ui::ImageReference loaded(ui::Image::Source source, double side, bool isTemplate) {
    @autoreleasepool { // hundreds of icons are loaded in a row
        NSImage *image = makeImage(ui::Image(source, side, isTemplate));
        if (!image)
            return nullptr;
        return std::make_shared<const NativeImage>(std::move(source), side, isTemplate, Reference(image));
    }
}

} // namespace

ui::ImageReference iconOfFile(const std::string &path, double side) {
    return loaded(ui::ApplicationIcon{path}, side, false);
}

NSImage *toNSImage(const ui::ImageReference &image) {
    if (!image)
        return nil;
    const auto *native = dynamic_cast<const NativeImage *>(image.get());
    return native ? [[native->image.get() retain] autorelease] : makeImage(*image);
}

ui::ImageReference SystemImages::imageWithContentsOfUrl(const Url &file, double side) const {
    return loaded(ui::ImageFile{file.path()}, side, false);
}

ui::ImageReference SystemImages::imageWithSystemSymbolName(const std::string &name, double side) const {
    return loaded(ui::SystemSymbol{name}, side, true);
}

} // namespace fernhop::macos
