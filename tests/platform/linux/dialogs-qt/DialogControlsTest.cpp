#include "platform/linux/dialogs-qt/Looks.h"
#include "platform/linux/dialogs-qt/ShownDialogs.h"
#include "platform/linux/dialogs-qt/Widgets.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QToolTip>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

/// How each kind of control shows what the core says of it.
class DialogControlsTest : public ShownDialogs {
  protected:
    template <typename Widget>
    static Widget &widgetOf(AlertDialog &dialog, const View &view) {
        auto *widget = dynamic_cast<Widget *>(dialog.accessory()->widgetOf(view));
        if (!widget)
            throw std::runtime_error("the view has no such widget");
        return *widget;
    }

    static std::shared_ptr<TextField> label(const View &parent, std::size_t index) {
        return subview<TextField>(parent, index);
    }

    static int darkest(const QImage &image) {
        int lightness = 255;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                lightness = std::min(lightness, image.pixelColor(x, y).lightness());
        return lightness;
    }

    static void expectFont(const TextLabel &label, int pixels, QFont::Weight weight) {
        EXPECT_EQ(label.font().pixelSize(), pixels) << label.text().toStdString();
        EXPECT_EQ(label.font().weight(), weight) << label.text().toStdString();
    }

    /// One of the buttons of the contacts.
    static QPushButton &contact(AlertDialog &dialog, const View &root, std::size_t channel) {
        return widgetOf<QPushButton>(
            dialog, *subview<StackView>(*subview<StackView>(root, 0), channel + 1)->subviews[0]);
    }
};

TEST_F(DialogControlsTest, FieldsSayWhatTheyAreFor) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const View &) {
        EXPECT_EQ(dialog.findChild<QLineEdit *>()->placeholderText(), "搜索 App 名称或 Bundle ID");
    });
    open("showAddURLRuleDialog", [](AlertDialog &dialog, const View &root) {
        const auto model = subview<TextField>(*subview<StackView>(root, 0), 1);
        const auto &field = widgetOf<QLineEdit>(dialog, *model);
        EXPECT_EQ(field.placeholderText().toStdString(), model->placeholder);
        EXPECT_EQ(field.text(), "");
        EXPECT_FALSE(field.isClearButtonEnabled()) << "that is for searching";
    });
}

TEST_F(DialogControlsTest, LabelsHaveTheirFonts) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const View &root) {
        const auto texts = subview<StackView>(*subview<StackView>(root, 0), 1);
        expectFont(widgetOf<TextLabel>(dialog, *label(*texts, 0)), 17, QFont::DemiBold);
        expectFont(widgetOf<TextLabel>(dialog, *label(*texts, 1)), 12, QFont::Normal);
        expectFont(widgetOf<TextLabel>(dialog, *label(root, 3)), 12, QFont::Medium);
        expectFont(widgetOf<TextLabel>(dialog, *label(*root.subviews[5], 0)), 12, QFont::Normal);
    });
}

TEST_F(DialogControlsTest, LessImportantTextsArePaler) {
    stated = AppearanceName::aqua;
    open("showAddRuleDialog", [](AlertDialog &dialog, const View &root) {
        const auto texts = subview<StackView>(*subview<StackView>(root, 0), 1);
        const QColor ground = dialog.palette().color(QPalette::Window),
                     ink = dialog.palette().color(QPalette::WindowText);
        const int secondary = over(ground, ink, 0.75).lightness();
        EXPECT_LT(darkest(look(widgetOf<QWidget>(dialog, *label(*texts, 0)))), secondary - 10);
        for (const auto &view : {label(*texts, 1), label(root, 3)}) {
            EXPECT_GE(darkest(look(widgetOf<QWidget>(dialog, *view))), secondary - 3);
            EXPECT_LT(darkest(look(widgetOf<QWidget>(dialog, *view))), secondary + 60);
        }
        auto &list = *dialog.findChild<QListView *>();
        const QRect row = list.visualRect(list.model()->index(0, 0)); // a name, and below it an identifier
        const QRect name(row.left() + 34, row.top(), 200, row.height() / 2),
            identifier(row.left() + 34, row.center().y() + 4, 200, row.height() / 2 - 6);
        const int tertiary = over(list.palette().color(QPalette::Base), ink, 0.6).lightness();
        EXPECT_LT(darkest(look(*list.viewport(), name)), tertiary - 10);
        EXPECT_GE(darkest(look(*list.viewport(), identifier)), tertiary - 3);
    });
}

TEST_F(DialogControlsTest, ListHasARoundPaleBorder) {
    stated = AppearanceName::aqua;
    open("showAddRuleDialog", [](AlertDialog &dialog, const View &root) {
        const QColor ground = dialog.palette().color(QPalette::Window),
                     base = dialog.palette().color(QPalette::Base),
                     ink = dialog.palette().color(QPalette::WindowText);
        const Frame frame = dialog.accessory()->frameOf(*root.subviews[2]);
        const QImage list =
            look(*dialog.accessory(), QRectF(frame.x, frame.y, frame.width, frame.height).toRect());
        constexpr double separator = 0.35, strength = 0.45;
        const QColor line = over(over(ground, base, 0.5), ink, separator * strength);
        EXPECT_LE(distance(at(list, 0, 125), line), 10);
        EXPECT_LE(distance(at(list, 250, 0), line), 10);
        EXPECT_LE(distance(at(list, 2, 125), base), 2) << "it is one point wide";
        for (const double inCorner : {0.0, 1.0, 2.0}) // the curve of 12 points crosses the diagonal at 3.5
            EXPECT_LE(distance(at(list, inCorner, inCorner), ground), 2);
        EXPECT_LE(distance(at(list, 6, 6), base), 2);
    });
}

TEST_F(DialogControlsTest, PopUpShowsBrowsersWithTheirIcons) {
    open("showAddURLRuleDialog", [](AlertDialog &dialog, const View &) {
        const auto *box = dialog.findChild<QComboBox *>();
        ASSERT_EQ(box->count(), 2);
        for (int index = 0; index < 2; ++index)
            EXPECT_FALSE(box->itemIcon(index).isNull());
        EXPECT_EQ(box->iconSize(), QSize(18, 18));
        EXPECT_EQ(box->itemText(0), "browser.a");
        EXPECT_EQ(box->itemText(1), "browser.b");
        EXPECT_EQ(box->currentIndex(), 1);
        EXPECT_TRUE(box->isEnabled());
    });
}

TEST_F(DialogControlsTest, BrowsersOfTheSameNameAreToldApart) {
    desktop.applications.installApplication("/Applications/c.app", "browser.c", "browser.b",
                                            {"http", "https"});
    controller->refreshBrowsers();
    open("showAddURLRuleDialog", [](AlertDialog &dialog, const View &) {
        auto *box = dialog.findChild<QComboBox *>();
        ASSERT_EQ(box->count(), 3);
        box->setCurrentIndex(2);
        Q_EMIT box->activated(2);
        dialog.findChild<QLineEdit *>()->setText("docs");
        Q_EMIT dialog.findChild<QLineEdit *>()->textEdited("docs");
        press(dialog, "保存");
    });
    EXPECT_EQ(controller->settings().urlRules().at(0).browserBundleID, controller->browsers().at(2).bundleID);
}

TEST_F(DialogControlsTest, WithoutBrowsersThePopUpIsEmptyAndDisabled) {
    for (const char *name : {"browser.a", "browser.b"})
        desktop.applications.remove("/Applications/" + std::string(name) + ".app");
    controller->refreshBrowsers();
    const auto unusable = [](AlertDialog &dialog, const View &) {
        const auto *box = dialog.findChild<QComboBox *>();
        EXPECT_EQ(box->count(), 0);
        EXPECT_FALSE(box->isEnabled());
        EXPECT_NE(dialog.focusWidget(), box);
    };
    open("showAddURLRuleDialog", unusable);
    open("showAddRuleDialog", unusable);
    open(
        "editRuleFromWindow:",
        [&](AlertDialog &dialog, const View &root) {
            unusable(dialog, root);
            EXPECT_EQ(dialog.focusWidget(), buttonNamed(dialog, "保存")) << "for the keyboard to begin at";
        },
        "com.example.a");
}

TEST_F(DialogControlsTest, SummaryFollowsThePickedBrowserAndHasRoom) {
    const std::string name = "A" + std::string(200, 'w');
    desktop.applications.installApplication("/Applications/Alpha.app", "com.example.a", name);
    controller->refreshBrowsers();
    open("showAddRuleDialog", [&](AlertDialog &dialog, const View &root) {
        const auto model = label(*root.subviews[5], 0);
        auto &hint = widgetOf<TextLabel>(dialog, *model);
        const int oneLine = hint.height(), note = widgetOf<QWidget>(dialog, *root.subviews[5]).height();
        dialog.findChild<QListView *>()->selectAll();
        auto *box = dialog.findChild<QComboBox *>();
        box->setCurrentIndex(0);
        Q_EMIT box->activated(0);
        EXPECT_TRUE(model->stringValue().ends_with("browser.a")) << model->stringValue();
        EXPECT_EQ(hint.text().toStdString(), model->stringValue());
        EXPECT_GE(hint.height(), 2 * oneLine - 2);
        EXPECT_LE(hint.height(), 2 * oneLine + 2) << "two lines are the most";
        EXPECT_EQ(widgetOf<QWidget>(dialog, *root.subviews[5]).height() - note, hint.height() - oneLine);
    });
}

TEST_F(DialogControlsTest, TextThatIsCutShowsWholeUnderThePointer) {
    const std::string name = "A <b>" + std::string(3000, 'w');
    desktop.applications.installApplication("/Applications/Alpha.app", "com.example.a", name);
    controller->refreshBrowsers();
    open(
        "editRuleFromWindow:",
        [&](AlertDialog &dialog, const View &root) {
            const auto rest = [&](std::size_t index) {
                auto &shown = widgetOf<TextLabel>(dialog, *subview<StackView>(root, 0)->subviews[index]);
                QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), shown.mapToGlobal(QPoint(1, 1)));
                QApplication::sendEvent(&shown, &event);
                return QToolTip::text();
            };
            EXPECT_EQ(rest(2), "") << "nothing of it is cut";
            EXPECT_TRUE(rest(0).contains("A &lt;b&gt;www"));
            QToolTip::hideText();
        },
        "com.example.a");
}

TEST_F(DialogControlsTest, DialogsOpenInTheStatedAppearance) {
    for (const auto appearance : {AppearanceName::darkAqua, AppearanceName::aqua}) {
        stated = appearance;
        open("showAddURLRuleDialog", [&](AlertDialog &dialog, const View &) {
            EXPECT_EQ(at(look(dialog), 2, 2).lightness() < 128, appearance == AppearanceName::darkAqua);
        });
    }
}

TEST_F(DialogControlsTest, AmpersandsOfButtonsShow) {
    auto button = std::make_shared<Button>();
    button->title = "Q&A";
    button->frameSize = Size{100, 30};
    run({"message", "", {"close"}, button}, [&](AlertDialog &dialog, const View &) {
        EXPECT_EQ(widgetOf<QPushButton>(dialog, *button).text(), "Q&&A");
        EXPECT_EQ(widgetOf<QPushButton>(dialog, *button).accessibleName(), "Q&A");
    });
}

TEST_F(DialogControlsTest, ContactsStandAtTheLeftOfTheirButtons) {
    stated = AppearanceName::aqua;
    open("showFeedbackDialog", [](AlertDialog &dialog, const View &root) {
        for (std::size_t channel = 0; channel < 4; ++channel) {
            auto &button = contact(dialog, root, channel);
            const QRect inside = button.rect().adjusted(4, 6, -4, -6);
            const auto isInk = [](const QColor &color) { return color.lightness() < 110; };
            const QRectF content = boxOf(look(button, inside), isInk);
            EXPECT_LT(content.left(), 12) << channel;
            EXPECT_GT(content.left(), 1) << channel;
            EXPECT_LT(content.right(), 290) << channel;
            EXPECT_GT(content.width(), 60) << channel;
            const QRect besideIcon(29, 6, 4, button.height() - 12);
            EXPECT_TRUE(boxOf(look(button, besideIcon), isInk).isEmpty()) << channel;
        }
    });
}

TEST_F(DialogControlsTest, ButtonWithTheKeyboardLooksSoFromEndToEnd) {
    stated = AppearanceName::aqua;
    open("showFeedbackDialog", [](AlertDialog &dialog, const View &root) {
        auto &button = contact(dialog, root, 1);
        const QColor without = at(look(button), button.width() - 8, button.height() / 2);
        activate(dialog);
        button.setFocus(Qt::TabFocusReason);
        dialog.setAttribute(Qt::WA_KeyboardFocusChange); // as the Tab key does
        const QImage focused = look(button);
        const QColor atEnd = at(focused, button.width() - 8, button.height() / 2);
        EXPECT_GT(distance(atEnd, without), 5);
        EXPECT_LE(distance(at(focused, 5, button.height() / 2), atEnd), 8);
        for (const double edge : {0.0, button.width() - 1.0})
            EXPECT_GT(distance(at(focused, edge, button.height() / 2), atEnd), 60);
    });
}

} // namespace
} // namespace fernhop::freedesktop
