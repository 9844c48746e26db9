// Calls of the tray's objects, as any process of the session may make them, while menus with any titles come
// and go: each call is answered, what is told is what the menu shows, and only what can be clicked is done.

#include "TwoPartyBus.h"
#include "platform/linux/tray/MenuService.h"
#include "platform/linux/tray/NotifierItem.h"
#include "platform/linux/tray/TrayHost.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <limits>
#include <set>

using namespace fernhop;
using namespace fernhop::freedesktop;

namespace {

constexpr const char *menuInterface = "com.canonical.dbusmenu";
constexpr const char *itemInterface = "org.kde.StatusNotifierItem";
constexpr const char *itemPath = "/StatusNotifierItem";

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// Makes menus and arguments of bytes.
class Maker {
  public:
    Maker(const std::uint8_t *data, std::size_t size) : bytes(data, size) {}

    [[nodiscard]] bool isLeft() { return bytes.remaining_bytes() > 0; }
    unsigned upTo(unsigned most) { return bytes.ConsumeIntegralInRange(0U, most); }

    std::string title() {
        std::string text = bytes.ConsumeRandomLengthString(40);
        // Longer than any line, with one byte more or less than the pieces are long.
        if (upTo(15) == 0)
            for (int doubling = 0; doubling < 6; ++doubling)
                text += text;
        return text;
    }

    ui::Menu menu(int depth = 0) {
        ui::Menu made;
        for (unsigned count = upTo(5); count > 0; --count)
            made.items.push_back(item(depth));
        return made;
    }

    GVariant *arguments(std::string_view method) {
        if (method == "GetLayout")
            return g_variant_new("(ii@as)", id(), id(), names());
        if (method == "GetGroupProperties")
            return g_variant_new("(@ai@as)", ids(), names());
        if (method == "GetProperty")
            return g_variant_new("(is)", id(), name().c_str());
        if (method == "Event")
            return event();
        if (method == "EventGroup")
            return events();
        if (method == "AboutToShow")
            return g_variant_new("(i)", id());
        if (method == "AboutToShowGroup")
            return g_variant_new("(@ai)", ids());
        return g_variant_new("(is)", id(), name().c_str());
    }

  private:
    ui::MenuItem item(int depth) {
        if (upTo(7) == 0)
            return ui::MenuItem::separator();
        ui::MenuItem made(title(), upTo(3) == 0 ? "" : "action:");
        const unsigned traits = upTo(63);
        made.enabled = (traits & 1) == 0;
        made.state = (traits & 2) == 0 ? ui::ControlState::off : ui::ControlState::on;
        made.keyEquivalent = (traits & 4) == 0 ? "" : "q";
        if ((traits & 8) != 0)
            made.representedObject = title();
        if ((traits & 16) != 0)
            made.image = std::make_shared<const ui::Image>(ui::ApplicationIcon{title()}, 16, false);
        if ((traits & 32) != 0 && depth < 3)
            made.submenu = menu(depth + 1);
        return made;
    }

    gint32 id() {
        using Limits = std::numeric_limits<gint32>;
        const gint32 wild[] = {-1, 0, Limits::min(), Limits::max()};
        return upTo(3) == 0 ? bytes.PickValueInArray(wild) : static_cast<gint32>(upTo(40));
    }

    GVariant *ids() {
        std::vector<gint32> made;
        for (unsigned count = upTo(6); count > 0; --count)
            made.push_back(id());
        return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, made.data(), made.size(), sizeof(gint32));
    }

    /// The bus lets nothing through that is not UTF-8.
    std::string name() {
        static constexpr const char *known[] = {"label",     "enabled",     "type",
                                                "icon-data", "toggle-type", "children-display"};
        if (upTo(1) == 0)
            return bytes.PickValueInArray(known);
        const GCharPointer text(g_utf8_make_valid(bytes.ConsumeRandomLengthString(12).c_str(), -1));
        return text.get();
    }

    GVariant *names() {
        GVariantBuilder made;
        g_variant_builder_init(&made, G_VARIANT_TYPE_STRING_ARRAY);
        for (unsigned count = upTo(3); count > 0; --count)
            g_variant_builder_add(&made, "s", name().c_str());
        return g_variant_builder_end(&made);
    }

    GVariant *event() {
        const std::string what = upTo(2) == 0 ? name() : "clicked";
        GVariant *data = upTo(1) == 0 ? names() : g_variant_new_int32(id());
        return g_variant_new("(isvu)", id(), what.c_str(), data, upTo(9));
    }

    GVariant *events() {
        GVariantBuilder made;
        g_variant_builder_init(&made, G_VARIANT_TYPE("a(isvu)"));
        for (unsigned count = upTo(4); count > 0; --count)
            g_variant_builder_add_value(&made, event());
        return g_variant_new("(a(isvu))", &made);
    }

    FuzzedDataProvider bytes;
};

/// A title that a menu can show as it is.
bool isPlain(const std::string &title) {
    if (title.size() > 1000 || title.find("\xE2\x80\xA8") != title.npos ||
        title.find("\xE2\x80\xA9") != title.npos || !g_utf8_validate_len(title.data(), title.size(), nullptr))
        return false;
    for (const char *place = title.c_str(); *place != '\0'; place = g_utf8_next_char(place))
        if (g_unichar_iscntrl(g_utf8_get_char(place)))
            return false;
    return true;
}

std::string withoutAccessKeys(const std::string &label) {
    std::string shown;
    for (std::size_t place = 0; place < label.size(); ++place) {
        place += label[place] == '_' ? 1 : 0;
        require(place < label.size());
        shown.push_back(label[place]);
    }
    return shown;
}

void checkLayout(const LayoutItem &told, const ui::Menu &menu, std::set<gint32> &seen) {
    require(seen.insert(told.id).second);
    require(told.children.size() == menu.items.size());
    for (std::size_t place = 0; place < menu.items.size(); ++place) {
        const auto &item = menu.items[place];
        const auto &child = told.children[place];
        require((child.property("type") == "'separator'") == item.isSeparator);
        if (!item.isSeparator) {
            require((child.property("enabled") == "true") == item.enabled);
            const std::string shown = withoutAccessKeys(child.label());
            require(shown.find('\n') == shown.npos);
            require(!isPlain(item.title) || shown == item.title);
        }
        checkLayout(child, item.submenu.value_or(ui::Menu()), seen);
    }
}

/// The tray's objects on a bus, and a host that does what the bytes say.
class Session {
  public:
    Session(fuzz::TwoPartyBus &line, Maker &from)
        : bus(line), maker(from),
          menu(bus.offering(), icons, [this](auto, const auto &sender) { performed(sender); }),
          item(bus.offering(), MenuService::path, [](const std::string &token) {
              require(g_utf8_validate(token.data(), static_cast<gssize>(token.size()), nullptr));
          }) {
        show();
    }
    ~Session() { (void)bus.settle(); }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    void step() {
        static constexpr const char *methods[] = {
            "GetLayout",  "GetGroupProperties", "GetProperty",      "Event",
            "EventGroup", "AboutToShow",        "AboutToShowGroup", "Nothing"};
        static constexpr const char *itemMethods[] = {"Scroll", "Activate", "ProvideXdgActivationToken"};
        switch (const unsigned choice = maker.upTo(11)) {
        case 8:
            return show();
        case 9:
            return checkMenu();
        case 10:
            return dress();
        case 11:
            bus.post(itemPath, itemInterface, itemMethods[maker.upTo(2)], maker.arguments(""));
            return;
        default:
            // Now and then with the arguments of another method.
            const auto *other = methods[maker.upTo(15) == 0 ? maker.upTo(7) : choice];
            bus.post(MenuService::path, menuInterface, methods[choice], maker.arguments(other));
        }
    }

    void checkMenu() {
        auto *answer = bus.call(MenuService::path, menuInterface, "GetLayout",
                                g_variant_new("(ii@as)", 0, -1, g_variant_new_strv(nullptr, 0)));
        GVariant *body = g_dbus_message_get_body(answer);
        require(body != nullptr && g_variant_is_of_type(body, G_VARIANT_TYPE("(u(ia{sv}av))")));
        const GVariantPointer layout(g_variant_get_child_value(body, 1));
        std::set<gint32> seen;
        checkLayout(LayoutItem(layout.get()), *shown, seen);
    }

  private:
    void show() {
        shown = std::make_shared<const ui::Menu>(maker.menu());
        menu.setMenu(shown);
    }

    void dress() {
        item.setToolTip(maker.title());
        item.setTitle(maker.title());
        auto *answer = bus.call(itemPath, "org.freedesktop.DBus.Properties", "GetAll",
                                g_variant_new("(s)", itemInterface));
        require(g_dbus_message_get_message_type(answer) == G_DBUS_MESSAGE_TYPE_METHOD_RETURN);
    }

    void performed(const ui::MenuItem &sender) {
        require(sender.enabled && !sender.isSeparator && !sender.action.empty());
        const std::string title = sender.title;
        if (maker.upTo(1) == 0)
            show();
        require(sender.title == title);
    }

    fuzz::TwoPartyBus &bus;
    Maker &maker;
    ListedEntries entries;
    const IconFinder icons{entries, {}};
    std::shared_ptr<const ui::Menu> shown;
    MenuService menu;
    NotifierItem item;
};

} // namespace

// After each input, what GLib keeps for later looks like a leak, and looking for one takes nine tenths of the
// time.
extern "C" const char *__asan_default_options() {
    return "detect_leaks=0";
}

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    // What GLib complains of is a fault of ours.
    g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static fuzz::TwoPartyBus bus;
    Maker maker(data, size);
    Session session(bus, maker);
    while (maker.isLeft())
        session.step();
    session.checkMenu();
    return 0;
}
