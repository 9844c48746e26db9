#include "platform/linux/service/SessionApplication.h"
#include "support/MainLoop.h"
#include "support/TemporaryHome.h"

#include <glib-unix.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {
namespace {

/// Something that takes connections at an address of this machine. A name that begins with a zero byte is
/// abstract.
class Server {
  public:
    explicit Server(const std::string &name) {
        address.sun_family = AF_UNIX;
        if (name.size() >= sizeof address.sun_path)
            throw std::runtime_error("too long a name");
        std::memcpy(address.sun_path, name.data(), name.size());
        length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() +
                                        (name.front() == '\0' ? 0 : 1));
        if (bind(listener, reinterpret_cast<const sockaddr *>(&address), length) != 0 ||
            listen(listener, 8) != 0)
            throw std::runtime_error("cannot listen");
    }
    ~Server() {
        end();
        close(listener);
    }
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    /// A new connection to it; the caller closes it.
    int connection() {
        const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(connect(descriptor, reinterpret_cast<const sockaddr *>(&address), length), 0);
        accepted.push_back(accept(listener, nullptr, nullptr));
        return descriptor;
    }
    /// Closes all connections from its end.
    void end() {
        for (const int descriptor : std::exchange(accepted, {}))
            close(descriptor);
    }

  private:
    sockaddr_un address{};
    socklen_t length = 0;
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    std::vector<int> accepted;
};

class DisplayWatchTest : public testing::Test {
  protected:
    [[nodiscard]] bool ends() {
        return support::runUntil([this] { return ended > 0; });
    }

    support::TemporaryHome home;
    const std::string socketPath = home.root() + "/wayland-9";
    Server compositor{socketPath};
    Environment environment{
        std::vector<std::string>{"WAYLAND_DISPLAY=wayland-9", "XDG_RUNTIME_DIR=" + home.root()}};
    int ended = 0;
    DisplayWatch watch{environment, [this] { ++ended; }};
};

TEST_F(DisplayWatchTest, TellsThatTheCompositorIsGone) {
    const int connection = compositor.connection();
    watch.watchConnections();
    watch.watchConnections();
    support::runPending();
    EXPECT_EQ(ended, 0);
    compositor.end();
    EXPECT_TRUE(ends());
    support::runPending();
    EXPECT_EQ(ended, 1) << "once";
    close(connection);
}

TEST_F(DisplayWatchTest, KnowsTheCompositorByItsPathToo) {
    environment.set("WAYLAND_DISPLAY", socketPath);
    DisplayWatch other(environment, [this] { ++ended; });
    const int connection = compositor.connection();
    other.watchConnections();
    compositor.end();
    EXPECT_TRUE(ends());
    close(connection);
}

TEST_F(DisplayWatchTest, TellsThatTheServerIsGone) {
    const std::string path = "/tmp/.X11-unix/X9" + std::to_string(getpid());
    Server server(std::string(1, '\0') + path);
    DisplayWatch other(Environment(), [this] { ++ended; });
    const int connection = server.connection();
    other.watchConnections();
    server.end();
    EXPECT_TRUE(ends());
    close(connection);
}

TEST_F(DisplayWatchTest, HearsBeforeToolkitsDo) {
    const int connection = compositor.connection();
    struct Toolkit {
        const int &ended;
        int seen = -1;
    } toolkit{ended};
    const GUnixFDSourceFunc broken = [](gint, GIOCondition, gpointer self) -> gboolean {
        auto &its = *static_cast<Toolkit *>(self);
        its.seen = its.ended;
        return G_SOURCE_REMOVE;
    };
    g_unix_fd_add(connection, G_IO_HUP, broken, &toolkit);
    watch.watchConnections();
    compositor.end();
    ASSERT_TRUE(support::runUntil([&] { return toolkit.seen >= 0; }));
    EXPECT_EQ(toolkit.seen, 1);
    close(connection);
}

TEST_F(DisplayWatchTest, OurOwnEndOfAConnectionEndsNothing) {
    const int closed = compositor.connection(), shut = compositor.connection();
    watch.watchConnections();
    shutdown(shut, SHUT_RDWR); // as xcb ends a connection
    close(shut);
    close(closed);
    Server elsewhere(home.root() + "/elsewhere");
    const int another = elsewhere.connection(), last = elsewhere.connection(); // they get the numbers
    elsewhere.end();
    support::runPending();
    EXPECT_EQ(ended, 0);
    close(another);
    close(last);
}

TEST_F(DisplayWatchTest, OtherConnectionsAreNoDisplay) {
    Server bus(home.root() + "/bus");
    const int connection = bus.connection();
    int pair[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, pair), 0);
    watch.watchConnections();
    bus.end();
    close(pair[1]);
    support::runPending();
    EXPECT_EQ(ended, 0);
    close(pair[0]);
    close(connection);
}

} // namespace
} // namespace fernhop::freedesktop
