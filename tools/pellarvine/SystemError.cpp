// SPDX-License-Identifier: MIT
#include "SystemError.h"

#include "Command.h"

#include <system_error>

using namespace Qt::StringLiterals;

void throwSystemError(const QString &subject, int error)
{
    const std::string cause = std::generic_category().message(error);
    throw CommandError(ExitStatus::systemError,
                       subject + u": "_s + QString::fromLocal8Bit(cause.c_str()));
}
