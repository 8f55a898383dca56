// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QCoreApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

QString programPath(const QString &name)
{
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

Outcome runProgram(const QString &name, const QStringList &arguments, const QByteArray &input)
{
    constexpr int longestRun = 120'000; // milliseconds
    QProcess process;
    process.start(programPath(name), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(longestRun) || process.exitStatus() != QProcess::NormalExit)
        return { -1, process.readAllStandardOutput(), process.readAllStandardError() };
    return { process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError() };
}
