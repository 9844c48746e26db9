#include "platform/linux/stub/Courier.h"

#include "platform/Version.h"
#include "platform/linux/base/FernhopService.h"
#include "platform/linux/base/OwnProgram.h"
#include "platform/linux/stub/ResidentStart.h"
#include "platform/linux/stub/SdBus.h"

#include <optional>
#include <utility>

namespace fernhop::stub {
namespace {

using namespace freedesktop;
using Kind = DeliveryResult::Kind;

// A link that crashes the resident must not be delivered again and again.
constexpr int mostDeaths = 5;

// As bytes: environment variables and links may hold bytes that are not allowed in a string on the bus.
int appendBytes(sd_bus_message *message, const char *key, const std::string &value) {
    if (value.empty())
        return 0;
    int result = sd_bus_message_open_container(message, 'e', "sv");
    if (result >= 0)
        result = sd_bus_message_append(message, "s", key);
    if (result >= 0)
        result = sd_bus_message_open_container(message, 'v', "ay");
    if (result >= 0)
        result = sd_bus_message_append_array(message, 'y', value.data(), value.size());
    if (result >= 0)
        result = sd_bus_message_close_container(message);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendProcess(sd_bus_message *message, const char *key, pid_t process) {
    return process <= 0 ? 0 : sd_bus_message_append(message, "{sv}", key, "i", process);
}

int appendOrigin(sd_bus_message *message, const LinkOrigin &origin) {
    int result = sd_bus_message_open_container(message, 'a', "{sv}");
    if (result >= 0)
        result = sd_bus_message_append(message, "{sv}", platformdata::version, "s", programVersion());
    for (const auto &[key, value] : {std::pair(platformdata::activationToken, &origin.activationToken),
                                     {platformdata::startupID, &origin.startupID},
                                     {platformdata::controlGroup, &origin.controlGroup},
                                     {platformdata::desktopFile, &origin.desktopFile}})
        if (result >= 0)
            result = appendBytes(message, key, *value);
    if (result >= 0)
        result = appendProcess(message, platformdata::launchedPid, origin.launchedPid);
    if (result >= 0)
        result = appendProcess(message, platformdata::parentPid, origin.parentPid);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendLinks(sd_bus_message *message, const std::vector<std::string> &links) {
    int result = sd_bus_message_open_container(message, 'a', "ay");
    for (auto link = links.begin(); result >= 0 && link != links.end(); ++link)
        result = sd_bus_message_append_array(message, 'y', link->data(), link->size());
    return result < 0 ? result : sd_bus_message_close_container(message);
}

/// What the resident says of the links that it did not open. The call was answered, so they are not to be
/// delivered again even when the answer cannot be read.
std::vector<UnopenedLink> unopenedIn(sd_bus_message *reply, std::size_t links) {
    std::vector<UnopenedLink> unopened;
    if (sd_bus_message_has_signature(reply, "a(us)") <= 0 ||
        sd_bus_message_enter_container(reply, 'a', "(us)") < 0)
        return unopened;
    std::uint32_t index = 0;
    const char *reason = nullptr;
    while (sd_bus_message_read(reply, "(us)", &index, &reason) > 0)
        if (index < links)
            unopened.push_back({index, reason});
    return unopened;
}

bool saysNoneIsRunning(const BusError &error) {
    return error.is(SD_BUS_ERROR_SERVICE_UNKNOWN) || error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER) ||
           error.is("org.freedesktop.DBus.Error.TimedOut") ||
           error.beginsWith("org.freedesktop.DBus.Error.Spawn.");
}

bool saysItEnded(const BusError &error) {
    return error.is(SD_BUS_ERROR_NO_REPLY) || error.is(SD_BUS_ERROR_DISCONNECTED);
}

/// One delivery, repeated while that may help.
class Courier {
  public:
    Courier(const std::vector<std::string> &linksToDeliver, const LinkOrigin &linkOrigin)
        : links(linksToDeliver), origin(linkOrigin) {}

    DeliveryResult run() {
        do {
            if (!bus || sd_bus_is_open(bus.get()) <= 0)
                bus = connectToSessionBus();
            if (!bus)
                return {Kind::noBus, "there is no session bus", {}};
            if (auto result = attempt())
                return *std::move(result);
        } while (deaths < mostDeaths && pauses.wait());
        return {Kind::notTaken, reason, {}};
    }

  private:
    /// Calls the resident, started before if there is none. Nothing when to try again may help.
    std::optional<DeliveryResult> attempt() {
        for (bool wasStarted = false;; wasStarted = true) {
            BusError error;
            sd_bus_message *received = nullptr;
            const int result = call(error, received);
            const MessagePointer reply(received);
            if (result >= 0)
                return DeliveryResult{Kind::delivered, {}, unopenedIn(received, links.size())};
            reason = error.text(result);
            if (!saysNoneIsRunning(error))
                return resultOf(error);
            if (wasStarted)
                return std::nullopt;
            const auto start = startResident(bus.get(), reason);
            if (start == StartResult::hangs)
                return DeliveryResult{Kind::notTaken, reason, {}};
            // During an upgrade its program may be missing for a moment.
            if (start == StartResult::failed)
                return std::nullopt;
        }
    }

    std::optional<DeliveryResult> resultOf(const BusError &error) {
        if (error.is(otherVersionError))
            return canBeReplaced() ? std::optional(DeliveryResult{Kind::replaced, reason, {}}) : std::nullopt;
        if (!saysItEnded(error) && sd_bus_is_open(bus.get()) > 0)
            return DeliveryResult{Kind::notTaken, reason, {}};
        ++deaths;
        return std::nullopt;
    }

    int call(BusError &error, sd_bus_message *&reply) {
        const bool justStart = links.empty();
        sd_bus_message *created = nullptr;
        int result =
            sd_bus_message_new_method_call(bus.get(), &created, serviceName, serviceObjectPath,
                                           justStart ? "org.freedesktop.Application" : serviceInterface,
                                           justStart ? "Activate" : "OpenLinks");
        const MessagePointer message(created);
        if (result >= 0 && !justStart)
            result = appendLinks(message.get(), links);
        if (result >= 0)
            result = appendOrigin(message.get(), origin);
        // Without a time limit: until the answer comes, only this process is sure to keep the links.
        return result < 0 ? result : sd_bus_call(bus.get(), message.get(), UINT64_MAX, error.out(), &reply);
    }

    const std::vector<std::string> &links;
    const LinkOrigin &origin;
    BusPointer bus;
    Pauses pauses;
    std::string reason; ///< why the last attempt failed
    int deaths = 0;     ///< of residents that had the links
};

} // namespace

DeliveryResult deliver(const std::vector<std::string> &links, const LinkOrigin &origin) {
    return Courier(links, origin).run();
}

} // namespace fernhop::stub
