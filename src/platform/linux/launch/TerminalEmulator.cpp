#include "platform/linux/launch/TerminalEmulator.h"

#include "platform/linux/launch/Spawn.h"

#include <array>

namespace fernhop::freedesktop {
namespace {

struct Emulator {
    const char *program;
    const char *commandOption; ///< stands before the command; null: none is needed
};

// What the user chose comes first (xdg-terminal-exec, Debian's alternative), then what desktops bring.
constexpr std::array<Emulator, 12> emulators = {{
    {"xdg-terminal-exec", nullptr},
    {"x-terminal-emulator", "-e"},
    {"kgx", "--"},
    {"gnome-terminal", "--"},
    {"konsole", "-e"},
    {"xfce4-terminal", "-x"},
    {"mate-terminal", "-x"},
    {"qterminal", "-e"},
    {"foot", nullptr},
    {"kitty", nullptr},
    {"alacritty", "-e"},
    {"xterm", "-e"},
}};

} // namespace

std::optional<std::vector<std::string>> terminalPrefix(const std::string &searchPath) {
    for (const auto &emulator : emulators) {
        const auto program = findProgram(emulator.program, searchPath);
        if (!std::holds_alternative<std::string>(program))
            continue;
        std::vector<std::string> prefix{std::get<std::string>(program)};
        if (emulator.commandOption != nullptr)
            prefix.emplace_back(emulator.commandOption);
        return prefix;
    }
    return std::nullopt;
}

} // namespace fernhop::freedesktop
