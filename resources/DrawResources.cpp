// Draws the images that Fernhop brings along into the folder that is given: the status icon in both inks, and
// a picture for each way to reach the developer.

#include "app/FallbackGlyph.h"
#include "platform/linux/tray/Painter.h"
#include "platform/linux/tray/PngFile.h"
#include "platform/linux/tray/Symbols.h"

#include <cstdio>
#include <fstream>
#include <string>

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

bool saveGlyph(const std::string &path, ui::ColorRole ink) {
    return save(path, paint(makeFallbackGlyph({ink, 1}), statusImageSide, pixels));
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
        saveGlyph(folder + "MenuBarIconLight.png", ui::ColorRole::black) &&
        saveGlyph(folder + "MenuBarIconDark.png", ui::ColorRole::white) &&
        saveSymbol(folder + "ContactEmail.png", "envelope") && saveSymbol(folder + "X.png", "bubble.left") &&
        saveSymbol(folder + "discord.png", "person.2") && saveSymbol(folder + "redbook.png", "book.closed");
    return saved ? 0 : 1;
}
