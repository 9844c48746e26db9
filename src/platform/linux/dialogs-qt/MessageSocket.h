#pragma once

#include "platform/linux/base/Files.h"

#include <glib.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// What two processes of Fernhop tell each other: a word and its arguments. No text holds a zero byte.
using Message = std::vector<std::string>;

/// One end of a connection between two processes of Fernhop. Main thread only.
class MessageSocket {
  public:
    /// Both ends of a new connection, which no program that is started inherits; invalid when the system is
    /// out of descriptors.
    [[nodiscard]] static std::pair<FileDescriptor, FileDescriptor> makePair();

    explicit MessageSocket(FileDescriptor end) : socket(std::move(end)) {}
    ~MessageSocket();
    MessageSocket(const MessageSocket &) = delete;
    MessageSocket &operator=(const MessageSocket &) = delete;

    /// Never waits: where the other end is gone, or has not read for long, the message is lost.
    void send(const Message &message) const;

    /// Calls `received` for each message from now on, from the GLib main loop, and `closed` once the other
    /// end is gone. `closed` may destroy this object, `received` may not.
    void listen(std::function<void(const Message &)> received, std::function<void()> closed);

    /// Handles the messages that have arrived already.
    void receiveWaiting();

  private:
    enum class Received { message, nothing, end };

    [[nodiscard]] Received receiveOne();
    static gboolean readable(gint descriptor, GIOCondition condition, gpointer self);

    const FileDescriptor socket;
    std::function<void(const Message &)> onReceived;
    std::function<void()> onClosed;
    guint source = 0;
};

} // namespace fernhop::freedesktop
