#pragma once

#include "cli/Context.h"
#include "platform/CommandResult.h"

#include <string>
#include <variant>

namespace fernhop::cli {

/// What a person's word for an application or browser stands for: a bundle identifier, or why it stands for
/// nothing.
using Lookup = std::variant<std::string, CommandResult>;

/// Which applications count as the browser of a command.
enum class BrowserKind {
    listed,       ///< those that declare web links
    anyInstalled, ///< any application, by its identifier: a rule may name it
};

/// The browser that `word` names: by its identifier, else by its exact name where only one browser has it.
/// Fernhop is no browser here: links would go round in a circle.
[[nodiscard]] Lookup lookUpBrowser(const std::string &word, BrowserKind kind, const Context &context);

/// The application that `word` names, in the same way, installed but in no list included.
[[nodiscard]] Lookup lookUpApplication(const std::string &word, const Context &context);

/// The source application of an app rule that `word` names: of the stored rules alone, so that a rule whose
/// application is gone can be named too.
[[nodiscard]] Lookup lookUpRuledApplication(const std::string &word, const Context &context);

/// The failure of a command that names a URL rule which is not stored.
[[nodiscard]] CommandResult noSuchURLRule(const std::string &id);

/// An application for people: its name and identifier; with a remark where it is not installed.
[[nodiscard]] std::string describeApplication(const std::string &bundleID, const Context &context);

} // namespace fernhop::cli
