#include "platform/linux/dialogs-qt/XEmbedIcon.h"

#include "ToolkitApplication.h"

#include <QAction>
#include <string>
#include <vector>

namespace fernhop::freedesktop {
namespace {

/// Menus of a toolkit that nobody sees.
class XEmbedMenuTest : public ToolkitApplication {
  protected:
    /// Fills the menu from its items as they are on the bus.
    void fill(const std::string &items) {
        const GVariantPointer layout(
            g_variant_ref_sink(g_variant_new_parsed(("(0, @a{sv} {}, @av [" + items + "])").c_str())));
        fillMenu(menu, layout.get(), [this](std::int32_t id) { clicked.push_back(id); });
    }
    [[nodiscard]] static std::string item(int id, const std::string &properties,
                                          const std::string &children = "") {
        return "<(" + std::to_string(id) + ", @a{sv} {" + properties + "}, @av [" + children + "])>";
    }
    [[nodiscard]] QAction &action(int place) const { return *menu.actions().at(place); }

    std::vector<std::int32_t> clicked;
    QMenu menu;
};

TEST_F(XEmbedMenuTest, ShowsEachItemAsItIs) {
    fill(item(1, "'label': <'Tom & Jerry__2'>, 'toggle-type': <'checkmark'>, 'toggle-state': <1>") + "," +
         item(2, "'label': <'Off'>, 'enabled': <false>, 'icon-name': <'no-such-icon'>") + "," +
         item(3, "'type': <'separator'>") + "," +
         item(4, "'label': <'Quit'>, 'shortcut': <[['Control', 'q']]>"));

    ASSERT_EQ(menu.actions().size(), 4);
    EXPECT_EQ(action(0).text().toStdString(), "Tom && Jerry_2");
    EXPECT_TRUE(action(0).isCheckable() && action(0).isChecked() && action(0).isEnabled());
    EXPECT_TRUE(action(0).icon().isNull());
    EXPECT_FALSE(action(1).isEnabled() || action(1).isCheckable());
    EXPECT_FALSE(action(1).icon().isNull());
    EXPECT_TRUE(action(2).isSeparator());
    EXPECT_EQ(action(3).shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
}

TEST_F(XEmbedMenuTest, ClicksAreToldAfterTheMenuWasClosed) {
    fill(item(7, "'label': <'One'>"));
    action(0).trigger();
    EXPECT_TRUE(clicked.empty()) << "within the event of the menu";
    menu.clear();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(clicked, std::vector<std::int32_t>{7});
}

TEST_F(XEmbedMenuTest, SubmenusAreFilledWhenTheyOpen) {
    const std::string submenu = "'children-display': <'submenu'>";
    fill(item(1, submenu, item(2, submenu, item(3, "'label': <'Leaf'>"))));

    QMenu *first = action(0).menu();
    ASSERT_TRUE(first);
    EXPECT_TRUE(first->isEmpty());
    Q_EMIT first->aboutToShow();
    Q_EMIT first->aboutToShow();
    ASSERT_EQ(first->actions().size(), 1);
    QMenu *second = first->actions().at(0)->menu();
    ASSERT_TRUE(second);
    Q_EMIT second->aboutToShow();
    ASSERT_EQ(second->actions().size(), 1);
    second->actions().at(0)->trigger();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(clicked, std::vector<std::int32_t>{3});
}

} // namespace
} // namespace fernhop::freedesktop
