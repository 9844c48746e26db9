#include "platform/linux/service/Upgrade.h"

#include "platform/linux/base/FernhopService.h"
#include "platform/linux/base/OwnProgram.h"
#include "platform/linux/base/Processes.h"
#include "platform/linux/base/Text.h"

#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {
namespace {

// A file that is written in steps changes more often than this.
constexpr std::chrono::milliseconds settlingTime{100};

// What the new program needs, a library say, may come after it; that does not show at its own file. Looked
// for with growing pauses.
constexpr std::chrono::milliseconds longestPause{30'000};

} // namespace

ProgramWatch::ProgramWatch(std::function<void()> replaced) : onReplaced(std::move(replaced)) {
    const GObjectPointer<GFile> file(g_file_new_for_path(ownProgramPath().c_str()));
    monitor.reset(g_file_monitor_file(file.get(), G_FILE_MONITOR_NONE, nullptr, nullptr));
    const auto changed = +[](ProgramWatch *self) { self->checkAfter(settlingTime); };
    if (monitor)
        g_signal_connect_swapped(monitor.get(), "changed", G_CALLBACK(changed), this);
}

ProgramWatch::~ProgramWatch() {
    if (monitor)
        g_signal_handlers_disconnect_by_data(monitor.get(), this);
}

void ProgramWatch::check() {
    if (!timer.isRunning() && !isTrying)
        checkAfter(settlingTime);
}

void ProgramWatch::checkAfter(std::chrono::milliseconds newPause) {
    pause = newPause;
    timer.start(pause, [this] {
        if (!isTrying && ownProgramWasReplaced())
            tryNewProgram();
    });
}

void ProgramWatch::tryNewProgram() {
    std::vector<std::string> command = {ownProgramPath(), "--version"};
    constexpr auto flags = static_cast<GSpawnFlags>(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_STDOUT_TO_DEV_NULL |
                                                    G_SPAWN_STDERR_TO_DEV_NULL);
    GPid child = 0;
    if (!g_spawn_async(nullptr, pointersTo(command).data(), nullptr, flags, nullptr, nullptr, &child,
                       nullptr))
        return tried(false);
    isTrying = true;
    trial.watch(child, [this](int waitStatus) {
        isTrying = false;
        tried(g_spawn_check_wait_status(waitStatus, nullptr) != FALSE);
    });
}

void ProgramWatch::tried(bool succeeded) {
    // A change during the trial, for which the timer runs, calls for another one.
    if (timer.isRunning())
        return;
    if (succeeded)
        onReplaced();
    else if (pause < longestPause)
        checkAfter(pause * 2);
}

Upgrade::Upgrade(GDBusConnection *connection, LinkService &linkService, std::function<void()> ready)
    : bus(connection), service(linkService), onReady(std::move(ready)), program([this] { begin(); }) {}

void Upgrade::begin() {
    service.setUpgrading([this] { proceed(); });
    if (service.isIdle())
        proceed();
}

void Upgrade::proceed() {
    if (lastCalls.isRunning())
        return;
    if (nameReleased)
        return onReady();
    nameReleased = true;
    releaseName(bus, serviceName);
    // The bus delivered all earlier calls before its answer; the main loop handles them before this.
    const auto handled = [this] {
        if (service.isIdle())
            onReady();
    };
    lastCalls.start({}, handled, G_PRIORITY_LOW);
}

void executeInstalledProgram(const Environment &environment) {
    auto assignments = environment.assignments();
    std::vector<std::string> command = {ownProgramPath()};
    execve(command.front().c_str(), pointersTo(command).data(), pointersTo(assignments).data());
    std::perror(command.front().c_str());
}

void reapInheritedChildren() {
    siginfo_t information{};
    if (waitid(P_ALL, 0, &information, WEXITED | WNOHANG | WNOWAIT) != 0)
        return; // there are none
    const Processes processes;
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc", error);
    for (; entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename();
        pid_t process = 0;
        std::from_chars(name.data(), name.data() + name.size(), process);
        if (process > 0 && processes.parentOf(process) == getpid())
            g_child_watch_add(
                process, [](GPid, gint, gpointer) {}, nullptr);
    }
}

} // namespace fernhop::freedesktop
