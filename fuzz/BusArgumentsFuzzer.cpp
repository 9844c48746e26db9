// Message bodies from the bus, as any process of the session may send them: read as each of the two forms
// that bring links, from bytes that need not be a well-formed value.

#include "platform/linux/base/GPointer.h"
#include "platform/linux/launch/LaunchCommand.h"
#include "platform/linux/service/LinkService.h"

#include <cstdint>
#include <cstdlib>

using namespace fernhop::freedesktop;

namespace {

void check(bool holds) {
    if (!holds)
        std::abort();
}

void read(const char *type, const std::uint8_t *data, std::size_t size) {
    GBytes *bytes = g_bytes_new(data, size);
    const GVariantPointer body(
        g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(type), bytes, FALSE)));
    g_bytes_unref(bytes);
    const auto delivered = deliveredLinks(body.get());
    check(!delivered.sender.parentPid || *delivered.sender.parentPid > 0);
    check(!delivered.sender.launchedPid || *delivered.sender.launchedPid > 0);
    const auto tokens = tokensForLaunch(delivered.sender.tokens, true);
    const auto environment = launchEnvironment(Environment({"PATH=/bin"}), tokens, "/web.desktop");
    for (const auto &assignment : environment.assignments())
        check(assignment.find('\0') == std::string::npos && assignment.size() < 5000);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    read("(asa{sv})", data, size);
    read("(aaya{sv})", data, size);
    read("v", data, size);
    return 0;
}
