#include "platform/linux/tray/MenuService.h"

#include <fernhop_tray_interfaces.h>

#include <array>
#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr guint32 protocolVersion = 3;
constexpr std::string_view clicked = "clicked";

constexpr const char *noSuchItem = "There is no such item";
constexpr const char *tooLarge = "The answer is too large for a message; ask for fewer levels or items";

PropertyFilter filterIn(GVariant *body, gsize place) {
    const auto names = textsIn(body, place);
    return {names.begin(), names.end()};
}

std::vector<MenuTree::Id> idsIn(GVariant *body) {
    const GVariantPointer list(g_variant_get_child_value(body, 0));
    gsize count = 0;
    const auto *ids = static_cast<const MenuTree::Id *>(
        g_variant_get_fixed_array(list.get(), &count, sizeof(MenuTree::Id)));
    return {ids, ids + count};
}

GVariant *idList(const std::vector<MenuTree::Id> &ids) {
    return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(MenuTree::Id));
}

/// The bus name of the caller; empty on a connection without a bus.
std::string hostOf(GDBusMethodInvocation *invocation) {
    const char *sender = g_dbus_method_invocation_get_sender(invocation);
    return sender ? sender : "";
}

struct ItemEvent {
    MenuTree::Id id = MenuTree::root;
    std::string name;
};

ItemEvent eventIn(GVariant *event) {
    ItemEvent result;
    const char *name = nullptr;
    g_variant_get(event, "(i&s@vu)", &result.id, &name, nullptr, nullptr);
    result.name = name;
    return result;
}

} // namespace

MenuService::MenuService(GDBusConnection *bus, const IconFinder &iconFinder, PerformAction performAction)
    : perform(std::move(performAction)), icons(iconFinder, [this](const auto &image) { tellIcon(image); }),
      object(bus, path, com_canonical_dbusmenu_interface,
             {[this](auto method, auto *body, auto *invocation) { call(method, body, invocation); },
              property}) {}

void MenuService::setMenu(std::shared_ptr<const ui::Menu> menu) {
    latest = std::move(menu);
    // Several menus in one turn of the main loop are announced once.
    if (!announcement.isRunning())
        announcement.start({}, [this] { announce(); });
}

void MenuService::bringUpToDate() {
    if (!latest)
        return;
    if (tree.show(std::exchange(latest, nullptr)))
        readers.forgetAllBut(tree);
    icons.forgetUnused();
}

void MenuService::tellIcon(const ui::ImageReference &image) {
    bringUpToDate();
    // In submenus of many others, who has not read them yet learns of it then.
    constexpr std::size_t mostItems = 1000;
    std::vector<MenuTree::Id> ids;
    for (const MenuTree::Id id : tree.ids()) {
        const ui::MenuItem *item = tree.find(id)->item;
        if (item != nullptr && item->image == image && ids.size() < mostItems)
            ids.push_back(id);
    }
    const auto items = menuItems(tree, ids, {"icon-data"}, icons);
    if (items && !ids.empty())
        object.emit("ItemsPropertiesUpdated", g_variant_new("(@a(ia{sv})a(ias))", items.get(), nullptr));
}

void MenuService::announce() {
    bringUpToDate();
    const auto revision = tree.revision();
    if (std::exchange(announcedRevision, revision) != revision)
        object.emit("LayoutUpdated", g_variant_new("(ui)", revision, MenuTree::root));
}

GVariant *MenuService::property(std::string_view name) {
    if (name == "Version")
        return g_variant_new_uint32(protocolVersion);
    if (name == "TextDirection")
        return g_variant_new_string("ltr");
    if (name == "Status")
        return g_variant_new_string("normal");
    return g_variant_new_strv(nullptr, 0);
}

void MenuService::call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation) {
    using Handler = void (MenuService::*)(GVariant *, GDBusMethodInvocation *);
    static constexpr std::array<std::pair<std::string_view, Handler>, 7> handlers{{
        {"GetLayout", &MenuService::getLayout},
        {"GetGroupProperties", &MenuService::getGroupProperties},
        {"GetProperty", &MenuService::getProperty},
        {"Event", &MenuService::event},
        {"EventGroup", &MenuService::eventGroup},
        {"AboutToShow", &MenuService::aboutToShow},
        {"AboutToShowGroup", &MenuService::aboutToShowGroup},
    }};
    for (const auto &[name, handler] : handlers)
        if (name == method)
            return (this->*handler)(body, invocation);
}

void MenuService::getLayout(GVariant *body, GDBusMethodInvocation *invocation) {
    bringUpToDate();
    MenuTree::Id parent = MenuTree::root;
    gint32 depth = 0;
    g_variant_get_child(body, 0, "i", &parent);
    g_variant_get_child(body, 1, "i", &depth);
    if (tree.find(parent) == nullptr)
        return refuse(invocation, noSuchItem);
    const std::string host = hostOf(invocation);
    // As many items as usual or, where they have very long texts, only those that cannot be left out.
    for (const std::size_t most : {mostItemsOfAnswer, std::size_t{0}}) {
        const auto submenus = readers.submenusFor(host, tree, parent, depth, most);
        const auto layout = menuLayout(tree, parent, submenus.told, filterIn(body, 2), icons);
        if (!layout)
            continue;
        readers.reads(host, tree, submenus);
        g_dbus_method_invocation_return_value(invocation,
                                              g_variant_new("(u@(ia{sv}av))", tree.revision(), layout.get()));
        return;
    }
    refuse(invocation, tooLarge);
}

void MenuService::getGroupProperties(GVariant *body, GDBusMethodInvocation *invocation) {
    bringUpToDate();
    auto ids = idsIn(body);
    // An empty list stands for all items.
    if (ids.empty())
        ids = tree.ids();
    const auto items = menuItems(tree, ids, filterIn(body, 1), icons);
    if (!items)
        return refuse(invocation, tooLarge);
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(@a(ia{sv}))", items.get()));
}

void MenuService::getProperty(GVariant *body, GDBusMethodInvocation *invocation) {
    bringUpToDate();
    MenuTree::Id id = MenuTree::root;
    const char *name = nullptr;
    g_variant_get(body, "(i&s)", &id, &name);
    const auto *entry = tree.find(id);
    if (entry == nullptr)
        return refuse(invocation, noSuchItem);
    const GVariantPointer properties(g_variant_ref_sink(menuProperties(*entry, {name}, icons)));
    const GVariantPointer value(g_variant_lookup_value(properties.get(), name, nullptr));
    if (!value)
        return refuse(invocation, "The item has no such property");
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(v)", value.get()));
}

// Answered before the action runs: hosts wait for the answer, and the action may wait for a dialog.
void MenuService::event(GVariant *body, GDBusMethodInvocation *invocation) {
    const ItemEvent happened = eventIn(body);
    g_dbus_method_invocation_return_value(invocation, nullptr);
    if (happened.name == clicked)
        click(happened.id);
}

void MenuService::eventGroup(GVariant *body, GDBusMethodInvocation *invocation) {
    const GVariantPointer list(g_variant_get_child_value(body, 0));
    const gsize count = g_variant_n_children(list.get());
    std::vector<MenuTree::Id> clicks, unknown;
    for (gsize place = 0; place < count; ++place) {
        const GVariantPointer child(g_variant_get_child_value(list.get(), place));
        const ItemEvent happened = eventIn(child.get());
        if (tree.find(happened.id) == nullptr)
            unknown.push_back(happened.id);
        else if (happened.name == clicked)
            clicks.push_back(happened.id);
    }
    if (count > 0 && unknown.size() == count)
        return refuse(invocation, noSuchItem);
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(@ai)", idList(unknown)));
    for (const MenuTree::Id id : clicks)
        click(id);
}

// Hosts that read one level at a time read the levels beneath only when this returns true.
void MenuService::aboutToShow(GVariant *body, GDBusMethodInvocation *invocation) {
    bringUpToDate();
    MenuTree::Id id = MenuTree::root;
    g_variant_get(body, "(i)", &id);
    const auto *entry = tree.find(id);
    if (entry == nullptr)
        return refuse(invocation, noSuchItem);
    const std::string host = hostOf(invocation);
    readers.opens(host, tree, id);
    const gboolean needsUpdate = !readers.knows(host, *entry);
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(b)", needsUpdate));
}

void MenuService::aboutToShowGroup(GVariant *body, GDBusMethodInvocation *invocation) {
    bringUpToDate();
    const auto ids = idsIn(body);
    const std::string host = hostOf(invocation);
    std::vector<MenuTree::Id> needUpdate, unknown;
    for (const MenuTree::Id id : ids) {
        const auto *entry = tree.find(id);
        if (entry == nullptr) {
            unknown.push_back(id);
            continue;
        }
        readers.opens(host, tree, id);
        if (!readers.knows(host, *entry))
            needUpdate.push_back(id);
    }
    if (!ids.empty() && unknown.size() == ids.size())
        return refuse(invocation, noSuchItem);
    g_dbus_method_invocation_return_value(invocation,
                                          g_variant_new("(@ai@ai)", idList(needUpdate), idList(unknown)));
}

void MenuService::click(MenuTree::Id id) const {
    const auto *entry = tree.find(id);
    const ui::MenuItem *item = entry ? entry->item : nullptr;
    if (item == nullptr || item->isSeparator || !item->enabled || item->action.empty())
        return;
    // The action may replace the menu that holds its sender.
    const auto menu = tree.menu();
    perform(item->action, *item);
}

} // namespace fernhop::freedesktop
