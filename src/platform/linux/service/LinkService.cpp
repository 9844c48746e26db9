#include "platform/linux/service/LinkService.h"

#include "platform/SentLink.h"
#include "platform/Url.h"
#include "platform/Version.h"
#include "platform/linux/base/GPointer.h"

#include <fernhop_service_interfaces.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace fernhop::freedesktop {
namespace {

/// Bytes of a link that is looked at. Programs take 128 KiB at most; to read much more would hold up other
/// links.
constexpr std::size_t largestLink = std::size_t{1} << 20U;

std::string bytesOf(GVariant *bytes) {
    gsize length = 0;
    const auto *data = static_cast<const char *>(g_variant_get_fixed_array(bytes, &length, 1));
    return length == 0 ? std::string() : std::string(data, length);
}

std::optional<std::string> textOf(GVariant *value) {
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_BYTESTRING)) {
        auto bytes = bytesOf(value);
        if (bytes.ends_with('\0'))
            bytes.pop_back();
        return bytes;
    }
    if (!g_variant_is_of_type(value, G_VARIANT_TYPE_STRING))
        return std::nullopt;
    gsize length = 0;
    const char *text = g_variant_get_string(value, &length);
    return std::string(text, length);
}

std::optional<std::int64_t> integerOf(GVariant *value) {
    switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_INT32:
        return g_variant_get_int32(value);
    case G_VARIANT_CLASS_UINT32:
        return g_variant_get_uint32(value);
    case G_VARIANT_CLASS_INT64:
        return g_variant_get_int64(value);
    default:
        return std::nullopt;
    }
}

std::optional<std::string> text(GVariant *data, const char *key) {
    const GVariantPointer value(g_variant_lookup_value(data, key, nullptr));
    return value ? textOf(value.get()) : std::nullopt;
}

std::optional<pid_t> process(GVariant *data, const char *key) {
    const GVariantPointer value(g_variant_lookup_value(data, key, nullptr));
    const auto number = value ? integerOf(value.get()) : std::nullopt;
    if (!number || *number <= 0 || *number > std::numeric_limits<pid_t>::max())
        return std::nullopt;
    return static_cast<pid_t>(*number);
}

LinkSender senderOf(GVariant *data) {
    return {{text(data, platformdata::activationToken), text(data, platformdata::startupID)},
            process(data, platformdata::launchedPid),
            process(data, platformdata::parentPid),
            text(data, platformdata::controlGroup),
            text(data, platformdata::desktopFile)};
}

/// Calls a method of the bus itself that answers with a number, and waits for it. Nothing on an error.
std::optional<guint32> callBus(GDBusConnection *bus, const char *method, GVariant *body) {
    const GVariantPointer reply(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, body,
        G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    if (!reply)
        return std::nullopt;
    guint32 answer = 0;
    g_variant_get(reply.get(), "(u)", &answer);
    return answer;
}

/// The process behind a connection to the bus. It is waited for, so that links stay in order.
std::optional<pid_t> processOf(GDBusConnection *bus, const char *connection) {
    const auto process = callBus(bus, "GetConnectionUnixProcessID", g_variant_new("(s)", connection));
    return process ? std::optional(static_cast<pid_t>(*process)) : std::nullopt;
}

GCharPointer busText(const std::string &text) {
    return GCharPointer(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

/// Why no browser was asked to open the link of an event.
std::string reasonOfDrop(const LinkEventDescriptor &event) {
    const auto &link = event.paramDescriptorForKeyword(directObjectKeyword)->stringValue;
    return Url::parse(*link) ? "no browser can open it" : "it is not a URL";
}

// Browsers give reasons too, and a message on the bus has a limit: this many are told in full.
constexpr std::size_t mostReasonBytes = std::size_t{1} << 24U;

GVariant *unopenedAnswer(const std::vector<UnopenedLink> &unopened) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a(us)"));
    std::size_t told = 0;
    for (const auto &[index, reason] : unopened) {
        told += reason.size();
        const auto text = busText(told > mostReasonBytes ? std::string() : reason);
        g_variant_builder_add(&list, "(us)", static_cast<guint32>(index), text.get());
    }
    return g_variant_new("(a(us))", &list);
}

} // namespace

DeliveredLinks deliveredLinks(GVariant *body) {
    if (!g_variant_is_of_type(body, G_VARIANT_TYPE("(asa{sv})")) &&
        !g_variant_is_of_type(body, G_VARIANT_TYPE("(aaya{sv})")))
        return {};
    const GVariantPointer links(g_variant_get_child_value(body, 0));
    const GVariantPointer data(g_variant_get_child_value(body, 1));
    DeliveredLinks delivered{{}, senderOf(data.get())};
    for (gsize index = 0; index < g_variant_n_children(links.get()); ++index) {
        const GVariantPointer link(g_variant_get_child_value(links.get(), index));
        delivered.links.push_back(textOf(link.get()).value_or(""));
    }
    return delivered;
}

LinkDispatcher::LinkDispatcher(CurrentDelivery &currentDelivery, Arrived whenArrived)
    : current(currentDelivery), arrived(std::move(whenArrived)) {}

void LinkDispatcher::setEventHandler(LinkEventHandler newHandler, FourCharCode eventClass,
                                     FourCharCode eventID) {
    // Links are the only events on this platform.
    if (eventClass != getUrlEventCode || eventID != getUrlEventCode)
        return;
    handler = std::move(newHandler);
}

void LinkDispatcher::deliver(DeliveredLinks delivered, LinkDelivery::Handled onHandled) {
    if (!arrived)
        return handOverAll(std::move(delivered), std::move(onHandled));
    const LinkSender sender = delivered.sender;
    arrived(sender, [this, links = std::move(delivered), handled = std::move(onHandled)]() mutable {
        handOverAll(std::move(links), std::move(handled));
    });
}

void LinkDispatcher::handOverAll(DeliveredLinks delivered, LinkDelivery::Handled onHandled) {
    auto delivery = std::make_shared<LinkDelivery>(delivered.sender.tokens, std::move(onHandled));
    for (std::size_t index = 0; index < delivered.links.size(); ++index)
        handOver(delivery, index, std::move(delivered.links[index]));
}

void LinkDispatcher::handOver(const std::shared_ptr<LinkDelivery> &delivery, std::size_t index,
                              std::string link) {
    if (link.size() > largestLink)
        return delivery->addUnopened({index, "it is too long"});
    const auto event = LinkEventDescriptor::getUrl(std::move(link));
    LinkEventDescriptor reply;
    // A link may arrive while another is being routed, from a nested main loop.
    const auto before = std::exchange(current, {delivery, index});
    handler(event, reply);
    if (!std::exchange(current, before).isTaken)
        delivery->addUnopened({index, reasonOfDrop(event)});
}

LinkService::LinkService(GDBusConnection *connection, LinkDispatcher &linkDispatcher, Handlers callHandlers)
    : bus(connection), dispatcher(linkDispatcher), handlers(std::move(callHandlers)) {}

bool LinkService::exportObject() {
    const BusObject::Behaviour behaviour{
        [this](auto method, auto *body, auto *invocation) { call(method, body, invocation); }, {}};
    for (const auto *interface : {&org_fernhop_fernhop_interface, &org_freedesktop_application_interface})
        interfaces.push_back(std::make_unique<BusObject>(bus, serviceObjectPath, *interface, behaviour));
    return std::ranges::all_of(
        interfaces, &BusObject::isRegistered, [](const auto &each) -> auto & { return *each; });
}

// Only Fernhop's own programs state a version. They repeat a call that was refused; other applications would
// give up.
bool LinkService::refuseOtherVersion(GVariant *body, GDBusMethodInvocation *invocation) const {
    const GVariantPointer data(g_variant_get_child_value(body, g_variant_n_children(body) - 1));
    const auto version = text(data.get(), platformdata::version);
    if (!version || (!pending->onIdle && !isOtherVersion(*version)))
        return false;
    const auto reason = std::string("the running Fernhop is version ") + programVersion() +
                        (pending->onIdle ? " and is being upgraded" : "");
    g_dbus_method_invocation_return_dbus_error(invocation, otherVersionError, reason.c_str());
    if (handlers.refused)
        handlers.refused();
    return true;
}

void LinkService::call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation) {
    if (refuseOtherVersion(body, invocation))
        return;
    if (method == "OpenLinks")
        return openLinks(deliveredLinks(body), invocation, unopenedAnswer);
    if (method == "Open")
        return openLinksOfCaller(deliveredLinks(body), invocation);
    if (method == "Perform")
        return perform(body, invocation);
    if (method != "Activate")
        return refuse(invocation, "There is no such action");
    handlers.activate();
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

void LinkService::openLinks(DeliveredLinks links, GDBusMethodInvocation *invocation,
                            std::function<GVariant *(const std::vector<UnopenedLink> &)> answer) {
    ++pending->calls;
    dispatcher.deliver(std::move(links),
                       [calls = pending, invocation, answer = std::move(answer)](const auto &unopened) {
                           g_dbus_method_invocation_return_value(invocation, answer(unopened));
                           if (--calls->calls == 0 && calls->onIdle)
                               calls->onIdle();
                       });
}

// The stub tells who asked it; an application that calls by itself is the sender.
void LinkService::openLinksOfCaller(DeliveredLinks links, GDBusMethodInvocation *invocation) {
    if (!links.sender.parentPid)
        links.sender.parentPid = processOf(bus, g_dbus_method_invocation_get_sender(invocation));
    // Applications call this with a text as a user typed or clicked it; the stub has already done this.
    for (auto &link : links.links) {
        if (link.size() <= largestLink)
            link = linkToDeliver(link).value_or("");
    }
    openLinks(std::move(links), invocation, [](const auto &) { return nullptr; });
}

void LinkService::perform(GVariant *body, GDBusMethodInvocation *invocation) const {
    const GVariantPointer input(g_variant_get_child_value(body, 1));
    const GVariantPointer data(g_variant_get_child_value(body, 2));
    handlers.activationToken(text(data.get(), platformdata::activationToken).value_or(""));
    const auto result = handlers.perform(textsIn(body, 0), bytesOf(input.get()));
    g_dbus_method_invocation_return_value(
        invocation,
        g_variant_new("(iss)", result.status, busText(result.output).get(), busText(result.errors).get()));
}

NameRequest requestName(GDBusConnection *bus, const char *name) {
    constexpr guint doNotQueue = 4;   // DBUS_NAME_FLAG_DO_NOT_QUEUE
    constexpr guint primaryOwner = 1; // DBUS_REQUEST_NAME_REPLY_PRIMARY_OWNER
    const auto answer = callBus(bus, "RequestName", g_variant_new("(su)", name, doNotQueue));
    if (!answer)
        return NameRequest::failed;
    return *answer == primaryOwner ? NameRequest::owned : NameRequest::taken;
}

void releaseName(GDBusConnection *bus, const char *name) {
    (void)callBus(bus, "ReleaseName", g_variant_new("(s)", name));
}

} // namespace fernhop::freedesktop
