#include "platform/linux/dialogs-qt/DialogPalette.h"

#include "platform/linux/dialogs-qt/ToolkitApplication.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fernhop::freedesktop {
namespace {

using enum ui::AppearanceName;

class DialogPaletteTest : public ToolkitApplication {
  protected:
    ~DialogPaletteTest() override { adoptAppearance(std::nullopt); }

    static QPalette adopted(std::optional<ui::AppearanceName> stated) {
        adoptAppearance(stated);
        return QApplication::palette();
    }

    /// The contrast of two colours, 1 to 21, by WCAG 2.
    static double contrast(const QColor &one, const QColor &other) {
        const double bright = luminance(one), dark = luminance(other);
        return (std::max(bright, dark) + 0.05) / (std::min(bright, dark) + 0.05);
    }

  private:
    static double luminance(const QColor &color) {
        const auto linear = [](float part) {
            return part <= 0.04045F ? part / 12.92F : std::pow((part + 0.055F) / 1.055F, 2.4F);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    }
};

TEST_F(DialogPaletteTest, WhereNothingIsAskedForTheThemeDecides) {
    const QPalette theme = adopted(std::nullopt);
    EXPECT_TRUE(isDark(adopted(darkAqua)));
    EXPECT_EQ(adopted(std::nullopt), theme);
}

TEST_F(DialogPaletteTest, ThemeThatIsAsAskedForStays) {
    const QPalette theme = adopted(std::nullopt);
    EXPECT_FALSE(isDark(theme));
    EXPECT_EQ(adopted(aqua), theme);
}

TEST_F(DialogPaletteTest, DarkKeepsTheAccentAndCanBeRead) {
    const QColor accent = adopted(std::nullopt).color(QPalette::Active, QPalette::Highlight);
    const QPalette dark = adopted(darkAqua);
    EXPECT_EQ(dark.color(QPalette::Active, QPalette::Highlight), accent);
    using Pair = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    for (const auto &[text, ground] :
         {Pair{QPalette::WindowText, QPalette::Window}, Pair{QPalette::Text, QPalette::Base},
          Pair{QPalette::ButtonText, QPalette::Button}, Pair{QPalette::ToolTipText, QPalette::ToolTipBase}})
        EXPECT_GT(contrast(dark.color(text), dark.color(ground)), 7) << text;
    EXPECT_GT(contrast(dark.color(QPalette::PlaceholderText), dark.color(QPalette::Base)), 4.5);
}

TEST_F(DialogPaletteTest, RolesFollowThePalette) {
    const QPalette dark = adopted(darkAqua);
    EXPECT_EQ(colorIn(dark, {ui::ColorRole::label, 1}).rgb(), dark.color(QPalette::WindowText).rgb());
    EXPECT_EQ(colorIn(dark, {ui::ColorRole::controlAccent, 0.12}).alphaF(),
              QColor::fromRgbF(0, 0, 0, 0.12F).alphaF());
    const double label = colorIn(dark, {ui::ColorRole::label, 1}).alphaF(),
                 secondary = colorIn(dark, {ui::ColorRole::secondaryLabel, 1}).alphaF(),
                 tertiary = colorIn(dark, {ui::ColorRole::tertiaryLabel, 1}).alphaF();
    EXPECT_GT(label, secondary);
    EXPECT_GT(secondary, tertiary);
}

} // namespace
} // namespace fernhop::freedesktop
