#include "platform/linux/base/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace fernhop::freedesktop {

namespace {

class OpenFile {
  public:
    explicit OpenFile(const std::string &path)
        : descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}
    ~OpenFile() {
        if (descriptor >= 0)
            close(descriptor);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    /// Its size; nothing for what is no ordinary file.
    [[nodiscard]] std::optional<std::size_t> size() const {
        struct stat status {};
        if (descriptor < 0 || fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return static_cast<std::size_t>(status.st_size);
    }

    /// Reads up to `size` bytes; nothing on an error.
    [[nodiscard]] std::optional<std::string> contents(std::size_t size) const {
        std::string bytes(size, '\0');
        std::size_t filled = 0;
        while (filled < size) {
            const auto count = read(descriptor, bytes.data() + filled, size - filled);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return std::nullopt;
            if (count == 0)
                break;
            filled += static_cast<std::size_t>(count);
        }
        bytes.resize(filled);
        return bytes;
    }

  private:
    int descriptor;
};

} // namespace

std::optional<std::string> readSmallFile(const std::string &path, std::size_t largest) {
    if (path.find('\0') != std::string::npos)
        return std::nullopt;
    const OpenFile file(path);
    const auto size = file.size();
    return size && *size <= largest ? file.contents(*size) : std::nullopt;
}

} // namespace fernhop::freedesktop
