// SPDX-License-Identifier: MIT
#include "SystemError.h"

#include "Command.h"

#include <cstring>

void throwSystemError(const QByteArray &subject, int error)
{
    throw CommandError(ExitStatus::systemError, subject + ": " + std::strerror(error));
}
