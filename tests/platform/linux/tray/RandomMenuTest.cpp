#include "TrayHost.h"
#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/MenuProperties.h"
#include "platform/linux/tray/MenuService.h"
#include "platform/linux/tray/PngFile.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

/// Changes a menu at random, always in the same way.
class RandomMenu {
  public:
    Menu menu;

    void change() {
        Menu *place = &menu;
        for (int depth = 0; depth < 3 && !place->items.empty() && chance(2); ++depth) {
            MenuItem &item = place->items[upTo(place->items.size())];
            if (item.submenu)
                place = &*item.submenu;
        }
        changeItems(place->items);
    }

  private:
    std::size_t upTo(std::size_t end) { return random() % end; }
    bool chance(std::size_t oneIn) { return upTo(oneIn) == 0; }

    void changeItems(std::vector<MenuItem> &items) {
        if (items.empty() || (items.size() < 12 && chance(3))) {
            items.insert(items.begin() + static_cast<std::ptrdiff_t>(upTo(items.size() + 1)), makeItem());
            return;
        }
        const std::size_t place = upTo(items.size());
        if (chance(4))
            items.erase(items.begin() + static_cast<std::ptrdiff_t>(place));
        else if (chance(6))
            std::swap(items[place], items[upTo(items.size())]);
        else
            changeItem(items[place]);
    }

    void changeItem(MenuItem &item) {
        switch (upTo(6)) {
        case 0:
            item.title = title();
            break;
        case 1:
            item.enabled = !item.enabled;
            break;
        case 2:
            item.state = item.state == ControlState::on ? ControlState::off : ControlState::on;
            break;
        case 3:
            item.image = image();
            break;
        case 4:
            item.representedObject = title();
            break;
        default:
            item.keyEquivalent = std::vector{"", "q", "w"}[upTo(3)];
        }
    }

    MenuItem makeItem() {
        if (chance(6))
            return MenuItem::separator();
        MenuItem item(title(), "action:");
        if (chance(3))
            item.submenu.emplace();
        return item;
    }

    ImageReference image() {
        // Each made once: an application's icon that was made anew counts as another.
        static const std::vector<ImageReference> images = {
            nullptr, makeImage(SystemSymbol{"envelope"}), makeImage(SystemSymbol{"paperplane"}),
            makeImage(ApplicationIcon{"/web.desktop"}), makeImage(ApplicationIcon{"/mail.desktop"})};
        return images[upTo(images.size())];
    }
    static ImageReference makeImage(Image::Source source) {
        return std::make_shared<const Image>(std::move(source), 16, false);
    }

    std::string title() {
        static const std::vector<std::string> pieces = {
            "_",    "&",  "a",   "__",      "刷新", "\n", "\xff", "\xE2\x80", std::string(1, '\0'),
            "שלום", "%s", "<b>", "\x1b[1m", "…",    " "};
        std::string text;
        for (std::size_t count = upTo(6); count > 0; --count)
            text += pieces[upTo(pieces.size())];
        return text;
    }

    std::mt19937 random{2026};
};

/// What a host is told of an image, as GVariant text of its name or its bytes.
std::string tell(const ImageReference &image) {
    if (!image)
        return "";
    if (const auto *application = std::get_if<ApplicationIcon>(&image->source))
        return application->path == "/web.desktop" ? "'web-browser'" : "'mail-client'";
    const std::string png = pngBytes(render(*image, 16).get());
    const GVariantPointer bytes(
        g_variant_ref_sink(g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, png.data(), png.size(), 1)));
    return GCharPointer(g_variant_print(bytes.get(), FALSE)).get();
}

void tell(const Menu &menu, const std::string &indent, std::string &text) {
    for (const MenuItem &item : menu.items) {
        if (item.isSeparator) {
            text += indent + "---\n";
            continue;
        }
        text +=
            indent + shownText(item.title) + (item.enabled ? "" : " off") +
            (item.state == ControlState::on ? " checked" : "") + " " + tell(item.image) +
            (item.keyEquivalent.empty() ? "" : " [['Control', '" + std::string(item.keyEquivalent) + "']]") +
            (item.submenu ? " >" : "") + "\n";
        if (item.submenu)
            tell(*item.submenu, indent + "  ", text);
    }
}

/// The label as a host shows it.
std::string shownLabel(const std::string &label) {
    std::string shown;
    for (std::size_t place = 0; place < label.size(); ++place) {
        if (label[place] == '_')
            ++place;
        if (place < label.size())
            shown.push_back(label[place]);
    }
    return shown;
}

void tell(const LayoutItem &layout, const std::string &indent, std::string &text) {
    for (const LayoutItem &item : layout.children) {
        if (item.property("type") == "'separator'") {
            text += indent + "---\n";
            continue;
        }
        const bool isChecked =
            item.property("toggle-type") == "'checkmark'" && item.property("toggle-state") == "1";
        const std::string shortcut = item.property("shortcut");
        text += indent + shownLabel(item.label()) + (item.property("enabled") == "true" ? "" : " off") +
                (isChecked ? " checked" : "") + " " + item.property("icon-name") +
                item.property("icon-data") + (shortcut.empty() ? "" : " " + shortcut) +
                (item.property("children-display") == "'submenu'" ? " >" : "") + "\n";
        tell(item, indent + "  ", text);
    }
}

/// Reads the items one by one, as some hosts do, into the same words as their layout.
void expectSameProperties(Host &host, const LayoutItem &layout) {
    for (const LayoutItem &item : layout.children) {
        const auto reply = host.menuCall("GetGroupProperties", "([" + std::to_string(item.id) + "], @as [])");
        GVariant *list = nullptr;
        g_variant_get(reply.value.get(), "(@a(ia{sv}))", &list);
        const GVariantPointer owned(list);
        ASSERT_EQ(g_variant_n_children(list), 1U);
        gint32 id = 0;
        GVariant *properties = nullptr;
        g_variant_get_child(list, 0, "(i@a{sv})", &id, &properties);
        const GVariantPointer ownedProperties(properties);
        EXPECT_EQ(id, item.id);
        EXPECT_TRUE(g_variant_equal(properties, item.properties.get()));
        expectSameProperties(host, item);
    }
}

/// What an id stands for must never change.
void collect(const LayoutItem &layout, std::map<gint32, std::string> &seen, std::set<gint32> &present) {
    for (const LayoutItem &item : layout.children) {
        EXPECT_TRUE(present.insert(item.id).second) << "an id stands for two items";
        const auto [known, isNew] = seen.emplace(item.id, item.label());
        EXPECT_EQ(known->second, item.label()) << "an id came to mean another item";
        collect(item, seen, present);
    }
}

TEST(RandomMenuTest, LayoutEqualsTheModelAfterEachOfAThousandChanges) {
    support::TemporaryHome home;
    support::PrivateBus bus{home};
    const auto connection = connectTo(bus.address());
    ListedEntries entries;
    entries.icons = {{"/web.desktop", "web-browser"}, {"/mail.desktop", "mail-client"}};
    const IconFinder icons{entries, {}};
    MenuService service(connection.get(), icons, [](auto, const auto &) {});
    Host host(bus.address(), g_dbus_connection_get_unique_name(connection.get()));
    RandomMenu random;
    Menu before;
    int announced = 0;
    std::map<gint32, std::string> seen;
    for (int change = 0; change < 1000; ++change) {
        random.change();
        service.setMenu(std::make_shared<const Menu>(random.menu));
        host.settle();
        announced += looksTheSame(before, random.menu) ? 0 : 1;
        before = random.menu;
        ASSERT_EQ(host.signals["LayoutUpdated"], announced) << change;
        const auto [layout, revision] = host.layout();
        ASSERT_EQ(revision, static_cast<guint32>(announced));
        const LayoutItem root(layout.get());
        std::string model, shown;
        tell(random.menu, "", model);
        tell(root, "", shown);
        ASSERT_EQ(shown, model) << change;
        if (change % 50 == 0)
            expectSameProperties(host, root);
        std::set<gint32> present;
        collect(root, seen, present);
    }
    EXPECT_GT(announced, 500);
    EXPECT_LT(announced, 1000) << "no change was one that does not show";
}

} // namespace
} // namespace fernhop::freedesktop
