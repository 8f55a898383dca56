// SPDX-License-Identifier: MIT
// For message_is_spoken.sh: shows each line of its input as a message.
#include <pellarvine/Pellarvine/PopoverMessage.h>

#include <QApplication>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTextStream>

#include <unistd.h>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Folder of notes"));
    window.resize(400, 300);
    QPushButton button(QStringLiteral("Delete"), &window);
    button.setGeometry(150, 200, 100, 30);
    window.show();
    window.activateWindow();
    button.setFocus();

    QTextStream input(stdin);
    const QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &window, [&] {
        const QString line = input.readLine();
        if (line.isNull())
            QCoreApplication::quit();
        else
            Pellarvine::PopoverMessage::showMessage(line, &button);
    });
    return QApplication::exec();
}
