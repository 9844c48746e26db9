#include "macos/ui/InterfaceTest.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ui/NativeImage.h"
#include "platform/macos/ui/Styles.h"
#include "platform/macos/ui/SystemImages.h"

#include <cstdio>
#include <fstream>

namespace fernhop::macos {
namespace {

using macos_double::describe;
using macos_double::originOf;

class ImagesTest : public InterfaceTest {
  protected:
    /// A file that exists until the test ends.
    static std::string file(const std::string &name, const std::string &contents) {
        const std::string path = testing::TempDir() + name;
        std::ofstream(path, std::ios::binary) << contents;
        return path;
    }

    SystemImages images;
};

TEST_F(ImagesTest, FileIsLoadedAtItsSideAndNotTinted) {
    const std::string path = file("Menu Bär Icon.png", "\x89PNG and more");
    const ui::ImageReference image = images.imageWithContentsOfUrl(Url::fileUrl(path), 18);
    ASSERT_TRUE(image);
    EXPECT_EQ(*image, ui::Image(ui::ImageFile{path}, 18, false));
    NSImage *shown = toNSImage(image);
    EXPECT_EQ(originOf(shown), "file " + path);
    EXPECT_EQ([shown size].width, 18);
    EXPECT_EQ([shown size].height, 18);
    EXPECT_FALSE([shown isTemplate]);
    EXPECT_EQ(toNSImage(image), shown);
    std::remove(path.c_str());
}

TEST_F(ImagesTest, InvalidFileGivesNoImage) {
    const std::string path = file("broken.png", "no image");
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(path), 18));
    std::remove(path.c_str());
    EXPECT_FALSE(images.imageWithContentsOfUrl(Url::fileUrl(path), 18));
}

TEST_F(ImagesTest, SymbolHasItsNaturalSizeByDefault) {
    NSImage *natural = toNSImage(images.imageWithSystemSymbolName("link.circle", 0));
    EXPECT_EQ(originOf(natural), "symbol link.circle");
    EXPECT_TRUE([natural isTemplate]);
    EXPECT_EQ([natural size].width, 0);
    EXPECT_EQ([toNSImage(images.imageWithSystemSymbolName("envelope", 18)) size].height, 18);
    EXPECT_FALSE(images.imageWithSystemSymbolName("no.such.symbol", 0));
}

TEST_F(ImagesTest, IconIsFetchedOnce) {
    const ui::ImageReference icon = iconOfFile("/Applications/Bräuser.app", 24);
    ASSERT_TRUE(icon);
    EXPECT_EQ(*icon, ui::Image(ui::ApplicationIcon{"/Applications/Bräuser.app"}, 24, false));
    EXPECT_EQ(originOf(toNSImage(icon)), "icon /Applications/Bräuser.app");
    EXPECT_EQ(toNSImage(icon), toNSImage(icon));
    EXPECT_EQ([toNSImage(icon) size].width, 24);
    EXPECT_EQ(macos_double::recorder().iconsAsked, 1);
}

TEST_F(ImagesTest, DescriptionAloneIsMadeIntoAnImage) {
    const auto shown = [](ui::Image::Source source) {
        return toNSImage(std::make_shared<const ui::Image>(std::move(source), 16, true));
    };
    EXPECT_EQ(originOf(shown(ui::ApplicationIcon{"/A.app"})), "icon /A.app");
    EXPECT_EQ(originOf(shown(ui::SystemSymbol{"envelope"})), "symbol envelope");
    EXPECT_FALSE(shown(ui::SystemSymbol{"no.such.symbol"}));
    EXPECT_FALSE(shown(ui::ImageFile{"/no/such/file.png"}));
    NSImage *drawing = shown(ui::Drawing{{ui::ColorRole::label, 0.5}, {}});
    EXPECT_TRUE([drawing isTemplate]);
    EXPECT_EQ([drawing size].width, 16);
    EXPECT_EQ(macos_double::draw(drawing).steps, std::vector<std::string>{"set label 0.5"});
    EXPECT_FALSE(toNSImage(nullptr));
}

TEST_F(ImagesTest, RolesMapToTheSystemsColours) {
    using enum ui::ColorRole;
    EXPECT_EQ(describe(toNSColor({label, 1})), "label 1");
    EXPECT_EQ(describe(toNSColor({secondaryLabel, 1})), "secondaryLabel 1");
    EXPECT_EQ(describe(toNSColor({tertiaryLabel, 1})), "tertiaryLabel 1");
    EXPECT_EQ(describe(toNSColor({controlAccent, 0.12})), "controlAccent 0.12");
    EXPECT_EQ(describe(toNSColor({separator, 0.45})), "separator 0.45");
    EXPECT_EQ(describe(toNSColor({white, 1})), "white 1");
    EXPECT_EQ(describe(toNSColor({black, 0})), "black 0");
}

TEST_F(ImagesTest, WeightsMapToTheSystemsFonts) {
    const auto expected = [](double size, NSFontWeight weight) {
        return describe([NSFont systemFontOfSize:size weight:weight]);
    };
    EXPECT_EQ(describe(toNSFont({12, ui::FontWeight::regular})), expected(12, NSFontWeightRegular));
    EXPECT_EQ(describe(toNSFont({13, ui::FontWeight::medium})), expected(13, NSFontWeightMedium));
    EXPECT_EQ(describe(toNSFont({17, ui::FontWeight::semibold})), expected(17, NSFontWeightSemibold));
}

} // namespace
} // namespace fernhop::macos
