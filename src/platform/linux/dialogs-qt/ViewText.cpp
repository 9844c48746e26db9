#include "platform/linux/dialogs-qt/ViewText.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace fernhop::freedesktop {

QString toText(const std::string &text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
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

double labelWidth(const ui::TextField &label) {
    return std::ceil(QFontMetricsF(toFont(label.font)).horizontalAdvance(toText(label.stringValue()))) + 1;
}

double labelHeight(const ui::TextField &label, double width) {
    constexpr double endless = 1e6;
    const QFontMetricsF metrics(toFont(label.font));
    const auto heightAt = [&](double across) {
        return metrics
            .boundingRect(QRectF(0, 0, across, endless), Qt::TextWordWrap, toText(label.stringValue()))
            .height();
    };
    // Of the text itself, for what the font lacks comes from fonts with higher lines.
    const double oneLine = std::max(heightAt(endless), metrics.height());
    const double limit = label.maximumLines > 0 ? label.maximumLines * oneLine : endless;
    return std::ceil(std::clamp(heightAt(std::max(width, 1.0)), oneLine, limit));
}

} // namespace fernhop::freedesktop
