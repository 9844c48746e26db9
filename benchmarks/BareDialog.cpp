// The least that a Qt program must do to show a dialog.

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

int main(int count, char **arguments) {
    const QApplication application(count, arguments);
    QDialog dialog;
    QVBoxLayout layout(&dialog);
    QLabel label("A question");
    QPushButton button("Close");
    layout.addWidget(&label);
    layout.addWidget(&button);
    dialog.show();
    return QApplication::exec();
}
