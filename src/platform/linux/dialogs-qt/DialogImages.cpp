#include "platform/linux/dialogs-qt/DialogImages.h"

#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/tray/Symbols.h"

#include <QApplication>
#include <QFile>
#include <QPainterPath>

namespace fernhop::freedesktop {

namespace {

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

/// Draws `drawing`, made for a square of `side` points, into `target`, in `ink`.
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

/// Paints the picture of each kind of source into an area.
struct PaintSource {
    QPainter &painter;
    const QRectF &area;
    const QColor &tint;
    const ViewContext &context;

    void operator()(const ui::ImageFile &file) const {
        paintIcon(painter, QIcon(QFile::decodeName(file.path.c_str())), area);
    }
    void operator()(const ui::ApplicationIcon &icon) const {
        paintApplicationIcon(painter, context.iconOfEntry(icon.path), area, tint);
    }
    void operator()(const ui::SystemSymbol &symbol) const {
        if (const auto drawing = symbolNamed(symbol.name, {}))
            paintDrawing(painter, *drawing, symbolSide, area, tint);
    }
    void operator()(const ui::Drawing &drawing) const {
        paintDrawing(painter, drawing, area.width(), area, tint);
    }
};

} // namespace

void paintImage(QPainter &painter, const ui::ImageReference &image, const QRectF &area, const QColor &tint,
                const ViewContext &context) {
    if (image)
        std::visit(PaintSource{painter, area, tint, context}, image->source);
}

QIcon controlIcon(const ui::ImageReference &image, const ViewContext &context) {
    if (!image)
        return {};
    return paintedIcon([image, &context](QPainter &painter, const QRectF &area) {
        paintImage(painter, image, area, QApplication::palette().color(QPalette::ButtonText), context);
    });
}

} // namespace fernhop::freedesktop
