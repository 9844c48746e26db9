#include "platform/linux/dialogs-qt/ShownDialogs.h"
#include "platform/ui/Button.h"
#include "platform/ui/TableView.h"

#include <gtest/gtest.h>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

class DialogGeometryTest : public ShownDialogs {
  protected:
    /// Where the widget of a view stands in the accessory.
    static QRect area(AlertDialog &dialog, const View &view) {
        QWidget *widget = dialog.accessory()->widgetOf(view);
        if (!widget)
            throw std::runtime_error("a view without a widget");
        return {widget->mapTo(dialog.accessory(), QPoint(0, 0)), widget->size()};
    }

    static int bottomOf(const QRect &area) { return area.y() + area.height(); }
};

TEST_F(DialogGeometryTest, AddDialogHasItsSizes) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const View &root) {
        EXPECT_EQ(dialog.accessory()->size(), QSize(500, 468));
        const auto header = subview<StackView>(root, 0);
        const auto badge = area(dialog, *header->subviews[0]);
        EXPECT_EQ(badge.size(), QSize(30, 30));
        const auto symbol = area(dialog, *header->subviews[0]->subviews[0]);
        EXPECT_EQ(symbol.size(), QSize(16, 16));
        EXPECT_EQ(symbol.x() - badge.x(), 7);
        EXPECT_EQ(symbol.y() - badge.y(), 7);
        const auto title = area(dialog, *header->subviews[1]->subviews[0]);
        const auto subtitle = area(dialog, *header->subviews[1]->subviews[1]);
        EXPECT_EQ(title.x(), 40);
        EXPECT_EQ(title.y(), 0);
        EXPECT_EQ(subtitle.x(), 40);
        EXPECT_EQ(subtitle.y() - bottomOf(title), 3);

        const auto search = area(dialog, *root.subviews[1]), list = area(dialog, *root.subviews[2]),
                   label = area(dialog, *root.subviews[3]), popup = area(dialog, *root.subviews[4]),
                   note = area(dialog, *root.subviews[5]);
        for (const QRect &part : {search, list, label, popup, note}) {
            EXPECT_EQ(part.x(), 0);
            EXPECT_EQ(part.width(), 500);
        }
        EXPECT_EQ(search.y() - bottomOf(subtitle), 14);
        EXPECT_EQ(list.y() - bottomOf(search), 10);
        EXPECT_EQ(list.height(), 250);
        EXPECT_EQ(label.y() - bottomOf(list), 14);
        EXPECT_EQ(popup.y() - bottomOf(label), 6);
        EXPECT_GE(popup.height(), 28);
        EXPECT_EQ(note.y() - bottomOf(popup), 12);
        EXPECT_LE(bottomOf(note), 468);
        const auto hint = area(dialog, *root.subviews[5]->subviews[0]);
        EXPECT_EQ(hint.x(), 12);
        EXPECT_EQ(hint.width(), 476);
        EXPECT_EQ(hint.y() - note.y(), 10);
        EXPECT_EQ(bottomOf(note) - bottomOf(hint), 10);
    });
}

TEST_F(DialogGeometryTest, URLRuleDialogSpansItsContainer) {
    open("showAddURLRuleDialog", [](AlertDialog &dialog, const View &root) {
        EXPECT_EQ(dialog.accessory()->size(), QSize(420, 190));
        const auto stack = subview<StackView>(root, 0);
        int y = 0;
        for (const auto &part : stack->subviews) {
            const QRect place = area(dialog, *part);
            EXPECT_EQ(place.x(), 0);
            EXPECT_EQ(place.y(), y);
            y = bottomOf(place) + 10;
        }
        EXPECT_LE(y - 10, 190);
        EXPECT_EQ(area(dialog, *stack->subviews[1]).width(), 420);
        EXPECT_EQ(area(dialog, *stack->subviews[3]).width(), 420);
        EXPECT_LE(area(dialog, *stack->subviews[4]).width(), 420);
    });
}

TEST_F(DialogGeometryTest, EditDialogIsStacked) {
    open(
        "editRuleFromWindow:",
        [](AlertDialog &dialog, const View &root) {
            EXPECT_EQ(dialog.accessory()->size(), QSize(360, 92));
            const auto stack = subview<StackView>(root, 0);
            const auto name = area(dialog, *stack->subviews[0]), popup = area(dialog, *stack->subviews[1]),
                       note = area(dialog, *stack->subviews[2]);
            EXPECT_EQ(name.y(), 0);
            EXPECT_EQ(popup.y() - bottomOf(name), 12);
            EXPECT_EQ(note.y() - bottomOf(popup), 12);
            EXPECT_LE(bottomOf(note), 92);
        },
        "com.example.a");
}

TEST_F(DialogGeometryTest, FeedbackButtonsAreWide) {
    open("showFeedbackDialog", [](AlertDialog &dialog, const View &root) {
        EXPECT_EQ(dialog.accessory()->size(), QSize(440, 250));
        const auto stack = subview<StackView>(root, 0);
        int above = 0;
        for (std::size_t row = 1; row <= 4; ++row) {
            const QRect button = area(dialog, *stack->subviews[row]->subviews[0]);
            EXPECT_EQ(button.x(), 0);
            EXPECT_GE(button.width(), 320);
            EXPECT_LE(button.width(), 440);
            EXPECT_TRUE(row == 1 || button.y() - above == 10) << row;
            above = bottomOf(button);
        }
        EXPECT_LE(above, 250);
    });
}

} // namespace
} // namespace fernhop::freedesktop
