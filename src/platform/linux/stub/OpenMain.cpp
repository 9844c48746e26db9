#include "platform/SentLink.h"
#include "platform/Version.h"
#include "platform/linux/base/OwnProgram.h"
#include "platform/linux/stub/Courier.h"

#include <unistd.h>

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

std::vector<std::string> linksOf(int count, char **arguments) {
    int first = 1;
    if (count > 2 && strcmp(arguments[1], "--") == 0)
        ++first;
    std::vector<std::string> links;
    for (int index = first; index < count; ++index) {
        if (auto link = linkToDeliver(arguments[index]))
            links.push_back(*std::move(link));
        else
            fprintf(stderr, "fernhop-open: a link is refused: %s\n", refusedLink.data());
    }
    return links;
}

// Without a resident to take the links, this process becomes one that opens them itself.
int openWithoutResident(const std::vector<std::string> &links) {
    const auto program = programBeside("fernhop");
    std::vector<const char *> arguments = {program.c_str(), "--without-bus", "--"};
    for (const auto &link : links)
        arguments.push_back(link.c_str());
    arguments.push_back(nullptr);
    Pauses pauses; // an upgrade may be replacing the program
    do
        execv(program.c_str(), const_cast<char *const *>(arguments.data()));
    while (pauses.wait());
    perror(program.c_str());
    return 1;
}

int run(char **arguments, const std::vector<std::string> &links, const LinkOrigin &origin) {
    using Kind = DeliveryResult::Kind;
    const auto result = deliver(links, origin);
    if (result.kind == Kind::delivered)
        return 0;
    // The new program reads the same origin: it is this process, with the environment as it was.
    if (result.kind == Kind::replaced)
        execv(ownProgramPath().c_str(), arguments);
    if (result.kind != Kind::failed && !links.empty())
        return openWithoutResident(links);
    fprintf(stderr, "fernhop-open: %zu link(s) not opened: %s\n", links.size(), result.reason.c_str());
    return 1;
}

} // namespace

int main(int count, char **arguments) {
    const auto origin = readLinkOrigin();
    if (count == 2 && strcmp(arguments[1], "--help") == 0)
        return fputs(help, stdout) < 0;
    if (count == 2 && strcmp(arguments[1], "--version") == 0)
        return printf("fernhop-open %s\n", fernhop::programVersion()) < 0;
    return run(arguments, linksOf(count, arguments), origin);
}
