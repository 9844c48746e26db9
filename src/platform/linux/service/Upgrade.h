#pragma once

#include "platform/linux/base/Environment.h"
#include "platform/linux/base/Timer.h"
#include "platform/linux/launch/ChildProcesses.h"
#include "platform/linux/service/LinkService.h"

#include <gio/gio.h>

#include <chrono>
#include <functional>

namespace fernhop::freedesktop {

/// Notices that another program file is in the place of the one that this process runs, and that it is
/// complete. Sleeps until something changes there. Main thread only.
class ProgramWatch {
  public:
    /// `onReplaced` is called from the main loop when the new file is there and its `--version` succeeds.
    explicit ProgramWatch(std::function<void()> onReplaced);
    ~ProgramWatch();
    ProgramWatch(const ProgramWatch &) = delete;
    ProgramWatch &operator=(const ProgramWatch &) = delete;

    /// Looks soon, as it does after each change to the file. May be called often.
    void check();

  private:
    void checkAfter(std::chrono::milliseconds pause);
    void tryNewProgram();
    void tried(bool succeeded);

    std::function<void()> onReplaced;
    GObjectPointer<GFileMonitor> monitor;
    std::chrono::milliseconds pause{};
    Timer timer;        ///< until the next look
    ChildWatches trial; ///< of `--version`
    bool isTrying = false;
};

/// Leads the resident to its end when its program was replaced, so that the new one can take its place: the
/// links that came are opened first, and the bus name is given up last. Main thread only.
class Upgrade {
  public:
    /// `onReady` is called once, when no link is being handled and none can come any more. `bus` and
    /// `service` outlive this object.
    Upgrade(GDBusConnection *bus, LinkService &service, std::function<void()> onReady);
    Upgrade(const Upgrade &) = delete;
    Upgrade &operator=(const Upgrade &) = delete;

    /// Looks soon whether the program was replaced.
    void check() { program.check(); }

  private:
    void begin();
    void proceed();

    GDBusConnection *bus;
    LinkService &service;
    std::function<void()> onReady;
    ProgramWatch program;
    Timer lastCalls; ///< runs while the calls are handled that came before the name was given up
    bool nameReleased = false;
};

/// Replaces this process with the program that is in its program's place now. Returns only when that fails.
void executeInstalledProgram(const Environment &environment);

/// Reaps the children that the program had which this process ran before an upgrade, as they end.
void reapInheritedChildren();

} // namespace fernhop::freedesktop
