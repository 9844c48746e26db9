#include "platform/linux/links/LinkService.h"

#include "platform/linux/glib/GPointer.h"
#include "platform/linux/links/BusArguments.h"

#include <memory>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr const char *applicationInterface = "org.freedesktop.Application";

constexpr const char *introspection = R"(
<node>
  <interface name="org.fernhop.Fernhop">
    <method name="OpenLinks">
      <arg type="aay" name="links" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="Perform">
      <arg type="as" name="arguments" direction="in"/>
      <arg type="ay" name="input" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
      <arg type="i" name="status" direction="out"/>
      <arg type="s" name="output" direction="out"/>
      <arg type="s" name="errors" direction="out"/>
    </method>
  </interface>
  <interface name="org.freedesktop.Application">
    <method name="Activate">
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="Open">
      <arg type="as" name="uris" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
    <method name="ActivateAction">
      <arg type="s" name="action_name" direction="in"/>
      <arg type="av" name="parameter" direction="in"/>
      <arg type="a{sv}" name="platform_data" direction="in"/>
    </method>
  </interface>
</node>)";

using NodeInfoPointer = std::unique_ptr<GDBusNodeInfo, GDelete<g_dbus_node_info_unref>>;

std::vector<std::string> argumentsOf(GVariant *body) {
    const GVariantPointer list(g_variant_get_child_value(body, 0));
    std::vector<std::string> arguments;
    for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
        const GVariantPointer text(g_variant_get_child_value(list.get(), index));
        arguments.emplace_back(g_variant_get_string(text.get(), nullptr));
    }
    return arguments;
}

std::string inputOf(GVariant *body) {
    const GVariantPointer bytes(g_variant_get_child_value(body, 1));
    gsize length = 0;
    const auto *data = static_cast<const char *>(g_variant_get_fixed_array(bytes.get(), &length, 1));
    return length == 0 ? std::string() : std::string(data, length);
}

std::string activationTokenOf(GVariant *body) {
    const GVariantPointer data(g_variant_get_child_value(body, 2));
    const char *token = nullptr;
    return g_variant_lookup(data.get(), platformdata::activationToken, "&s", &token) ? token : "";
}

/// The process behind a connection to the bus. It is waited for, so that links stay in order.
std::optional<pid_t> processOf(GDBusConnection *bus, const char *connection) {
    const GVariantPointer reply(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetConnectionUnixProcessID", g_variant_new("(s)", connection), G_VARIANT_TYPE("(u)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    guint32 process = 0;
    if (reply)
        g_variant_get(reply.get(), "(u)", &process);
    return process == 0 ? std::nullopt : std::optional(static_cast<pid_t>(process));
}

GCharPointer busText(const std::string &text) {
    return GCharPointer(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

} // namespace

LinkService::LinkService(GDBusConnection *connection, LinkDispatcher &linkDispatcher, Handlers callHandlers)
    : bus(connection), dispatcher(linkDispatcher), handlers(std::move(callHandlers)) {}

LinkService::~LinkService() {
    for (const guint registration : registrations)
        g_dbus_connection_unregister_object(bus, registration);
}

bool LinkService::exportObject() {
    return exportInterface(serviceInterface) && exportInterface(applicationInterface);
}

bool LinkService::exportInterface(const char *name) {
    static constexpr GDBusInterfaceVTable calls = {methodCalled, nullptr, nullptr, {}};
    const NodeInfoPointer node(g_dbus_node_info_new_for_xml(introspection, nullptr));
    const guint registration = g_dbus_connection_register_object(
        bus, serviceObjectPath, g_dbus_node_info_lookup_interface(node.get(), name), &calls, this, nullptr,
        nullptr);
    if (registration != 0)
        registrations.push_back(registration);
    return registration != 0;
}

// GDBus has checked that the body is of the declared types.
void LinkService::methodCalled(GDBusConnection *, const gchar *, const gchar *, const gchar *,
                               const gchar *method, GVariant *body, GDBusMethodInvocation *invocation,
                               gpointer self) {
    auto &service = *static_cast<LinkService *>(self);
    const std::string_view name = method;
    if (name == "OpenLinks")
        return service.openLinks(deliveredLinks(body), invocation);
    if (name == "Open")
        return service.openLinksOfCaller(deliveredLinks(body), invocation);
    if (name == "Perform")
        return service.perform(body, invocation);
    if (name != "Activate")
        return g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS,
                                                     "There is no such action");
    service.handlers.activate();
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

void LinkService::openLinks(DeliveredLinks links, GDBusMethodInvocation *invocation) {
    dispatcher.deliver(std::move(links),
                       [invocation] { g_dbus_method_invocation_return_value(invocation, nullptr); });
}

// The stub tells who asked it; an application that calls by itself is the sender.
void LinkService::openLinksOfCaller(DeliveredLinks links, GDBusMethodInvocation *invocation) {
    if (!links.sender.parentPid)
        links.sender.parentPid = processOf(bus, g_dbus_method_invocation_get_sender(invocation));
    openLinks(std::move(links), invocation);
}

void LinkService::perform(GVariant *body, GDBusMethodInvocation *invocation) const {
    if (const std::string token = activationTokenOf(body); !token.empty())
        handlers.activationToken(token);
    const auto result = handlers.perform(argumentsOf(body), inputOf(body));
    g_dbus_method_invocation_return_value(
        invocation,
        g_variant_new("(iss)", result.status, busText(result.output).get(), busText(result.errors).get()));
}

NameRequest requestName(GDBusConnection *bus, const char *name) {
    constexpr guint doNotQueue = 4;   // DBUS_NAME_FLAG_DO_NOT_QUEUE
    constexpr guint primaryOwner = 1; // DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER
    const GVariantPointer reply(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", name, doNotQueue), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        nullptr));
    if (!reply)
        return NameRequest::failed;
    guint32 answer = 0;
    g_variant_get(reply.get(), "(u)", &answer);
    return answer == primaryOwner ? NameRequest::owned : NameRequest::taken;
}

} // namespace fernhop::freedesktop
