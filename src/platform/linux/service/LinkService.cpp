#include "platform/linux/service/LinkService.h"

#include "platform/linux/base/GPointer.h"
#include "platform/linux/service/BusArguments.h"

#include <algorithm>
#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr const char *ownInterface = R"(
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
</node>)";

constexpr const char *applicationInterface = R"(
<node>
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

bool LinkService::exportObject() {
    const BusObject::Behaviour behaviour{
        [this](auto method, auto *body, auto *invocation) { call(method, body, invocation); }, {}};
    for (const char *introspection : {ownInterface, applicationInterface})
        interfaces.push_back(std::make_unique<BusObject>(bus, serviceObjectPath, introspection, behaviour));
    return std::ranges::all_of(
        interfaces, &BusObject::isRegistered, [](const auto &each) -> auto & { return *each; });
}

void LinkService::call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation) {
    if (method == "OpenLinks")
        return openLinks(deliveredLinks(body), invocation);
    if (method == "Open")
        return openLinksOfCaller(deliveredLinks(body), invocation);
    if (method == "Perform")
        return perform(body, invocation);
    if (method != "Activate")
        return refuse(invocation, "There is no such action");
    handlers.activate();
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
    handlers.activationToken(activationTokenOf(body));
    const auto result = handlers.perform(textsIn(body, 0), inputOf(body));
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
