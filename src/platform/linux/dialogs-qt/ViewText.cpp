#include "platform/linux/dialogs-qt/ViewText.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QTextDocument>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace fernhop::freedesktop {

namespace {

constexpr double endless = 1e6;

/// Longer texts show no more of themselves, and laying them out would take long.
constexpr qsizetype longestShown = 4096;

} // namespace

QString toText(const std::string &text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString toToolTip(const QString &text) {
    return Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal); // else its spaces would hold it together
}

QFont toFont(const ui::Font &font) {
    QFont result = QApplication::font();
    result.setPixelSize(static_cast<int>(std::lround(font.size)));
    switch (font.weight) {
    case ui::FontWeight::regular:
        result.setWeight(QFont::Normal);
        break;
    case ui::FontWeight::medium:
        result.setWeight(QFont::Medium);
        break;
    case ui::FontWeight::semibold:
        result.setWeight(QFont::DemiBold);
        break;
    }
    return result;
}

double textWidth(const QString &text, const QFont &font) {
    return std::ceil(QFontMetricsF(font).horizontalAdvance(text.left(longestShown))) + 1;
}

double labelWidth(const ui::TextField &label) {
    return textWidth(toText(label.stringValue()), toFont(label.font));
}

ContentHeight labelHeight(const ui::TextField &label, double width) {
    const QFont font = toFont(label.font);
    const QString text = toText(label.stringValue());
    const auto heightOf = [&](int mostLines) {
        const TextLines lines(text, font, {width, endless, mostLines});
        return std::ceil(std::max(lines.height(), QFontMetricsF(font).height()));
    };
    return {heightOf(label.maximumLines), heightOf(1)};
}

TextLines::TextLines(const QString &text, const QFont &font, const TextSpace &space)
    : lines(text.left(longestShown).replace(QLatin1Char('\n'), QChar::LineSeparator), font) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    lines.setTextOption(option);
    const QString whole = lines.text();
    cut = breakLines(space) < whole.size();
    if (!cut)
        return;
    const qsizetype last = lines.lineAt(shown - 1).textStart();
    QString end = whole.mid(last);
    end.replace(QChar::LineSeparator, QLatin1Char(' '));
    lines.setText(whole.left(last) + QFontMetricsF(font).elidedText(end, Qt::ElideRight, space.width));
    (void)breakLines(space);
}

void TextLines::draw(QPainter &painter, QPointF topLeft) const {
    for (int line = 0; line < shown; ++line)
        lines.lineAt(line).draw(&painter, topLeft);
}

qsizetype TextLines::breakLines(const TextSpace &space) {
    constexpr double rounding = 0.5;
    qsizetype fitting = 0;
    reached = 0;
    shown = 0;
    lines.beginLayout();
    for (QTextLine line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        line.setLineWidth(std::max(space.width, 1.0));
        const bool isBelow = reached + line.height() > space.height + rounding;
        if (shown > 0 && (isBelow || shown == space.maximumLines))
            break;
        line.setPosition({0, reached});
        reached += line.height();
        fitting = line.textStart() + line.textLength();
        ++shown;
    }
    lines.endLayout();
    return fitting;
}

} // namespace fernhop::freedesktop
