#include "platform/linux/dialogs-qt/Icons.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIconEngine>
#include <QLinearGradient>
#include <QPainterPath>
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

constexpr double drawnSide = 128;

/// Two leaves at a place of the stem, by their angles in degrees.
struct Leaves {
    double x, y, left, right, length;
};

constexpr Leaves pairs[] = {{45.2, 84.3, -123.7, -19.7, 24.0}, {49.6, 73.0, -117.7, -13.7, 21.4},
                            {55.0, 62.4, -111.5, -7.5, 18.8},  {61.6, 52.6, -105.2, -1.2, 16.2},
                            {69.1, 43.6, -98.9, 5.1, 13.6},    {77.8, 35.3, -92.8, 11.2, 11.0}};

QPainterPath leaf(double length) {
    const double near = 0.3 * length, nearHalf = 0.26 * length, far = 0.75 * length, farHalf = 0.22 * length;
    QPainterPath path;
    path.cubicTo(near, -nearHalf, far, -farHalf, length, 0);
    path.cubicTo(far, farHalf, near, nearHalf, 0, 0);
    return path;
}

void paintGround(QPainter &painter) {
    QLinearGradient ground(0, 8, 0, 120);
    ground.setColorAt(0, QColor(0x3f, 0xa6, 0x6b));
    ground.setColorAt(1, QColor(0x1c, 0x6b, 0x4a));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(8, 8, 112, 112), 26, 26);
}

void paintFrond(QPainter &painter) {
    const QColor green(0xf4, 0xfb, 0xf3);
    QPainterPath stem({40, 106});
    stem.quadTo(48, 54, 90, 26);
    painter.strokePath(stem, QPen(green, 5, Qt::SolidLine, Qt::RoundCap));
    for (const Leaves &pair : pairs)
        for (const double angle : {pair.left, pair.right}) {
            painter.save();
            painter.translate(pair.x, pair.y);
            painter.rotate(angle);
            painter.fillPath(leaf(pair.length), green);
            painter.restore();
        }
    painter.setBrush(QColor(0xff, 0xd1, 0x66));
    painter.drawEllipse(QPointF(90, 26), 6, 6);
}

} // namespace

void paintOwnIcon(QPainter &painter, const QRectF &square) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / drawnSide, square.height() / drawnSide);
    paintGround(painter);
    paintFrond(painter);
    painter.restore();
}

} // namespace fernhop::freedesktop
