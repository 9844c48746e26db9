#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace fernhop::cli {

/// The commands, one record each: parsed, but not yet checked against the system. Browsers and applications
/// are still as typed: an identifier or a name.
namespace command {

struct Run {};
struct Open {
    std::vector<std::string> urls;
};
struct Explain {
    std::string url;
    std::optional<std::string> source; ///< as typed; nothing: the current source application
    bool json = false;
};
struct Match {
    std::string pattern;
    std::vector<std::string> urls; ///< empty: one on each line of the input
};
struct Status {
    bool json = false;
};
struct ListApps {
    bool json = false;
};
struct ListBrowsers {
    bool json = false;
};
struct ListURLRules {
    bool json = false;
};
struct AddURLRule {
    std::string pattern;
    std::string browser;
};
struct EditURLRule {
    std::string id;
    std::string pattern;
    std::string browser;
};
struct RemoveURLRule {
    std::string id;
};
struct ListAppRules {
    bool json = false;
};
struct SetAppRule {
    std::string app;
    std::string browser;
};
struct RemoveAppRule {
    std::string app;
};
struct SwitchRouting {
    bool on = false;
};
struct SetDefault {
    std::string browser;
};
struct RestoreOnQuit {
    bool on = false;
};
struct Export {
    std::string file; ///< empty or "-": standard output
};
struct Import {
    std::string file; ///< "-": standard input
};
struct ShowDialog {
    enum class Kind { addAppRules, editAppRule, addURLRule, editURLRule, feedback };

    Kind kind = Kind::feedback;
    std::string subject; ///< for the edit dialogs: the application or the rule's identifier
};
struct Refresh {};
struct Quit {};

} // namespace command

using Command =
    std::variant<command::Run, command::Open, command::Explain, command::Match, command::Status,
                 command::ListApps, command::ListBrowsers, command::ListURLRules, command::AddURLRule,
                 command::EditURLRule, command::RemoveURLRule, command::ListAppRules, command::SetAppRule,
                 command::RemoveAppRule, command::SwitchRouting, command::SetDefault, command::RestoreOnQuit,
                 command::Export, command::Import, command::ShowDialog, command::Refresh, command::Quit>;

} // namespace fernhop::cli
