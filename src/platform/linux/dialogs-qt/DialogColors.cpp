#include "platform/linux/dialogs-qt/DialogColors.h"

namespace fernhop::freedesktop {

namespace {

QColor roleIn(const QPalette &palette, ui::ColorRole role) {
    constexpr float secondary = 0.75F, tertiary = 0.6F, line = 0.35F; // of the text's own strength
    QColor text = palette.color(QPalette::WindowText);
    switch (role) {
    case ui::ColorRole::label:
        return text;
    case ui::ColorRole::secondaryLabel:
        text.setAlphaF(secondary);
        return text;
    case ui::ColorRole::tertiaryLabel:
        text.setAlphaF(tertiary);
        return text;
    case ui::ColorRole::separator:
        text.setAlphaF(line);
        return text;
    case ui::ColorRole::controlAccent:
        return palette.color(QPalette::Active, QPalette::Highlight);
    case ui::ColorRole::white:
        return Qt::white;
    case ui::ColorRole::black:
        return Qt::black;
    }
    return text;
}

} // namespace

QColor colorIn(const QPalette &palette, ui::Color color) {
    QColor result = roleIn(palette, color.role);
    result.setAlphaF(result.alphaF() * static_cast<float>(color.alpha));
    return result;
}

} // namespace fernhop::freedesktop
