#include "platform/SentLink.h"
#include "platform/Version.h"
#include "platform/linux/base/OwnProgram.h"
#include "platform/linux/base/Text.h"
#include "platform/linux/stub/Courier.h"
#include "platform/linux/stub/Report.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

using namespace fernhop;
using namespace fernhop::stub;
using namespace fernhop::freedesktop;

constexpr const char *help =
    "Usage: fernhop-open [--] URL...\n"
    "Hands links to Fernhop, which opens each in the browser that its rules choose.\n"
    "Without a URL, starts Fernhop if it is not running.\n"
    "\n"
    "  --help     show this help\n"
    "  --version  show the version\n"
    "\n"
    "Both are options only when they stand alone; every other argument is a link.\n";

/// What this process inherits from whoever opens a link may be too little to work with: no free descriptor,
/// or children that vanish when they end.
void prepareProcess() {
    closefrom(STDERR_FILENO + 1);
    rlimit files = {};
    constexpr rlim_t usual = 1024;
    if (getrlimit(RLIMIT_NOFILE, &files) == 0 && files.rlim_cur < usual) {
        files.rlim_cur = std::min(files.rlim_max, usual);
        setrlimit(RLIMIT_NOFILE, &files);
    }
    std::signal(SIGCHLD, SIG_DFL);
}

/// The links of a call, in their order.
struct Links {
    std::vector<std::string> toDeliver;
    std::vector<std::string> refused; ///< a sentence for each link that must not be delivered
};

Links linksOf(int count, char **arguments) {
    Links links;
    const int first = count > 2 && strcmp(arguments[1], "--") == 0 ? 2 : 1;
    for (int index = first; index < count; ++index) {
        if (auto link = linkToDeliver(arguments[index]))
            links.toDeliver.push_back(*std::move(link));
        else
            links.refused.push_back(unopenedSentence(arguments[index], std::string(refusedLink)));
    }
    return links;
}

// Without a resident to take the links, this process becomes one that opens them itself.
int openWithoutResident(const Links &links, bool hasBus) {
    report(links.refused);
    const auto program = programBeside("fernhop");
    std::vector<std::string> arguments = {program, "--without-bus", "--"};
    arguments.insert(arguments.end(), links.toDeliver.begin(), links.toDeliver.end());
    Pauses pauses; // an upgrade may be replacing the program; the delivery has waited for that already
    int failure = 0;
    do {
        execv(program.c_str(), pointersTo(arguments).data());
        failure = errno;
    } while (!hasBus && pauses.wait());
    const auto reason = program + ": " + strerror(failure);
    std::vector<std::string> failed;
    for (const auto &link : links.toDeliver)
        failed.push_back(unopenedSentence(link, reason));
    report(failed);
    return 1;
}

/// Says what did not open. A failure only when nothing did: whoever calls again, or takes another program,
/// would open the other links twice.
int finish(const Links &links, const std::vector<UnopenedLink> &unopened) {
    auto failed = links.refused;
    for (const auto &[index, reason] : unopened)
        failed.push_back(unopenedSentence(links.toDeliver[index], reason));
    if (!failed.empty())
        report(failed);
    return !failed.empty() && unopened.size() >= links.toDeliver.size() ? 1 : 0;
}

int run(char **arguments, const Links &links, const LinkOrigin &origin) {
    using Kind = DeliveryResult::Kind;
    if (links.toDeliver.empty() && !links.refused.empty())
        return finish(links, {});
    const auto result = deliver(links.toDeliver, origin);
    if (result.kind == Kind::delivered)
        return finish(links, result.unopened);
    // The new program reads the same origin: it is this process, with the environment as it was.
    if (result.kind == Kind::replaced)
        execv(ownProgramPath().c_str(), arguments);
    if (!links.toDeliver.empty())
        return openWithoutResident(links, result.kind != Kind::noBus);
    fprintf(stderr, "fernhop-open: Fernhop was not started: %s\n", result.reason.c_str());
    return 1;
}

} // namespace

int main(int count, char **arguments) {
    prepareProcess();
    const auto origin = readLinkOrigin();
    if (count == 2 && strcmp(arguments[1], "--help") == 0)
        return fputs(help, stdout) < 0;
    if (count == 2 && strcmp(arguments[1], "--version") == 0)
        return printf("fernhop-open %s\n", programVersion()) < 0;
    return run(arguments, linksOf(count, arguments), origin);
}
