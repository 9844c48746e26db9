#include "cli/CommandLine.h"
#include "cli/LocalSession.h"
#include "cli/Perform.h"
#include "main/LinuxDesktop.h"
#include "main/LinuxSessionReport.h"
#include "main/Resident.h"
#include "platform/linux/base/Bus.h"
#include "platform/linux/service/BusResidentConnection.h"

#include <clocale>
#include <iostream>

namespace {

using namespace fernhop;
using namespace fernhop::freedesktop;

// What fernhop-open hands links over with where there is no bus.
constexpr const char *withoutBus = "--without-bus";

std::unique_ptr<ResidentConnection> connect(const Environment &environment) {
    auto bus = connectToSessionBus(environment);
    if (!bus)
        return nullptr;
    return std::make_unique<BusResidentConnection>(std::move(*bus), installedFile("bin/fernhop-open"),
                                                   environment.value("XDG_ACTIVATION_TOKEN").value_or(""));
}

CommandResult performHere(const Environment &environment, const std::vector<std::string> &arguments,
                          std::string_view input) {
    LinuxDesktop desktop(environment, nullptr);
    const LinuxSessionReport report(desktop, nullptr, [&] {
        const auto front = desktop.focus->frontmost();
        return front ? front->bundleIdentifier() : std::nullopt;
    });
    cli::LocalSession session({desktop.workspace, desktop.launchServices, desktop.defaults, desktop.files,
                               desktop.bundles, desktop.sound, desktop.layout, report});
    return cli::perform(arguments, input, session.context());
}

std::vector<std::string> textsOf(const std::vector<Url> &links) {
    std::vector<std::string> texts;
    for (const Url &link : links)
        texts.push_back(link.absoluteString());
    return texts;
}

int run(const Environment &environment, const std::vector<std::string> &arguments) {
    if (arguments.size() > 1 && arguments[0] == withoutBus) {
        openWithoutBus(environment, {arguments.begin() + (arguments[1] == "--" ? 2 : 1), arguments.end()});
        return exitStatus::success;
    }
    const cli::Process process{
        std::cin,
        std::cout,
        std::cerr,
        [&] { return connect(environment); },
        [&](const auto &words, std::string_view input) { return performHere(environment, words, input); },
        [&](const std::vector<Url> &links) { openWithoutBus(environment, textsOf(links)); }};
    if (const auto status = cli::runCommandLine(arguments, process))
        return *status;
    return runResident(environment);
}

} // namespace

int main(int count, char **arguments) {
    // Read before anything that might change it.
    const auto environment = Environment::current();
    std::setlocale(LC_ALL, "");
    return run(environment, {arguments + 1, arguments + count});
}
