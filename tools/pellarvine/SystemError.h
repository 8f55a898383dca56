// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// Throws the CommandError for a failed call of the system: what it was about, and errno's text.
[[noreturn]] void throwSystemError(const QByteArray &subject, int error);
