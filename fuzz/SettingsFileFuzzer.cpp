// Settings files of any bytes: all keys are read, one is written, and all are read again.

#include "platform/linux/settings/PropertyList.h"
#include "platform/linux/settings/PropertyListDefaults.h"
#include "settings/Preferences.h"
#include "settings/ReadableSetting.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <tuple>

namespace {

using namespace fernhop;
using namespace fernhop::freedesktop;

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// A folder in memory, where syncing costs nothing; gone when the fuzzer ends.
class Folder {
  public:
    Folder() : path("/dev/shm/fernhop-fuzz-" + std::to_string(getpid())) {
        std::filesystem::create_directories(path);
    }
    ~Folder() { std::filesystem::remove_all(path); }

    const std::filesystem::path path;
};

std::string read(const std::filesystem::path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

auto readAll(const UserDefaults &defaults) {
    return std::tuple(defaults.dictionaryForKey(settingsKey::appRules),
                      defaults.dataForKey(settingsKey::urlRules),
                      defaults.stringForKey(settingsKey::routingFallbackBrowserID),
                      defaults.boolForKey(settingsKey::restoresDefaultBrowserOnQuit));
}

/// What was read once is written and read for ever.
void checkCoding(std::string_view bytes) {
    const PropertyListNode tree = decodePropertyList(bytes);
    if (!tree)
        return;
    const auto written = encodePropertyList(tree);
    if (!written)
        return;
    const PropertyListNode again = decodePropertyList(*written);
    require(again != nullptr);
    require(encodePropertyList(again) == written);
}

void checkFile(const std::filesystem::path &file, const std::string &bytes) {
    const std::filesystem::path kept = file.string() + ".unreadable-1";
    std::filesystem::remove(kept);
    std::ofstream(file, std::ios::binary) << bytes;

    PropertyListDefaults defaults(file, isReadableSetting);
    const auto before = readAll(defaults);
    if (!defaults.setObject(PropertyValue{"text"}, "fuzzed")) {
        require(read(file) == bytes);
        return;
    }
    require(readAll(defaults) == before);
    require(defaults.stringForKey("fuzzed") == "text");
    require(!std::filesystem::exists(kept) || read(kept) == bytes);

    Preferences preferences(defaults);
    preferences.setBrowser("browser", "app");
    preferences.addURLRule("pattern", "browser");
    require(preferences.appRules().at("app") == "browser");
    require(!preferences.urlRules().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Folder folder;
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    checkCoding(bytes);
    checkFile(folder.path / "settings.plist", bytes);
    return 0;
}
