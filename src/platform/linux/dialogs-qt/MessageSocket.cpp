#include "platform/linux/dialogs-qt/MessageSocket.h"

#include "platform/linux/base/Text.h"

#include <glib-unix.h>
#include <sys/socket.h>

#include <cerrno>

namespace fernhop::freedesktop {
namespace {

constexpr char separator = '\0'; // between the texts of a message

std::string bytesOf(const Message &message) {
    std::string bytes;
    for (const std::string &text : message)
        bytes.append(text).push_back(separator);
    bytes.pop_back();
    return bytes;
}

Message messageOf(const std::string &bytes) {
    const std::string ended = bytes + separator; // else an empty text at the end would not count
    const auto texts = pieces(ended, separator);
    return {texts.begin(), texts.end()};
}

} // namespace

std::pair<FileDescriptor, FileDescriptor> MessageSocket::makePair() {
    int ends[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return {FileDescriptor(), FileDescriptor()};
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

MessageSocket::~MessageSocket() {
    if (source != 0)
        g_source_remove(source);
}

void MessageSocket::send(const Message &message) const {
    const std::string bytes = bytesOf(message);
    (void)::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

void MessageSocket::listen(std::function<void(const Message &)> received, std::function<void()> closed) {
    onReceived = std::move(received);
    onClosed = std::move(closed);
    source =
        g_unix_fd_add(socket.get(), static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), readable, this);
}

void MessageSocket::receiveWaiting() {
    while (receiveOne() == Received::message) {
    }
}

MessageSocket::Received MessageSocket::receiveOne() {
    const auto length = recv(socket.get(), nullptr, 0, MSG_PEEK | MSG_TRUNC | MSG_DONTWAIT);
    if (length <= 0)
        return length < 0 && (errno == EAGAIN || errno == EINTR) ? Received::nothing : Received::end;
    std::string bytes(static_cast<std::size_t>(length), '\0');
    if (recv(socket.get(), bytes.data(), bytes.size(), MSG_DONTWAIT) != length)
        return Received::end;
    onReceived(messageOf(bytes));
    return Received::message;
}

gboolean MessageSocket::readable(gint, GIOCondition, gpointer self) {
    auto &own = *static_cast<MessageSocket *>(self);
    if (own.receiveOne() != Received::end)
        return G_SOURCE_CONTINUE;
    own.source = 0;
    const auto closed = std::move(own.onClosed);
    closed();
    return G_SOURCE_REMOVE;
}

} // namespace fernhop::freedesktop
