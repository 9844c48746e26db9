#include "platform/linux/tray/IconLoader.h"

#include "platform/linux/base/CallSoon.h"
#include "platform/linux/tray/ImageRenderer.h"

#include <utility>

namespace fernhop::freedesktop {

IconLoader::IconLoader(Loaded loaded)
    : tell(std::move(loaded)), self(std::make_shared<std::atomic<IconLoader *>>(this)) {}

IconLoader::~IconLoader() {
    self->store(nullptr); // so that the thread passes over what is left
}

void IconLoader::load(const ui::ImageReference &image, const std::string &path, int side) {
    if (!thread)
        thread.emplace();
    ++pending;
    thread->post([loader = self, image, path, side] {
        const auto picture = loader->load() ? readPng(path) : nullptr;
        std::string png = picture ? pngBytes(fitted(picture.get(), side).get()) : std::string();
        callSoon([loader, image, path, png = std::move(png)] {
            if (auto *const waiting = loader->load())
                waiting->finish(image, path, png);
        });
    });
}

void IconLoader::finish(const ui::ImageReference &image, const std::string &path, const std::string &png) {
    if (--pending == 0)
        thread.reset();
    tell(image, path, png);
}

} // namespace fernhop::freedesktop
