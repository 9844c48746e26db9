#include "platform/linux/tray/MenuProperties.h"

#include "platform/linux/tray/MenuText.h"

#include <optional>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr const char *picture = "icon-data";

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
        properties.add(picture, bytes(data->png));
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
    if (properties.wants("icon-name") || properties.wants(picture))
        addIcon(properties, icons.icon(item.image));
}

struct LayoutSource {
    const MenuTree &tree;
    const PropertyFilter &filter;
    MenuIcons &icons;
};

GVariant *layoutOf(const LayoutSource &source, MenuTree::Id id, int depth) {
    const MenuTree::Entry &entry = *source.tree.find(id);
    GVariantBuilder children;
    g_variant_builder_init(&children, G_VARIANT_TYPE("av"));
    // Any number may come from the bus, the least one included.
    const int rest = depth < 0 ? depth : depth - 1;
    if (depth != 0) {
        for (const MenuTree::Id child : entry.children)
            g_variant_builder_add(&children, "v", layoutOf(source, child, rest));
    }
    GVariant *layout =
        g_variant_new("(i@a{sv}av)", id, menuProperties(entry, source.filter, source.icons), &children);
    // Written out at once, an item takes its few bytes; as a tree of values, the whole menu would take
    // megabytes.
    g_variant_get_data(layout);
    return layout;
}

/// Everything that `filter` asks for except pictures; nothing where that was all.
std::optional<PropertyFilter> withoutPictures(PropertyFilter filter) {
    if (filter.empty())
        return PropertyFilter{"type",        "label",        "enabled",   "children-display",
                              "toggle-type", "toggle-state", "icon-name", "shortcut"};
    filter.erase(picture);
    return filter.empty() ? std::nullopt : std::optional(std::move(filter));
}

/// What `make` makes of a filter, or where that is too large, of the filter without pictures; null where that
/// is too large, too.
template <typename Make>
GVariantPointer fitting(const PropertyFilter &filter, std::size_t mostBytes, Make make) {
    for (const auto &tried : {std::optional(filter), withoutPictures(filter)}) {
        GVariantPointer value(tried ? g_variant_ref_sink(make(*tried)) : nullptr);
        if (value && g_variant_get_size(value.get()) <= mostBytes)
            return value;
    }
    return nullptr;
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

GVariantPointer menuLayout(const MenuTree &tree, MenuTree::Id id, int depth, const PropertyFilter &filter,
                           MenuIcons &icons, std::size_t mostBytes) {
    return fitting(filter, mostBytes, [&](const PropertyFilter &properties) {
        return layoutOf({tree, properties, icons}, id, depth);
    });
}

GVariantPointer menuItems(const MenuTree &tree, const std::vector<MenuTree::Id> &ids,
                          const PropertyFilter &filter, MenuIcons &icons, std::size_t mostBytes) {
    return fitting(filter, mostBytes, [&](const PropertyFilter &properties) {
        GVariantBuilder items;
        g_variant_builder_init(&items, G_VARIANT_TYPE("a(ia{sv})"));
        // An id that comes again and again is answered once, or a short call could make a huge answer.
        std::set<MenuTree::Id> answered;
        for (const MenuTree::Id id : ids)
            if (const auto *entry = tree.find(id); entry != nullptr && answered.insert(id).second)
                g_variant_builder_add(&items, "(i@a{sv})", id, menuProperties(*entry, properties, icons));
        return g_variant_builder_end(&items);
    });
}

} // namespace fernhop::freedesktop
