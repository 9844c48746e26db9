#include "platform/linux/dialogs-qt/DialogImages.h"

#include <QFile>
#include <QPainterPath>
#include <cmath>

namespace fernhop::freedesktop {

namespace {

constexpr double symbolSide = 16; // of the squares that symbols are drawn for

struct AddTo {
    QPainterPath &path;

    static QPointF point(ui::Point at) { return {at.x, at.y}; }
    void operator()(const ui::MoveTo &move) const { path.moveTo(point(move.to)); }
    void operator()(const ui::LineTo &line) const { path.lineTo(point(line.to)); }
    void operator()(const ui::CurveTo &curve) const {
        path.cubicTo(point(curve.control1), point(curve.control2), point(curve.to));
    }
    void operator()(const ui::ClosePath &) const { path.closeSubpath(); }
    void operator()(const ui::Oval &oval) const {
        path.addEllipse(QRectF(oval.origin.x, oval.origin.y, oval.width, oval.height));
    }
};

void paintPath(QPainter &painter, const ui::Path &path, const QColor &ink) {
    QPainterPath outline;
    for (const auto &element : path.elements)
        std::visit(AddTo{outline}, element);
    if (path.strokeWidth > 0)
        painter.strokePath(outline, QPen(ink, path.strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    else
        painter.fillPath(outline, ink);
}

/// Paints the picture of each kind of source into a square.
struct PaintSource {
    QPainter &painter;
    const QRectF &square;
    const QColor &tint;
    const DialogHost &host;

    void operator()(const ui::ImageFile &file) const { paint(QIcon(QFile::decodeName(file.path.c_str()))); }
    void operator()(const ui::ApplicationIcon &icon) const { paint(iconNamed(host.iconOfEntry(icon.path))); }
    void operator()(const ui::SystemSymbol &symbol) const {
        if (const auto drawing = host.drawingOfSymbol(symbol.name, {}))
            paintDrawing(painter, *drawing, symbolSide, square, tint);
    }
    void operator()(const ui::Drawing &drawing) const {
        paintDrawing(painter, drawing, square.width(), square, tint);
    }
    void paint(const QIcon &icon) const { icon.paint(&painter, square.toRect()); }
};

} // namespace

void paintDrawing(QPainter &painter, const ui::Drawing &drawing, double side, const QRectF &target,
                  const QColor &ink) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(target.bottomLeft());
    painter.scale(target.width() / side, -target.height() / side); // a drawing's y grows upwards
    for (const ui::Path &path : drawing.paths)
        paintPath(painter, path, ink);
    painter.restore();
}

QPixmap pixmapOf(const ui::ImageReference &image, double side, double pixelRatio, const QColor &tint,
                 const DialogHost &host) {
    if (!image)
        return {};
    const int pixels = static_cast<int>(std::lround(side * pixelRatio));
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const QRectF square(0, 0, side, side);
    std::visit(PaintSource{painter, square, tint, host}, image->source);
    return pixmap;
}

QIcon iconNamed(const std::string &name) {
    const QString text = QFile::decodeName(name.c_str());
    QIcon icon = text.startsWith(QLatin1Char('/')) ? QIcon(text) : QIcon::fromTheme(text);
    return icon.isNull() ? QIcon::fromTheme(QStringLiteral("application-x-executable")) : icon;
}

} // namespace fernhop::freedesktop
