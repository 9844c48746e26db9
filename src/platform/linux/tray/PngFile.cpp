#include "platform/linux/tray/PngFile.h"

#include "platform/linux/base/Files.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace fernhop::freedesktop {

namespace {

using namespace std::string_view_literals;

// Far above every icon, far below what would hurt.
constexpr std::size_t largestFile = 8 << 20;
constexpr unsigned largestSide = 2048;

unsigned bigEndian(std::string_view bytes) {
    unsigned value = 0;
    for (const char byte : bytes.substr(0, 4))
        value = value << 8U | static_cast<unsigned char>(byte);
    return value;
}

cairo_status_t readBytes(void *rest, unsigned char *data, unsigned length) {
    auto &bytes = *static_cast<std::string_view *>(rest);
    if (bytes.size() < length)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, bytes.data(), length);
    bytes.remove_prefix(length);
    return CAIRO_STATUS_SUCCESS;
}

cairo_status_t appendBytes(void *written, const unsigned char *data, unsigned length) {
    static_cast<std::string *>(written)->append(reinterpret_cast<const char *>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

// A small file can claim a huge picture: the sizes in the header, where PNG has them, are read first.
bool isPngOfAtMost(unsigned side, std::string_view bytes) {
    constexpr auto start = "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"sv;
    if (bytes.size() < start.size() + 8 || !bytes.starts_with(start))
        return false;
    const unsigned width = bigEndian(bytes.substr(start.size()));
    const unsigned height = bigEndian(bytes.substr(start.size() + 4));
    return width > 0 && height > 0 && width <= side && height <= side;
}

SurfacePointer decodePng(std::string_view bytes) {
    if (bytes.size() > largestFile || !isPngOfAtMost(largestSide, bytes))
        return nullptr;
    SurfacePointer surface(cairo_image_surface_create_from_png_stream(readBytes, &bytes));
    return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS ? std::move(surface) : nullptr;
}

SurfacePointer readPng(const std::string &path) {
    const auto bytes = readFile(path, largestFile);
    return bytes ? decodePng(*bytes) : nullptr;
}

std::string pngBytes(cairo_surface_t *surface) {
    std::string bytes;
    const auto status = cairo_surface_write_to_png_stream(surface, appendBytes, &bytes);
    return status == CAIRO_STATUS_SUCCESS ? bytes : std::string();
}

} // namespace fernhop::freedesktop
