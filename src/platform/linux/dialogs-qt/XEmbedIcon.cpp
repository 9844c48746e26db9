#include "platform/linux/dialogs-qt/XEmbedIcon.h"

#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/Icons.h"

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QPixmap>
#include <QtEndian>
#include <memory>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr const char *itemPath = "/StatusNotifierItem", *itemInterface = "org.kde.StatusNotifierItem";
constexpr const char *menuPath = "/MenuBar", *menuInterface = "com.canonical.dbusmenu";
constexpr int patience = 5000; // milliseconds that the item has to answer

/// The properties of an item, an a{sv}.
class Properties {
  public:
    explicit Properties(GVariant *vardict) : values(vardict) {}

    [[nodiscard]] QString text(const char *name) const {
        const char *value = nullptr;
        return g_variant_lookup(values, name, "&s", &value) ? QString::fromUtf8(value) : QString();
    }
    [[nodiscard]] bool flag(const char *name, bool otherwise) const {
        gboolean value = otherwise;
        (void)g_variant_lookup(values, name, "b", &value);
        return value != FALSE;
    }
    [[nodiscard]] bool isOn() const {
        gint32 state = 0;
        return g_variant_lookup(values, "toggle-state", "i", &state) && state == 1;
    }
    [[nodiscard]] QKeySequence shortcut() const {
        const GVariantPointer chords(g_variant_lookup_value(values, "shortcut", G_VARIANT_TYPE("aas")));
        if (!chords || g_variant_n_children(chords.get()) == 0)
            return {};
        const GVariantPointer chord(g_variant_get_child_value(chords.get(), 0));
        const GStringsPointer keys(g_variant_dup_strv(chord.get(), nullptr));
        // The bus and the toolkit differ in the name of one key.
        const QString joined = QString::fromUtf8(GCharPointer(g_strjoinv("+", keys.get())).get());
        return QString(joined).replace(QLatin1String("Control"), QLatin1String("Ctrl"));
    }
    [[nodiscard]] QIcon icon() const {
        if (const QString name = text("icon-name"); !name.isEmpty())
            return paintedIcon([name = name.toStdString()](QPainter &painter, const QRectF &area) {
                const QColor ink = QApplication::palette().color(QPalette::ButtonText);
                paintApplicationIcon(painter, name, area, ink);
            });
        const GVariantPointer png(g_variant_lookup_value(values, "icon-data", G_VARIANT_TYPE_BYTESTRING));
        if (!png)
            return {};
        gsize size = 0;
        const auto *data = static_cast<const uchar *>(g_variant_get_fixed_array(png.get(), &size, 1));
        QPixmap picture;
        picture.loadFromData(data, static_cast<uint>(size));
        return picture;
    }

  private:
    GVariant *values;
};

/// Doubled underscores stand for single ones on the bus, and doubled ampersands in the toolkit.
QString titleOf(const Properties &item) {
    return item.text("label")
        .replace(QLatin1String("__"), QLatin1String("_"))
        .replace(QLatin1Char('&'), QLatin1String("&&"));
}

void addSubmenu(QMenu &target, QAction &action, GVariant *layout, const ClickItem &click) {
    auto *submenu = new QMenu(&target);
    action.setMenu(submenu);
    const std::shared_ptr<GVariant> kept(g_variant_ref(layout), g_variant_unref);
    QObject::connect(submenu, &QMenu::aboutToShow, submenu, [submenu, kept, click] {
        if (submenu->isEmpty())
            fillMenu(*submenu, kept.get(), click);
    });
}

void addItem(QMenu &target, GVariant *layout, const ClickItem &click) {
    gint32 id = 0;
    GVariant *values = nullptr;
    g_variant_get(layout, "(i@a{sv}@av)", &id, &values, nullptr);
    const GVariantPointer owned(values);
    const Properties item(values);
    if (item.text("type") == QLatin1String("separator")) {
        target.addSeparator();
        return;
    }
    QAction &action = *target.addAction(titleOf(item));
    action.setEnabled(item.flag("enabled", true));
    action.setIcon(item.icon());
    action.setCheckable(item.isOn());
    action.setChecked(item.isOn());
    action.setShortcut(item.shortcut());
    if (item.text("children-display") == QLatin1String("submenu"))
        addSubmenu(target, action, layout, click);
    else // later, as the menu may be filled anew by what the click does
        QObject::connect(
            &action, &QAction::triggered, qApp, [id, click] { click(id); }, Qt::QueuedConnection);
}

/// The picture of one size, an (iiay) of pixels in network byte order.
QPixmap pixmapOf(GVariant *image) {
    gint32 width = 0, height = 0;
    GVariant *bytes = nullptr;
    g_variant_get(image, "(ii@ay)", &width, &height, &bytes);
    const GVariantPointer owned(bytes);
    gsize size = 0;
    const void *pixels = g_variant_get_fixed_array(bytes, &size, 1);
    const qsizetype count = static_cast<qsizetype>(width) * height;
    if (width <= 0 || height <= 0 || size != static_cast<gsize>(count) * sizeof(quint32))
        return {};
    QImage picture(width, height, QImage::Format_ARGB32);
    qFromBigEndian<quint32>(pixels, count, picture.bits());
    return QPixmap::fromImage(picture);
}

} // namespace

void fillMenu(QMenu &target, GVariant *layout, const ClickItem &click) {
    const GVariantPointer children(g_variant_get_child_value(layout, 2));
    for (gsize place = 0; place < g_variant_n_children(children.get()); ++place) {
        const GVariantPointer boxed(g_variant_get_child_value(children.get(), place));
        const GVariantPointer child(g_variant_get_variant(boxed.get()));
        if (g_variant_is_of_type(child.get(), G_VARIANT_TYPE("(ia{sv}av)")))
            addItem(target, child.get(), click);
    }
}

XEmbedIcon::XEmbedIcon(GDBusConnection *connection, std::string itemOwner)
    : bus(connection), owner(std::move(itemOwner)), appearance(bus, [] {}) {
    const auto changed = [](auto *, auto *, auto *, auto *, const gchar *signal, auto *, gpointer self) {
        if (std::string_view(signal) == "NewIcon")
            static_cast<XEmbedIcon *>(self)->showPicture();
        else if (std::string_view(signal) == "NewToolTip")
            static_cast<XEmbedIcon *>(self)->showToolTip();
    };
    subscription =
        g_dbus_connection_signal_subscribe(bus, owner.c_str(), itemInterface, nullptr, itemPath, nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, changed, this, nullptr);
    QObject::connect(&menu, &QMenu::aboutToShow, [this] { refillMenu(); });
    QObject::connect(&icon, &QSystemTrayIcon::activated, [this](auto reason) {
        // The other button opens the menu by itself.
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick)
            menu.popup(QCursor::pos());
    });
    icon.setContextMenu(&menu);
    showPicture();
    showToolTip();
    icon.show();
}

XEmbedIcon::~XEmbedIcon() {
    g_dbus_connection_signal_unsubscribe(bus, subscription);
}

GVariantPointer XEmbedIcon::call(const char *path, const char *interface, const char *method, GVariant *body,
                                 const char *replyType) const {
    return GVariantPointer(g_dbus_connection_call_sync(
        bus, owner.c_str(), path, interface, method, body, G_VARIANT_TYPE(replyType),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, patience, nullptr, nullptr));
}

GVariantPointer XEmbedIcon::property(const char *name) const {
    const auto reply = call(itemPath, "org.freedesktop.DBus.Properties", "Get",
                            g_variant_new("(ss)", itemInterface, name), "(v)");
    GVariant *value = nullptr;
    if (reply)
        g_variant_get(reply.get(), "(v)", &value);
    return GVariantPointer(value);
}

void XEmbedIcon::showPicture() {
    const auto pictures = property("IconPixmap");
    if (!pictures || !g_variant_is_of_type(pictures.get(), G_VARIANT_TYPE("a(iiay)")))
        return;
    QIcon sizes;
    for (gsize place = 0; place < g_variant_n_children(pictures.get()); ++place)
        sizes.addPixmap(pixmapOf(GVariantPointer(g_variant_get_child_value(pictures.get(), place)).get()));
    icon.setIcon(sizes);
}

void XEmbedIcon::showToolTip() {
    const auto toolTip = property("ToolTip");
    if (!toolTip || !g_variant_is_of_type(toolTip.get(), G_VARIANT_TYPE("(sa(iiay)ss)")))
        return;
    const GVariantPointer title(g_variant_get_child_value(toolTip.get(), 2));
    icon.setToolTip(QString::fromUtf8(g_variant_get_string(title.get(), nullptr)));
}

void XEmbedIcon::refillMenu() {
    adoptAppearance(appearance.stated());
    menu.clear();
    qDeleteAll(menu.findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly));
    const auto reply =
        call(menuPath, menuInterface, "GetLayout", g_variant_new("(iias)", 0, -1, nullptr), "(u(ia{sv}av))");
    if (!reply)
        return;
    const GVariantPointer layout(g_variant_get_child_value(reply.get(), 1));
    fillMenu(menu, layout.get(), [this](std::int32_t id) { click(id); });
}

void XEmbedIcon::click(std::int32_t id) const {
    g_dbus_connection_call(bus, owner.c_str(), menuPath, menuInterface, "Event",
                           g_variant_new("(isvu)", id, "clicked", g_variant_new_int32(0), 0), nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, patience, nullptr, nullptr, nullptr);
}

} // namespace fernhop::freedesktop
