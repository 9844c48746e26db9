#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/PngFile.h"
#include "support/ChildProcess.h"
#include "support/Folders.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

const std::string folder = support::sourceFolder() + "/resources/";

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
    for (const auto &[name, ink] : {std::pair{"MenuBarIconLight.png", 0}, {"MenuBarIconDark.png", 255}}) {
        const auto resource = readPng(folder + name);
        ASSERT_TRUE(resource);
        // As large as 18 points are on screens of usual and of double density.
        for (const int side : {18, 36}) {
            const auto shown = networkPixels(fitted(resource.get(), side).get());
            int full = 0, partial = 0;
            for (std::size_t place = 0; place < shown.size(); place += 4) {
                const int alpha = shown[place];
                full += alpha > 230 ? 1 : 0;
                partial += alpha > 25 && alpha <= 230 ? 1 : 0;
                EXPECT_TRUE(alpha == 0 || shown[place + 1] == ink) << name;
            }
            EXPECT_GT(full, 50 * side / 18) << name;
            EXPECT_LT(partial, full * 18 / side * 5 / 4) << name << " is blurred at " << side;
        }
    }
}

} // namespace
} // namespace fernhop::freedesktop
