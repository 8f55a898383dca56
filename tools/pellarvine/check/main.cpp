// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"

#include <QApplication>

int main(int argc, char **argv)
{
    return exitStatusOf([&] {
        // Build machines have no screen, and nothing is shown.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // The error of the library is clearer than the messages of Qt about a form.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        int count = 1; // Qt takes no options
        const QApplication application(count, argv);
        QByteArrayList arguments;
        for (int index = 2; index < argc; ++index)
            arguments.append(argv[index]);
        runCheck(arguments);
    });
}
