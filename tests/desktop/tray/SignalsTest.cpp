// What the running Fernhop tells a tray, and that it tells nothing when nothing shows.

#include "desktop/links/LinkSession.h"
#include "platform/linux/tray/SettingsPortal.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <optional>

namespace fernhop::desktoptest {
namespace {

using freedesktop::SettingsPortal;

constexpr const char *appearance = "org.freedesktop.appearance";
constexpr const char *colorScheme = "color-scheme";

class SignalsTest : public testing::Test {
  protected:
    void start() {
        session.startFernhop();
        host.emplace(session.bus->address(), "org.fernhop.Fernhop");
        // The first call may have come before the menu was set; what is said of that comes before the next
        // answer.
        host->settle();
        host->settle();
        host->signals.clear();
    }
    [[nodiscard]] bool told(const char *signal, int times) {
        return support::runUntil([&] { return host->signals[signal] == times; });
    }
    /// The brightest red of what the icon shows and cannot be seen through; nothing: it shows nothing.
    [[nodiscard]] std::optional<int> ink() {
        return brightest([](int alpha) { return alpha == 255; });
    }
    /// Whether something light shows around it.
    [[nodiscard]] bool hasRim() {
        return brightest([](int alpha) { return alpha > 150 && alpha < 255; }) == 255;
    }
    template <typename Counts>
    [[nodiscard]] std::optional<int> brightest(Counts counts) {
        const auto pixmaps = host->itemProperty("IconPixmap");
        GVariant *bytes = nullptr;
        if (!pixmaps || g_variant_n_children(pixmaps.get()) == 0)
            return std::nullopt;
        g_variant_get_child(pixmaps.get(), 0, "(ii@ay)", nullptr, nullptr, &bytes);
        const freedesktop::GVariantPointer owned(bytes);
        gsize size = 0;
        const auto *data = static_cast<const guint8 *>(g_variant_get_fixed_array(bytes, &size, 1));
        std::optional<int> found;
        for (gsize place = 0; place + 3 < size; place += 4)
            if (counts(data[place]))
                found = std::max(found.value_or(0), int{data[place + 1]});
        return found;
    }

    LinkSession session;
    std::optional<freedesktop::Host> host;
};

TEST_F(SignalsTest, ANewThemeIsANewIconOnce) {
    session.startBus();
    const SettingsPortal portal(session.bus->address(), "uint32 0");
    start();
    EXPECT_EQ(ink(), 0);
    EXPECT_TRUE(hasRim()) << "nobody said that panels are light";
    portal.change(appearance, colorScheme, "uint32 1");
    ASSERT_TRUE(told("NewIcon", 1));
    EXPECT_EQ(ink(), 255);

    portal.change(appearance, colorScheme, "uint32 1");
    portal.change(appearance, "accent-color", "(0.1, 0.2, 0.3)");
    portal.change("org.gnome.desktop.interface", colorScheme, "uint32 0");
    portal.change(appearance, colorScheme, "uint32 2");
    ASSERT_TRUE(told("NewIcon", 2));
    EXPECT_EQ(ink(), 0);
    EXPECT_FALSE(hasRim());
    portal.change(appearance, colorScheme, "uint32 0"); // light, as before, though not asked for
    ASSERT_TRUE(told("NewIcon", 3));
    EXPECT_EQ(ink(), 0);
    EXPECT_TRUE(hasRim());
    host->settle();
    EXPECT_EQ(host->signals, (std::map<std::string, int>{{"NewIcon", 3}}));
}

TEST_F(SignalsTest, ACommandThatChangesNothingIsNotTold) {
    session.startBus();
    start();
    EXPECT_EQ(session.fernhop({"restore-on-quit", "off"}), 0);
    host->settle();
    EXPECT_TRUE(host->signals.empty());
    EXPECT_EQ(session.fernhop({"restore-on-quit", "on"}), 0);
    ASSERT_TRUE(told("LayoutUpdated", 1));
    host->settle();
    EXPECT_EQ(host->signals, (std::map<std::string, int>{{"LayoutUpdated", 1}}));
}

} // namespace
} // namespace fernhop::desktoptest
