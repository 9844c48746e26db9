#pragma once

#include "platform/CommandResult.h"
#include "platform/LinkEvents.h"
#include "platform/linux/base/Bus.h"
#include "platform/linux/base/FernhopService.h"
#include "platform/linux/source/LinkDelivery.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// The links and their sender in the body of a message: (asa{sv}), or (aaya{sv}) for links that may hold any
/// byte. A zero byte at the end of such bytes is not part of them. A value of an unexpected type is ignored;
/// a body of another form brings no link.
[[nodiscard]] DeliveredLinks deliveredLinks(GVariant *body);

/// Hands the links that reach this process to the controller as GetURL events. Main thread only.
class LinkDispatcher : public LinkEvents {
  public:
    /// Is told of the sender of links, and calls `handle` when they can be handled, possibly later.
    using Arrived = std::function<void(const LinkSender &sender, std::function<void()> handle)>;

    /// Without `arrived` links are handled at once. `current` outlives this object, which outlives what
    /// `arrived` does later.
    LinkDispatcher(CurrentDelivery &current, Arrived arrived);

    void setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) override;

    /// Hands over each link, in order; the handler has been set. `onHandled` is called when each link has
    /// been handed to a browser or dropped, possibly before this returns, with those that were not opened.
    void deliver(DeliveredLinks links, LinkDelivery::Handled onHandled);

  private:
    void handOverAll(DeliveredLinks links, LinkDelivery::Handled onHandled);
    void handOver(const std::shared_ptr<LinkDelivery> &delivery, std::size_t index, std::string link);

    CurrentDelivery &current;
    Arrived arrived;
    LinkEventHandler handler;
};

/// Performs a command of the command line: its arguments, without the program's name, and what stands on its
/// standard input.
using CommandHandler =
    std::function<CommandResult(const std::vector<std::string> &arguments, const std::string &input)>;

/// The resident on the session bus: takes links from the stub and, as org.freedesktop.Application, from
/// anyone, and performs commands. A call that brings links is answered when they have been handled. Main
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
        /// A program of another version called and was refused.
        std::function<void()> refused = {};
    };

    /// `bus` and `dispatcher` outlive this object.
    LinkService(GDBusConnection *bus, LinkDispatcher &dispatcher, Handlers handlers);
    ~LinkService() { pending->onIdle = nullptr; }
    LinkService(const LinkService &) = delete;
    LinkService &operator=(const LinkService &) = delete;

    /// Puts the object on the bus, to be called before the name is asked for, so that whoever finds the name
    /// finds the object. False when the connection has an object there already.
    [[nodiscard]] bool exportObject();

    /// Whether every link that came has been handled.
    [[nodiscard]] bool isIdle() const { return pending->calls == 0; }

    /// Refuses Fernhop's own programs from now on, as this process is about to run another version; they will
    /// call again. Other applications are still served. `onIdle` is called whenever the last link has been
    /// handled; null: serves all again.
    void setUpgrading(std::function<void()> onIdle) { pending->onIdle = std::move(onIdle); }

  private:
    /// The calls that brought links and are not answered yet. They may outlive the service.
    struct Pending {
        std::size_t calls = 0;
        std::function<void()> onIdle; ///< empty: no upgrade is due
    };

    [[nodiscard]] bool refuseOtherVersion(GVariant *body, GDBusMethodInvocation *invocation) const;
    void call(std::string_view method, GVariant *body, GDBusMethodInvocation *invocation);
    /// `answer` makes the body of the answer out of the links that were not opened.
    void openLinks(DeliveredLinks links, GDBusMethodInvocation *invocation,
                   std::function<GVariant *(const std::vector<UnopenedLink> &)> answer);
    void openLinksOfCaller(DeliveredLinks links, GDBusMethodInvocation *invocation);
    void perform(GVariant *body, GDBusMethodInvocation *invocation) const;

    GDBusConnection *bus;
    LinkDispatcher &dispatcher;
    Handlers handlers;
    std::shared_ptr<Pending> pending = std::make_shared<Pending>();
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

/// Gives a name back to the bus. When this returns, every call that the bus has sent to its owner is with
/// this process's main loop.
void releaseName(GDBusConnection *bus, const char *name);

} // namespace fernhop::freedesktop
