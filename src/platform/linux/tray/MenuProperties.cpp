#include "platform/linux/tray/MenuProperties.h"

#include "platform/Utf8.h"
#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/PngFile.h"

#include <algorithm>
#include <cmath>

namespace fernhop::freedesktop {

namespace {

constexpr std::size_t longestText = 1000; // characters
constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr std::string_view ellipsis = "…";

bool breaksLine(char32_t character) {
    const bool isControl = character < 0x20 || (character >= 0x7F && character <= 0x9F);
    return isControl || character == 0x2028 || character == 0x2029;
}

} // namespace

std::string shownText(std::string_view text) {
    std::size_t count = 0;
    return replaceUtf8Characters(text,
                                 [&](const auto &character, std::string_view bytes) -> std::string_view {
                                     if (++count > longestText)
                                         return count == longestText + 1 ? ellipsis : std::string_view();
                                     if (!character)
                                         return replacement;
                                     return breaksLine(character->value) ? " " : bytes;
                                 });
}

std::string menuLabel(std::string_view title) {
    std::string label = shownText(title);
    for (auto place = label.find('_'); place != std::string::npos; place = label.find('_', place + 2))
        label.insert(place, 1, '_');
    return label;
}

namespace {

constexpr int usualPixels = 16; // what hosts show beside a title
constexpr int mostPixels = 64;  // some hosts drop larger pictures

int pixelsOf(const ui::Image &image) {
    return image.side > 0 ? std::clamp(static_cast<int>(std::lround(image.side)), 1, mostPixels)
                          : usualPixels;
}

// Nearly all icons of applications are smaller; they are read in a fraction of a millisecond.
constexpr std::size_t largestSmallFile = std::size_t{64} << 10U;
constexpr unsigned largestSmallSide = 128;

MenuIcon iconOf(std::string png) {
    return png.empty() ? MenuIcon() : MenuIcon(IconData{std::move(png)});
}

MenuIcon drawn(const SurfacePointer &pixels) {
    return iconOf(pixels ? pngBytes(pixels.get()) : std::string());
}

} // namespace

MenuIcons::MenuIcons(const IconFinder &iconFinder,
                     std::function<void(const ui::ImageReference &image)> loaded)
    : finder(iconFinder),
      loader([this, tell = std::move(loaded)](const auto &image, const auto &path, const auto &png) {
          scaled[path].png = png;
          known[image] = iconOf(png);
          if (tell && !png.empty())
              tell(image);
      }) {}

const MenuIcon &MenuIcons::icon(const ui::ImageReference &image) {
    static const MenuIcon none;
    if (!image)
        return none;
    const auto found = known.find(image);
    return found != known.end() ? found->second : known.emplace(image, make(image)).first->second;
}

void MenuIcons::forgetUnused() {
    std::erase_if(known, [](const auto &entry) { return entry.first.use_count() == 1; });
}

MenuIcon MenuIcons::make(const ui::ImageReference &image) {
    const int side = pixelsOf(*image);
    const auto *application = std::get_if<ui::ApplicationIcon>(&image->source);
    if (application == nullptr)
        return drawn(render(*image, side));
    const IconSource found = finder.iconOfEntry(application->path);
    if (const auto *themed = std::get_if<IconName>(&found))
        return *themed;
    const auto *file = std::get_if<IconFile>(&found);
    return file ? makeOfFile(image, file->path, side) : MenuIcon();
}

MenuIcon MenuIcons::makeOfFile(const ui::ImageReference &image, const std::string &path, int side) {
    const auto bytes = readFile(path, largestSmallFile);
    if (bytes && isPngOfAtMost(largestSmallSide, *bytes)) {
        const auto picture = decodePng(*bytes);
        return drawn(picture ? fitted(picture.get(), side) : nullptr);
    }
    const auto identity = FileIdentity::of(path);
    Scaled &large = scaled[path];
    if (large.png && large.identity == identity && large.side == side)
        return iconOf(*large.png);
    large = {identity, side, {}};
    if (identity)
        loader.load(image, path, side);
    return {};
}

namespace {

constexpr const char *picture = "icon-data";

/// Which properties to tell: those of a filter, perhaps without the pictures among them.
struct Choice {
    const PropertyFilter &filter;
    bool withPictures = true;

    [[nodiscard]] bool includes(std::string_view name) const {
        return (filter.empty() || filter.contains(name)) && (withPictures || name != picture);
    }
};

/// Collects those properties that were chosen.
class Properties {
  public:
    explicit Properties(const Choice &chosen) : choice(chosen) {
        g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    }

    [[nodiscard]] bool wants(std::string_view name) const { return choice.includes(name); }
    void add(const char *name, GVariant *value) {
        const GVariantPointer owned(g_variant_ref_sink(value));
        if (wants(name))
            g_variant_builder_add(&builder, "{sv}", name, owned.get());
    }
    GVariant *finish() { return g_variant_builder_end(&builder); }

  private:
    const Choice choice;
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

GVariant *propertiesOf(const MenuTree::Entry &entry, const Choice &choice, MenuIcons &icons) {
    Properties properties(choice);
    if (entry.item == nullptr)
        properties.add("children-display", g_variant_new_string("submenu"));
    else if (entry.item->isSeparator)
        properties.add("type", g_variant_new_string("separator"));
    else
        addItem(properties, *entry.item, icons);
    return properties.finish();
}

struct LayoutSource {
    const MenuTree &tree;
    const std::unordered_set<MenuTree::Id> &told;
    const Choice &choice;
    MenuIcons &icons;
};

GVariant *layoutOf(const LayoutSource &source, MenuTree::Id id) {
    const MenuTree::Entry &entry = *source.tree.find(id);
    GVariantBuilder children;
    g_variant_builder_init(&children, G_VARIANT_TYPE("av"));
    if (source.told.contains(id)) {
        for (const MenuTree::Id child : entry.children)
            g_variant_builder_add(&children, "v", layoutOf(source, child));
    }
    GVariant *layout =
        g_variant_new("(i@a{sv}av)", id, propertiesOf(entry, source.choice, source.icons), &children);
    // Written out at once, an item takes its few bytes; as a tree of values, the whole menu would take
    // megabytes.
    g_variant_get_data(layout);
    return layout;
}

/// What `make` makes of a filter, or where that is too large, of the same without pictures; null where that
/// is too large, too.
template <typename Make>
GVariantPointer fitting(const PropertyFilter &filter, std::size_t mostBytes, Make make) {
    for (const bool withPictures : {true, false}) {
        GVariantPointer value(g_variant_ref_sink(make(Choice{filter, withPictures})));
        if (g_variant_get_size(value.get()) <= mostBytes)
            return value;
    }
    return nullptr;
}

} // namespace

GVariant *menuProperties(const MenuTree::Entry &entry, const PropertyFilter &filter, MenuIcons &icons) {
    return propertiesOf(entry, {filter}, icons);
}

GVariantPointer menuLayout(const MenuTree &tree, MenuTree::Id id,
                           const std::unordered_set<MenuTree::Id> &told, const PropertyFilter &filter,
                           MenuIcons &icons, std::size_t mostBytes) {
    return fitting(filter, mostBytes, [&](const Choice &choice) {
        return layoutOf({tree, told, choice, icons}, id);
    });
}

GVariantPointer menuItems(const MenuTree &tree, const std::vector<MenuTree::Id> &ids,
                          const PropertyFilter &filter, MenuIcons &icons, std::size_t mostBytes) {
    return fitting(filter, mostBytes, [&](const Choice &choice) {
        GVariantBuilder items;
        g_variant_builder_init(&items, G_VARIANT_TYPE("a(ia{sv})"));
        // An id that comes again and again is answered once, or a short call could make a huge answer.
        std::set<MenuTree::Id> answered;
        for (const MenuTree::Id id : ids)
            if (const auto *entry = tree.find(id); entry != nullptr && answered.insert(id).second)
                g_variant_builder_add(&items, "(i@a{sv})", id, propertiesOf(*entry, choice, icons));
        return g_variant_builder_end(&items);
    });
}

} // namespace fernhop::freedesktop
