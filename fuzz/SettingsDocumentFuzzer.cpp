#include "cli/SettingsDocument.h"
#include "fakes/FakeUserDefaults.h"

#include <cstdint>
#include <cstdlib>

using namespace fernhop;

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// A document is taken whole: what is stored afterwards is what it says, and an export says it again.
void checkTaken(const cli::SettingsDocument &document) {
    fakes::FakeUserDefaults defaults;
    Preferences preferences(defaults);
    require(cli::storeSettings(document, preferences));
    require(cli::storedSettings(preferences) == document);
    const auto again = cli::decodeSettings(cli::encodeSettings(document));
    require(std::holds_alternative<cli::SettingsDocument>(again));
    require(std::get<cli::SettingsDocument>(again) == document);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const auto read = cli::decodeSettings({reinterpret_cast<const char *>(data), size});
    if (const auto *document = std::get_if<cli::SettingsDocument>(&read))
        checkTaken(*document);
    else
        require(!std::get<std::string>(read).empty());
    return 0;
}
