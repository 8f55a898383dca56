// SPDX-License-Identifier: MIT
#include "Command.h"
#include "Commands.h"

#include <string_view>

namespace {

void run(int argc, char **argv)
{
    QByteArrayList arguments;
    for (int index = 2; index < argc; ++index)
        arguments.append(argv[index]);
    const std::string_view name = argc > 1 ? argv[1] : "";
    if (name == "color")
        runColor(arguments);
    else if (name == "markup")
        runMarkup(arguments);
    else
        throw CommandError(ExitStatus::badUsage, "see pellarvine --help");
}

} // namespace

int main(int argc, char **argv)
{
    return exitStatusOf([&] { run(argc, argv); });
}
