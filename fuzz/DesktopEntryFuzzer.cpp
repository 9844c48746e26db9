// Desktop entries of any bytes, and the command lines made of them. The input is an entry, then, after the
// first NUL, the user's locale, and after the second a URL.

#include "platform/Utf8.h"
#include "platform/linux/applications/ApplicationPlaces.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/ExecLine.h"
#include "platform/linux/base/PassOnPrograms.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace fernhop::freedesktop;
using Arguments = std::vector<std::string>;

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// Takes what stands before the first NUL off `rest`, and the NUL.
std::string_view takePart(std::string_view &rest) {
    const auto end = std::min(rest.find('\0'), rest.size());
    const auto part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

bool hasNul(const std::string &text) {
    return text.find('\0') != std::string::npos;
}

void checkEntry(const DesktopEntry &entry) {
    for (const auto &name : {entry.name, entry.unlocalizedName})
        require(fernhop::isValidUtf8(name.value_or("")));
    require(!hasNul(entry.exec) && !hasNul(entry.tryExec) && !hasNul(entry.workingDirectory));
    require(hasValidExec(entry) || (entry.exec.empty() && entry.dbusActivatable));
    for (const auto &scheme : entry.schemes)
        require(!scheme.empty());
    for (const auto &locale : localeNames(entry.name.value_or("")))
        require(!locale.empty());
    static_cast<void>(isGenericOpener(entry));
    auto own = entry;
    own.id = fernhopDesktopID;
    require(isGenericOpener(own));
}

/// A launch differs from the same with another URL only in where the URL stands, and there it stands whole.
void checkLaunch(const DesktopEntry &entry, const std::string &url) {
    const std::string plain = "http://plain.example/";
    const auto with = execArguments(entry, {url});
    const auto withPlain = execArguments(entry, {plain});
    require(with.has_value() == withPlain.has_value());
    if (!with)
        return;
    require(with->size() == withPlain->size() && !with->front().empty() &&
            with->front() == withPlain->front());
    std::size_t places = 0;
    for (std::size_t i = 0; i < with->size(); ++i) {
        const auto at = (*withPlain)[i].find(plain);
        if ((*with)[i] == (*withPlain)[i] && (url != plain || at == std::string::npos))
            continue;
        ++places;
        // The entry's own text may hold the plain URL too, so every place that it has there is tried.
        bool found = false;
        for (auto start = at; start != std::string::npos; start = (*withPlain)[i].find(plain, start + 1)) {
            auto expected = (*withPlain)[i];
            found = found || (*with)[i] == expected.replace(start, plain.size(), url);
        }
        require(found);
    }
    require(places == 1 || url == plain);
}

void checkSeveral(const DesktopEntry &entry, const std::string &url) {
    const Arguments urls{url, "http://second.example/", url};
    const auto launches = execLaunches(entry, urls);
    if (hasValidExec(entry))
        require(launches.size() == (execArguments(entry, urls) ? 1 : urls.size()));
    else
        require(launches.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const auto contents = takePart(rest);
    const auto locales = localeNames(takePart(rest));
    const std::string url(rest);
    // The same bytes as a whole file too: NULs and all that the parts cannot hold.
    const std::string_view whole(reinterpret_cast<const char *>(data), size);
    for (const auto &text : {contents, whole}) {
        const auto entry = parseDesktopEntry(text, locales, {"gnome"});
        if (!entry)
            continue;
        checkEntry(*entry);
        checkLaunch(*entry, url);
        checkSeveral(*entry, url);
    }
    return 0;
}
