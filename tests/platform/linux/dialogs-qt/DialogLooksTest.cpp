#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/dialogs-qt/Looks.h"
#include "platform/linux/dialogs-qt/ShownDialogs.h"
#include "support/Folders.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAbstractItemView>
#include <QPixmap>
#include <QScreen>
#include <functional>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

const QColor red(Qt::red);

class DialogLooksTest : public ShownDialogs {
  protected:
    std::string picture(const std::string &path, int side,
                        const std::function<QColor(int, int)> &colorAt) const {
        home.write(path, "");
        QImage image(side, side, QImage::Format_ARGB32);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                image.setPixelColor(x, y, colorAt(x, y));
        image.save(QString::fromStdString(path), "PNG");
        return path;
    }
    std::string redPicture(const std::string &path, int side) const {
        return picture(path, side, [](int, int) { return red; });
    }

    /// The first row of the list, for an application with this icon.
    QImage firstRow(const std::string &icon) {
        iconsOfEntries["/Applications/Alpha.app"] = icon;
        QImage row;
        open("showAddRuleDialog", [&](AlertDialog &dialog, const View &) {
            auto *list = dialog.findChild<QAbstractItemView *>();
            row = look(*list->viewport(), list->visualRect(list->model()->index(0, 0)));
        });
        return row;
    }

    /// Whether a row shows something in the place of its icon.
    static bool showsIcon(const QImage &row) {
        const QColor ground = at(row, 3, 20);
        const QRectF seen = boxOf(row.copy(QRectF(0, 0, 30 * row.devicePixelRatio(), row.height()).toRect()),
                                  [&](const QColor &color) { return distance(color, ground) > 40; });
        return seen.width() > 10 && seen.height() > 10;
    }

    support::TemporaryHome home;
};

TEST_F(DialogLooksTest, RowShowsItsIconAt22Points) {
    for (const int side : {16, 24, 256}) {
        const QImage row = firstRow(redPicture(home.root() + "/icon.png", side));
        EXPECT_EQ(row.height(), 40 * row.devicePixelRatio());
        EXPECT_EQ(boxOf(row, [](const QColor &color) { return distance(color, red) < 60; }),
                  QRectF(6, 9, 22, 22))
            << side;
    }
}

TEST_F(DialogLooksTest, IconsAreSharpOnDenseScreens) {
    presenter();
    const double ratio = QApplication::primaryScreen()->devicePixelRatio();
    const int side = static_cast<int>(22 * ratio);
    const auto check = [](int x, int y) { return (x + y) % 2 == 0 ? QColor(Qt::red) : QColor(Qt::blue); };
    const QImage row = firstRow(picture(home.root() + "/icon.png", side, check));
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            ASSERT_EQ(row.pixelColor(x + static_cast<int>(6 * ratio), y + static_cast<int>(9 * ratio)),
                      check(x, y))
                << x << ' ' << y;
}

TEST_F(DialogLooksTest, NamesOfRowsStayBesideTheirIcons) {
    const std::string arabic = "متصفح البريد", endless(3000, 'w');
    for (const std::string &name : {arabic, endless, "A\n" + endless}) {
        desktop.applications.installApplication("/Applications/Alpha.app", "com.example.a", name);
        controller->refreshBrowsers();
        QImage row;
        open("showAddRuleDialog", [&](AlertDialog &dialog, const View &) {
            auto *list = dialog.findChild<QAbstractItemView *>();
            const auto named = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole,
                                                    QStringLiteral("com.example.a"), 1, Qt::MatchContains);
            ASSERT_EQ(named.size(), 1);
            list->scrollTo(named[0]);
            row = look(*list->viewport(), list->visualRect(named[0]));
        });
        constexpr double textLeft = 6 + 22 + 10, sideInset = 6;
        const double ratio = row.devicePixelRatio();
        const int iconEnd = static_cast<int>(30 * ratio);
        const QRect beside(iconEnd, 0, row.width() - iconEnd, row.height());
        const QRectF text = boxOf(row.copy(beside), [&](const QColor &color) {
                                return distance(color, at(row, 3, 20)) > 60;
                            }).translated(30, 0);
        EXPECT_NEAR(text.left(), textLeft, 3) << name.substr(0, 30);
        EXPECT_LE(text.right(), row.width() / ratio - sideInset);
        EXPECT_LT(text.height(), 36) << name.substr(0, 30);
    }
}

TEST_F(DialogLooksTest, RowIsNeverWithoutAnIcon) {
    home.write(home.root() + "/broken.png", "no picture");
    ASSERT_EQ(mkfifo((home.root() + "/fifo.png").c_str(), 0600), 0);
    for (const std::string &icon : {std::string(), std::string("no-such-icon"), std::string("../no/such"),
                                    std::string("\xff\xfe"), std::string("/no/such/icon.png"), home.root(),
                                    home.root() + "/broken.png", home.root() + "/fifo.png"})
        EXPECT_TRUE(showsIcon(firstRow(icon))) << icon;
    stated = AppearanceName::darkAqua;
    EXPECT_TRUE(showsIcon(firstRow("no-such-icon")));
}

TEST_F(DialogLooksTest, IconsAreFoundInThemesAndAmongThePixmaps) {
    const support::ScopedEnvironment environment(home.environment());
    presenter();
    redPicture(home.systemData() + "/pixmaps/old-icon.png", 24);
    redPicture(home.data() + "/icons/hicolor/24x24/apps/theme-icon.png", 24);
    home.write(home.systemData() + "/icons/hicolor/index.theme",
               "[Icon Theme]\nName=Hicolor\nDirectories=24x24/apps\n[24x24/apps]\nSize=24\n");
    useAllIconPlaces();
    for (const char *icon : {"old-icon", "theme-icon"})
        EXPECT_EQ(at(firstRow(icon), 17, 20), red) << icon;
}

TEST_F(DialogLooksTest, BadgeAndNoteAreTintedByTheAccent) {
    for (const auto appearance : {AppearanceName::aqua, AppearanceName::darkAqua}) {
        stated = appearance;
        open("showAddRuleDialog", [](AlertDialog &dialog, const View &root) {
            const QColor ground = dialog.palette().color(QPalette::Window),
                         accent = dialog.palette().color(QPalette::Active, QPalette::Highlight);
            const auto box = [&](const View &view) {
                const Frame frame = dialog.accessory()->frameOf(view);
                return look(*dialog.accessory(),
                            QRectF(frame.x, frame.y, frame.width, frame.height).toRect());
            };
            const QImage badge = box(*subview<View>(*subview<StackView>(root, 0), 0));
            EXPECT_LE(distance(at(badge, 15, 3), over(ground, accent, 0.12)), 2);
            const QImage note = box(*subview<View>(root, 5));
            EXPECT_LE(distance(at(note, 250, 3), over(ground, accent, 0.08)), 2);
            for (const QImage &corners : {badge, note}) // round ones: 9 and 10 points
                EXPECT_LE(distance(at(corners, 1, 1), ground), 2);
            // Where the curve of a corner begins, the colour reaches the edge.
            EXPECT_LE(distance(at(badge, 10, 0), over(ground, accent, 0.12)), 4);
            EXPECT_LE(distance(at(note, 11, 0), over(ground, accent, 0.08)), 4);
            const QRectF symbol =
                boxOf(badge, [&](const QColor &color) { return distance(color, accent) < 40; });
            EXPECT_GT(symbol.width(), 4) << "the symbol, in the accent";
        });
    }
}

TEST_F(DialogLooksTest, OpenDialogFollowsTheAppearance) {
    open("showAddRuleDialog", [](AlertDialog &dialog, const View &root) {
        auto *title =
            dialog.accessory()->widgetOf(*subview<StackView>(*subview<StackView>(root, 0), 1)->subviews[0]);
        ASSERT_TRUE(title);
        const auto isLight = [](const QColor &color) { return color.lightness() > 190; };
        const auto isInk = [](const QColor &color) { return color.lightness() < 70; };
        EXPECT_TRUE(isLight(at(look(dialog), 2, 2)));
        EXPECT_FALSE(boxOf(look(*title), isInk).isEmpty());
        presenter().setAppearance(AppearanceName::darkAqua);
        EXPECT_TRUE(isInk(at(look(dialog), 2, 2)));
        EXPECT_FALSE(boxOf(look(*title), isLight).isEmpty());
        presenter().setAppearance(AppearanceName::aqua);
        EXPECT_TRUE(isLight(at(look(dialog), 2, 2)));
    });
}

TEST_F(DialogLooksTest, AlertShowsFernhopsIcon) {
    open("showFeedbackDialog", [](AlertDialog &dialog, const View &) {
        EXPECT_FALSE(dialog.windowIcon().isNull());
        const QRectF green = boxOf(look(dialog).copy(0, 0, 80, 80), [](const QColor &color) {
            return color.green() > color.red() + 30 && color.green() > color.blue() + 10;
        });
        EXPECT_GT(green.width() * look(dialog).devicePixelRatio(), 35);
    });
}

TEST_F(DialogLooksTest, ContactButtonsShowTheImagesThatComeWithFernhop) {
    desktop.applications.resources = support::sourceFolder() + "/resources";
    for (const char *name : {"ContactEmail", "X", "discord", "redbook"})
        desktop.applications.addPath(desktop.applications.resources + "/" + name + ".png");
    open("showFeedbackDialog", [](AlertDialog &dialog, const View &root) {
        for (std::size_t row = 1; row <= 4; ++row) {
            const auto model = subview<Button>(*subview<StackView>(*subview<StackView>(root, 0), row), 0);
            ASSERT_TRUE(std::holds_alternative<ImageFile>(model->image->source));
            auto *button = dynamic_cast<QPushButton *>(dialog.accessory()->widgetOf(*model));
            EXPECT_EQ(button->iconSize(), QSize(18, 18));
            const QImage icon = button->icon().pixmap(QSize(18, 18), 2).toImage();
            EXPECT_EQ(icon.size(), QSize(36, 36)) << "as sharp as the screen is";
            const QRectF drawn = boxOf(icon.convertToFormat(QImage::Format_ARGB32),
                                       [](const QColor &color) { return color.alpha() > 0; });
            EXPECT_GT(drawn.width() * icon.devicePixelRatio(), 18) << row;
        }
    });
}

TEST_F(DialogLooksTest, NoTextIsCut) {
    const auto whole = [](AlertDialog &dialog, const View &) {
        for (const auto *label : dialog.findChildren<QLabel *>())
            EXPECT_GE(label->height(), label->heightForWidth(label->width())) << label->text().toStdString();
        for (const auto *button : dialog.findChildren<QPushButton *>())
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
    };
    for (const char *selector : {"showAddRuleDialog", "showAddURLRuleDialog", "showFeedbackDialog"})
        open(selector, whole);
    open("editRuleFromWindow:", whole, "com.example.a");
}

TEST_F(DialogLooksTest, LongNamesStayWithinTheirDialogs) {
    for (const std::string &name : {std::string(3000, 'w'), "A " + std::string(3000, 'w') + " word\nline"}) {
        desktop.applications.installApplication("/Applications/Alpha.app", "com.example.a", name);
        desktop.applications.installApplication("/Applications/browser.b.app", "browser.b", name,
                                                {"http", "https"});
        controller->refreshBrowsers();
        const auto inside = [](AlertDialog &dialog, const View &) {
            EXPECT_LE(dialog.width(), 560);
            EXPECT_LE(dialog.height(), 700);
            for (QWidget *widget : dialog.accessory()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
                EXPECT_TRUE(dialog.accessory()->rect().contains(widget->geometry()));
                EXPECT_GT(widget->height(), 10);
            }
        };
        open("editRuleFromWindow:", inside, "com.example.a");
        open("showAddURLRuleDialog", inside);
        open("showAddRuleDialog", [&](AlertDialog &dialog, const View &root) {
            dialog.findChild<QAbstractItemView *>()->selectAll();
            inside(dialog, root);
        });
    }
}

} // namespace
} // namespace fernhop::freedesktop
