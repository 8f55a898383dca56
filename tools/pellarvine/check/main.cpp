// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"

#include <QApplication>

int main(int argc, char **argv)
{
    return exitStatusOf([&] {
        // Nothing is shown, and a machine that builds has no screen.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // What Qt has to say about a form, the error says better.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        int count = 1; // Qt takes no options
        const QApplication application(count, argv);
        QByteArrayList arguments;
        for (int index = 2; index < argc; ++index)
            arguments.append(argv[index]);
        runCheck(arguments);
    });
}
