#pragma once

#include "platform/linux/tray/EmbeddedIcon.h"
#include "platform/ui/Alert.h"
#include "platform/ui/Appearance.h"
#include "platform/ui/Drawing.h"
#include "platform/ui/Selector.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// What the dialogs ask of the process that shows them.
struct DialogHost {
    /// Fires a control's action.
    std::function<void(ui::Selector action, const Object &sender)> perform;
    /// The `Icon` of the desktop entry at a path: a name in the icon theme or a file; empty: none.
    std::function<std::string(const std::string &entryPath)> iconOfEntry;
    /// The drawing of a symbol, for a square of 16 points; nothing for one that is not known.
    std::function<std::optional<ui::Drawing>(const std::string &name, ui::Color ink)> drawingOfSymbol;
    /// The appearance that the user asked all applications to have; nothing: the toolkit's theme decides.
    std::function<std::optional<ui::AppearanceName>()> statedAppearance;
    /// Takes the desktop's token by which a window may come before the others, good for one; empty: there is
    /// none.
    std::function<std::string()> takeActivationToken;
};

/// Shows alerts, and can take the open one away; and whatever else takes a toolkit.
class DialogPresenter : public ui::AlertPresenter {
  public:
    /// A new icon in an X11 tray, which sends clicks to `perform`; null where the windows are none of X11.
    [[nodiscard]] virtual std::unique_ptr<EmbeddedIcon> makeEmbeddedIcon(PerformAction perform) = 0;
    /// Closes the open alert as its last button does; without one nothing happens.
    virtual void dismiss() = 0;

    /// Has the open alert look as the user has asked meanwhile.
    virtual void appearanceChanged() = 0;
};

/// The one function of the dialogs' module, by its name: a presenter, or null where the toolkit finds no
/// screen.
using MakeDialogPresenter = DialogPresenter *(*)(const DialogHost &host);
inline constexpr const char *makeDialogPresenterName = "fernhopMakeDialogPresenter";

} // namespace fernhop::freedesktop
