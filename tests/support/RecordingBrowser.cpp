#include "support/RecordingBrowser.h"

#include "support/Folders.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace fernhop::support {
namespace {

std::string contents(const std::string &path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void addVariable(BrowserStart &start, const std::string &assignment) {
    const auto equals = assignment.find('=');
    start.environment[assignment.substr(0, equals)] = assignment.substr(equals + 1);
}

void addField(BrowserStart &start, const std::string &name, const std::string &value) {
    if (name == "nanoseconds")
        start.nanoseconds = std::stoll(value);
    else if (name == "pid")
        start.pid = std::stoi(value);
    else if (name == "session")
        start.session = std::stoi(value);
    else if (name == "folder")
        start.folder = value;
    else if (name == "argument")
        start.arguments.push_back(value);
    else if (name == "variable")
        addVariable(start, value);
    else if (name == "fd")
        start.descriptors.push_back(value);
    else if (name == "blocked")
        start.blockedSignals.push_back(std::stoi(value));
    else if (name == "ignored")
        start.ignoredSignals.push_back(std::stoi(value));
}

std::vector<BrowserStart> parsed(const std::string &text) {
    std::vector<BrowserStart> starts;
    BrowserStart current;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = text.find('\0', at);
        if (end == at) {
            starts.push_back(std::exchange(current, {}));
        } else {
            const auto equals = text.find('=', at);
            addField(current, text.substr(at, equals - at), text.substr(equals + 1, end - equals - 1));
        }
        at = end + 1;
    }
    return starts;
}

// Identifiers are given out in turn and start again at the largest; seen from our own, the order holds.
long distance(pid_t pid) {
    static const long largest = std::stol(contents("/proc/sys/kernel/pid_max"));
    return (pid - getpid() + largest) % largest;
}

} // namespace

RecordingBrowser::RecordingBrowser(const TemporaryHome &home, const std::string &browserName)
    : name(browserName), file(home.root() + "/" + browserName + ".record") {}

std::string RecordingBrowser::desktopEntry(const std::string &more) const {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec() +
           " %u\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n" + more;
}

std::vector<BrowserStart> RecordingBrowser::starts() const {
    auto starts = parsed(contents(file));
    std::stable_sort(starts.begin(), starts.end(), [](const auto &left, const auto &right) {
        return distance(left.pid) < distance(right.pid);
    });
    return starts;
}

std::vector<std::string> RecordingBrowser::links() const {
    std::vector<std::string> links;
    for (const auto &start : starts())
        links.insert(links.end(), start.arguments.begin(), start.arguments.end());
    return links;
}

std::string RecordingBrowser::program() {
    return buildFolder() + "/tests/support/recording-browser";
}

} // namespace fernhop::support
