#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Bus.h"
#include "platform/linux/service/BusClient.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// A StatusNotifierWatcher, from construction to destruction: takes the name, from another watcher too, and
/// records the items that are registered.
class Watcher {
  public:
    explicit Watcher(const std::string &address, bool withHost = true)
        : hasHost(withHost), connection(connectTo(address)),
          object(connection.get(), "/StatusNotifierWatcher", *node->interfaces[0],
                 {[this](auto, auto *body, auto *call) { add(body, call); },
                  [this](auto) {
                      ++asked;
                      return g_variant_new_boolean(hasHost);
                  }}),
          name(g_bus_own_name_on_connection(connection.get(), "org.kde.StatusNotifierWatcher", takesAndGives,
                                            nullptr, nullptr, nullptr, nullptr)) {}
    ~Watcher() {
        g_bus_unown_name(name);
        g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    }
    Watcher(const Watcher &) = delete;
    Watcher &operator=(const Watcher &) = delete;

    /// Registers or unregisters a host.
    void setHost(bool isPresent) {
        hasHost = isPresent;
        object.emit(isPresent ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered");
    }

    std::vector<std::string> items;
    int refusals = 0; ///< how many registrations to refuse before one is accepted
    int asked = 0;    ///< how often a client read whether there is a host

  private:
    static constexpr auto takesAndGives = static_cast<GBusNameOwnerFlags>(
        G_BUS_NAME_OWNER_FLAGS_ALLOW_REPLACEMENT | G_BUS_NAME_OWNER_FLAGS_REPLACE);
    static constexpr const char *introspection = R"XML(
<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <signal name="StatusNotifierHostRegistered"/>
    <signal name="StatusNotifierHostUnregistered"/>
  </interface>
</node>)XML";

    void add(GVariant *body, GDBusMethodInvocation *call) {
        if (refusals > 0) {
            --refusals;
            return refuse(call, "not yet");
        }
        const char *item = nullptr;
        g_variant_get(body, "(&s)", &item);
        items.emplace_back(item);
        g_dbus_method_invocation_return_value(call, nullptr);
    }

    bool hasHost;
    const NodeInfoPointer node{g_dbus_node_info_new_for_xml(introspection, nullptr)};
    BusConnection connection;
    BusObject object;
    guint name;
};

/// What a host that shows an item does: calls it and counts its signals.
class Host {
  public:
    Host(const std::string &address, std::string itemName)
        : connection(connectTo(address)), item(std::move(itemName)) {
        subscription =
            g_dbus_connection_signal_subscribe(connection.get(), item.c_str(), nullptr, nullptr, nullptr,
                                               nullptr, G_DBUS_SIGNAL_FLAGS_NONE, signalled, this, nullptr);
        // The bus knows of the subscription when it has answered the next call.
        (void)call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId", nullptr);
    }
    ~Host() { g_dbus_connection_signal_unsubscribe(connection.get(), subscription); }
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// The name that the bus gave this host.
    [[nodiscard]] std::string name() const { return g_dbus_connection_get_unique_name(connection.get()); }

    struct Reply {
        GVariantPointer value;
        GErrorPointer error;
    };

    Reply call(const char *name, const char *path, const char *interface, const char *method,
               GVariant *body) {
        Reply reply;
        g_dbus_connection_call(connection.get(), name, path, interface, method, body, nullptr,
                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, answered, &reply);
        // Every call is answered, at the latest when the bus has lost patience.
        while (!reply.value && !reply.error)
            g_main_context_iteration(nullptr, TRUE);
        return reply;
    }
    Reply menuCall(const char *method, GVariant *body) {
        return call(item.c_str(), "/MenuBar", "com.canonical.dbusmenu", method, body);
    }
    Reply menuCall(const char *method, const std::string &body) {
        return menuCall(method, g_variant_new_parsed(body.c_str()));
    }
    GVariantPointer property(const char *interface, const char *path, const char *name) {
        const auto reply = call(item.c_str(), path, "org.freedesktop.DBus.Properties", "Get",
                                g_variant_new("(ss)", interface, name));
        GVariant *value = nullptr;
        if (reply.value)
            g_variant_get(reply.value.get(), "(v)", &value);
        return GVariantPointer(value);
    }
    GVariantPointer itemProperty(const char *name) {
        return property("org.kde.StatusNotifierItem", "/StatusNotifierItem", name);
    }

    /// The layout of the whole menu with all properties, and its revision.
    std::pair<GVariantPointer, guint32> layout() {
        const auto reply = menuCall("GetLayout", "(0, -1, @as [])");
        guint32 revision = 0;
        GVariant *root = nullptr;
        if (reply.value)
            g_variant_get(reply.value.get(), "(u@(ia{sv}av))", &revision, &root);
        return {GVariantPointer(root), revision};
    }

    /// Everything that the item sent until now has arrived, as messages come in order.
    void settle() {
        support::runPending();
        (void)menuCall("AboutToShow", "(0,)");
        support::runPending();
    }

    std::map<std::string, int> signals;
    std::vector<std::string> bodies; ///< of the signals, in order

  private:
    static void answered(GObject *bus, GAsyncResult *result, gpointer data) {
        auto &reply = *static_cast<Reply *>(data);
        GError *failure = nullptr;
        reply.value.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &failure));
        reply.error.reset(failure);
    }
    static void signalled(GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *signal,
                          GVariant *body, gpointer self) {
        auto &host = *static_cast<Host *>(self);
        ++host.signals[signal];
        const GCharPointer text(g_variant_print(body, FALSE));
        host.bodies.emplace_back(text.get());
    }

    BusConnection connection;
    std::string item;
    guint subscription = 0;
};

/// One item of a layout as a host reads it.
struct LayoutItem {
    explicit LayoutItem(GVariant *layout) {
        GVariant *dictionary = nullptr, *list = nullptr;
        g_variant_get(layout, "(i@a{sv}@av)", &id, &dictionary, &list);
        properties.reset(dictionary);
        const GVariantPointer owned(list);
        for (gsize place = 0; place < g_variant_n_children(list); ++place) {
            const GVariantPointer boxed(g_variant_get_child_value(list, place));
            const GVariantPointer child(g_variant_get_variant(boxed.get()));
            children.emplace_back(child.get());
        }
    }

    /// A property as GVariant text; empty: it is not there.
    [[nodiscard]] std::string property(const char *name) const {
        const GVariantPointer value(g_variant_lookup_value(properties.get(), name, nullptr));
        const GCharPointer text(value ? g_variant_print(value.get(), FALSE) : nullptr);
        return text ? text.get() : "";
    }
    [[nodiscard]] std::string label() const {
        const char *text = "";
        g_variant_lookup(properties.get(), "label", "&s", &text);
        return text;
    }

    gint32 id = 0;
    GVariantPointer properties;
    std::vector<LayoutItem> children;
};

/// Desktop entries that are said to be there.
class ListedEntries : public DesktopEntries {
  public:
    [[nodiscard]] std::optional<DesktopEntry> entry(const std::string &) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::optional<DesktopEntry> entryAtPath(const std::string &path) const override {
        const auto found = icons.find(path);
        if (found == icons.end())
            return std::nullopt;
        DesktopEntry entry;
        entry.path = path;
        entry.icon = found->second;
        return entry;
    }
    [[nodiscard]] std::vector<DesktopEntry> refused() const override { return {}; }
    [[nodiscard]] std::vector<DesktopEntry> all() const override { return {}; }
    [[nodiscard]] bool hasProgram(const DesktopEntry &) const override { return true; }
    [[nodiscard]] std::size_t fingerprint() const override { return 0; }

    std::map<std::string, std::string> icons; ///< by the path of the entry
};

} // namespace fernhop::freedesktop
