#include "platform/linux/dialogs-qt/ShownDialogs.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
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

TEST_F(DialogUseTest, ControlsHaveNamesForScreenReaders) {
    const auto nameOf = [](const QWidget *widget) {
        auto *spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
        return spoken ? spoken->text(QAccessible::Name).toStdString() : "nothing is spoken";
    };
    // Its name is its value; beside that, its label is told.
    const auto labelOf = [](QComboBox *popup) {
        const auto related = QAccessible::queryAccessibleInterface(popup)->relations(QAccessible::Label);
        return related.isEmpty() ? "" : related[0].first->text(QAccessible::Name).toStdString();
    };
    open("showAddRuleDialog", [&](AlertDialog &dialog, const ui::View &) {
        EXPECT_EQ(nameOf(dialog.findChild<QLineEdit *>()), "搜索 App 名称或 Bundle ID");
        EXPECT_EQ(nameOf(dialog.findChild<QListView *>()),
                  "浏览器 App 已自动排除，可按住 Command 选择多个。");
        EXPECT_EQ(labelOf(dialog.findChild<QComboBox *>()), "目标浏览器");
        EXPECT_EQ(nameOf(buttonNamed(dialog, "取消")), "取消");
    });
    open("showAddURLRuleDialog", [&](AlertDialog &dialog, const ui::View &) {
        EXPECT_EQ(nameOf(dialog.findChild<QLineEdit *>()), "URL 匹配规则");
        EXPECT_EQ(labelOf(dialog.findChild<QComboBox *>()), "目标浏览器");
    });
    open(
        "editRuleFromWindow:",
        [&](AlertDialog &dialog, const ui::View &) {
            EXPECT_EQ(labelOf(dialog.findChild<QComboBox *>()), "Alpha");
        },
        "com.example.a");
    open("showFeedbackDialog", [&](AlertDialog &dialog, const ui::View &) {
        for (const auto *button : dialog.accessory()->findChildren<QPushButton *>())
            EXPECT_NE(nameOf(button).find("  "), std::string::npos) << nameOf(button);
    });
}

TEST_F(DialogUseTest, KeyboardWalksThroughTheDialogFromTopToBottom) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        std::vector<QWidget *> walked{dialog.focusWidget()};
        while (walked.size() < 6) {
            QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
            QApplication::sendEvent(dialog.focusWidget(), &tab);
            walked.push_back(dialog.focusWidget());
        }
        EXPECT_EQ(walked,
                  (std::vector<QWidget *>{dialog.findChild<QLineEdit *>(), dialog.findChild<QListView *>(),
                                          dialog.findChild<QComboBox *>(), buttonNamed(dialog, "添加"),
                                          buttonNamed(dialog, "取消"), dialog.findChild<QLineEdit *>()}));
    });
}

TEST_F(DialogUseTest, PopUpHasTheKeyboardWhereThereIsNoField) {
    open(
        "editRuleFromWindow:",
        [](AlertDialog &dialog, const ui::View &) {
            EXPECT_EQ(dialog.focusWidget(), dialog.findChild<QComboBox *>());
            pressKey(*dialog.findChild<QComboBox *>(), Qt::Key_Return);
        },
        "com.example.a");
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.a", "browser.b"}}));
    open("showFeedbackDialog", [](AlertDialog &dialog, const ui::View &) {
        EXPECT_EQ(dialog.focusWidget(), buttonNamed(dialog, "关闭"));
    });
}

TEST_F(DialogUseTest, ReturnInTheListAdds) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        auto *list = dialog.findChild<QListView *>();
        select(*list, {2});
        pressKey(*list, Qt::Key_Return);
    });
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.c", "browser.b"}}));
}

TEST_F(DialogUseTest, ClearingTheSearchShowsEverythingAgain) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        auto *search = dialog.findChild<QLineEdit *>();
        auto *list = dialog.findChild<QListView *>();
        type(*search, "no such application");
        EXPECT_EQ(list->model()->rowCount(), 0);
        auto *clear = search->findChild<QAbstractButton *>();
        ASSERT_TRUE(clear);
        clear->click();
        EXPECT_EQ(list->model()->rowCount(), 4);
    });
}

TEST_F(DialogUseTest, ListLooksAsItIsMeantTo) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        const auto *list = dialog.findChild<QListView *>();
        EXPECT_FALSE(list->alternatingRowColors());
        EXPECT_EQ(list->frameShape(), QFrame::NoFrame);
        EXPECT_EQ(list->selectionMode(), QAbstractItemView::ExtendedSelection);
        EXPECT_EQ(list->sizeHintForRow(0), 40);
    });
}

TEST_F(DialogUseTest, ButtonsAreInTheDesktopsOrder) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const ui::View &) {
        const auto *box = dialog.findChild<QDialogButtonBox *>();
        EXPECT_EQ(box->buttonRole(buttonNamed(dialog, "添加")), QDialogButtonBox::AcceptRole);
        EXPECT_EQ(box->buttonRole(buttonNamed(dialog, "取消")), QDialogButtonBox::RejectRole);
    });
}

TEST_F(DialogUseTest, LongPatternsStayWhole) {
    const std::string pattern(200'000, 'x');
    storeURLRules({{"1", pattern, "browser.a"}});
    open(
        "editURLRuleFromWindow:",
        [&](AlertDialog &dialog, const ui::View &) {
            auto *field = dialog.findChild<QLineEdit *>();
            EXPECT_EQ(static_cast<std::size_t>(field->text().size()), pattern.size());
            pressKey(*field, Qt::Key_End);
            type(*field, "y");
            press(dialog, "保存");
        },
        "1");
    EXPECT_EQ(controller->settings().urlRules().at(0).pattern, pattern + "y");
}

TEST_F(DialogUseTest, PatternThatIsNotTouchedKeepsItsBytes) {
    storeURLRules({{"1", "a\nb\x01 \xF0\x9F\x98\x80", "browser.a"}});
    const auto before = controller->settings().urlRules();
    open(
        "editURLRuleFromWindow:", [](AlertDialog &dialog, const ui::View &) { press(dialog, "保存"); }, "1");
    EXPECT_EQ(controller->settings().urlRules(), before);
}

TEST_F(DialogUseTest, TokenIsUsedOnceByTheDialogThatComesToTheFront) {
    presenter().setActivationToken("first");
    open("showFeedbackDialog", [this](AlertDialog &dialog, const ui::View &) {
        dialog.grab(); // it is on the screen
        QApplication::processEvents();
        EXPECT_EQ(timesShown, 1);
        EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "first");
        qunsetenv("XDG_ACTIVATION_TOKEN"); // as the toolkit does that uses it
        EXPECT_TRUE(presenter().bringToFront());
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
        EXPECT_EQ(timesShown, 2);
    });
    EXPECT_FALSE(presenter().bringToFront());
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
