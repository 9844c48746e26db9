#pragma once

#include "platform/CommandResult.h"
#include "platform/linux/base/Bus.h"
#include "platform/linux/service/LinkDispatcher.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// Where the service is on the bus: its name there, its object, and the interface of its own.
inline constexpr const char *serviceName = "org.fernhop.Fernhop";
inline constexpr const char *serviceObjectPath = "/org/fernhop/Fernhop";
inline constexpr const char *serviceInterface = "org.fernhop.Fernhop";

/// Performs a command of the command line: its arguments, without the program's name, and what stands on its
/// standard input.
using CommandHandler =
    std::function<CommandResult(const std::vector<std::string> &arguments, const std::string &input)>;

/// The resident on the session bus: takes links from the stub and, as org.freedesktop.Application, from
/// anyone, and performs commands. A call that brings links is answered when they have been dealt with. Main
/// thread only.
class LinkService {
  public:
    /// What happens on calls that bring no link.
    struct Handlers {
        CommandHandler perform;
        /// Takes the token by which a window that the command opens may come to the front, before `perform`;
        /// empty: the command came without one.
        std::function<void(const std::string &token)> activationToken;
        std::function<void()> activate; ///< Fernhop was opened while it runs
    };

    /// `bus` and `dispatcher` outlive this object.
    LinkService(GDBusConnection *bus, LinkDispatcher &dispatcher, Handlers handlers);
    LinkService(const LinkService &) = delete;
    LinkService &operator=(const LinkService &) = delete;

    /// Puts the object on the bus, to be called before the name is asked for, so that whoever finds the name
    /// finds the object. False when the connection has an object there already.
    [[nodiscard]] bool exportObject();

  private:
    void call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation);
    void openLinks(DeliveredLinks links, GDBusMethodInvocation *invocation);
    void openLinksOfCaller(DeliveredLinks links, GDBusMethodInvocation *invocation);
    void perform(GVariant *body, GDBusMethodInvocation *invocation) const;

    GDBusConnection *bus;
    LinkDispatcher &dispatcher;
    Handlers handlers;
    std::vector<std::unique_ptr<BusObject>> interfaces;
};

/// How asking for a bus name ended.
enum class NameRequest {
    owned,
    taken, ///< another process has it
    failed,
};

/// Asks the bus for a name, or nothing: not to wait for it, nor to let it be taken away.
[[nodiscard]] NameRequest requestName(GDBusConnection *bus, const char *name);

} // namespace fernhop::freedesktop
