// SPDX-License-Identifier: MIT
#include "Base/Failure.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace Pellarvine::detail {

namespace {

// One write for the whole line, so that lines of several threads do not mix.
void writeLine(std::FILE *stream, std::string_view message)
{
    std::string line(message);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

} // namespace

void fatalError(std::string_view message)
{
    writeLine(stderr, message);
    std::abort();
}

void printWarning(std::string_view message)
{
    writeLine(stdout, message);
}

void printWarning(const std::exception &error)
{
    printWarning(std::string("Warning: ") + error.what());
}

} // namespace Pellarvine::detail
