#include "cli/Files.h"

#include "cli/SettingsDocument.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string_view>
#include <system_error>

namespace fernhop::cli {

namespace {

std::string lastError() {
    return std::error_code(errno, std::generic_category()).message();
}

} // namespace

std::variant<std::string, ReadingFailed> readFile(const std::string &path) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    return file ? readStream(file) : ReadingFailed{lastError()};
}

std::variant<std::string, ReadingFailed> readStream(std::istream &stream) {
    std::string content;
    std::array<char, 65536> buffer;
    errno = 0;
    while (stream && content.size() <= largestSettingsDocument) {
        stream.read(buffer.data(), buffer.size());
        content.append(buffer.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad())
        return ReadingFailed{lastError()};
    if (content.size() > largestSettingsDocument)
        return ReadingFailed{std::string(largerThanDocuments)};
    return content;
}

std::optional<std::string> writeFile(const std::string &path, const std::string &content) {
    std::error_code ignored;
    const bool isNew = !std::filesystem::exists(path, ignored);
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    // The rules say which pages somebody visits.
    if (file && isNew)
        std::filesystem::permissions(
            path, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write, ignored);
    file << content << std::flush;
    file.close();
    if (!file)
        return lastError();
    return std::nullopt;
}

} // namespace fernhop::cli
