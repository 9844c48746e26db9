// What hosts of different habits learn of a menu: those that read it whole, and those that read level by
// level.

#include "TraySession.h"

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

using ui::MenuItem;

class MenuHostsTest : public TrayTest {
  protected:
    void show(std::vector<MenuItem> rules, bool isEnabled = true) {
        MenuItem apps = withSubmenu("Apps", {withSubmenu("Mail", {MenuItem("Web", "a")})});
        apps.enabled = isEnabled;
        item->setMenu(menuOf({withSubmenu("Rules", std::move(rules)), apps}));
        host.settle();
    }
    /// Reads one level, as some hosts do; the ids beneath the item.
    std::vector<gint32> read(Host &reader, gint32 id, int depth = 1) {
        const auto reply = reader.menuCall("GetLayout", g_variant_new("(ii@as)", id, depth, noNames()));
        std::vector<gint32> ids;
        if (!reply.value)
            return ids;
        const GVariantPointer root(g_variant_get_child_value(reply.value.get(), 1));
        const LayoutItem level(root.get());
        std::ranges::transform(level.children, std::back_inserter(ids), &LayoutItem::id);
        return ids;
    }
    static GVariant *noNames() { return g_variant_new_strv(nullptr, 0); }

    /// Whether a host that is about to show what is beneath an item is told to read it anew.
    [[nodiscard]] static bool isToRead(Host &reader, gint32 id) {
        const auto reply = reader.menuCall("AboutToShow", g_variant_new("(i)", id));
        gboolean needsUpdate = FALSE;
        EXPECT_TRUE(reply.value);
        if (reply.value)
            g_variant_get(reply.value.get(), "(b)", &needsUpdate);
        return needsUpdate != FALSE;
    }
};

TEST_F(MenuHostsTest, WhoReadsLevelByLevelIsToldToReadWhatChanged) {
    show({MenuItem("One", "a")});
    EXPECT_TRUE(isToRead(host, 0)) << "it has read nothing yet";
    const auto top = read(host, 0);
    ASSERT_EQ(top.size(), 2U);
    EXPECT_FALSE(isToRead(host, 0));
    EXPECT_TRUE(isToRead(host, top[0]));
    EXPECT_EQ(read(host, top[0]).size(), 1U);
    EXPECT_FALSE(isToRead(host, top[0]));

    show({MenuItem("One", "a"), MenuItem("Two", "a")});
    EXPECT_EQ(read(host, 0), top) << "each item is still itself";
    EXPECT_TRUE(isToRead(host, top[0])) << "the host would show the former rules";
    EXPECT_EQ(read(host, top[0]).size(), 2U);
    EXPECT_FALSE(isToRead(host, top[0]));
    EXPECT_FALSE(isToRead(host, 0)) << "the level above looks as before";
}

TEST_F(MenuHostsTest, WhatIsToldOfDisabledItemsAndIconsCountsToo) {
    show({});
    (void)read(host, 0);
    show({}, false);
    EXPECT_TRUE(isToRead(host, 0));
    (void)read(host, 0);
    show({}, false);
    EXPECT_FALSE(isToRead(host, 0)) << "nothing changed";
}

TEST_F(MenuHostsTest, EachHostIsToldByWhatItHasRead) {
    show({MenuItem("One", "a")});
    Host other(bus.address(), ownName());
    const auto top = read(host, 0, -1);
    EXPECT_FALSE(isToRead(host, top[0]));
    EXPECT_FALSE(isToRead(host, top[1]));
    EXPECT_TRUE(isToRead(other, top[0]));
    show({MenuItem("Two", "a")});
    (void)read(host, 0, -1);
    EXPECT_FALSE(isToRead(host, top[0]));
    (void)read(other, 0);
    const auto group = other.menuCall("AboutToShowGroup", g_variant_new_parsed("([0, %i, 999],)", top[0]));
    ASSERT_TRUE(group.value);
    const GCharPointer text(g_variant_print(group.value.get(), FALSE));
    EXPECT_EQ(std::string(text.get()), "([" + std::to_string(top[0]) + "], [999])");
}

TEST_F(MenuHostsTest, AMenuThatWasJustSetIsCompared) {
    show({MenuItem("One", "a")});
    const auto top = read(host, 0, -1);
    item->setMenu(menuOf({MenuItem("Other", "a")}));
    EXPECT_TRUE(isToRead(host, 0));
}

TEST_F(MenuHostsTest, GroupsOfUnknownItemsAloneAreErrors) {
    show({MenuItem("One", "a")});
    const auto fails = [this](const char *method, const char *body) {
        return g_error_matches(host.menuCall(method, std::string(body)).error.get(), G_DBUS_ERROR,
                               G_DBUS_ERROR_INVALID_ARGS) != FALSE;
    };
    EXPECT_TRUE(fails("EventGroup", "([(77, 'clicked', <0>, uint32 0), (78, 'opened', <0>, 0)],)"));
    EXPECT_TRUE(fails("AboutToShowGroup", "([77, 78],)"));
    EXPECT_TRUE(host.menuCall("EventGroup", std::string("(@a(isvu) [],)")).value);
    EXPECT_TRUE(host.menuCall("AboutToShowGroup", std::string("(@ai [],)")).value);
}

// As GNOME's extension and libdbusmenu do: they read the whole menu, and read it again when a submenu that
// opens says so.
TEST_F(MenuHostsTest, ManyApplicationsAndBrowsersAreToldWhenTheirSubmenuOpens) {
    constexpr std::size_t applications = 500, browsers = 40;
    std::vector<MenuItem> choices(browsers, MenuItem("Web", "a"));
    show(std::vector<MenuItem>(applications, withSubmenu("App", std::move(choices))));

    const auto [whole, revision] = host.layout();
    ASSERT_TRUE(whole);
    const auto menu = std::make_unique<LayoutItem>(whole.get());
    ASSERT_EQ(menu->children.size(), 2U);
    EXPECT_EQ(menu->children[1].children.size(), 1U) << "what comes behind the many is told";
    const auto &list = menu->children[0].children;
    ASSERT_EQ(list.size(), applications);
    EXPECT_EQ(list.front().children.size(), browsers) << "as much as fits is told at once";
    EXPECT_FALSE(isToRead(host, list.front().id));

    for (const std::size_t place : {applications - 1, applications / 2}) {
        EXPECT_EQ(list[place].property("children-display"), "'submenu'");
        EXPECT_EQ(list[place].children.size(), 0U);
        EXPECT_TRUE(isToRead(host, list[place].id));
        const LayoutItem again(host.layout().first.get());
        EXPECT_EQ(again.children[0].children[place].children.size(), browsers);
        EXPECT_FALSE(isToRead(host, list[place].id));
    }
    EXPECT_EQ(read(host, list[applications - 2].id).size(), browsers) << "level by level";
    EXPECT_EQ(host.layout().second, revision) << "nothing has changed";
    EXPECT_TRUE(isToRead(host, list[applications - 2].id)) << "reading the whole menu took it away again";
}

TEST_F(MenuHostsTest, WhatNoMessageCanCarryIsRefusedAndTheBusKeepsTheConnection) {
    std::string longest; // that a label may be
    while (longest.size() < 4000)
        longest += "😀";
    std::vector<MenuItem> rules;
    while (rules.size() * longest.size() < largestMenuAnswer)
        rules.emplace_back(longest, "a");
    show(std::move(rules));
    EXPECT_EQ(read(host, 0, -1).size(), 2U) << "the levels that fit are told";
    EXPECT_TRUE(host.menuCall("GetGroupProperties", std::string("(@ai [], @as [])")).error);
    EXPECT_FALSE(g_dbus_connection_is_closed(connection.get()));
}

} // namespace
} // namespace fernhop::freedesktop
