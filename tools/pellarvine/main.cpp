// SPDX-License-Identifier: MIT
#include "Command.h"
#include "SystemError.h"

#include <pellarvine/Platform/Version.h>

#include <QCoreApplication>
#include <QGuiApplication>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

void printHelp(std::FILE *stream)
{
    std::fputs("Usage: pellarvine COMMAND [OPTIONS] ...\n\nCommands:\n", stream);
    for (const Command &command : commands())
        std::fprintf(stream, "  %-8s %s\n", command.name, command.summary);
    std::fputs("\nOptions:\n"
               "  -h, --help     Show this help; 'pellarvine COMMAND --help' shows a command's.\n"
               "  -v, --version  Show the version.\n",
               stream);
}

int run(const QStringList &arguments)
{
    const QString name = arguments.value(1);
    if (name == "-h"_L1 || name == "--help"_L1) {
        printHelp(stdout);
        return 0;
    }
    if (name == "-v"_L1 || name == "--version"_L1) {
        std::printf("pellarvine %s\n", reinterpret_cast<const char *>(PellarvineVersionString));
        return 0;
    }
    if (name.isEmpty()) {
        printHelp(stderr);
        return int(ExitStatus::badUsage);
    }
    const Command *const command = commandNamed(name);
    if (!command) {
        throw CommandError(ExitStatus::badUsage,
                           u"no command '%1'; see pellarvine --help"_s.arg(name));
    }
    command->run(arguments.sliced(2));
    return int(ExitStatus::success);
}

// The tool shows no window, and so needs no display for its fonts.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv)
{
    const Command *const command =
            argc > 1 ? commandNamed(QString::fromLocal8Bit(argv[1])) : nullptr;
    if (!command || !command->needsFonts)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char **argv)
{
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    QCoreApplication::setApplicationName(u"pellarvine"_s);
    try {
        const int status = run(QCoreApplication::arguments());
        // What is still in the buffer may meet a full disk or a closed pipe.
        if (std::fflush(stdout) != 0)
            throwSystemError(u"standard output"_s, errno);
        return status;
    } catch (const CommandError &error) {
        std::fprintf(stderr, "pellarvine: %s\n", error.what());
        std::fflush(stdout);
        // Not exit(): a thread may still wait in a read or a write, with static objects in use.
        std::_Exit(int(error.status()));
    }
}
