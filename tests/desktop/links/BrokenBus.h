#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace fernhop::desktoptest {

/// A socket where a bus is expected, which lets nobody in. It serves from construction to destruction.
class BrokenBus {
  public:
    /// `answer` is all that a client is told, once it has said something; empty: the connection is closed at
    /// once; nothing: it stays open in silence.
    BrokenBus(std::string socketPath, std::optional<std::string> clientAnswer)
        : path(std::move(socketPath)), answer(std::move(clientAnswer)) {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        isListening = bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
                      listen(listener, 100) == 0;
        server = std::thread([this] { serve(); });
    }
    ~BrokenBus() {
        isEnding = true;
        server.join();
        clients.push_back(listener);
        for (const int socket : clients)
            close(socket);
    }
    BrokenBus(const BrokenBus &) = delete;
    BrokenBus &operator=(const BrokenBus &) = delete;

    [[nodiscard]] std::string address() const { return "unix:path=" + path; }

    bool isListening = false;

  private:
    void serve() {
        pollfd waiting{listener, POLLIN, 0};
        while (!isEnding)
            if (poll(&waiting, 1, 20) == 1)
                answerTo(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    }
    void answerTo(int client) {
        clients.push_back(client);
        if (!answer)
            return;
        std::array<char, 100> said = {};
        if (!answer->empty() && read(client, said.data(), said.size()) > 0)
            (void)!write(client, answer->data(), answer->size());
        else
            shutdown(client, SHUT_RDWR);
    }

    std::string path;
    std::optional<std::string> answer;
    int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::vector<int> clients;
    std::atomic<bool> isEnding = false;
    std::thread server;
};

} // namespace fernhop::desktoptest
