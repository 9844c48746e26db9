#include "platform/linux/dialogs-qt/ToolkitApplication.h"
#include "platform/linux/dialogs-qt/ViewText.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>

namespace fernhop::freedesktop {
namespace {

constexpr double endless = 1e6;

class TextLinesTest : public ToolkitApplication {
  protected:
    const QFont font = toFont({12, ui::FontWeight::regular});
    const double line = TextLines("x", font, {endless, endless, 0}).height();

    double heightOf(const QString &text, const TextSpace &space) const {
        return TextLines(text, font, space).height();
    }
    bool isCut(const QString &text, const TextSpace &space) const {
        return TextLines(text, font, space).isCut();
    }
};

TEST_F(TextLinesTest, TextWithRoomIsWhole) {
    EXPECT_EQ(heightOf("some words", {endless, line, 1}), line);
    EXPECT_FALSE(isCut("some words", {endless, line, 1}));
    EXPECT_FALSE(isCut("", {0, 0, 1}));
}

TEST_F(TextLinesTest, LinesAreLimitedByNumberAndByHeight) {
    const QString text = QString("word ").repeated(100);
    EXPECT_EQ(heightOf(text, {100, endless, 2}), 2 * line);
    EXPECT_TRUE(isCut(text, {100, endless, 2}));
    EXPECT_EQ(heightOf(text, {100, 3.5 * line, 0}), 3 * line);
    EXPECT_TRUE(isCut(text, {100, 3.5 * line, 0}));
    EXPECT_GT(heightOf(text, {100, endless, 0}), 10 * line);
    EXPECT_FALSE(isCut(text, {100, endless, 0}));
    EXPECT_EQ(heightOf(text, {100, 1, 0}), line) << "the first line stays";
}

TEST_F(TextLinesTest, WordWiderThanALineBreaks) {
    const QString word(200, 'w');
    EXPECT_GT(heightOf(word, {100, endless, 0}), 3 * line);
    EXPECT_TRUE(isCut(word, {100, endless, 2}));
}

TEST_F(TextLinesTest, LineEndsInTheTextCount) {
    EXPECT_EQ(heightOf("one\ntwo", {endless, endless, 0}), 2 * line);
    EXPECT_TRUE(isCut("one\ntwo", {endless, endless, 1}));
}

TEST_F(TextLinesTest, HugeTextsAreLaidOutInPart) {
    EXPECT_TRUE(isCut(QString(5'000'000, 'w'), {100, endless, 2}));
    ui::TextField label;
    label.setStringValue(std::string(5'000'000, 'w'));
    EXPECT_LT(labelWidth(label), endless);
}

TEST_F(TextLinesTest, NothingIsDrawnBeyondTheSpace) {
    QImage image(200, 200, QImage::Format_ARGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        TextLines(QString("Wjy ").repeated(50) + QString(300, 'W'), font, {100, 2 * line, 0})
            .draw(painter, {10, 10});
    }
    QRect drawn;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != Qt::white)
                drawn |= QRect(x, y, 1, 1);
    EXPECT_TRUE(QRect(9, 9, 102, static_cast<int>(2 * line) + 2).contains(drawn));
    EXPECT_GT(drawn.width(), 60) << "both lines are there";
    EXPECT_GT(drawn.height(), static_cast<int>(line));
}

TEST_F(TextLinesTest, ChineseHasGlyphs) {
    if (QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty())
        GTEST_SKIP() << "needs a font with Chinese, fonts-droid-fallback for one";
    QTextLayout layout("添加浏览器规则：选择目标“刷新”、保存取消", font);
    layout.beginLayout();
    layout.createLine().setLineWidth(endless);
    layout.endLayout();
    int glyphs = 0;
    for (const QGlyphRun &run : layout.glyphRuns())
        for (const quint32 glyph : run.glyphIndexes()) {
            EXPECT_NE(glyph, 0u) << run.rawFont().familyName().toStdString();
            ++glyphs;
        }
    EXPECT_EQ(glyphs, layout.text().size());
}

} // namespace
} // namespace fernhop::freedesktop
