// Draws the images that Fernhop brings along into the folder that is given: the status icon in both inks, and
// a picture for each way to reach the developer.

#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/PngFile.h"
#include "platform/linux/tray/Symbols.h"
#include "statusitem/FallbackGlyph.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace fernhop;
using namespace fernhop::freedesktop;

// Shown 18 points high: crisp on screens of up to four pixels to the point, and in halves and thirds of that.
constexpr int pixels = 72;

bool save(const std::string &path, const SurfacePointer &image) {
    std::ofstream file(path, std::ios::binary);
    file << pngBytes(image.get());
    file.close();
    if (!file)
        std::fprintf(stderr, "%s cannot be written\n", path.c_str());
    return static_cast<bool>(file);
}

ui::Point onCircle(double radius, double angle) {
    constexpr double centre = statusImageSide / 2;
    return {centre + radius * std::cos(angle), centre + radius * std::sin(angle)};
}

/// An arrow that runs clockwise about the middle, a third of the circle to the angle `end` and on with its
/// head.
std::vector<ui::Path> curvedArrow(double end) {
    using namespace ui;
    // In whole points, so that the upper and the lower edge lie between pixels.
    constexpr double radius = 6, width = 2;
    constexpr double sweep = std::numbers::pi * 2 / 3, half = sweep / 2;
    constexpr double headWidth = 5.4, headAngle = 0.72;
    // The handles of a cubic curve lie on the tangents of its arc, here of half the sweep.
    const double turn = std::atan(4.0 / 3 * std::tan(half / 4)), reach = radius / std::cos(turn);
    std::vector<PathElement> shaft{MoveTo{onCircle(radius, end + sweep)}};
    for (const double to : {end + half, end})
        shaft.emplace_back(
            CurveTo{onCircle(radius, to), onCircle(reach, to + half - turn), onCircle(reach, to + turn)});
    return {{std::move(shaft), width},
            {{MoveTo{onCircle(radius + headWidth / 2, end)}, LineTo{onCircle(radius, end - headAngle)},
              LineTo{onCircle(radius - headWidth / 2, end)}, ClosePath{}}}};
}

/// Two arrows circling a dot, as the glyph that is drawn where there is no file, with heads that stand out at
/// the size of a panel.
ui::Drawing statusIcon(ui::ColorRole ink) {
    constexpr double firstEnd = 0.66, dotRadius = 2, centre = statusImageSide / 2;
    auto paths = curvedArrow(firstEnd);
    for (ui::Path &path : curvedArrow(firstEnd + std::numbers::pi))
        paths.push_back(std::move(path));
    paths.push_back({{ui::Oval{{centre - dotRadius, centre - dotRadius}, 2 * dotRadius, 2 * dotRadius}}});
    return {{ink, 1}, std::move(paths)};
}

bool saveStatusIcon(const std::string &path, ui::ColorRole ink) {
    return save(path, paint(statusIcon(ink), statusImageSide, pixels));
}

bool saveSymbol(const std::string &path, const char *name) {
    const auto drawing = symbolNamed(name, {ui::ColorRole::controlAccent, 1});
    return drawing && save(path, paint(*drawing, symbolSide, pixels));
}

} // namespace

int main(int count, char **arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", arguments[0]);
        return 2;
    }
    const std::string folder = std::string(arguments[1]) + "/";
    const bool saved =
        saveStatusIcon(folder + "MenuBarIconLight.png", ui::ColorRole::black) &&
        saveStatusIcon(folder + "MenuBarIconDark.png", ui::ColorRole::white) &&
        saveSymbol(folder + "ContactEmail.png", "envelope") && saveSymbol(folder + "X.png", "bubble.left") &&
        saveSymbol(folder + "discord.png", "person.2") && saveSymbol(folder + "redbook.png", "book.closed");
    return saved ? 0 : 1;
}
