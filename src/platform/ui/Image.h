#pragma once

#include "platform/Object.h"
#include "platform/ui/Drawing.h"

#include <memory>
#include <string>
#include <variant>

namespace fernhop::ui {

/// An image file.
struct ImageFile {
    std::string path;

    bool operator==(const ImageFile &) const = default;
};

/// The icon that the desktop shows for an application.
struct ApplicationIcon {
    std::string path; ///< of the application's bundle

    bool operator==(const ApplicationIcon &) const = default;
};

/// A symbol of the system by its name ("link.circle").
struct SystemSymbol {
    std::string name;

    bool operator==(const SystemSymbol &) const = default;
};

/// The description of an image, which a desktop renders. Shared, and immutable after construction.
class Image : public Object {
  public:
    /// What the image is made from.
    using Source = std::variant<ImageFile, ApplicationIcon, SystemSymbol, Drawing>;

    Image(Source imageSource, double sideInPoints, bool tintable)
        : source(std::move(imageSource)), side(sideInPoints), isTemplate(tintable) {}

    const Source source;
    const double side;     ///< width and height in points; 0: natural size
    const bool isTemplate; ///< whether the desktop may tint it

    bool operator==(const Image &other) const {
        return source == other.source && side == other.side && isTemplate == other.isTemplate;
    }
};

/// An image that may be shared; null: no image.
using ImageReference = std::shared_ptr<const Image>;

/// Whether two references show the same image.
[[nodiscard]] inline bool sameImage(const ImageReference &left, const ImageReference &right) {
    return left == right || (left && right && *left == *right);
}

} // namespace fernhop::ui
