#include "support/TemporaryHome.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace fernhop::support {

namespace files = std::filesystem;

TemporaryHome::TemporaryHome(uid_t owner) {
    std::string pattern = files::temp_directory_path() / "fernhop-test-XXXXXX";
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("cannot make a temporary folder");
    folder = pattern;
    for (const auto &path : {config(), applications(), systemData(), runtime(), folder + "/etc"})
        files::create_directories(path);
    files::permissions(runtime(), files::perms::owner_all);
    if (owner == 0 || owner == getuid())
        return;
    (void)!chown(folder.c_str(), owner, owner);
    for (const auto &item : files::recursive_directory_iterator(folder))
        (void)!chown(item.path().c_str(), owner, owner);
}

TemporaryHome::~TemporaryHome() {
    std::error_code ignored;
    files::remove_all(folder, ignored);
}

Environment TemporaryHome::environment() const {
    return {
        {"HOME", home()},
        {"XDG_CONFIG_HOME", config()},
        {"XDG_DATA_HOME", data()},
        {"XDG_CACHE_HOME", home() + "/.cache"},
        {"XDG_STATE_HOME", home() + "/.local/state"},
        {"XDG_RUNTIME_DIR", runtime()},
        {"XDG_CONFIG_DIRS", folder + "/etc"},
        {"XDG_DATA_DIRS", systemData()},
        {"XDG_CURRENT_DESKTOP", std::nullopt},
        {"XDG_SESSION_TYPE", std::nullopt},
        {"XDG_ACTIVATION_TOKEN", std::nullopt},
        {"DESKTOP_STARTUP_ID", std::nullopt},
        {"GIO_LAUNCHED_DESKTOP_FILE", std::nullopt},
        {"GIO_LAUNCHED_DESKTOP_FILE_PID", std::nullopt},
        {"DBUS_SESSION_BUS_ADDRESS", std::nullopt},
        {"DISPLAY", std::nullopt},
        {"WAYLAND_DISPLAY", std::nullopt},
        {"SWAYSOCK", std::nullopt},
        {"BROWSER", std::nullopt},
    };
}

void TemporaryHome::write(const std::string &path, const std::string &contents) const {
    files::create_directories(files::path(path).parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << contents;
}

void TemporaryHome::writeProgram(const std::string &path, const std::string &contents) const {
    write(path, contents);
    files::permissions(path, files::perms(0755));
}

} // namespace fernhop::support
