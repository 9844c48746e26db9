#pragma once

#include "platform/linux/dialogs-qt/ViewLayout.h"
#include "platform/ui/TextField.h"

#include <QFont>
#include <QString>

namespace fernhop::freedesktop {

/// A text of the core, which is UTF-8, as the toolkit has it.
[[nodiscard]] QString toText(const std::string &text);

/// The user's font at the size and weight of `font`; points are the screen's own, whatever its density.
[[nodiscard]] QFont toFont(const ui::Font &font);

/// How wide a label is in one line, and how high in lines of this width, its limit of lines kept.
[[nodiscard]] double labelWidth(const ui::TextField &label);
[[nodiscard]] double labelHeight(const ui::TextField &label, double width);

} // namespace fernhop::freedesktop
