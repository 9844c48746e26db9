#pragma once

#include "cli/Context.h"
#include "platform/CommandResult.h"

#include <string>
#include <variant>

namespace fernhop::cli {

/// The bundle identifier of the application or browser that a word names, or the failure when it names none.
using Lookup = std::variant<std::string, CommandResult>;

/// Which applications a command accepts as a browser.
enum class BrowserKind {
    listed,       ///< those that declare web links
    anyInstalled, ///< any application, by its identifier: a rule may name it
};

/// The browser that `word` names: by its identifier, else by its exact name if only one browser has it.
/// Fernhop itself is not accepted: links would loop.
[[nodiscard]] Lookup lookUpBrowser(const std::string &word, BrowserKind kind, const Context &context);

/// The application that `word` names, in the same way; also one that is installed but not listed.
[[nodiscard]] Lookup lookUpApplication(const std::string &word, const Context &context);

/// The source application of a stored app rule that `word` names; it need not be installed any more.
[[nodiscard]] Lookup lookUpRuledApplication(const std::string &word, const Context &context);

/// The failure of a command that names a URL rule which is not stored.
[[nodiscard]] CommandResult noSuchURLRule(const std::string &id);

/// An application as shown to people: its name and identifier, with a remark when it is not installed or
/// refused.
[[nodiscard]] std::string describeApplication(const std::string &bundleID, const Context &context);

} // namespace fernhop::cli
