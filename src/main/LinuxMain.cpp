#include "cli/CommandLine.h"
#include "cli/LocalSession.h"
#include "cli/Perform.h"
#include "cli/Results.h"
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
    return std::make_unique<BusResidentConnection>(
        std::move(*bus), installedFile("bin/fernhop-open"),
        environment.value("XDG_ACTIVATION_TOKEN").value_or(""),
        [](const std::string &sentence) { std::cerr << "fernhop: " << sentence << std::endl; });
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

/// Why links were not opened, a sentence for each.
std::vector<std::string> openHere(const Environment &environment, const std::vector<std::string> &links) {
    std::vector<std::string> problems;
    for (const auto &[index, reason] : openWithoutBus(environment, links))
        problems.push_back(unopenedSentence(links[index], reason));
    return problems;
}

// The exit status is that of fernhop-open: success once a link is in a browser's hands, as callers try the
// others elsewhere if it is not.
int openInPlaceOfStub(const Environment &environment, const std::vector<std::string> &links) {
    const auto problems = openHere(environment, links);
    for (const auto &problem : problems)
        std::cerr << cli::failed(problem).errors;
    return problems.size() < links.size() ? exitStatus::success : exitStatus::failure;
}

int run(const Environment &environment, const std::vector<std::string> &arguments) {
    if (arguments.size() > 1 && arguments[0] == withoutBus)
        return openInPlaceOfStub(environment,
                                 {arguments.begin() + (arguments[1] == "--" ? 2 : 1), arguments.end()});
    const cli::Process process{
        std::cin,
        std::cout,
        std::cerr,
        [&] { return connect(environment); },
        [&](const auto &words, std::string_view input) { return performHere(environment, words, input); },
        [&](const std::vector<Url> &links) { return openHere(environment, textsOf(links)); }};
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
