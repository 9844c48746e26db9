// Log lines made of any bytes, whole and shortened.

#include "platform/LogLine.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using namespace fernhop;

void require(bool holds) {
    if (!holds)
        std::abort();
}

void requireClean(std::string_view line) {
    require(fernhop::isValidUtf8(line));
    require(std::none_of(line.begin(), line.end(),
                         [](char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F; }));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view format(reinterpret_cast<const char *>(data), size);
    const std::string line = logLine(format);
    requireClean(line);
    if (format.find('%') == std::string_view::npos)
        require(logLine(line) == line);
    for (const std::size_t most : {64U, 71U, 128U}) {
        const std::string shortened = shortenedLogLine(line, most);
        requireClean(shortened);
        require(shortened.size() <= most);
        require(line.size() > most || shortened == line);
    }
    return 0;
}
