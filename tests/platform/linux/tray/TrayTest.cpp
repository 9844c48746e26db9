#include "TraySession.h"
#include "platform/linux/tray/ImageRenderer.h"

namespace fernhop::freedesktop {
namespace {

using namespace ui;

TEST_F(TrayTest, RegistersWithAWatcherThatComesLateAndWithOneThatComesAgain) {
    for (int start = 0; start < 3; ++start) {
        Watcher watcher(bus.address());
        ASSERT_TRUE(support::runUntil([&] { return !watcher.items.empty(); })) << start;
        EXPECT_EQ(watcher.items, std::vector{ownName()});
    }
}

TEST_F(TrayTest, TellsHostsWhatItIs) {
    const auto told = [&](const char *name) {
        const auto value = host.itemProperty(name);
        const GCharPointer text(value ? g_variant_print(value.get(), TRUE) : nullptr);
        return std::string(text ? text.get() : "");
    };
    item->setToolTip("Fernhop - App Routing On");
    EXPECT_EQ(told("Category"), "'ApplicationStatus'");
    EXPECT_EQ(told("Id"), "'fernhop'");
    EXPECT_EQ(told("Title"), "'Fernhop'");
    EXPECT_EQ(told("Status"), "'Active'");
    EXPECT_EQ(told("IconName"), "''");
    EXPECT_EQ(told("IconPixmap"), "@a(iiay) []");
    EXPECT_EQ(told("OverlayIconPixmap"), "@a(iiay) []");
    EXPECT_EQ(told("ToolTip"), "('', @a(iiay) [], 'Fernhop - App Routing On', '')");
    EXPECT_EQ(told("ItemIsMenu"), "true");
    EXPECT_EQ(told("Menu"), "objectpath '/MenuBar'");
    item->setTitle("a\nb\xff");
    EXPECT_EQ(told("Title"), "'a b\xEF\xBF\xBD'");
}

TEST_F(TrayTest, DrawsTheIconForEachScale) {
    item->setImage(glyph(ColorRole::white));
    const auto pixmaps = host.itemProperty("IconPixmap");
    ASSERT_TRUE(pixmaps);
    std::vector<int> sides;
    for (gsize place = 0; place < g_variant_n_children(pixmaps.get()); ++place) {
        gint32 width = 0, height = 0;
        GVariant *bytes = nullptr;
        g_variant_get_child(pixmaps.get(), place, "(ii@ay)", &width, &height, &bytes);
        const GVariantPointer owned(bytes);
        gsize size = 0;
        const auto *data = static_cast<const guint8 *>(g_variant_get_fixed_array(bytes, &size, 1));
        EXPECT_EQ(width, height);
        ASSERT_EQ(size, static_cast<gsize>(width * height * 4));
        const auto *centre = data + (static_cast<gsize>(height / 2 * width + width / 2) * 4);
        EXPECT_EQ(std::vector(centre, centre + 4), (std::vector<guint8>{255, 255, 255, 255}));
        EXPECT_EQ(data[0], 0) << "the corner is not transparent";
        sides.push_back(width);
    }
    EXPECT_EQ(sides, (std::vector{16, 18, 22, 24, 32, 36, 44, 48}));
}

TEST_F(TrayTest, TellsOfANewIconAndToolTipOnlyWhenTheyDiffer) {
    for (int time = 0; time < 3; ++time) {
        item->setImage(glyph(ColorRole::black));
        item->setToolTip("Fernhop");
        item->setTitle("");
    }
    host.settle();
    EXPECT_EQ(host.signals, (std::map<std::string, int>{{"NewIcon", 1}, {"NewToolTip", 1}}));
    item->setImage(glyph(ColorRole::white));
    item->setToolTip("Fernhop - App Routing On");
    host.settle();
    EXPECT_EQ(host.signals, (std::map<std::string, int>{{"NewIcon", 2}, {"NewToolTip", 2}}));
}

TEST_F(TrayTest, LeavesActivationToTheMenu) {
    for (const char *method : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        const auto reply = host.call(ownName().c_str(), "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                                     method, g_variant_new("(ii)", 1, 1));
        EXPECT_TRUE(g_error_matches(reply.error.get(), G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD)) << method;
    }
    EXPECT_TRUE(host.call(ownName().c_str(), "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Scroll",
                          g_variant_new("(is)", 120, "vertical"))
                    .value);
}

TEST_F(TrayTest, PassesOnTheTokenOfAClick) {
    const auto provide = [this](const char *token) {
        return host.call(ownName().c_str(), "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                         "ProvideXdgActivationToken", g_variant_new("(s)", token));
    };
    EXPECT_TRUE(provide("nobody takes it").value);
    std::string taken;
    bar.setTakeToken([&](const std::string &token) { taken = token; });
    EXPECT_TRUE(provide("token-1").value);
    EXPECT_EQ(taken, "token-1");
}

TEST_F(TrayTest, TellsEachItemAsItIs) {
    entries.icons = {{"/web.desktop", "web-browser"}, {"/odd.desktop", "odd.png"}};
    MenuItem checked("Tom & Jerry_2", "check:");
    checked.state = ControlState::on;
    checked.image = std::make_shared<const Image>(ApplicationIcon{"/web.desktop"}, 16, false);
    MenuItem disabled("Off", "off:");
    disabled.enabled = false;
    disabled.image = std::make_shared<const Image>(ApplicationIcon{"/odd.desktop"}, 16, false);
    MenuItem quit("Quit", "quit");
    quit.keyEquivalent = "q";
    MenuItem rule = withSubmenu("*_a_*", {MenuItem("Below", "below")});
    rule.image = std::make_shared<const Image>(SystemSymbol{"link.circle"}, 0, true);
    item->setMenu(menuOf({checked, disabled, MenuItem::separator(), rule, quit}));

    const auto root = layout();
    EXPECT_EQ(root.property("children-display"), "'submenu'");
    ASSERT_EQ(root.children.size(), 5U);
    EXPECT_EQ(root.children[0].label(), "Tom & Jerry__2");
    EXPECT_EQ(root.children[0].property("enabled"), "true");
    EXPECT_EQ(root.children[0].property("toggle-type"), "'checkmark'");
    EXPECT_EQ(root.children[0].property("toggle-state"), "1");
    EXPECT_EQ(root.children[0].property("icon-name"), "'web-browser'");
    EXPECT_EQ(root.children[1].property("enabled"), "false");
    EXPECT_EQ(root.children[1].property("toggle-type"), "");
    EXPECT_EQ(root.children[1].property("icon-name"), "'odd'");
    EXPECT_EQ(root.children[2].property("type"), "'separator'");
    EXPECT_EQ(root.children[3].label(), "*__a__*");
    EXPECT_EQ(root.children[3].property("children-display"), "'submenu'");
    EXPECT_TRUE(root.children[3].property("icon-data").starts_with("[0x89, 0x50, 0x4e, 0x47"));
    ASSERT_EQ(root.children[3].children.size(), 1U);
    EXPECT_EQ(root.children[3].children[0].label(), "Below");
    EXPECT_EQ(root.children[4].property("shortcut"), "[['Control', 'q']]");
    EXPECT_EQ(root.children[4].property("icon-name"), "");
}

TEST_F(TrayTest, AnswersOnlyWhatWasAskedFor) {
    item->setMenu(menuOf({withSubmenu("Outer", {withSubmenu("Inner", {MenuItem("Leaf", "leaf")})})}));
    const auto read = [&](const std::string &body) {
        const auto reply = host.menuCall("GetLayout", body);
        const GVariantPointer root(g_variant_get_child_value(reply.value.get(), 1));
        return LayoutItem(root.get());
    };
    const auto full = layout();
    EXPECT_TRUE(read("(0, 0, @as [])").children.empty());
    const auto one = read("(0, 1, ['label'])");
    ASSERT_EQ(one.children.size(), 1U);
    EXPECT_TRUE(one.children[0].children.empty());
    EXPECT_EQ(one.children[0].label(), "Outer");
    EXPECT_EQ(one.children[0].property("enabled"), "");
    const gint32 inner = full.children[0].children[0].id;
    const auto below = read("(" + std::to_string(inner) + ", -2147483648, @as [])");
    EXPECT_EQ(below.label(), "Inner");
    EXPECT_EQ(below.children.size(), 1U);

    const std::string id = std::to_string(inner);
    const auto group = host.menuCall("GetGroupProperties", "([" + id + ", " + id + ", 999], ['label'])");
    const GCharPointer text(g_variant_print(group.value.get(), FALSE));
    EXPECT_EQ(std::string(text.get()), "([(" + id + ", {'label': <'Inner'>})],)");
    const auto all = host.menuCall("GetGroupProperties", "(@ai [], ['label'])");
    const GVariantPointer list(g_variant_get_child_value(all.value.get(), 0));
    EXPECT_EQ(g_variant_n_children(list.get()), 4U);
    const auto label = host.menuCall("GetProperty", "(" + id + ", 'label')");
    const GCharPointer labelText(g_variant_print(label.value.get(), FALSE));
    EXPECT_STREQ(labelText.get(), "(<'Inner'>,)");
}

TEST_F(TrayTest, PerformsTheActionOfAClickedItemWithTheItemAsSender) {
    bar.setPerform([&](Selector selector, const MenuItem &sender) {
        // The menu that the sender is in is replaced while the action runs.
        item->setMenu(menuOf({MenuItem("Other", "other")}));
        host.settle();
        performed.push_back(std::string(selector) + " " + std::get<std::string>(sender.representedObject));
    });
    MenuItem browser("Web", "switchSystemDefaultBrowser:");
    browser.representedObject = "web";
    item->setMenu(menuOf({browser}));
    const auto id = layout().children[0].id;
    EXPECT_TRUE(click(id).value);
    EXPECT_TRUE(support::runUntil([&] { return !performed.empty(); }));
    EXPECT_EQ(performed, std::vector<std::string>{"switchSystemDefaultBrowser: web"});
    EXPECT_TRUE(click(id).value);
    host.settle();
    EXPECT_EQ(performed.size(), 1U) << "an item that is gone was clicked";
}

TEST_F(TrayTest, ClicksOnWhatCannotBeClickedDoNothing) {
    bar.setPerform([&](Selector selector, const MenuItem &) { performed.emplace_back(selector); });
    MenuItem disabled("Off", "off:");
    disabled.enabled = false;
    item->setMenu(menuOf({disabled, MenuItem::separator(), withSubmenu("Outer", {MenuItem("In", "in")}),
                          MenuItem("On", "on")}));
    const auto root = layout();
    for (const int place : {0, 1, 2})
        EXPECT_TRUE(click(root.children[static_cast<std::size_t>(place)].id).value);
    EXPECT_TRUE(click(0).value);
    EXPECT_TRUE(click(-5).value);
    const std::string id = std::to_string(root.children[3].id);
    for (const char *name : {"hovered", "opened", "closed", ""})
        EXPECT_TRUE(host.menuCall("Event", "(" + id + ", '" + name + "', <0>, uint32 0)").value);
    host.settle();
    EXPECT_TRUE(performed.empty());
    const auto reply = host.menuCall("EventGroup", "([(" + id +
                                                       ", 'clicked', <0>, uint32 0), (77, 'clicked', "
                                                       "<''>, 0), (" +
                                                       id + ", 'opened', <@as []>, 0)],)");
    ASSERT_TRUE(reply.value);
    const GCharPointer text(g_variant_print(reply.value.get(), FALSE));
    EXPECT_STREQ(text.get(), "([77],)");
    host.settle();
    EXPECT_EQ(performed, std::vector<std::string>{"on"});
}

TEST_F(TrayTest, AnswersCallsForItemsThatAreNotThereWithErrors) {
    for (const auto &[method, body] : std::vector<std::pair<const char *, const char *>>{
             {"GetLayout", "(7, -1, @as [])"},
             {"GetProperty", "(7, 'label')"},
             {"GetProperty", "(0, 'label')"},
             {"AboutToShow", "(7,)"},
         })
        EXPECT_TRUE(g_error_matches(host.menuCall(method, std::string(body)).error.get(), G_DBUS_ERROR,
                                    G_DBUS_ERROR_INVALID_ARGS))
            << method << body;
    EXPECT_TRUE(host.menuCall("GetLayout", "('a', 1)").error) << "a wrong type is taken";
    EXPECT_TRUE(host.menuCall("Nothing", "()").error);
    (void)host.layout();
    const auto reply = host.menuCall("AboutToShowGroup", "([0, 7, -1],)");
    ASSERT_TRUE(reply.value);
    const GCharPointer text(g_variant_print(reply.value.get(), TRUE));
    EXPECT_STREQ(text.get(), "(@ai [], [7, -1])");
}

TEST_F(TrayTest, AnnouncesManyMenusAtOnceAndSaysNothingWhenNothingShows) {
    for (int number = 0; number < 20; ++number)
        item->setMenu(menuOf({MenuItem("Item " + std::to_string(number), "a")}));
    host.settle();
    EXPECT_EQ(host.bodies, std::vector<std::string>{"(1, 0)"});
    const auto [before, revision] = host.layout();
    EXPECT_EQ(revision, 1U);

    MenuItem carrying("Item 19", "a");
    carrying.representedObject = "new";
    item->setMenu(menuOf({carrying}));
    host.settle();
    item->setMenu(menuOf({MenuItem("Passing", "a")}));
    item->setMenu(menuOf({carrying}));
    host.settle();
    EXPECT_EQ(host.signals, (std::map<std::string, int>{{"LayoutUpdated", 1}}));
    EXPECT_EQ(host.layout().second, 1U);

    bar.setPerform([&](Selector, const MenuItem &sender) {
        performed.push_back(std::get<std::string>(sender.representedObject));
    });
    EXPECT_TRUE(click(LayoutItem(before.get()).children[0].id).value);
    host.settle();
    EXPECT_EQ(performed, std::vector<std::string>{"new"})
        << "a host knows what looks the same by the same id";
}

TEST_F(TrayTest, ReadsIconsAfreshWhenTheyWereMadeAnew) {
    const auto menuWithIcon = [] {
        MenuItem web("Web", "a");
        web.image = std::make_shared<const Image>(ApplicationIcon{"/web.desktop"}, 16, false);
        return menuOf({web});
    };
    entries.icons["/web.desktop"] = "old";
    item->setMenu(menuWithIcon());
    EXPECT_EQ(layout().children[0].property("icon-name"), "'old'");
    entries.icons["/web.desktop"] = "new";
    item->setMenu(menuWithIcon());
    host.settle();
    EXPECT_EQ(layout().children[0].property("icon-name"), "'new'");
    EXPECT_EQ(host.signals["LayoutUpdated"], 2);
}

TEST_F(TrayTest, LargeIconsAreReadBesideTheMainLoopAndToldWhenTheyAreThere) {
    const ui::Drawing square{{ColorRole::black, 1}, {{{ui::Oval{{0, 0}, 18, 18}}}}};
    home.write(home.root() + "/large.png", pngBytes(paint(square, 18, 2048).get()));
    entries.icons["/web.desktop"] = home.root() + "/large.png";
    MenuItem web("Web", "a");
    web.image = std::make_shared<const Image>(ApplicationIcon{"/web.desktop"}, 16, false);
    item->setMenu(menuOf({web, MenuItem("Mail", "a"), withSubmenu("More", {web})}));
    EXPECT_EQ(layout().children[0].property("icon-data"), "") << "hosts do not wait for it";
    EXPECT_TRUE(support::runUntil([&] { return host.signals["ItemsPropertiesUpdated"] > 0; }));
    EXPECT_EQ(host.signals["ItemsPropertiesUpdated"], 1);
    const auto told = layout();
    EXPECT_NE(told.children[0].property("icon-data"), "");
    EXPECT_EQ(told.children[2].children[0].property("icon-data"), told.children[0].property("icon-data"));
    for (const gint32 id : {told.children[0].id, told.children[2].children[0].id})
        EXPECT_NE(host.bodies.back().find("(" + std::to_string(id) + ", {'icon-data':"), std::string::npos);
    EXPECT_EQ(host.bodies.back().find("(" + std::to_string(told.children[1].id) + ","), std::string::npos);
    const GVariantPointer bytes(
        g_variant_lookup_value(told.children[0].properties.get(), "icon-data", G_VARIANT_TYPE_BYTESTRING));
    ASSERT_TRUE(bytes);
    gsize size = 0;
    const auto *data = static_cast<const char *>(g_variant_get_fixed_array(bytes.get(), &size, 1));
    const auto picture = decodePng({data, size});
    ASSERT_TRUE(picture);
    EXPECT_EQ(cairo_image_surface_get_width(picture.get()), 16);

    web.image = std::make_shared<const Image>(ApplicationIcon{"/web.desktop"}, 16, false);
    item->setMenu(menuOf({web}));
    EXPECT_NE(layout().children[0].property("icon-data"), "") << "the file is not read again";
}

TEST_F(TrayTest, EndsWhileLargeIconsAreRead) {
    const ui::Drawing square{{ColorRole::black, 1}, {{{ui::Oval{{0, 0}, 18, 18}}}}};
    home.write(home.root() + "/large.png", pngBytes(paint(square, 18, 1024).get()));
    entries.icons["/web.desktop"] = home.root() + "/large.png";
    std::vector<MenuItem> items(40, MenuItem("Web", "a"));
    for (auto &web : items)
        web.image = std::make_shared<const Image>(ApplicationIcon{"/web.desktop"}, 16, false);
    item->setMenu(menuOf(std::move(items)));
    EXPECT_EQ(layout().children.size(), 40U);
}

TEST_F(TrayTest, MenuHasTheVersionThatHostsExpect) {
    const auto version = host.property("com.canonical.dbusmenu", "/MenuBar", "Version");
    ASSERT_TRUE(version);
    EXPECT_EQ(g_variant_get_uint32(version.get()), 3U);
    const auto status = host.property("com.canonical.dbusmenu", "/MenuBar", "Status");
    EXPECT_STREQ(g_variant_get_string(status.get(), nullptr), "normal");
}

} // namespace
} // namespace fernhop::freedesktop
