#include "platform/linux/tray/EmbeddedTray.h"

#include "TrayHost.h"
#include "platform/linux/source/XConnection.h"
#include "support/PrivateBus.h"
#include "support/PrivateDisplay.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

/// A tray of an X display, from construction to destruction.
class TrayWindow {
  public:
    explicit TrayWindow(const std::string &display) : server(display) {
        const xcb_window_t window = xcb_generate_id(server.get());
        xcb_create_window(server.get(), XCB_COPY_FROM_PARENT, window, server.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const xcb_atom_t selection = server.atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(server.get(), window, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t announcement{};
        announcement.response_type = XCB_CLIENT_MESSAGE;
        announcement.format = 32;
        announcement.window = server.root();
        announcement.type = server.atom("MANAGER");
        announcement.data.data32[1] = selection;
        announcement.data.data32[2] = window;
        xcb_send_event(server.get(), 0, server.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char *>(&announcement));
        server.flush();
        // Once this is answered, the server has done the rest.
        (void)server.atom("done");
    }

  private:
    XConnection server;
};

/// The icons that were shown.
struct Shown {
    int icons = 0; ///< that are there
    int made = 0;
};

class RecordingIcon : public EmbeddedIcon {
  public:
    explicit RecordingIcon(Shown &record) : shown(record) {
        ++shown.icons;
        ++shown.made;
    }
    ~RecordingIcon() override { --shown.icons; }
    RecordingIcon(const RecordingIcon &) = delete;
    RecordingIcon &operator=(const RecordingIcon &) = delete;

    [[nodiscard]] bool isShown() const override { return true; }

  private:
    Shown &shown;
};

class EmbeddedTrayTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!support::PrivateDisplay::isAvailable())
            GTEST_SKIP() << "no private display";
        display = std::make_unique<support::PrivateDisplay>(home);
        tray = makeTray(display->name());
    }

    [[nodiscard]] std::unique_ptr<EmbeddedTray>
    makeTray(const std::string &displayName,
             std::chrono::milliseconds patience = std::chrono::milliseconds(1)) {
        return std::make_unique<EmbeddedTray>(
            hostWatcher,
            EmbeddedTrayPlace{displayName, [this] { return std::make_unique<RecordingIcon>(shown); },
                              patience});
    }
    [[nodiscard]] bool icons(int number) {
        return support::runUntil([&] { return shown.icons == number; });
    }
    /// Everything that is on its way from the bus has arrived.
    void settle() { Host(bus.address(), "org.example").settle(); }

    support::TemporaryHome home;
    support::PrivateBus bus{home};
    BusConnection connection = connectTo(bus.address());
    NotifierWatcher hostWatcher{connection.get()};
    std::unique_ptr<support::PrivateDisplay> display;
    Shown shown;
    std::unique_ptr<EmbeddedTray> tray;
};

TEST_F(EmbeddedTrayTest, ShowsInATrayThatWasThereFirst) {
    const TrayWindow window(display->name());
    EXPECT_TRUE(icons(1));
}

TEST_F(EmbeddedTrayTest, ShowsInATrayThatComesLateOrAgain) {
    settle();
    EXPECT_EQ(shown.made, 0);
    for (int time = 1; time <= 3; ++time) {
        {
            const TrayWindow window(display->name());
            EXPECT_TRUE(icons(1)) << time;
        }
        EXPECT_TRUE(icons(0)) << time;
    }
    EXPECT_EQ(shown.made, 3);
}

TEST_F(EmbeddedTrayTest, GivesWayToAHostAndComesBackWhenThatGoes) {
    const TrayWindow window(display->name());
    ASSERT_TRUE(icons(1));
    {
        const Watcher watcher(bus.address());
        EXPECT_TRUE(icons(0));
    }
    EXPECT_TRUE(icons(1));
}

TEST_F(EmbeddedTrayTest, AWatcherWithoutAHostShowsNothing) {
    const TrayWindow window(display->name());
    Watcher watcher(bus.address(), false);
    ASSERT_TRUE(icons(1));
    watcher.setHost(true);
    EXPECT_TRUE(icons(0));
    watcher.setHost(false);
    EXPECT_TRUE(icons(1));
}

TEST_F(EmbeddedTrayTest, IsNotThereBesideAHost) {
    tray.reset();
    const Watcher watcher(bus.address());
    settle();
    tray = makeTray(display->name());
    const TrayWindow window(display->name());
    settle();
    settle();
    EXPECT_EQ(shown.made, 0);
}

TEST_F(EmbeddedTrayTest, AHostThatComesSoonAfterTheTrayIsWaitedFor) {
    tray.reset();
    tray = makeTray(display->name(), std::chrono::hours(1));
    const TrayWindow window(display->name());
    settle();
    settle();
    EXPECT_EQ(shown.made, 0);
    const Watcher watcher(bus.address());
    EXPECT_TRUE(support::runUntil([this] { return hostWatcher.hasHost().value_or(false); }));
    EXPECT_EQ(shown.made, 0);
}

TEST_F(EmbeddedTrayTest, TellsWhetherItIsShown) {
    EXPECT_FALSE(tray->isShown());
    {
        const TrayWindow window(display->name());
        EXPECT_TRUE(support::runUntil([this] { return tray->isShown(); }));
        EXPECT_FALSE(hostWatcher.hasHost().value_or(false));
    }
    EXPECT_TRUE(support::runUntil([this] { return !tray->isShown(); }));
}

TEST_F(EmbeddedTrayTest, DoesWithoutAnIconWhereNoneCanBeShown) {
    int asked = 0;
    tray.reset();
    tray = std::make_unique<EmbeddedTray>(hostWatcher, EmbeddedTrayPlace{display->name(),
                                                                         [&] {
                                                                             ++asked;
                                                                             return nullptr;
                                                                         },
                                                                         std::chrono::milliseconds(1)});
    const TrayWindow window(display->name());
    ASSERT_TRUE(support::runUntil([&] { return asked == 1; }));
    EXPECT_FALSE(tray->isShown());
}

TEST_F(EmbeddedTrayTest, WithoutADisplayNothingIsMade) {
    tray.reset();
    tray = makeTray("");
    const TrayWindow window(display->name());
    settle();
    EXPECT_EQ(shown.made, 0);
}

TEST_F(EmbeddedTrayTest, GoesWithTheDisplay) {
    const TrayWindow window(display->name());
    ASSERT_TRUE(icons(1));
    display->kill();
    EXPECT_TRUE(icons(0));
}

} // namespace
} // namespace fernhop::freedesktop
