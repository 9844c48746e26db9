#include "dialogs/AddAppRulesTest.h"
#include "platform/ui/ImageView.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using namespace ui;
using enum LayoutAttribute;

TEST_F(AddAppRulesTest, AlertHasItsTexts) {
    lookAt([](const Dialog &) {});
    EXPECT_EQ(lastShown().messageText, "添加 App 浏览器规则");
    EXPECT_EQ(lastShown().informativeText, "选择一个或多个 App，然后为它们指定打开链接时使用的浏览器。");
    EXPECT_EQ(lastShown().buttons, (Names{"添加", "取消"}));
}

TEST_F(AddAppRulesTest, PartsAreStackedVertically) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.container->frameSize, (Size{500, 468}));
        EXPECT_EQ(d.container->subviews.size(), 6u);
        const View &c = *d.container;
        std::vector<Constraint> expected;
        for (const auto &part : c.subviews) {
            EXPECT_FALSE(part->translatesAutoresizingMask);
            expected.push_back(aligned(*part, c, leading));
            expected.push_back(aligned(*part, c, trailing));
        }
        for (const auto &constraint :
             {aligned(*d.header, c, top), pinned(*d.search, top, *d.header, bottom, 14),
              pinned(*d.scroll, top, *d.search, bottom, 10), fixed(*d.scroll, height, 250),
              pinned(*d.label, top, *d.scroll, bottom, 14), pinned(*d.popup, top, *d.label, bottom, 6),
              pinned(*d.note, top, *d.popup, bottom, 12), atMost(*d.note, c, bottom)})
            expected.push_back(constraint);
        EXPECT_EQ(expected.size(), 20u);
        EXPECT_EQ(c.constraints, expected);
    });
}

TEST_F(AddAppRulesTest, HeaderLabelAndNoteHaveTheirTexts) {
    lookAt([](const Dialog &d) {
        const auto text = subview<StackView>(*d.header, 1);
        EXPECT_EQ(subview<TextField>(*text, 0)->stringValue(), "选择 App");
        EXPECT_EQ(subview<TextField>(*text, 1)->stringValue(),
                  "浏览器 App 已自动排除，可按住 Command 选择多个。");
        const auto badge = subview<View>(*d.header, 0);
        EXPECT_EQ(subview<ImageView>(*badge, 0)->image->source, Image::Source(SystemSymbol{"app.badge"}));
        expectLabel(*d.label, "目标浏览器", {12, FontWeight::medium}, ColorRole::secondaryLabel);
        expectLabel(*d.hint, emptyHint, {12, FontWeight::regular}, ColorRole::secondaryLabel, 2);
        ASSERT_TRUE(d.note->layer);
        EXPECT_EQ(d.note->layer->cornerRadius, 10);
    });
}

TEST_F(AddAppRulesTest, SearchFieldSendsEveryKeystroke) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.search->placeholder, "搜索 App 名称或 Bundle ID");
        EXPECT_EQ(d.search->action, "filterRuleDialogApplications:");
        EXPECT_TRUE(d.search->editable);
        EXPECT_TRUE(d.search->sendsSearchStringImmediately);
        EXPECT_FALSE(d.search->sendsWholeSearchString);
    });
}

TEST_F(AddAppRulesTest, ListIsConfigured) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.table->rowHeight, 40);
        EXPECT_TRUE(d.table->allowsMultipleSelection);
        EXPECT_EQ(d.table->columnIdentifier, "app");
        EXPECT_EQ(d.table->columnWidth, 468);
        EXPECT_EQ(d.table->action, "updateRuleDialogHint");
        EXPECT_FALSE(d.scroll->hasBorder);
        EXPECT_TRUE(d.scroll->hasVerticalScroller);
        ASSERT_TRUE(d.scroll->layer);
        EXPECT_EQ(*d.scroll->layer, (Layer{std::nullopt, 12, 1, Color{ColorRole::separator, 0.45}}));
    });
}

TEST_F(AddAppRulesTest, PopupSelectsTheEffectiveDefaultBrowser) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(picked(*d.popup), "browser.b");
        EXPECT_EQ(d.popup->controlSize, ControlSize::large);
        EXPECT_EQ(d.popup->action, "updateRuleDialogHint");
    });
    setHandlers("browser.a");
    lookAt([](const Dialog &d) { EXPECT_EQ(picked(*d.popup), "browser.a"); });
}

TEST_F(AddAppRulesTest, WithoutADefaultBrowserThePopupStartsWithTheFirst) {
    desktop.defaults.stored.clear();
    desktop.launchServices.handlers.clear();
    lookAt([](const Dialog &d) { EXPECT_EQ(picked(*d.popup), "browser.a"); });
}

TEST_F(AddAppRulesTest, RowShowsIconNameAndIdentifier) {
    lookAt([](const Dialog &d) {
        const auto cell = d.table->viewForRow(1);
        EXPECT_EQ(cell->identifier, "appCell");
        ASSERT_EQ(cell->subviews.size(), 1u);
        const auto row = subview<StackView>(*cell, 0);
        expectStack(*row, Orientation::horizontal, StackAlignment::centerY, 10, 3);
        EXPECT_FALSE(row->translatesAutoresizingMask);
        EXPECT_EQ(cell->constraints,
                  (std::vector{aligned(*row, *cell, leading, 6), aligned(*row, *cell, trailing, -6),
                               aligned(*row, *cell, centerY)}));

        const auto icon = subview<ImageView>(*row, 0);
        EXPECT_EQ(*icon->image, Image(ApplicationIcon{"/Applications/Beta.app"}, 24, false));
        EXPECT_EQ(icon->constraints, (std::vector{fixed(*icon, width, 22), fixed(*icon, height, 22)}));
        const auto text = subview<StackView>(*row, 1);
        expectStack(*text, Orientation::vertical, StackAlignment::leading, 1, 2);
        expectLabel(*subview<TextField>(*text, 0), "Beta", {13, FontWeight::regular}, ColorRole::label);
        expectLabel(*subview<TextField>(*text, 1), "org.sample.b", {11, FontWeight::regular},
                    ColorRole::tertiaryLabel);
        EXPECT_EQ(subview<View>(*row, 2)->horizontalContentHugging, 250);
    });
}

TEST_F(AddAppRulesTest, RowsOutOfRangeHaveNoView) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.table->numberOfRows(), 4u);
        EXPECT_TRUE(d.table->viewForRow(3));
        EXPECT_FALSE(d.table->viewForRow(4));
        EXPECT_FALSE(d.table->viewForRow(-1));
        EXPECT_NE(d.table->viewForRow(0), d.table->viewForRow(0));
    });
}

} // namespace
} // namespace fernhop
