#pragma once

#include "platform/linux/base/LoopThread.h"
#include "platform/ui/Image.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// Reads and scales pictures that are too large to be read between two calls of the bus, on a thread that
/// lasts as long as there are any. Main thread only.
class IconLoader {
  public:
    /// Called on the main thread with an image, the path of its file, and the bytes of the scaled PNG file;
    /// empty when there is no picture in the file.
    using Loaded =
        std::function<void(const ui::ImageReference &image, const std::string &path, const std::string &png)>;

    explicit IconLoader(Loaded loaded);
    ~IconLoader();
    IconLoader(const IconLoader &) = delete;
    IconLoader &operator=(const IconLoader &) = delete;

    /// Has the file at `path` read as a picture of `side` by `side` pixels, to be shown for `image`.
    void load(const ui::ImageReference &image, const std::string &path, int side);

  private:
    void finish(const ui::ImageReference &image, const std::string &path, const std::string &png);

    const Loaded tell;
    /// The loader, for what comes back from the thread; null when it is gone.
    const std::shared_ptr<std::atomic<IconLoader *>> self;
    std::size_t pending = 0;
    std::optional<LoopThread> thread;
};

} // namespace fernhop::freedesktop
