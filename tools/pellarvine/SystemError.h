// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// Throws a CommandError for a failed system call, with its subject and the text of errno.
[[noreturn]] void throwSystemError(const QByteArray &subject, int error);
