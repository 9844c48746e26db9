#include "platform/linux/stub/Courier.h"
#include "platform/linux/stub/Resident.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace {

using namespace fernhop::stub;

constexpr const char *help =
    "Usage: fernhop-open [--] URL...\n"
    "Hands links to Fernhop, which opens each in the browser that its rules choose.\n"
    "Without a URL, starts Fernhop if it does not run.\n"
    "\n"
    "  --help     show this help\n"
    "  --version  show the version\n"
    "\n"
    "Both are options only when they stand alone; every other argument is a link.\n";

std::vector<std::string> linksOf(int count, char **arguments) {
    int first = 1;
    if (count > 2 && strcmp(arguments[1], "--") == 0)
        ++first;
    return {arguments + first, arguments + count};
}

// With no bus there is nobody to hand links to, so this process becomes one that opens them itself.
int openWithoutBus(const std::vector<std::string> &links) {
    const auto program = residentProgram();
    std::vector<const char *> arguments = {program.c_str(), "--without-bus", "--"};
    for (const auto &link : links)
        arguments.push_back(link.c_str());
    arguments.push_back(nullptr);
    execv(program.c_str(), const_cast<char *const *>(arguments.data()));
    perror(program.c_str());
    return 1;
}

int run(const std::vector<std::string> &links, const LinkOrigin &origin) {
    const auto result = deliver(links, origin);
    if (result.kind == DeliveryResult::Kind::delivered)
        return 0;
    if (result.kind == DeliveryResult::Kind::noBus && !links.empty())
        return openWithoutBus(links);
    fprintf(stderr, "fernhop-open: %zu link(s) not opened: %s\n", links.size(), result.reason.c_str());
    return 1;
}

} // namespace

int main(int count, char **arguments) {
    const auto origin = readLinkOrigin();
    if (count == 2 && strcmp(arguments[1], "--help") == 0)
        return fputs(help, stdout) < 0;
    if (count == 2 && strcmp(arguments[1], "--version") == 0)
        return puts("fernhop-open " FERNHOP_VERSION) < 0;
    return run(linksOf(count, arguments), origin);
}
