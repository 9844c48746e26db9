#include "TrayHost.h"
#include "platform/linux/tray/IconFinder.h"
#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/MenuProperties.h"
#include "platform/linux/tray/PngFile.h"
#include "platform/linux/tray/Symbols.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

using Pixel = std::vector<std::uint8_t>;

/// Alpha, red, green, blue.
Pixel pixelAt(cairo_surface_t *image, int column, int row) {
    const auto bytes = networkPixels(image);
    const auto start = bytes.begin() + (row * cairo_image_surface_get_width(image) + column) * 4;
    return {start, start + 4};
}

const Pixel clear = {0, 0, 0, 0}, black = {255, 0, 0, 0}, white = {255, 255, 255, 255};

std::string pngOf(int side, ColorRole ink) {
    const double wide = side;
    const Path all{{MoveTo{{0, 0}}, LineTo{{wide, 0}}, LineTo{{wide, wide}}, LineTo{{0, wide}}, ClosePath{}}};
    return pngBytes(paint({{ink, 1}, {all}}, side, side).get());
}

TEST(PainterTest, PointsGrowUpwardsFromTheLowerLeft) {
    const Path lowerLeft{{MoveTo{{0, 0}}, LineTo{{9, 0}}, LineTo{{9, 9}}, LineTo{{0, 9}}, ClosePath{}}};
    for (const int pixels : {18, 36, 54}) {
        const auto image = paint({{ColorRole::white, 1}, {lowerLeft}}, 18, pixels);
        EXPECT_EQ(pixelAt(image.get(), 0, pixels - 1), white);
        EXPECT_EQ(pixelAt(image.get(), pixels / 2 - 1, pixels / 2), white) << "not crisp at " << pixels;
        EXPECT_EQ(pixelAt(image.get(), pixels / 2, pixels / 2), clear);
        EXPECT_EQ(pixelAt(image.get(), 0, 0), clear);
    }
}

TEST(PainterTest, StrokesWithRoundCapsAndLeavesTheInsideEmpty) {
    const auto line = paint({{ColorRole::black, 1}, {{{MoveTo{{8, 8}}, LineTo{{8, 8}}}, 6}}}, 16, 16);
    EXPECT_EQ(pixelAt(line.get(), 8, 8), black) << "a round cap makes a dot of a point";
    const auto ring = paint({{ColorRole::black, 1}, {{{Oval{{4, 4}, 8, 8}}, 2}}}, 16, 16);
    EXPECT_EQ(pixelAt(ring.get(), 8, 8), clear);
    EXPECT_EQ(pixelAt(ring.get(), 4, 8), black);
}

TEST(PainterTest, FillsAnOvalInItsRectangle) {
    const auto image = paint({{ColorRole::black, 1}, {{{Oval{{2, 6}, 12, 4}}}}}, 16, 16);
    EXPECT_EQ(pixelAt(image.get(), 8, 8), black);
    EXPECT_EQ(pixelAt(image.get(), 3, 8)[0] > 128, true);
    EXPECT_EQ(pixelAt(image.get(), 8, 3), clear);
}

TEST(PixelsTest, AreNotPremultiplied) {
    const Path all{{Oval{{-20, -20}, 60, 60}}};
    const auto image = paint({{ColorRole::white, 0.5}, {all}}, 18, 18);
    EXPECT_EQ(pixelAt(image.get(), 9, 9), (Pixel{128, 255, 255, 255}));
}

TEST(PixelsTest, FitsInProportion) {
    const SurfacePointer wide(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 40, 20));
    const CairoPointer context(cairo_create(wide.get()));
    cairo_paint(context.get());
    const auto image = fitted(wide.get(), 16);
    EXPECT_EQ(pixelAt(image.get(), 8, 8), black);
    EXPECT_EQ(pixelAt(image.get(), 8, 1), clear);
    EXPECT_EQ(pixelAt(image.get(), 8, 14), clear);
    EXPECT_EQ(pixelAt(image.get(), 0, 4), black) << "the edge is pale";
}

TEST(PixelsTest, ARimIsLightAndAroundWhatShows) {
    const Path square{{MoveTo{{8, 8}}, LineTo{{10, 8}}, LineTo{{10, 10}}, LineTo{{8, 10}}, ClosePath{}}};
    for (const int scale : {1, 2}) {
        const auto image = rimmed(paint({{ColorRole::black, 1}, {square}}, 18, 18 * scale).get());
        EXPECT_EQ(pixelAt(image.get(), 9 * scale, 9 * scale), black);
        EXPECT_EQ(pixelAt(image.get(), 8 * scale, 8 * scale), black);
        for (const auto &[column, row] : {std::pair{7, 9}, {10, 9}, {9, 7}, {7, 10}})
            EXPECT_EQ(pixelAt(image.get(), column * scale, row * scale), (Pixel{191, 255, 255, 255}))
                << column << " " << row;
        EXPECT_EQ(pixelAt(image.get(), 6 * scale, 9 * scale), clear);
        EXPECT_EQ(pixelAt(image.get(), 12 * scale, 9 * scale), clear);
    }
}

class ImageFilesTest : public testing::Test {
  protected:
    [[nodiscard]] std::string put(const std::string &contents) const {
        const std::string path = home.root() + "/image.png";
        home.write(path, contents);
        return path;
    }

    support::TemporaryHome home;
    LinuxImages images;
};

TEST_F(ImageFilesTest, TakesAPngAndKeepsItsSizeInPoints) {
    const auto path = put(pngOf(72, ColorRole::black));
    const auto image = images.imageWithContentsOfUrl(Url::fileUrl(path), 18);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->side, 18);
    EXPECT_FALSE(image->isTemplate);
    EXPECT_EQ(pixelAt(render(*image, 44).get(), 22, 22), black);
}

TEST_F(ImageFilesTest, RefusesWhatIsNoImage) {
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(home.root() + "/missing.png"), 18));
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(home.root()), 18)) << "a folder";
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(put("no image")), 18));
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(put("")), 18));
    const auto whole = pngOf(72, ColorRole::black);
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(put(whole.substr(0, whole.size() / 2))), 18));
    const std::string pipe = home.root() + "/pipe.png";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(pipe), 18)) << "a pipe";
}

TEST_F(ImageFilesTest, RefusesAPictureThatClaimsToBeHuge) {
    auto png = pngOf(8, ColorRole::black);
    png[16] = 0x7f; // the first byte of the width
    EXPECT_FALSE(readPng(put(png)));
}

TEST_F(ImageFilesTest, SeesThatAFileWasReplaced) {
    const auto url = Url::fileUrl(put("no image"));
    EXPECT_FALSE(images.imageWithContentsOfUrl(url, 18));
    (void)put(pngOf(72, ColorRole::black));
    EXPECT_TRUE(images.imageWithContentsOfUrl(url, 18));
}

TEST(SymbolsTest, EachSymbolThatIsUsedIsDrawnWithinItsSquare) {
    for (const char *name :
         {"link.circle", "app.badge", "paperplane", "envelope", "bubble.left", "person.2", "book.closed"}) {
        const auto image = LinuxImages().imageWithSystemSymbolName(name, 0);
        ASSERT_TRUE(image) << name;
        EXPECT_TRUE(image->isTemplate) << name;
        const auto pixels = render(*image, 64);
        ASSERT_TRUE(pixels) << name;
        const auto bytes = networkPixels(pixels.get());
        int inked = 0;
        for (std::size_t place = 0; place < 64 * 64; ++place) {
            const auto column = place % 64, row = place / 64;
            const auto alpha = bytes[place * 4];
            inked += alpha > 200 ? 1 : 0;
            const bool isEdge = column % 63 == 0 || row % 63 == 0;
            EXPECT_TRUE(!isEdge || alpha == 0) << name << " is cut at its edge";
        }
        EXPECT_GT(inked, 200) << name;
    }
    EXPECT_FALSE(LinuxImages().imageWithSystemSymbolName("unknown", 0));
    EXPECT_FALSE(LinuxImages().imageWithSystemSymbolName("", 0));
}

class MenuIconsTest : public ImageFilesTest {
  protected:
    /// The icon of an application whose entry has this `Icon` value, at a size in points.
    [[nodiscard]] MenuIcon icon(const std::string &value, double side = 16) {
        entries.icons["/app.desktop"] = value;
        return MenuIcons(finder).icon(
            std::make_shared<const Image>(ApplicationIcon{"/app.desktop"}, side, false));
    }
    /// The picture of an icon that came as data; null when it did not.
    [[nodiscard]] SurfacePointer pictureOf(const MenuIcon &shown) const {
        const auto *data = std::get_if<IconData>(&shown);
        home.write(home.root() + "/shown.png", data ? data->png : "");
        return readPng(home.root() + "/shown.png");
    }

    ListedEntries entries;
    const IconFinder finder{entries, {{}, {home.root() + "/pixmaps"}}};
};

TEST_F(MenuIconsTest, NamesAreSentAndFilesAreDrawn) {
    EXPECT_EQ(icon("org.example.App"), MenuIcon(IconName{"org.example.App"}));
    home.write(home.root() + "/pixmaps/alone.png", pngOf(48, ColorRole::black));
    for (const std::string &value : {put(pngOf(48, ColorRole::black)), std::string("alone")}) {
        const auto picture = pictureOf(icon(value));
        ASSERT_TRUE(picture) << value;
        EXPECT_EQ(cairo_image_surface_get_width(picture.get()), 16);
        EXPECT_EQ(cairo_image_surface_get_height(picture.get()), 16);
        EXPECT_EQ(pixelAt(picture.get(), 8, 8), black);
    }
}

TEST_F(MenuIconsTest, FilesAreDrawnAtTheSizeOfTheImage) {
    const auto path = put(pngOf(8, ColorRole::white));
    for (const auto &[side, pixels] : {std::pair{0.0, 16}, {22.0, 22}, {0.1, 1}, {1e9, 64}}) {
        const auto picture = pictureOf(icon(path, side));
        ASSERT_TRUE(picture) << side;
        EXPECT_EQ(cairo_image_surface_get_width(picture.get()), pixels);
        EXPECT_EQ(pixelAt(picture.get(), pixels / 2, pixels / 2), white);
    }
}

TEST_F(MenuIconsTest, WhatCannotBeDrawnShowsNothing) {
    auto huge = pngOf(8, ColorRole::black);
    huge[16] = 0x7f; // the first byte of the width
    for (const std::string &contents :
         {std::string(), std::string("no image"), huge, pngOf(72, ColorRole::black).substr(0, 100)})
        EXPECT_EQ(icon(put(contents)), MenuIcon());
    EXPECT_EQ(icon("/missing.png"), MenuIcon());
    EXPECT_EQ(icon(home.root()), MenuIcon()) << "a folder";
    EXPECT_EQ(icon("../image.png"), MenuIcon());
    EXPECT_EQ(MenuIcons(finder).icon(nullptr), MenuIcon());
}

} // namespace
} // namespace fernhop::freedesktop
