#include "LinkSession.h"

#include "support/Folders.h"
#include "support/Waiting.h"

#include <signal.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace fernhop::desktoptest {
namespace {

std::string contents(const std::string &path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

LinkSession::LinkSession(std::string programFolder)
    : programs(std::move(programFolder)), environment(home.environment()) {
    environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
    environment["LC_ALL"] = "C.UTF-8";
    home.writeDesktopEntry("web", browser.desktopEntry());
    home.writeDesktopEntry("org.fernhop.Fernhop",
                           "[Desktop Entry]\nType=Application\nName=Fernhop\nStartupNotify=true\nExec=" +
                               program("fernhop-open") +
                               " %U\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n");
    home.write(home.config() + "/mimeapps.list",
               "[Default Applications]\nx-scheme-handler/http=org.fernhop.Fernhop.desktop\n"
               "x-scheme-handler/https=org.fernhop.Fernhop.desktop\n");
}

void LinkSession::makeActivatable() {
    home.write(home.data() + "/dbus-1/services/org.fernhop.Fernhop.service",
               "[D-BUS Service]\nName=org.fernhop.Fernhop\nExec=" + program("fernhop") + "\n");
}

void LinkSession::startBus() {
    bus = std::make_unique<support::PrivateBus>(home, environment);
    environment["DBUS_SESSION_BUS_ADDRESS"] = bus->address();
}

void LinkSession::startFernhop() {
    support::Command command{{program("fernhop")}, environment, home.root() + "/log"};
    resident = std::make_unique<support::ChildProcess>(command);
    (void)support::waitUntil([this] { return residentPid() == resident->pid(); });
}

bool LinkSession::routeAndRestoreOnQuit() {
    return fernhop({"default", "web"}) == 0 && fernhop({"routing", "on"}) == 0 &&
           fernhop({"restore-on-quit", "on"}) == 0;
}

std::unique_ptr<support::ChildProcess> LinkSession::start(const std::vector<std::string> &command,
                                                          const support::Environment &more) {
    std::filesystem::remove(home.root() + "/output");
    return std::make_unique<support::ChildProcess>(
        support::Command{command, environment + more, home.root() + "/output"});
}

int LinkSession::run(const std::vector<std::string> &command, const support::Environment &more) {
    return start(command, more)->wait();
}

int LinkSession::open(const std::vector<std::string> &links, const support::Environment &more) {
    std::vector<std::string> command = {program("fernhop-open")};
    command.insert(command.end(), links.begin(), links.end());
    return run(command, more);
}

int LinkSession::fernhop(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), program("fernhop"));
    return run(arguments);
}

std::string LinkSession::output() const {
    return contents(home.root() + "/output");
}

std::string LinkSession::log() const {
    return contents(home.root() + "/log");
}

pid_t LinkSession::residentPid() {
    const support::Command command{{"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                                    "--object-path", "/org/freedesktop/DBus", "--method",
                                    "org.freedesktop.DBus.GetConnectionUnixProcessID", "org.fernhop.Fernhop"},
                                   environment,
                                   home.root() + "/pid"};
    std::filesystem::remove(home.root() + "/pid");
    if (support::ChildProcess(command).wait() != 0)
        return 0;
    // "(uint32 123,)"
    const auto text = contents(home.root() + "/pid");
    return std::stoi(text.substr(text.find(' ')));
}

void LinkSession::killResident(int signal) {
    if (const pid_t pid = residentPid(); pid > 0) {
        kill(pid, signal);
        (void)support::waitUntil([this, pid] { return residentPid() != pid; });
    }
}

std::vector<std::string> LinkSession::opened(std::size_t count) const {
    (void)support::waitUntil([&] { return browser.links().size() >= count; });
    return browser.links();
}

} // namespace fernhop::desktoptest
