#pragma once

#include "BusSender.h"
#include "LinkSession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::desktoptest {

/// Opens one link after the other in one way.
class Sender {
  public:
    Sender(LinkSession &linkSession, std::string senderName)
        : session(linkSession), name(std::move(senderName)) {}
    virtual ~Sender() = default;

    /// Starts to open the next link when the last one has been opened; `more` is whether there is a next.
    void proceed(bool more) {
        if (opening && isOpening())
            return;
        const bool again = opening && !wasTaken();
        if (opening && !again)
            ++sent;
        opening = more || again;
        if (opening)
            open("https://" + name + "/" + std::to_string(sent));
    }

    [[nodiscard]] bool isDone() const { return !opening; }

    [[nodiscard]] std::vector<std::string> links() const {
        std::vector<std::string> all;
        for (int number = 0; number < sent; ++number)
            all.push_back("https://" + name + "/" + std::to_string(number));
        return all;
    }

  protected:
    virtual void open(const std::string &link) = 0;
    virtual bool isOpening() = 0;
    /// Whether Fernhop got the link. Else there was no program to take it, and it may be sent again.
    virtual bool wasTaken() = 0;

    LinkSession &session;

  private:
    std::string name;
    bool opening = false;
    int sent = 0;
};

/// Opens links by a program.
class ProgramSender : public Sender {
  public:
    ProgramSender(LinkSession &linkSession, const std::string &senderName, std::vector<std::string> program,
                  int absent)
        : Sender(linkSession, senderName), command(std::move(program)), absentStatus(absent) {}

  private:
    void open(const std::string &link) override {
        auto arguments = command;
        arguments.push_back(link);
        current = link;
        process = session.start(arguments);
    }
    // Not every program waits until the link has been opened. Fernhop may wait a second for gio's signal
    // about its launch, so such a program could send faster than links are opened.
    bool isOpening() override {
        if (process->isRunning() || std::chrono::steady_clock::now() < nextLook)
            return true;
        nextLook = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
        const auto opened = session.browser.links();
        return process->wait() == 0 && std::ranges::find(opened, current) == opened.end();
    }
    bool wasTaken() override {
        const int status = process->wait();
        EXPECT_TRUE(status == 0 || status == absentStatus) << command[0] << " ended with " << status;
        return status != absentStatus;
    }

    std::vector<std::string> command;
    int absentStatus; ///< the exit status when fernhop-open is not there
    std::unique_ptr<support::ChildProcess> process;
    std::string current; ///< the link that is being opened
    std::chrono::steady_clock::time_point nextLook;
};

/// Opens links as an application does that calls over the bus by itself.
class CallSender : public Sender {
  public:
    CallSender(LinkSession &linkSession, const std::string &senderName)
        : Sender(linkSession, senderName), connection(linkSession.bus->address()) {}

  private:
    void open(const std::string &link) override {
        answer.reset();
        const char *links[] = {link.c_str(), nullptr};
        g_dbus_connection_call(
            connection.connection(), "org.fernhop.Fernhop", "/org/fernhop/Fernhop",
            "org.freedesktop.Application", "Open",
            g_variant_new("(^as@a{sv})", links, g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)),
            nullptr, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr, answered, this);
    }
    bool isOpening() override {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        return !answer;
    }
    bool wasTaken() override {
        const bool absent = *answer == "org.freedesktop.DBus.Error.ServiceUnknown" ||
                            answer->starts_with("org.freedesktop.DBus.Error.Spawn.");
        EXPECT_TRUE(answer->empty() || absent) << *answer;
        return !absent;
    }
    static void answered(GObject *bus, GAsyncResult *result, gpointer self) {
        GError *error = nullptr;
        const freedesktop::GVariantPointer reply(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
        const freedesktop::GErrorPointer failure(error);
        const freedesktop::GCharPointer name(failure ? g_dbus_error_get_remote_error(failure.get())
                                                     : nullptr);
        static_cast<CallSender *>(self)->answer = failure ? (name ? name.get() : failure->message) : "";
    }

    BusSender connection;
    std::optional<std::string> answer; ///< the error of the call; empty: it went well; nothing: none yet
};

} // namespace fernhop::desktoptest
