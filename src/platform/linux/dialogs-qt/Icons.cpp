#include "platform/linux/dialogs-qt/Icons.h"

#include "platform/linux/tray/ImageRenderer.h"
#include "platform/linux/tray/Symbols.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIconEngine>
#include <QPixmap>
#include <QStandardPaths>
#include <QStringList>
#include <algorithm>

namespace fernhop::freedesktop {

namespace {

/// Places for icons need not be square: a high panel gives its tray's icons narrow ones.
QRect squareIn(const QRect &area) {
    const int side = std::min(area.width(), area.height());
    return {area.x() + (area.width() - side) / 2, area.y() + (area.height() - side) / 2, side, side};
}

class Engine : public QIconEngine {
  public:
    explicit Engine(PaintPicture paints) : picture(std::move(paints)) {}

    void paint(QPainter *painter, const QRect &area, QIcon::Mode, QIcon::State) override {
        picture(*painter, squareIn(area));
    }
    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixels(size);
        pixels.fill(Qt::transparent);
        QPainter painter(&pixels);
        paint(&painter, pixels.rect(), mode, state);
        return pixels;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new Engine(picture); }
    [[nodiscard]] bool isNull() override { return false; }

  private:
    PaintPicture picture;
};

} // namespace

QIcon paintedIcon(PaintPicture paint) {
    return QIcon(new Engine(std::move(paint)));
}

void PictureWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    picture(painter, rect());
}

namespace {

const QString basicTheme = QStringLiteral("hicolor"); // the one that is always there, with few icons

/// A theme that has icons for the common names, where one is installed.
QString completeTheme() {
    for (const auto &name : {QStringLiteral("Adwaita"), QStringLiteral("breeze"), QStringLiteral("Papirus")})
        for (const QString &folder : QIcon::themeSearchPaths())
            if (QFileInfo::exists(folder + QLatin1Char('/') + name + QStringLiteral("/index.theme")))
                return name;
    return basicTheme;
}

QStringList extended(QStringList folders, const QString &subfolder) {
    for (const QString &data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders << data + subfolder;
    folders.removeDuplicates();
    return folders;
}

QIcon iconNamed(const std::string &name) {
    const QString text = QFile::decodeName(name.c_str());
    if (!text.startsWith(QLatin1Char('/')))
        return QIcon::fromTheme(text);
    return QFileInfo(text).isFile() ? QIcon(text) : QIcon(); // what is no file may never end
}

void paintWindow(QPainter &painter, const QRectF &area, const QColor &ink) {
    const double side = std::min(area.width(), area.height()), line = side / 14;
    QRectF frame(0, 0, 0.8 * side, 0.7 * side);
    frame.moveCenter(area.center());
    const double titleBar = frame.top() + 0.2 * side;
    QColor faint = ink; // it stands beside pictures, which are what one looks for
    faint.setAlphaF(0.6F * ink.alphaF());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(faint, line));
    painter.drawRoundedRect(frame, 2 * line, 2 * line);
    painter.drawLine(QPointF(frame.left(), titleBar), QPointF(frame.right(), titleBar));
    painter.restore();
}

} // namespace

void useAllIconPlaces() {
    QIcon::setThemeSearchPaths(
        extended(QStringList{QDir::homePath() + QStringLiteral("/.icons")} + QIcon::themeSearchPaths(),
                 QStringLiteral("/icons")));
    QIcon::setFallbackSearchPaths(extended(QIcon::fallbackSearchPaths(), QStringLiteral("/pixmaps")));
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(basicTheme);
    if (QIcon::themeName() == basicTheme)
        QIcon::setFallbackThemeName(completeTheme());
}

bool paintIcon(QPainter &painter, const QIcon &icon, const QRectF &area) {
    const QPixmap pixels = icon.pixmap(area.size().toSize(), painter.device()->devicePixelRatioF());
    if (pixels.isNull())
        return false;
    QRectF target({}, QSizeF(pixels.size()).scaled(area.size(), Qt::KeepAspectRatio));
    target.moveCenter(area.center());
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(target, pixels, pixels.rect());
    painter.restore();
    return true;
}

void paintApplicationIcon(QPainter &painter, const std::string &icon, const QRectF &area, const QColor &ink) {
    if (!paintIcon(painter, iconNamed(icon), area) &&
        !paintIcon(painter, QIcon::fromTheme(QStringLiteral("application-x-executable")), area))
        paintWindow(painter, area, ink);
}

namespace {

/// Draws `drawing`, made for a square of `side` points, into `target`, in `ink`.
void paintDrawing(QPainter &painter, const ui::Drawing &drawing, double side, const QRectF &target,
                  const QColor &ink) {
    const int pixels = qRound(target.width() * painter.device()->devicePixelRatioF());
    const auto drawn = paint({{ui::ColorRole::black, 1}, drawing.paths}, side, pixels);
    QImage shape(cairo_image_surface_get_data(drawn.get()), pixels, pixels,
                 QImage::Format_ARGB32_Premultiplied);
    QPainter tinting(&shape);
    tinting.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tinting.fillRect(shape.rect(), ink);
    tinting.end();
    painter.drawImage(target, shape);
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
