// SPDX-License-Identifier: MIT
#include "Command.h"

#include "SystemError.h"

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Opens the standard descriptors that are closed. Otherwise a file could get such a number, and
// output for the terminal would go into it. Like closed ones, they fail when they are used.
void holdStandardDescriptors()
{
    for (const int descriptor : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO }) {
        if (fcntl(descriptor, F_GETFD) < 0)
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

} // namespace

CommandLine::CommandLine(const char *command, const QString &description)
    : m_command(command)
{
    setApplicationDescription(description);
}

void CommandLine::parse(const QByteArrayList &arguments)
{
    const QCommandLineOption help({ u"h"_s, u"help"_s }, u"Show this help."_s);
    addOption(help);
    // One character for each byte; value() and operands() convert back. The parser looks at ASCII
    // only. Its first argument is the name of the program.
    const QString program = u"pellarvine "_s + QString::fromLatin1(m_command);
    QStringList line { program };
    for (const QByteArray &argument : arguments)
        line.append(QString::fromLatin1(argument));
    if (!QCommandLineParser::parse(line))
        throw CommandError(ExitStatus::badUsage, errorText().toLatin1());
    if (isSet(help)) {
        // The parser's own text begins with a name for a program that it does not know.
        const QString text = helpText();
        const QString usage = u"Usage: "_s + program + u' ' + text.sliced(text.indexOf(u'['));
        std::fputs(qPrintable(usage), stdout);
        if (std::fflush(stdout) != 0)
            throwSystemError("standard output", errno);
        std::exit(int(ExitStatus::success));
    }
    if (operands().contains(QByteArray()))
        throw CommandError(ExitStatus::badUsage, m_command + ": an argument is empty");
}

QByteArray CommandLine::value(const QCommandLineOption &option) const
{
    return QCommandLineParser::value(option).toLatin1();
}

QByteArrayList CommandLine::values(const QCommandLineOption &option) const
{
    QByteArrayList values;
    for (const QString &value : QCommandLineParser::values(option))
        values.append(value.toLatin1());
    return values;
}

QByteArrayList CommandLine::operands() const
{
    QByteArrayList files;
    for (const QString &argument : positionalArguments())
        files.append(argument.toLatin1());
    return files;
}

int exitStatusOf(const std::function<void()> &run)
{
    holdStandardDescriptors();
    std::setlocale(LC_ALL, ""); // for the system's messages
    try {
        run();
        // Flushing the buffer can still fail: on a full disk, or on a closed pipe.
        if (std::fflush(stdout) != 0 || std::ferror(stdout))
            throwSystemError("standard output", errno);
        return int(ExitStatus::success);
    } catch (const CommandError &error) {
        std::fprintf(stderr, "pellarvine: %s\n", error.what());
        std::fflush(stdout);
        // Not exit(): a thread may still wait in a read or a write, with static objects in use.
        std::_Exit(int(error.status()));
    }
}
