#include "platform/linux/tray/NotifierItem.h"

#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/MenuProperties.h"

#include <fernhop_tray_interfaces.h>

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {
namespace {

constexpr const char *itemPath = "/StatusNotifierItem";
constexpr const char *applicationName = "Fernhop";

// 18 points at each usual scale, and what panels ask for; larger ones are dropped by some hosts.
constexpr std::array iconSides = {16, 18, 22, 24, 32, 36, 44, 48};

// Stays the same for ever: hosts remember by it where the user put the icon, or hid it.
constexpr const char *itemId = "fernhop";

GVariant *noPixmaps() {
    return g_variant_new_array(G_VARIANT_TYPE("(iiay)"), nullptr, 0);
}

GVariant *pixmap(const std::vector<std::uint8_t> &pixels, int side) {
    return g_variant_new("(ii@ay)", side, side,
                         g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, pixels.data(), pixels.size(), 1));
}

} // namespace

NotifierItem::NotifierItem(GDBusConnection *connection, const char *menuPath,
                           std::function<void(const std::string &token)> tokenTaker)
    : menu(menuPath), takeToken(std::move(tokenTaker)),
      object(connection, itemPath, org_kde_status_notifier_item_interface,
             {[this](auto method, auto *body, auto *invocation) { call(method, body, invocation); },
              [this](auto name) { return property(name); }}) {}

void NotifierItem::call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation) const {
    if (method == "ProvideXdgActivationToken") {
        const char *token = nullptr;
        g_variant_get(body, "(&s)", &token);
        takeToken(token);
    }
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

void NotifierItem::setImage(ui::ImageReference newImage, bool withRim) {
    const bool isNew = !ui::sameImage(image, newImage) || hasRim != withRim;
    hasRim = withRim;
    image = std::move(newImage);
    pixmaps.reset();
    if (isNew)
        object.emit("NewIcon");
}

void NotifierItem::setToolTip(const std::string &text) {
    if (text == std::exchange(toolTip, text))
        return;
    object.emit("NewToolTip");
}

void NotifierItem::setTitle(const std::string &text) {
    if (text == std::exchange(title, text))
        return;
    object.emit("NewTitle");
}

GVariant *NotifierItem::property(std::string_view name) const {
    if (name == "Category")
        return g_variant_new_string("ApplicationStatus");
    if (name == "Id")
        return g_variant_new_string(itemId);
    if (name == "Title")
        return g_variant_new_string(title.empty() ? applicationName : shownText(title).c_str());
    if (name == "Status")
        return g_variant_new_string("Active");
    if (name == "WindowId")
        return g_variant_new_int32(0);
    if (name == "IconPixmap")
        return iconProperty();
    if (name == "ToolTip")
        return toolTipProperty();
    if (name == "ItemIsMenu")
        return g_variant_new_boolean(TRUE);
    if (name == "Menu")
        return g_variant_new_object_path(menu.c_str());
    // Of the others each is a name or pixmaps that this item does not have.
    return name.ends_with("Pixmap") ? noPixmaps() : g_variant_new_string("");
}

GVariant *NotifierItem::toolTipProperty() const {
    return g_variant_new("(s@a(iiay)ss)", "", noPixmaps(), shownText(toolTip).c_str(), "");
}

// Kept, as hosts read all properties whenever one has changed.
GVariant *NotifierItem::iconProperty() const {
    if (pixmaps)
        return g_variant_ref(pixmaps.get());
    GVariantBuilder drawn;
    g_variant_builder_init(&drawn, G_VARIANT_TYPE("a(iiay)"));
    for (const int side : iconSides)
        if (const auto pixels = iconPixels(image, hasRim, side); !pixels.empty())
            g_variant_builder_add_value(&drawn, pixmap(pixels, side));
    pixmaps.reset(g_variant_ref_sink(g_variant_builder_end(&drawn)));
    return g_variant_ref(pixmaps.get());
}

} // namespace fernhop::freedesktop
