#include "platform/linux/dialogs-qt/AlertDialog.h"

#include "platform/linux/dialogs-qt/ViewText.h"

#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace fernhop::freedesktop {

AlertDialog::AlertDialog(const ui::Alert &alert, const DialogHost &host)
    : answer(ui::alertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1) {
    setWindowTitle(toText(alert.messageText));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("org.fernhop.Fernhop")));
    auto *layout = new QVBoxLayout(this);
    constexpr int betweenParts = 12;
    layout->setSpacing(betweenParts);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(makeTexts(alert));
    if (alert.accessoryView) {
        views = new ViewWidgets(alert.accessoryView, host, this);
        layout->addWidget(views, 0, Qt::AlignHCenter);
    }
    layout->addWidget(makeButtons(alert));
    if (views)
        views->focusFirstField();
}

QWidget *AlertDialog::makeTexts(const ui::Alert &alert) {
    auto *box = new QWidget(this);
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    constexpr int iconSide = 48;
    const QIcon icon = windowIcon().isNull()
                           ? style()->standardIcon(QStyle::SP_MessageBoxInformation, nullptr, this)
                           : windowIcon();
    auto *picture = new QLabel(box);
    picture->setPixmap(icon.pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    row->addWidget(picture, 0, Qt::AlignTop);

    auto *texts = new QVBoxLayout;
    auto *message = new QLabel(toText(alert.messageText), box);
    QFont bold = message->font();
    bold.setBold(true);
    message->setFont(bold);
    auto *details = new QLabel(toText(alert.informativeText), box);
    for (QLabel *label : {message, details}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        texts->addWidget(label);
    }
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

} // namespace fernhop::freedesktop
