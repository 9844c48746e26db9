#include "platform/linux/dialogs-qt/ShownDialogs.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <algorithm>

namespace fernhop::freedesktop {
namespace {

class DialogUseTest : public ShownDialogs {
  protected:
    /// As the user types, each key by itself.
    static void type(QLineEdit &field, const QString &text) {
        for (const QChar character : text) {
            QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
            QApplication::sendEvent(&field, &key);
        }
    }

    static void pressKey(QWidget &widget, Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }

    static void select(QListView &list, const std::vector<int> &rows) {
        list.selectionModel()->clearSelection();
        for (const int row : rows)
            list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
    }

    static std::vector<int> selected(const QListView &list) {
        std::vector<int> rows;
        for (const auto &index : list.selectionModel()->selectedIndexes())
            rows.push_back(index.row());
        std::ranges::sort(rows);
        return rows;
    }

    static bool shows(AlertDialog &dialog, const QString &text) {
        const auto labels = dialog.findChildren<QLabel *>();
        return std::ranges::any_of(labels, [&](const QLabel *label) { return label->text() == text; });
    }
};

TEST_F(DialogUseTest, AlertShowsItsTextsAndButtons) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        EXPECT_TRUE(shows(dialog, "添加 App 浏览器规则"));
        EXPECT_TRUE(shows(dialog, "选择一个或多个 App，然后为它们指定打开链接时使用的浏览器。"));
        EXPECT_TRUE(buttonNamed(dialog, "添加")->isDefault());
        EXPECT_FALSE(buttonNamed(dialog, "取消")->isDefault());
        EXPECT_EQ(dialog.accessibleName(), "添加 App 浏览器规则");
    });
}

TEST_F(DialogUseTest, FieldHasTheKeyboardFirst) {
    open("showAddURLRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        EXPECT_EQ(dialog.focusWidget(), dialog.findChild<QLineEdit *>());
    });
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        EXPECT_EQ(dialog.focusWidget(), dialog.findChild<QLineEdit *>());
    });
}

TEST_F(DialogUseTest, URLRuleIsTypedAndSavedByReturn) {
    open("showAddURLRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        type(*dialog.findChild<QLineEdit *>(), " docs.example ");
        pressKey(*dialog.findChild<QLineEdit *>(), Qt::Key_Return);
    });
    const auto rules = controller->settings().urlRules();
    ASSERT_EQ(rules.size(), 1u);
    EXPECT_EQ(rules[0].pattern, "docs.example");
    EXPECT_EQ(rules[0].browserBundleID, "browser.b");
}

TEST_F(DialogUseTest, EscapeCancels) {
    open("showAddURLRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        type(*dialog.findChild<QLineEdit *>(), "docs.example");
        pressKey(dialog, Qt::Key_Escape);
    });
    EXPECT_TRUE(controller->settings().urlRules().empty());
    EXPECT_EQ(desktop.sound.beeps, 0);
}

TEST_F(DialogUseTest, PickedBrowserIsStored) {
    open(
        "editRuleFromWindow:",
        [](AlertDialog &dialog, const ui::View &) {
            auto *box = dialog.findChild<QComboBox *>();
            EXPECT_EQ(box->count(), 2);
            EXPECT_EQ(box->currentText(), "browser.b");
            box->setFocus();
            pressKey(*box, Qt::Key_Up);
            EXPECT_EQ(box->currentText(), "browser.a");
            press(dialog, "保存");
        },
        "com.example.a");
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.a", "browser.a"}}));
}

TEST_F(DialogUseTest, SelectionSurvivesTheSearch) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        auto *list = dialog.findChild<QListView *>();
        auto *search = dialog.findChild<QLineEdit *>();
        EXPECT_EQ(list->model()->rowCount(), 4);
        EXPECT_EQ(list->model()->index(1, 0).data(Qt::AccessibleTextRole).toString(), "Beta, org.sample.b");
        select(*list, {0, 1});
        EXPECT_TRUE(shows(dialog, "将已选择的 Alpha、Beta 浏览器改成：browser.b"));
        type(*search, "com.ex");
        EXPECT_EQ(list->model()->rowCount(), 2);
        EXPECT_EQ(selected(*list), std::vector<int>{0});
        select(*list, {0, 1});
        EXPECT_TRUE(shows(dialog, "将已选择的 Alpha、Beta 等 3 个 App 浏览器改成：browser.b"));
        search->selectAll();
        pressKey(*search, Qt::Key_Backspace);
        EXPECT_EQ(selected(*list), (std::vector<int>{0, 1, 2}));
        press(dialog, "添加");
    });
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.a", "browser.b"},
                                                           {"com.example.c", "browser.b"},
                                                           {"org.sample.b", "browser.b"}}));
}

TEST_F(DialogUseTest, ContactButtonOpensAndLeavesTheDialogOpen) {
    open("showFeedbackDialog", [this](AlertDialog &dialog, const ui::View &root) {
        const auto row = subview<ui::StackView>(*subview<ui::StackView>(root, 0), 2);
        auto *button = dynamic_cast<QPushButton *>(dialog.accessory()->widgetOf(*row->subviews[0]));
        ASSERT_TRUE(button);
        button->click();
        EXPECT_EQ(desktop.workspace.openedByDefault.size(), 1u);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(buttonNamed(dialog, "关闭")->isDefault());
    });
}

TEST_F(DialogUseTest, TreeMayOutliveItsWidgets) {
    std::shared_ptr<ui::View> root;
    open("showAddURLRuleDialog",
         [&](AlertDialog &, const ui::View &view) { root = subview<ui::StackView>(view, 0); });
    auto field = subview<ui::TextField>(*root, 1);
    field->setStringValue("later");
    EXPECT_EQ(field->stringValue(), "later");
}

} // namespace
} // namespace fernhop::freedesktop
