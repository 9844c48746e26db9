#include "platform/linux/tray/MenuProperties.h"

#include "platform/linux/tray/MenuText.h"

#include <string_view>

namespace fernhop::freedesktop {
namespace {

/// Collects those properties that were asked for.
class Properties {
  public:
    explicit Properties(const PropertyFilter &asked) : filter(asked) {
        g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    }

    [[nodiscard]] bool wants(std::string_view name) const {
        return filter.empty() || filter.find(name) != filter.end();
    }
    void add(const char *name, GVariant *value) {
        const GVariantPointer owned(g_variant_ref_sink(value));
        if (wants(name))
            g_variant_builder_add(&builder, "{sv}", name, owned.get());
    }
    GVariant *finish() { return g_variant_builder_end(&builder); }

  private:
    const PropertyFilter &filter;
    GVariantBuilder builder{};
};

GVariant *bytes(const std::string &data) {
    return g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, data.data(), data.size(), 1);
}

void addIcon(Properties &properties, const MenuIcon &icon) {
    if (const auto *themed = std::get_if<IconName>(&icon))
        properties.add("icon-name", g_variant_new_string(themed->name.c_str()));
    else if (const auto *data = std::get_if<IconData>(&icon))
        properties.add("icon-data", bytes(data->png));
}

// The command modifier of this desktop is Control.
GVariant *shortcut(std::string_view key) {
    const std::string text(key);
    const char *const keys[] = {"Control", text.c_str()};
    GVariant *chord = g_variant_new_strv(keys, 2);
    return g_variant_new_array(G_VARIANT_TYPE_STRING_ARRAY, &chord, 1);
}

void addItem(Properties &properties, const ui::MenuItem &item, MenuIcons &icons) {
    properties.add("label", g_variant_new_string(menuLabel(item.title).c_str()));
    // Told in any case: some hosts keep the former value of what is left out.
    properties.add("enabled", g_variant_new_boolean(item.enabled));
    if (item.state == ui::ControlState::on) {
        properties.add("toggle-type", g_variant_new_string("checkmark"));
        properties.add("toggle-state", g_variant_new_int32(1));
    }
    if (item.submenu)
        properties.add("children-display", g_variant_new_string("submenu"));
    if (!item.keyEquivalent.empty())
        properties.add("shortcut", shortcut(item.keyEquivalent));
    if (properties.wants("icon-name") || properties.wants("icon-data"))
        addIcon(properties, icons.icon(item.image));
}

} // namespace

GVariant *menuProperties(const MenuTree::Entry &entry, const PropertyFilter &filter, MenuIcons &icons) {
    Properties properties(filter);
    if (entry.item == nullptr)
        properties.add("children-display", g_variant_new_string("submenu"));
    else if (entry.item->isSeparator)
        properties.add("type", g_variant_new_string("separator"));
    else
        addItem(properties, *entry.item, icons);
    return properties.finish();
}

GVariant *menuLayout(const MenuTree &tree, MenuTree::Id id, int depth, const PropertyFilter &filter,
                     MenuIcons &icons) {
    const MenuTree::Entry &entry = *tree.find(id);
    GVariantBuilder children;
    g_variant_builder_init(&children, G_VARIANT_TYPE("av"));
    // Any number may come from the bus, the least one included.
    const int rest = depth < 0 ? depth : depth - 1;
    if (depth != 0) {
        for (const MenuTree::Id child : entry.children)
            g_variant_builder_add(&children, "v", menuLayout(tree, child, rest, filter, icons));
    }
    GVariant *layout = g_variant_new("(i@a{sv}av)", id, menuProperties(entry, filter, icons), &children);
    // Written out at once, an item takes its few bytes; as a tree of values, the whole menu would take
    // megabytes.
    g_variant_get_data(layout);
    return layout;
}

} // namespace fernhop::freedesktop
