#include "platform/linux/dialogs-qt/QtAlerts.h"

#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/linux/dialogs-qt/Widgets.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

// The library is a static one, and what is declared for this may stand in no namespace.
static void loadResources() {
    Q_INIT_RESOURCE(OwnIcon);
}

namespace fernhop::freedesktop {

namespace {

QIcon ownIcon() {
    loadResources();
    return QIcon::fromTheme(QStringLiteral("org.fernhop.Fernhop"), QIcon(QStringLiteral(":/own-icon.png")));
}

QWidget *makeOwnPicture(QWidget *parent) {
    constexpr int iconSide = 48;
    auto *picture = new PictureWidget(
        [icon = ownIcon()](QPainter &painter, const QRectF &area) { paintIcon(painter, icon, area); },
        parent);
    picture->setFixedSize(iconSide, iconSide);
    return picture;
}

} // namespace

AlertDialog::AlertDialog(const ui::Alert &alert, const ViewContext &context)
    : answer(ui::alertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1) {
    setWindowTitle(toText(alert.messageText));
    setWindowIcon(ownIcon());
    auto *layout = new QVBoxLayout(this);
    constexpr int betweenParts = 12;
    layout->setSpacing(betweenParts);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    auto *texts = makeTexts(alert);
    layout->addWidget(texts);
    if (alert.accessoryView) {
        views = new ViewWidgets(alert.accessoryView, context, this);
        texts->setMaximumWidth(views->width());
        layout->addWidget(views, 0, Qt::AlignHCenter);
    }
    layout->addWidget(makeButtons(alert));
    if (!views || !views->focusFirstInput())
        focusConfirmingButton();
}

void AlertDialog::paintEvent(QPaintEvent *event) {
    QDialog::paintEvent(event);
    // What is painted first goes to the screen when this returns.
    if (auto tell = std::exchange(shown, nullptr))
        QTimer::singleShot(0, this, std::move(tell));
}

QWidget *AlertDialog::makeTexts(const ui::Alert &alert) {
    auto *box = new QWidget(this);
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(makeOwnPicture(box), 0, Qt::AlignTop);

    constexpr int mostLines = 4; // of a text with a name in it that somebody else chose
    auto *texts = new QVBoxLayout;
    QFont bold = font();
    bold.setBold(true);
    auto *message = new TextLabel(toText(alert.messageText), {bold, ui::Color{}, mostLines}, box);
    auto *details = new TextLabel(toText(alert.informativeText), {font(), ui::Color{}, mostLines}, box);
    texts->addWidget(message);
    texts->addWidget(details);
    row->addLayout(texts, 1);
    setAccessibleName(message->text());
    setAccessibleDescription(details->text());
    return box;
}

QWidget *AlertDialog::makeButtons(const ui::Alert &alert) {
    auto *box = new QDialogButtonBox(this);
    for (std::size_t index = 0; index < alert.buttons.size(); ++index) {
        const bool confirms = index == 0;
        auto *button = box->addButton(toText(alert.buttons[index]),
                                      confirms ? QDialogButtonBox::AcceptRole : QDialogButtonBox::RejectRole);
        button->setDefault(confirms);
        connect(button, &QPushButton::clicked, this, [this, index] {
            answer = ui::alertFirstButtonReturn + static_cast<int>(index);
            done(answer);
        });
    }
    return box;
}

void AlertDialog::focusConfirmingButton() {
    for (auto *button : findChildren<QPushButton *>())
        if (button->isDefault())
            button->setFocus();
}

QtAlerts::QtAlerts(ViewContext viewContext, std::function<void()> shown)
    : context(std::move(viewContext)), onShown(std::move(shown)) {}

bool QtAlerts::bringToFront() {
    if (!open)
        return false;
    open->setWindowState(open->windowState() & ~Qt::WindowMinimized);
    bringForward(*open);
    return true;
}

void QtAlerts::bringForward(AlertDialog &dialog) {
    // The toolkit takes the token from here, and from nowhere else.
    if (!token.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(std::exchange(token, {})));
    dialog.raise();
    dialog.activateWindow();
    onShown();
}

int QtAlerts::runModal(const ui::Alert &alert) {
    adoptAppearance(appearance);
    AlertDialog dialog(alert, context);
    open = &dialog;
    dialog.whenShown([&] { bringForward(dialog); }); // compositors turn down what they do not show yet
    dialog.exec();
    return dialog.response();
}

void QtAlerts::dismiss() {
    if (open)
        open->reject();
}

void QtAlerts::setAppearance(std::optional<ui::AppearanceName> newAppearance) {
    appearance = newAppearance;
    adoptAppearance(appearance);
}

} // namespace fernhop::freedesktop
