#pragma once

#include "platform/linux/base/Processes.h"
#include "support/TemporaryHome.h"

#include <sys/types.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace fernhop::support {

/// A folder of processes like the kernel's, with the processes that a test puts there.
class FakeProcesses {
  public:
    struct Process {
        pid_t parent = 1;
        std::string program = {}; ///< path
        std::vector<std::string> arguments = {};
        std::map<std::string, std::string> environment = {};
        std::string controlGroup = {};
        std::string flatpakInformation = {};
    };

    void add(pid_t pid, const Process &process) const {
        write(pid, "stat", std::to_string(pid) + " (a) b) S " + std::to_string(process.parent) + " 1 1");
        std::string text;
        for (const auto &argument : process.arguments)
            text += argument + '\0';
        write(pid, "cmdline", text);
        text.clear();
        for (const auto &[name, value] : process.environment)
            text += name + "=" + value + '\0';
        write(pid, "environ", text);
        write(pid, "cgroup", "12:cpu:/other\n0::" + process.controlGroup + "\n");
        if (!process.flatpakInformation.empty())
            write(pid, "root/.flatpak-info", process.flatpakInformation);
        if (!process.program.empty())
            std::filesystem::create_symlink(process.program, path(pid, "exe"));
    }

    void write(pid_t pid, const std::string &name, const std::string &contents) const {
        folder.write(path(pid, name), contents);
    }

    [[nodiscard]] std::string root() const { return folder.root() + "/proc"; }
    [[nodiscard]] std::string path(pid_t pid, const std::string &name) const {
        return root() + "/" + std::to_string(pid) + "/" + name;
    }

  private:
    TemporaryHome folder;
};

} // namespace fernhop::support
