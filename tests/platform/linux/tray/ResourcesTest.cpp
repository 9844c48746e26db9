#include "app/FallbackGlyph.h"
#include "platform/linux/tray/Painter.h"
#include "platform/linux/tray/Pixels.h"
#include "platform/linux/tray/PngFile.h"
#include "support/ChildProcess.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

constexpr const char *folder = FERNHOP_SOURCE_DIR "/resources/";

TEST(ResourcesTest, AreWhatTheDrawingsSay) {
    const support::TemporaryHome home;
    ASSERT_EQ(support::ChildProcess({{FERNHOP_DRAW_RESOURCES, home.root()}, {}, ""}).wait(), 0);
    for (const std::string name : {"MenuBarIconLight.png", "MenuBarIconDark.png", "ContactEmail.png", "X.png",
                                   "discord.png", "redbook.png"}) {
        const auto kept = readPng(folder + name);
        const auto drawn = readPng(home.root() + "/" + name);
        ASSERT_TRUE(kept && drawn) << name;
        EXPECT_EQ(networkPixels(kept.get()), networkPixels(drawn.get())) << name;
        EXPECT_EQ(cairo_image_surface_get_width(kept.get()), 72) << name;
    }
}

TEST(ResourcesTest, TheStatusIconIsBlackForLightBarsAndWhiteForDarkOnes) {
    for (const auto &[name, ink] : {std::pair{"MenuBarIconLight.png", ui::ColorRole::black},
                                    {"MenuBarIconDark.png", ui::ColorRole::white}}) {
        const auto resource = readPng(std::string(folder) + name);
        ASSERT_TRUE(resource);
        // The dot in the middle, at the size of a bar.
        const auto shown = networkPixels(fitted(resource.get(), 18).get());
        const auto drawn = networkPixels(paint(makeFallbackGlyph({ink, 1}), statusImageSide, 18).get());
        const std::size_t centre = (9 * 18 + 9) * 4;
        for (std::size_t channel = 0; channel < 4; ++channel)
            EXPECT_EQ(shown[centre + channel], drawn[centre + channel]) << name;
    }
}

} // namespace
} // namespace fernhop::freedesktop
