#include "platform/linux/dialogs-qt/DialogPalette.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace fernhop::freedesktop {

namespace {

/// The colours of one appearance.
struct Shades {
    QRgb window, base, alternate, button, text, faint;
};

constexpr Shades lightShades{0xffefefef, 0xffffffff, 0xfff7f7f7, 0xffefefef, 0xff1b1b1b, 0xff8c8c8c};
constexpr Shades darkShades{0xff2b2b2b, 0xff1e1e1e, 0xff262626, 0xff3a3a3a, 0xfff0f0f0, 0xff8f8f8f};

QPalette paletteOf(const Shades &shades, const QColor &accent, const QColor &onAccent) {
    QPalette palette{QColor(shades.button), QColor(shades.window)}; // which derives the edges of controls
    const QColor text(shades.text), faint(shades.faint);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Base, shades.base);
    palette.setColor(QPalette::Disabled, QPalette::Base, shades.window);
    palette.setColor(QPalette::AlternateBase, shades.alternate);
    palette.setColor(QPalette::ToolTipBase, shades.button);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, onAccent);
    palette.setColor(QPalette::Link, accent);
    return palette;
}

/// The toolkit tells them by itself only while its own main loop runs, which is not the one that we have.
void tellWindows() {
    QEvent change(QEvent::ApplicationPaletteChange);
    for (QWidget *window : QApplication::topLevelWidgets())
        QApplication::sendEvent(window, &change);
}

} // namespace

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

void adoptAppearance(std::optional<ui::AppearanceName> stated) {
    QApplication::setPalette(QPalette()); // the theme's, as it is by now
    const QPalette theme = QApplication::palette();
    const bool wantsDark = stated == ui::AppearanceName::darkAqua;
    if (stated && isDark(theme) != wantsDark)
        QApplication::setPalette(paletteOf(wantsDark ? darkShades : lightShades,
                                           theme.color(QPalette::Active, QPalette::Highlight),
                                           theme.color(QPalette::Active, QPalette::HighlightedText)));
    tellWindows();
}

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
