#pragma once

#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fernhop::freedesktop {

/// A private machine with two folders of desktop entries, the user's before the system's.
class DesktopFixture : public testing::Test {
  protected:
    [[nodiscard]] std::string user(const std::string &file = {}) const { return home.applications() + file; }
    [[nodiscard]] std::string system(const std::string &file = {}) const {
        return home.systemData() + "/applications" + file;
    }
    [[nodiscard]] std::string programs() const { return home.root() + "/bin"; }

    [[nodiscard]] ApplicationPlaces places() const {
        return {{user(), system()}, {programs()}, {"de_AT", "de"}, home.home(), {"ubuntu", "gnome"}};
    }

    /// Writes an application's entry: a name, something to run, and `keys` besides.
    void writeEntry(const std::string &path, const std::string &name, const std::string &keys = {}) const {
        home.write(path, "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=/bin/true %u\n" + keys);
    }

    [[nodiscard]] InstalledDesktopEntries entries() const { return InstalledDesktopEntries(places()); }

    support::TemporaryHome home;
};

} // namespace fernhop::freedesktop
