#pragma once

#include "platform/linux/base/GPointer.h"
#include "platform/linux/dialogs-qt/MessageSocket.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// What the program `fernhop-dialogs` is to do, by its first argument: show a dialog, or show in XEmbed trays
/// the item of the connection to the bus whose unique name is the second argument.
inline constexpr const char *dialogMode = "dialog";
inline constexpr const char *iconMode = "icon";

/// How a program ended: its exit status, or nothing when it crashed or was killed.
using ExitStatus = std::optional<int>;

/// A program of Fernhop that the resident runs beside itself, with a connection between the two as the
/// program's standard input. It runs from construction to its own end, at the latest to destruction. Main
/// thread only.
class HelperProgram {
  public:
    struct Callbacks {
        std::function<void(const Message &)> received;
        /// Called once, after the last message; may destroy the object.
        std::function<void(ExitStatus)> ended;
    };

    /// `command` is the program's path and its arguments. `startupID` tells the display server on whose
    /// behalf its first window shows; empty: nobody's. Null when the program cannot be started.
    [[nodiscard]] static std::unique_ptr<HelperProgram>
    start(const std::vector<std::string> &command, const std::string &startupID, Callbacks callbacks);

    /// Kills the program if it still runs.
    ~HelperProgram();
    HelperProgram(const HelperProgram &) = delete;
    HelperProgram &operator=(const HelperProgram &) = delete;

    void send(const Message &message) const { connection.send(message); }

    /// Ends the program at once, also one that hangs; `ended` is called as at any other end.
    void kill() { g_subprocess_force_exit(process.get()); }

  private:
    HelperProgram(GObjectPointer<GSubprocess> started, FileDescriptor end, Callbacks callbacks);

    static void waited(GObject *process, GAsyncResult *result, gpointer self);

    const GObjectPointer<GSubprocess> process;
    const GObjectPointer<GCancellable> waiting;
    const Callbacks call;
    MessageSocket connection;
};

} // namespace fernhop::freedesktop
