#include "platform/linux/stub/Courier.h"

#include "platform/linux/stub/Resident.h"

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace fernhop::stub {
namespace {

using Kind = DeliveryResult::Kind;

constexpr const char *busName = "org.fernhop.Fernhop";
constexpr const char *objectPath = "/org/fernhop/Fernhop";

// A link that brings the resident down each time must not go round for ever.
constexpr int mostAttempts = 5;

struct Unref {
    void operator()(sd_bus *bus) const { sd_bus_flush_close_unref(bus); }
    void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
};
using Bus = std::unique_ptr<sd_bus, Unref>;
using Message = std::unique_ptr<sd_bus_message, Unref>;

class Error {
  public:
    Error() = default;
    ~Error() { sd_bus_error_free(&error); }
    Error(const Error &) = delete;
    Error &operator=(const Error &) = delete;

    sd_bus_error *out() { return &error; }
    [[nodiscard]] bool is(const char *errorName) const {
        return sd_bus_error_has_name(&error, errorName) != 0;
    }
    [[nodiscard]] bool isOneOf(const char *prefix) const {
        return error.name != nullptr && strncmp(error.name, prefix, strlen(prefix)) == 0;
    }
    [[nodiscard]] std::string text(int result) const {
        return error.message != nullptr ? error.message : strerror(-result);
    }

  private:
    sd_bus_error error{}; // what SD_BUS_ERROR_NULL is, which is no C++
};

// Bytes and no text: the environment and the links may hold what no text on the bus may.
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
        result = appendBytes(message, "activation-token", origin.activationToken);
    if (result >= 0)
        result = appendBytes(message, "desktop-startup-id", origin.startupID);
    if (result >= 0)
        result = appendBytes(message, "control-group", origin.controlGroup);
    if (result >= 0)
        result = appendBytes(message, "desktop-file", origin.desktopFile);
    if (result >= 0)
        result = appendProcess(message, "launched-pid", origin.launchedPid);
    if (result >= 0)
        result = appendProcess(message, "parent-pid", origin.parentPid);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendLinks(sd_bus_message *message, const std::vector<std::string> &links) {
    int result = sd_bus_message_open_container(message, 'a', "ay");
    for (auto link = links.begin(); result >= 0 && link != links.end(); ++link)
        result = sd_bus_message_append_array(message, 'y', link->data(), link->size());
    return result < 0 ? result : sd_bus_message_close_container(message);
}

/// One delivery, with what happens when it does not get through at once.
class Courier {
  public:
    Courier(const std::vector<std::string> &linksToDeliver, const LinkOrigin &linkOrigin)
        : links(linksToDeliver), origin(linkOrigin) {}

    DeliveryResult run() {
        DeliveryResult last{Kind::failed, {}};
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            if (!bus && !connect())
                return {Kind::noBus, "there is no session bus"};
            Error error;
            const int result = call(error);
            if (result >= 0)
                return {Kind::delivered, {}};
            last.reason = error.text(result);
            if (!canTryAgain(error, last.reason))
                return last;
        }
        return last;
    }

  private:
    bool connect() {
        sd_bus *opened = nullptr;
        if (sd_bus_open_user(&opened) < 0)
            return false;
        bus.reset(opened);
        return true;
    }

    int call(Error &error) {
        const bool justStart = links.empty();
        sd_bus_message *created = nullptr;
        int result = sd_bus_message_new_method_call(bus.get(), &created, busName, objectPath,
                                                    justStart ? "org.freedesktop.Application" : busName,
                                                    justStart ? "Activate" : "OpenLinks");
        const Message message(created);
        if (result >= 0 && !justStart)
            result = appendLinks(message.get(), links);
        if (result >= 0)
            result = appendOrigin(message.get(), origin);
        // Without a limit of time: until there is an answer the links are in no safe hands but these.
        return result < 0 ? result : sd_bus_call(bus.get(), message.get(), UINT64_MAX, error.out(), nullptr);
    }

    bool canTryAgain(const Error &error, std::string &reason) {
        if (sd_bus_is_open(bus.get()) <= 0) {
            bus.reset();
            return true;
        }
        // The resident was there and is gone.
        if (error.is(SD_BUS_ERROR_NO_REPLY) || error.is(SD_BUS_ERROR_DISCONNECTED))
            return true;
        if (error.is(SD_BUS_ERROR_SERVICE_UNKNOWN) || error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER) ||
            error.is("org.freedesktop.DBus.Error.TimedOut") ||
            error.isOneOf("org.freedesktop.DBus.Error.Spawn."))
            return startResident(bus.get(), busName, reason);
        return false;
    }

    const std::vector<std::string> &links;
    const LinkOrigin &origin;
    Bus bus;
};

} // namespace

DeliveryResult deliver(const std::vector<std::string> &links, const LinkOrigin &origin) {
    return Courier(links, origin).run();
}

} // namespace fernhop::stub
