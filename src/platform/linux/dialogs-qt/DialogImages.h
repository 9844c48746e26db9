#pragma once

#include "platform/Object.h"
#include "platform/ui/Image.h"
#include "platform/ui/Selector.h"

#include <QIcon>
#include <QPainter>
#include <functional>
#include <string>

namespace fernhop::freedesktop {

/// What the widgets of a dialog need from around them.
struct ViewContext {
    /// Fires a control's action.
    std::function<void(ui::Selector action, const Object &sender)> perform;
    /// The `Icon` of the desktop entry at a path: a name in the icon theme or a file; empty: none.
    std::function<std::string(const std::string &entryPath)> iconOfEntry;
};

/// Paints `image` (null: nothing) into `area`, scaled up or down in proportion. What may be tinted is drawn
/// in `tint`.
void paintImage(QPainter &painter, const ui::ImageReference &image, const QRectF &area, const QColor &tint,
                const ViewContext &context);

/// `image` (null: an icon that is null) for a button or an item; `context` outlives it.
[[nodiscard]] QIcon controlIcon(const ui::ImageReference &image, const ViewContext &context);

} // namespace fernhop::freedesktop
