// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QCoreApplication>
#include <QProcess>

#include <unistd.h>

using namespace Qt::StringLiterals;

QString programPath(const QString &name)
{
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

Outcome runProgram(const QString &name, const QStringList &arguments, const QByteArray &input,
                   int standardOutput)
{
    constexpr int longestRun = 120'000; // milliseconds
    QProcess process;
    if (standardOutput >= 0)
        process.setChildProcessModifier([=] { dup2(standardOutput, STDOUT_FILENO); });
    process.start(programPath(name), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(longestRun) || process.exitStatus() != QProcess::NormalExit)
        return { -1, process.readAllStandardOutput(), process.readAllStandardError() };
    return { process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError() };
}
