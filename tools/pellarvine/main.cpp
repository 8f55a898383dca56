// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"
#include "Signals.h"
#include "SystemError.h"

#include <pellarvine/Platform/Version.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <unistd.h>

namespace {

struct Command
{
    const char *name;
    const char *summary;
    void (*run)(const QByteArrayList &arguments); // null if another program runs it
    const char *program = nullptr; // the name of that program
};

constexpr Command commands[] = {
    { "seal", "encrypt a file under a passphrase", &runSeal },
    { "open", "decrypt a sealed file", &runOpen },
    { "digest", "print checksums of files", &runDigest },
    { "new", "write a small program to begin with", &runNew },
    { "color", "show hexadecimal colors", nullptr, "pellarvine-text" },
    { "markup", "turn markup into styled text", nullptr, "pellarvine-text" },
    { "check", "check interface files and storyboards", nullptr, "pellarvine-check" },
};

void printHelp(std::FILE *stream)
{
    std::fputs("Usage: pellarvine COMMAND [OPTIONS] ...\n\nCommands:\n", stream);
    for (const Command &command : commands)
        std::fprintf(stream, "  %-8s %s\n", command.name, command.summary);
    std::fputs("\nOptions:\n"
               "  -h, --help     Show this help; 'pellarvine COMMAND --help' shows a command's.\n"
               "  -v, --version  Show the version.\n",
               stream);
}

// Executes a program that loads the libraries for drawing, fonts or widgets. It is found relative
// to this one, so both may be moved together.
[[noreturn]] void become(const char *name, char **arguments)
{
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        throwSystemError("/proc/self/exe", error.value());
    const std::filesystem::path program =
            (self.parent_path() / PELLARVINE_HELPERS / name).lexically_normal();
    execv(program.c_str(), arguments);
    throwSystemError(program.c_str(), errno);
}

void run(int argc, char **argv)
{
    if (argc < 2) {
        printHelp(stderr);
        std::exit(int(ExitStatus::badUsage));
    }
    const std::string_view name = argv[1];
    if (name == "-h" || name == "--help") {
        printHelp(stdout);
        return;
    }
    if (name == "-v" || name == "--version") {
        std::printf("pellarvine %s\n", reinterpret_cast<const char *>(PellarvineVersionString));
        return;
    }
    const auto command =
            std::find_if(std::begin(commands), std::end(commands),
                         [&](const Command &candidate) { return name == candidate.name; });
    if (command == std::end(commands)) {
        throw CommandError(ExitStatus::badUsage,
                           "no command '" + QByteArray(argv[1]) + "'; see pellarvine --help");
    }
    if (!command->run)
        become(command->program, argv);
    QByteArrayList arguments;
    for (int index = 2; index < argc; ++index)
        arguments.append(argv[index]);
    command->run(arguments);
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return exitStatusOf([&] { run(argc, argv); });
    } catch (const Interrupted &) {
        Signals::deliver();
        std::_Exit(int(ExitStatus::systemError)); // a debugger may have suppressed the signal
    }
}
