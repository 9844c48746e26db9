#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/dialogs-qt/Looks.h"
#include "platform/linux/dialogs-qt/ToolkitApplication.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using PaintedIconTest = ToolkitApplication;

/// Where an icon that fills all it is given shows in a place of this size.
QRectF shownIn(int width, int height) {
    const QIcon icon =
        paintedIcon([](QPainter &painter, const QRectF &area) { painter.fillRect(area, Qt::red); });
    QImage place(width, height, QImage::Format_RGB32);
    place.fill(Qt::white);
    QPainter painter(&place);
    icon.paint(&painter, place.rect());
    painter.end();
    return boxOf(place, [](const QColor &color) { return color == Qt::red; });
}

TEST_F(PaintedIconTest, IsASquareInTheMiddleOfItsPlace) {
    EXPECT_EQ(shownIn(22, 22), QRectF(0, 0, 22, 22));
    EXPECT_EQ(shownIn(22, 44), QRectF(0, 11, 22, 22));
    EXPECT_EQ(shownIn(48, 16), QRectF(16, 0, 16, 16));
}

} // namespace
} // namespace fernhop::freedesktop
