#pragma once

#include "app/ActionTable.h"

#include <optional>
#include <string>
#include <string_view>

namespace fernhop {

/// The dialogs, by what they are for.
enum class Dialog { addURLRule, editURLRule, addAppRules, editAppRule, feedback };

/// What a person sees of Fernhop. The controller tells it when something that shows may have changed; it
/// reads the state anew then. Main thread only.
class Presentation {
  public:
    virtual ~Presentation() = default;

    /// Anything in the menu may have changed.
    virtual void rebuildMenu() = 0;

    /// The desktop changed between light and dark.
    virtual void appearanceDidChange() = 0;

    /// Opens a dialog and returns when it is closed. `subject` is the rule's identifier, or the source
    /// application's, in the dialogs that edit one. False when no dialog can be opened here.
    [[nodiscard]] virtual bool show(Dialog dialog, const std::optional<std::string> &subject) = 0;

    /// A control or table of the open dialog invokes `selector`. With no dialog open nothing happens.
    virtual ActionResult performInDialog(std::string_view selector, const ActionArguments &arguments) = 0;
};

/// For a session with nothing to show anything on.
class NoPresentation : public Presentation {
  public:
    void rebuildMenu() override {}
    void appearanceDidChange() override {}
    bool show(Dialog, const std::optional<std::string> &) override { return false; }
    ActionResult performInDialog(std::string_view, const ActionArguments &) override { return {}; }
};

} // namespace fernhop
