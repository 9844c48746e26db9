#pragma once

#include "support/ChildProcess.h"
#include "support/Folders.h"
#include "support/PrivateBus.h"
#include "support/RecordingBrowser.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop::desktoptest {

/// A session without a display in which Fernhop is the handler of links, and one browser is installed.
class LinkSession {
  public:
    /// `programFolder` holds Fernhop's programs; by default those that were built.
    LinkSession() : LinkSession(support::buildFolder() + "/bin") {}
    explicit LinkSession(std::string programFolder);

    /// The path of one of Fernhop's programs.
    [[nodiscard]] std::string program(const std::string &name) const { return programs + '/' + name; }

    /// Lets the bus start Fernhop when it is called. Without this only the stub can.
    void makeActivatable();
    void startBus();
    /// Starts Fernhop and waits until it has its name.
    void startFernhop();

    /// Has the running Fernhop route links, and hand the default role to "web" when it ends; whether it will.
    [[nodiscard]] bool routeAndRestoreOnQuit();

    /// Runs a program of the session to its end; the exit status. What it wrote is in `output`.
    int run(const std::vector<std::string> &command, const support::Environment &more = {});
    [[nodiscard]] std::unique_ptr<support::ChildProcess> start(const std::vector<std::string> &command,
                                                               const support::Environment &more = {});
    int open(const std::vector<std::string> &links, const support::Environment &more = {});
    int fernhop(std::vector<std::string> arguments);

    /// What the last `run` wrote.
    [[nodiscard]] std::string output() const;
    /// What Fernhop logged.
    [[nodiscard]] std::string log() const;
    /// The identifier of the process that has Fernhop's name; 0: nobody has it.
    [[nodiscard]] pid_t residentPid();
    /// Ends the Fernhop that somebody else started.
    void killResident(int signal);

    /// Waits until as many links were opened; what was opened.
    [[nodiscard]] std::vector<std::string> opened(std::size_t count) const;

    support::TemporaryHome home;
    const std::string programs; ///< the folder of Fernhop's programs
    support::RecordingBrowser browser{home, "web"};
    std::unique_ptr<support::PrivateBus> bus;
    std::unique_ptr<support::ChildProcess> resident;
    support::Environment environment;
};

} // namespace fernhop::desktoptest
