#include "platform/linux/dialogs-qt/TrayMenu.h"

#include "platform/linux/dialogs-qt/QtAlerts.h"

#include <gtest/gtest.h>

#include <QAction>
#include <cstdlib>

namespace fernhop::freedesktop {
namespace {

using ui::Menu, ui::MenuItem;

/// Menus of a toolkit that nobody sees.
class TrayMenuTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        toolkit = std::make_unique<QtAlerts>(asked, "offscreen");
    }
    static void TearDownTestSuite() { toolkit.reset(); }

    static inline const DialogHost asked{
        [](ui::Selector, const Object &) {}, [](const std::string &) { return std::string("web-browser"); },
        [](const std::string &, ui::Color ink) -> std::optional<ui::Drawing> {
            return ui::Drawing{ink, {{{ui::Oval{{0, 0}, 16, 16}}}}};
        },
        [] { return std::nullopt; }, [] { return std::string(); }};

    void fill(std::vector<MenuItem> items) {
        fillMenu(menu, {std::make_shared<const Menu>(Menu{std::move(items)}), asked,
                        [this](ui::Selector selector, const MenuItem &sender) {
                            performed.push_back(std::string(selector) + " " + sender.title);
                        }});
    }
    [[nodiscard]] QAction &action(int place) const { return *menu.actions().at(place); }

    static inline std::unique_ptr<QtAlerts> toolkit;
    std::vector<std::string> performed;
    QMenu menu;
};

TEST_F(TrayMenuTest, ShowsEachItemAsItIs) {
    MenuItem checked("Tom & Jerry_2\t&x", "check:");
    checked.state = ui::ControlState::on;
    MenuItem disabled("Off", "off:");
    disabled.enabled = false;
    disabled.image = std::make_shared<const ui::Image>(ui::SystemSymbol{"link.circle"}, 0, true);
    MenuItem quit("Quit", "quit");
    quit.keyEquivalent = "q";
    fill({checked, disabled, MenuItem::separator(), quit, MenuItem("bad \xff", "")});

    ASSERT_EQ(menu.actions().size(), 5);
    EXPECT_EQ(action(0).text().toStdString(), "Tom && Jerry_2 &&x") << "a tab would begin a shortcut";
    EXPECT_TRUE(action(0).isCheckable() && action(0).isChecked() && action(0).isEnabled());
    EXPECT_TRUE(action(0).icon().isNull());
    EXPECT_FALSE(action(1).isEnabled() || action(1).isCheckable());
    EXPECT_EQ(action(1).icon().pixmap(16).toImage().pixelColor(8, 8), menu.palette().color(QPalette::Text));
    EXPECT_TRUE(action(2).isSeparator());
    EXPECT_EQ(action(3).shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
    EXPECT_EQ(action(4).text(), QStringLiteral("bad \uFFFD"));
}

TEST_F(TrayMenuTest, PerformsAfterTheMenuWasClosedAndEvenWhenItIsGone) {
    fill({MenuItem("One", "act:"), MenuItem("Silent", "")});
    action(0).trigger();
    action(1).trigger();
    EXPECT_TRUE(performed.empty()) << "within the event of the menu";
    menu.clear();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(performed, std::vector<std::string>{"act: One"});
}

TEST_F(TrayMenuTest, SubmenusAreFilledWhenTheyOpen) {
    MenuItem inner("Inner", "");
    inner.submenu = Menu{{MenuItem("Leaf", "leaf")}};
    MenuItem outer("Outer", "");
    outer.submenu = Menu{{inner}};
    fill({outer});

    QMenu *first = action(0).menu();
    ASSERT_TRUE(first);
    EXPECT_TRUE(first->isEmpty());
    emit first->aboutToShow();
    emit first->aboutToShow();
    ASSERT_EQ(first->actions().size(), 1);
    QMenu *second = first->actions().at(0)->menu();
    ASSERT_TRUE(second);
    emit second->aboutToShow();
    ASSERT_EQ(second->actions().size(), 1);
    second->actions().at(0)->trigger();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(performed, std::vector<std::string>{"leaf Leaf"});
}

TEST_F(TrayMenuTest, NoTrayTakesWindowsThatAreNoneOfX11) {
    EXPECT_EQ(toolkit->makeEmbeddedIcon([](auto, const auto &) {}), nullptr);
}

} // namespace
} // namespace fernhop::freedesktop
