#include "platform/linux/dialogs-qt/Looks.h"
#include "platform/linux/dialogs-qt/ShownDialogs.h"

#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <algorithm>
#include <string>
#include <vector>

namespace fernhop::freedesktop {
namespace {

using Rows = std::vector<int>;

/// The list of applications, used with the mouse and looked at.
class DialogListTest : public ShownDialogs {
  protected:
    static QPoint middleOf(const QListView &list, int row) {
        return list.visualRect(list.model()->index(row, 0)).center();
    }

    // By way of the window, as the user's come: Qt 6.8 counts a Shift+click from row to row only then.
    static void drag(QListView &list, QPoint from, QPoint to,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mousePress(list.viewport(), Qt::LeftButton, modifiers, from);
        QTest::mouseEvent(QTest::MouseMove, list.viewport(), Qt::LeftButton, modifiers, to);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, modifiers, to);
    }

    static void click(QListView &list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, middleOf(list, row));
    }

    static void pressKey(QWidget &widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&widget, &event);
    }

    static Rows selected(const QListView &list) {
        Rows rows;
        for (const auto &index : list.selectionModel()->selectedIndexes())
            rows.push_back(index.row());
        std::ranges::sort(rows);
        return rows;
    }

    static QImage row(QListView &list, int index) {
        return look(*list.viewport(), list.visualRect(list.model()->index(index, 0)));
    }

    void withList(const std::function<void(QListView &)> &user) {
        open("showAddRuleDialog",
             [&](AlertDialog &dialog, const ui::View &) { user(*dialog.findChild<QListView *>()); });
    }
};

TEST_F(DialogListTest, MouseSelectsSeveral) {
    withList([](QListView &list) {
        click(list, 1);
        EXPECT_EQ(selected(list), Rows{1});
        click(list, 3, Qt::ShiftModifier);
        EXPECT_EQ(selected(list), (Rows{1, 2, 3}));
        click(list, 2, Qt::ControlModifier);
        EXPECT_EQ(selected(list), (Rows{1, 3}));
        click(list, 0, Qt::ControlModifier);
        EXPECT_EQ(selected(list), (Rows{0, 1, 3}));
        drag(list, middleOf(list, 0), middleOf(list, 1));
        EXPECT_EQ(selected(list), (Rows{0, 1}));
    });
}

TEST_F(DialogListTest, TremblingHandKeepsWhatIsSelected) {
    withList([](QListView &list) {
        click(list, 0);
        const QPoint place = middleOf(list, 2);
        drag(list, place, place + QPoint(1, 1), Qt::ControlModifier);
        EXPECT_EQ(selected(list), (Rows{0, 2}));
    });
}

TEST_F(DialogListTest, DraggingWithControlAddsToWhatIsSelected) {
    withList([](QListView &list) {
        click(list, 0);
        drag(list, middleOf(list, 2), middleOf(list, 3), Qt::ControlModifier);
        EXPECT_EQ(selected(list), (Rows{0, 2, 3}));
    });
}

TEST_F(DialogListTest, ShiftWithArrowsGrowsAndShrinksTheSelection) {
    withList([](QListView &list) {
        list.setFocus();
        pressKey(list, Qt::Key_Home);
        for (int step = 0; step < 3; ++step)
            pressKey(list, Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(selected(list), (Rows{0, 1, 2, 3}));
        pressKey(list, Qt::Key_Up, Qt::ShiftModifier);
        EXPECT_EQ(selected(list), (Rows{0, 1, 2}));
    });
}

TEST_F(DialogListTest, ClickSendsTheListsAction) {
    // It rewrites the summary, which nothing else does here.
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &root) {
        const auto hint = subview<ui::TextField>(*root.subviews[5], 0);
        click(*dialog.findChild<QListView *>(), 1);
        hint->setStringValue("stale");
        click(*dialog.findChild<QListView *>(), 1);
        EXPECT_EQ(hint->stringValue(), "将已选择的 Beta 浏览器改成：browser.b");
    });
}

TEST_F(DialogListTest, RowOfTheKeyboardIsSeen) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        auto &list = *dialog.findChild<QListView *>();
        const QImage plain = row(list, 1);
        activate(dialog);
        list.setFocus();
        list.setCurrentIndex(list.model()->index(1, 0));
        const QImage selectedRow = row(list, 1);
        pressKey(list, Qt::Key_Down, Qt::ControlModifier); // on, without selecting
        EXPECT_EQ(selected(list), Rows{1});
        EXPECT_GT(distance(at(row(list, 1), 100, 1.5), at(selectedRow, 100, 1.5)), 60)
            << "the mark went from the selected row";
        const QImage marked = row(list, 2);
        EXPECT_GT(distance(at(marked, 100, 1.5), at(plain, 100, 1.5)), 60) << "to the next one";
        for (const double x : {3.0, 20.0, marked.width() / marked.devicePixelRatio() - 4})
            EXPECT_EQ(at(marked, x, 5), at(plain, x, 5)) << "but for the line it looks as before";
        list.clearFocus();
        EXPECT_LT(distance(at(row(list, 2), 100, 1.5), at(plain, 100, 1.5)), 10);
    });
}

TEST_F(DialogListTest, WhatSelectedRowsSayIsReadable) {
    withList([](QListView &list) {
        click(list, 0);
        const QColor ground = at(row(list, 0), 300, 20);
        EXPECT_EQ(ground, list.palette().color(QPalette::Active, QPalette::Highlight));
        const QRectF text = boxOf(row(list, 0), [&](const QColor &color) {
            return distance(color, list.palette().color(QPalette::Active, QPalette::HighlightedText)) < 30;
        });
        EXPECT_GT(text.width(), 20);
    });
}

TEST_F(DialogListTest, RowsThatTheSearchFindsAreSeen) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        auto &list = *dialog.findChild<QListView *>();
        auto &search = *dialog.findChild<QLineEdit *>();
        const QRect first = list.visualRect(list.model()->index(0, 0)),
                    second = list.visualRect(list.model()->index(1, 0));
        const QImage alpha = look(*list.viewport(), first), beta = look(*list.viewport(), second);
        EXPECT_NE(alpha, beta);
        const auto type = [&](const QString &text) {
            search.setText(text);
            Q_EMIT search.textEdited(text);
            QApplication::processEvents(); // the list places its rows when there is nothing else to do
        };
        type("beta");
        EXPECT_EQ(look(*list.viewport(), first), beta);
        const QColor base = list.palette().color(QPalette::Base);
        EXPECT_TRUE(boxOf(look(*list.viewport(), second), [&](const QColor &color) {
                        return color != base;
                    }).isEmpty());
        type("");
        EXPECT_EQ(look(*list.viewport(), first), alpha);
    });
}

TEST_F(DialogListTest, RowThatIsCutShowsWholeUnderThePointer) {
    const std::string name = "A <b>" + std::string(300, 'w');
    desktop.applications.installApplication("/Applications/Alpha.app", "com.example.a", name);
    controller->refreshBrowsers();
    withList([](QListView &list) {
        const auto restOn = [&](int row) {
            const QPoint place = middleOf(list, row);
            QHelpEvent event(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
            QApplication::sendEvent(list.viewport(), &event);
            return QToolTip::text();
        };
        EXPECT_EQ(restOn(1), "") << "nothing of it is cut";
        const QString whole = restOn(0);
        EXPECT_TRUE(whole.contains("A &lt;b&gt;www")) << whole.toStdString();
        EXPECT_TRUE(whole.contains("www, com.example.a")) << whole.toStdString();
        QToolTip::hideText();
    });
}

TEST_F(DialogListTest, ListScrollsAsFarAsItsRowsGo) {
    constexpr int more = 30, rowHeight = 40;
    for (int number = 0; number < more; ++number)
        desktop.installApplication("more." + std::to_string(number));
    controller->refreshBrowsers();
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        auto &list = *dialog.findChild<QListView *>();
        QApplication::processEvents();
        EXPECT_EQ(list.verticalScrollBar()->maximum(), (more + 4) * rowHeight - list.viewport()->height());
        EXPECT_TRUE(list.verticalScrollBar()->isVisible());
        EXPECT_FALSE(list.horizontalScrollBar()->isVisible());
        Q_EMIT dialog.findChild<QLineEdit *>()->textEdited("beta");
        QApplication::processEvents();
        EXPECT_EQ(list.verticalScrollBar()->maximum(), 0);
    });
}

TEST_F(DialogListTest, WithoutApplicationsItIsEmpty) {
    for (const char *name : {"Alpha", "Beta", "Chat", "Delta"})
        desktop.applications.remove("/Applications/" + std::string(name) + ".app");
    controller->refreshBrowsers();
    withList([](QListView &list) {
        EXPECT_EQ(list.model()->rowCount(), 0);
        list.setFocus();
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Space, Qt::Key_Return})
            pressKey(list, key);
    });
    EXPECT_EQ(desktop.sound.beeps, 1);
    EXPECT_TRUE(controller->settings().appRules().empty());
}

} // namespace
} // namespace fernhop::freedesktop
