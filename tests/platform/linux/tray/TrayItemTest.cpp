// The item as hosts and watchers find it on the bus.

#include "TraySession.h"

#include <set>

namespace fernhop::freedesktop {
namespace {

using NodePointer = std::unique_ptr<GDBusNodeInfo, GDelete<g_dbus_node_info_unref>>;

class TrayItemTest : public TrayTest {
  protected:
    [[nodiscard]] NodePointer introspect(const char *path) {
        const auto reply =
            host.call(ownName().c_str(), path, "org.freedesktop.DBus.Introspectable", "Introspect", nullptr);
        const char *xml = "<node/>";
        if (reply.value)
            g_variant_get(reply.value.get(), "(&s)", &xml);
        return NodePointer(g_dbus_node_info_new_for_xml(xml, nullptr));
    }
    /// Every property that is declared has a value of its type, and there are no others.
    void expectDeclaredProperties(const char *interface, const char *path) {
        const auto node = introspect(path);
        auto *declared = g_dbus_node_info_lookup_interface(node.get(), interface);
        ASSERT_TRUE(declared) << interface;
        const auto all = allProperties(interface, path);
        ASSERT_TRUE(all) << interface;
        gsize count = 0;
        for (auto **property = declared->properties; property && *property; ++property, ++count) {
            const GVariantPointer value(g_variant_lookup_value(all.get(), (*property)->name, nullptr));
            ASSERT_TRUE(value) << (*property)->name;
            EXPECT_STREQ(g_variant_get_type_string(value.get()), (*property)->signature) << (*property)->name;
        }
        EXPECT_EQ(g_variant_n_children(all.get()), count);
        EXPECT_GT(count, 3U);
    }
    [[nodiscard]] bool iconIsIn(IconPlace place) {
        return support::runUntil([&] { return bar.iconPlace() == place; });
    }
};

TEST_F(TrayItemTest, ToldAllAtOnceThePropertiesAreThoseThatAreDeclared) {
    item->setImage(glyph(ui::ColorRole::black));
    item->setToolTip("Fernhop");
    expectDeclaredProperties("org.kde.StatusNotifierItem", "/StatusNotifierItem");
    expectDeclaredProperties("com.canonical.dbusmenu", "/MenuBar");
}

TEST_F(TrayItemTest, EveryDeclaredMethodOfTheMenuIsAnswered) {
    item->setMenu(menuOf({ui::MenuItem("One", "a")}));
    const auto node = introspect("/MenuBar");
    auto *declared = g_dbus_node_info_lookup_interface(node.get(), "com.canonical.dbusmenu");
    ASSERT_TRUE(declared);
    const std::map<std::string, std::string> bodies = {
        {"GetLayout", "(0, 0, @as [])"},
        {"GetGroupProperties", "(@ai [], @as [])"},
        {"GetProperty", "(0, 'children-display')"},
        {"Event", "(0, 'opened', <0>, uint32 0)"},
        {"EventGroup", "([(0, 'opened', <0>, uint32 0)],)"},
        {"AboutToShow", "(0,)"},
        {"AboutToShowGroup", "([0],)"},
    };
    std::set<std::string> names;
    for (auto **method = declared->methods; *method; ++method) {
        names.insert((*method)->name);
        ASSERT_TRUE(bodies.contains((*method)->name)) << (*method)->name;
        EXPECT_TRUE(host.menuCall((*method)->name, bodies.at((*method)->name)).value) << (*method)->name;
    }
    EXPECT_EQ(names.size(), bodies.size());
}

TEST_F(TrayItemTest, ColoursComeAsAlphaRedGreenBlue) {
    // The accent is a blue: of its three parts each is another.
    item->setImage(glyph(ui::ColorRole::controlAccent));
    const auto pixmaps = host.itemProperty("IconPixmap");
    ASSERT_TRUE(pixmaps);
    gint32 side = 0;
    GVariant *bytes = nullptr;
    g_variant_get_child(pixmaps.get(), 0, "(ii@ay)", &side, nullptr, &bytes);
    const GVariantPointer owned(bytes);
    gsize size = 0;
    const auto *data = static_cast<const guint8 *>(g_variant_get_fixed_array(bytes, &size, 1));
    const auto *centre = data + static_cast<gsize>(side / 2 * side + side / 2) * 4;
    EXPECT_EQ(std::vector(centre, centre + 4), (std::vector<guint8>{255, 51, 125, 220}));
}

TEST_F(TrayItemTest, RegistersWithAWatcherThatTakesTheNameFromAnother) {
    Watcher first(bus.address());
    ASSERT_TRUE(support::runUntil([&] { return !first.items.empty(); }));
    {
        Watcher second(bus.address());
        ASSERT_TRUE(support::runUntil([&] { return !second.items.empty(); }));
        EXPECT_EQ(second.items, std::vector{ownName()});
    }
    EXPECT_TRUE(support::runUntil([&] { return first.items.size() == 2; })) << "it has the name again";
}

TEST_F(TrayItemTest, RegistersAgainWhereAWatcherRefusesAtFirst) {
    Watcher watcher(bus.address());
    watcher.refusals = 2;
    ASSERT_TRUE(support::runUntil([&] { return !watcher.items.empty(); }));
    EXPECT_EQ(watcher.refusals, 0);
    EXPECT_EQ(watcher.items, std::vector{ownName()});
}

TEST_F(TrayItemTest, LeavesAWatcherAloneThatItHasRegisteredWith) {
    Watcher watcher(bus.address());
    ASSERT_TRUE(iconIsIn(IconPlace::panel));
    watcher.setHost(false);
    watcher.setHost(true);
    ASSERT_TRUE(iconIsIn(IconPlace::panel));
    host.settle();
    EXPECT_EQ(watcher.items.size(), 1U);
}

TEST_F(TrayItemTest, TellsWhetherAPanelShowsIt) {
    EXPECT_EQ(bar.iconPlace(), IconPlace::nowhere);
    {
        Watcher watcher(bus.address(), false);
        ASSERT_TRUE(support::runUntil([&] { return !watcher.items.empty(); }));
        host.settle();
        EXPECT_EQ(bar.iconPlace(), IconPlace::nowhere) << "there is no host";
        watcher.setHost(true);
        EXPECT_TRUE(iconIsIn(IconPlace::panel));
        watcher.setHost(false);
        EXPECT_TRUE(iconIsIn(IconPlace::nowhere));
        watcher.setHost(true);
        EXPECT_TRUE(iconIsIn(IconPlace::panel));
    }
    EXPECT_TRUE(iconIsIn(IconPlace::nowhere)) << "the watcher is gone";
    item.reset();
    EXPECT_EQ(bar.iconPlace(), IconPlace::nowhere);
}

TEST_F(TrayItemTest, IsNotShownByAPanelWhoseWatcherRefusesIt) {
    Watcher watcher(bus.address());
    watcher.refusals = 1000;
    ASSERT_TRUE(support::runUntil([&] { return watcher.refusals < 1000 && watcher.asked > 0; }));
    host.settle();
    host.settle();
    EXPECT_EQ(bar.iconPlace(), IconPlace::nowhere);
    watcher.refusals = 0;
    EXPECT_TRUE(iconIsIn(IconPlace::panel));
}

} // namespace
} // namespace fernhop::freedesktop
