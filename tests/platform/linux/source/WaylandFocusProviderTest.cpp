#include "platform/linux/source/WaylandFocusProvider.h"

#include "FakeProcesses.h"
#include "WaylandTestClient.h"
#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/source/FocusProvider.h"
#include "support/HeadlessKWin.h"
#include "support/HeadlessSway.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace fernhop::freedesktop {
namespace {

using support::runUntil;

/// What holds for every Wayland compositor with one of the protocols for windows.
template <typename Compositor>
class WaylandFocusProviderTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!Compositor::isAvailable())
            GTEST_SKIP() << "the compositor is not installed";
        compositor = std::make_unique<Compositor>();
        client = std::make_unique<support::WaylandTestClient>(display());
        entries.install("org.example.Mail");
        entries.install("org.example.Chat", "", "chat");
    }

    std::string display() const { return *compositor->environment().at("WAYLAND_DISPLAY"); }

    void startProvider() {
        provider = WaylandFocusProvider::connect(display(), matcher);
        if (!provider)
            throw std::runtime_error("the compositor offers no protocol for windows");
        provider->observe([this](const auto &application) {
            seen.push_back(application->bundleIdentifier().value_or("(unknown)"));
        });
    }

    std::optional<std::string> front() const {
        const auto application = provider->frontmost();
        return application ? std::optional(application->bundleIdentifier().value_or("(unknown)"))
                           : std::nullopt;
    }

    bool frontBecomes(const std::optional<std::string> &id) {
        return runUntil([&] { return front() == id; });
    }

    std::unique_ptr<Compositor> compositor;
    std::unique_ptr<support::WaylandTestClient> client;
    fakes::FakeDesktopEntries entries;
    support::FakeProcesses kernel;
    Processes processes{kernel.root()};
    ApplicationMatcher matcher{entries, processes, {"org.fernhop.Fernhop", 0}};
    std::unique_ptr<WaylandFocusProvider> provider;
    std::vector<std::string> seen;
};

struct CompositorNames {
    template <typename Compositor>
    static std::string GetName(int) {
        return std::is_same_v<Compositor, support::HeadlessSway> ? "Sway" : "KWin";
    }
};
using Compositors = testing::Types<support::HeadlessSway, support::HeadlessKWin>;
TYPED_TEST_SUITE(WaylandFocusProviderTest, Compositors, CompositorNames);

TYPED_TEST(WaylandFocusProviderTest, FollowsTheActiveWindow) {
    this->startProvider();
    EXPECT_EQ(this->front(), std::nullopt);
    this->client->open("org.example.Mail");
    ASSERT_TRUE(this->frontBecomes("org.example.Mail"));
    auto &chat = this->client->open("chat");
    ASSERT_TRUE(this->frontBecomes("org.example.Chat"));
    this->client->close(chat);
    ASSERT_TRUE(this->frontBecomes("org.example.Mail"));
    EXPECT_EQ(this->seen,
              (std::vector<std::string>{"org.example.Mail", "org.example.Chat", "org.example.Mail"}));
}

TYPED_TEST(WaylandFocusProviderTest, AWindowWithoutIdentityIsAnUnknownApplication) {
    this->startProvider();
    for (const std::string &hostile : {std::string(), std::string("nobody-knows"), std::string(3000, 'x')}) {
        auto &window = this->client->open(hostile);
        ASSERT_TRUE(this->frontBecomes("(unknown)")) << hostile;
        this->client->close(window);
        ASSERT_TRUE(this->frontBecomes(std::nullopt));
    }
}

// Sway sends an app_id only once, KWin each time it changes.
using KWinFocusTest = WaylandFocusProviderTest<support::HeadlessKWin>;

TEST_F(KWinFocusTest, AWindowMaySetItsNameLate) {
    startProvider();
    auto &window = client->open("nobody-knows");
    ASSERT_TRUE(frontBecomes("(unknown)"));
    client->rename(window, "org.example.Mail");
    EXPECT_TRUE(frontBecomes("org.example.Mail"));
}

TYPED_TEST(WaylandFocusProviderTest, KnowsTheWindowThatWasFocusedBefore) {
    this->startProvider();
    this->client->open("org.example.Mail");
    ASSERT_TRUE(this->frontBecomes("org.example.Mail"));
    const auto second = WaylandFocusProvider::connect(this->display(), this->matcher);
    ASSERT_TRUE(second);
    ASSERT_TRUE(second->frontmost());
    EXPECT_EQ(second->frontmost()->bundleIdentifier(), "org.example.Mail");
}

TYPED_TEST(WaylandFocusProviderTest, RaisesTheWindowOfAnApplication) {
    this->startProvider();
    this->client->open("org.example.Mail");
    ASSERT_TRUE(this->frontBecomes("org.example.Mail"));
    this->client->open("chat");
    ASSERT_TRUE(this->frontBecomes("org.example.Chat"));
    EXPECT_TRUE(this->provider->raise({"org.example.Mail", std::nullopt}));
    EXPECT_TRUE(this->frontBecomes("org.example.Mail"));
}

TYPED_TEST(WaylandFocusProviderTest, ReportsNothingAfterTheCompositorDies) {
    this->startProvider();
    this->client->open("org.example.Mail");
    ASSERT_TRUE(this->frontBecomes("org.example.Mail"));
    int ends = 0;
    this->provider->onDisplayEnd([&ends] { ++ends; });
    this->compositor->kill();
    EXPECT_TRUE(this->frontBecomes(std::nullopt));
    EXPECT_FALSE(this->provider->raise({"org.example.Mail", std::nullopt}));
    support::runPending();
    EXPECT_EQ(ends, 1);
}

TYPED_TEST(WaylandFocusProviderTest, IsChosenForItsSession) {
    const auto chosen = makeFocusProvider({"wayland", this->display(), ":99999"},
                                          std::make_shared<ApplicationMatcher>(this->matcher));
    EXPECT_EQ(chosen->name(), (std::is_same_v<TypeParam, support::HeadlessSway> ? "wlroots" : "plasma"));
}

TEST(WaylandFocusProvider, IsNullWithoutACompositor) {
    const fakes::FakeDesktopEntries entries;
    const Processes processes;
    ApplicationMatcher matcher{entries, processes, {"org.fernhop.Fernhop", 0}};
    EXPECT_EQ(WaylandFocusProvider::connect("/nowhere/wayland-0", matcher), nullptr);
}

} // namespace
} // namespace fernhop::freedesktop
