// The files in which desktops keep their default browser, whatever is in them: after a change the new value
// is read back, and every line about something else is there as it was, in its place.

#include "fakes/FakeDesktopEntries.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/KeyFile.h"
#include "platform/linux/defaulthandler/KdeBrowser.h"
#include "platform/linux/defaulthandler/MimeDefaults.h"
#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace fernhop;
using namespace fernhop::freedesktop;

namespace {

constexpr const char *type = "x-scheme-handler/https";

void require(bool holds) {
    if (!holds)
        std::abort();
}

std::string contents(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Without their line breaks, of which the last line may have got one.
std::vector<std::string> lines(std::string_view text) {
    std::vector<std::string> found;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        found.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return found;
}

bool isAbout(std::string_view line, std::string_view key) {
    const auto start = line.find_first_not_of(" \t\r\v\f");
    return start != line.npos && line.substr(start).starts_with(key);
}

/// Every line that is not about `key` is still there, in the same order, at most made a comment.
void checkOthersKept(const std::string &before, const std::string &after, std::string_view key) {
    const auto present = lines(after);
    auto next = present.begin();
    for (const auto &line : lines(before)) {
        if (isAbout(line, key))
            continue;
        while (next != present.end() && *next != line && *next != "#" + line)
            ++next;
        require(next != present.end());
        ++next;
    }
    require(present.size() <= lines(before).size() + 2);
}

void checkText(const std::string &bytes) {
    for (const std::string group : {"", "General", "Default Applications"}) {
        KeyFileText text(bytes);
        require(text.bytes() == bytes);
        text.set(group, type, "web.desktop");
        require(text.value(group, type) == "web.desktop");
        checkOthersKept(bytes, text.bytes(), type);
        const auto once = text.bytes();
        text.set(group, type, "web.desktop");
        require(text.bytes() == once);
        text.remove(group, type);
        require(!text.value(group, type));
        checkOthersKept(bytes, text.bytes(), type);
    }
    const auto made = withInvalidLinesAsComments(bytes);
    if (!made)
        return;
    KeyFileText valid(*made);
    checkOthersKept(bytes, valid.bytes(), "\n");
    valid.set("Default Applications", type, "web.desktop");
    const GKeyFilePointer file(g_key_file_new());
    const std::string text = valid.bytes();
    require(g_key_file_load_from_data(file.get(), text.c_str(), text.size(), G_KEY_FILE_NONE, nullptr));
    const GCharPointer read(g_key_file_get_string(file.get(), "Default Applications", type, nullptr));
    require(read && std::string_view(read.get()) == "web.desktop");
}

/// Gone when the fuzzer ends. In memory where there is such a place: replacing a file waits for the disk.
struct TemporaryFolder {
    TemporaryFolder() {
        const std::filesystem::path memory = "/dev/shm";
        std::error_code ignored;
        const bool hasMemory = std::filesystem::is_directory(memory, ignored);
        path = (hasMemory ? memory : std::filesystem::temp_directory_path()) / "fernhop-fuzz-XXXXXX";
        require(mkdtemp(path.data()) != nullptr);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    std::string path;
};

/// The configuration of one user, whose files all hold the same.
class Configuration {
  public:
    explicit Configuration(const std::string &text) : bytes(text) {
        std::filesystem::create_directories(folder() + "/xfce4");
        for (const char *file : {"/mimeapps.list", "/kdeglobals", "/xfce4/helpers.rc"})
            std::ofstream(folder() + file, std::ios::binary) << bytes;
        entries.installBrowser("web");
    }

    void check() {
        const MimeLookup lookup(places(), entries);
        MimeDefaults mime(places(), lookup);
        if (!mime.set("https", "web")) {
            require(contents(folder() + "/mimeapps.list") == bytes);
        } else {
            const auto handler = lookup.handler("https", LinkOpener::gio);
            require(handler && handler->id == "web");
        }
        for (const auto opener : {LinkOpener::kio, LinkOpener::xdgOpen})
            (void)lookup.handler("https", opener);
        checkOthersKept(bytes, contents(folder() + "/mimeapps.list"), type);

        KdeBrowser kde(places(), entries);
        const bool isLocked = kde.isLocked();
        require(kde.set("web") != isLocked);
        require(isLocked || (kde.setting() && kde.setting()->id == "web"));
        checkOthersKept(bytes, contents(folder() + "/kdeglobals"), "BrowserApplication");

        XfceBrowser xfce(places(), entries);
        require(xfce.set(entries.installed.front()) && xfce.setting() && xfce.setting()->id == "web");
        checkOthersKept(bytes, contents(folder() + "/xfce4/helpers.rc"), "WebBrowser");
    }

  private:
    static const std::string &folder() {
        static const TemporaryFolder made;
        return made.path;
    }
    static XdgSession places() { return {.configHome = folder(), .dataHome = folder() + "/data"}; }

    const std::string bytes;
    fakes::FakeDesktopEntries entries;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    checkText(bytes);
    Configuration(bytes).check();
    return 0;
}
