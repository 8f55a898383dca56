// SPDX-License-Identifier: MIT
#include "Command.h"

#include "SystemError.h"

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

void parse(QCommandLineParser &parser, const QString &name, const QStringList &arguments)
{
    const QCommandLineOption help({ u"h"_s, u"help"_s }, u"Show this help."_s);
    parser.addOption(help);
    // The parser takes the first argument for the program's name.
    const QString program = u"pellarvine "_s + name;
    if (!parser.parse(QStringList { program } + arguments))
        throw CommandError(ExitStatus::badUsage, parser.errorText());
    if (parser.isSet(help)) {
        // The parser's own text begins with a name for a program that it does not know.
        const QString text = parser.helpText();
        const QString usage = u"Usage: "_s + program + u' ' + text.sliced(text.indexOf(u'['));
        std::fputs(qPrintable(usage), stdout);
        std::exit(int(ExitStatus::success));
    }
}

int exitStatusOf(const std::function<void()> &run)
{
    std::setlocale(LC_ALL, ""); // for the system's messages
    try {
        run();
        // What is still in the buffer may meet a full disk or a closed pipe.
        if (std::fflush(stdout) != 0)
            throwSystemError(u"standard output"_s, errno);
        return int(ExitStatus::success);
    } catch (const CommandError &error) {
        std::fprintf(stderr, "pellarvine: %s\n", error.what());
        std::fflush(stdout);
        // Not exit(): a thread may still wait in a read or a write, with static objects in use.
        std::_Exit(int(error.status()));
    }
}
