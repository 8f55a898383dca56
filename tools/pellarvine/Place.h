// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

/// The target of a path.
struct Place
{
    /// One of the process's own descriptors, as for /dev/stdout and /proc/self/fd/1. Opening that
    /// path is not the same: it would start a file at its beginning, and fail for a socket.
    std::optional<int> descriptor;

    /// The path after all symbolic links. It need not exist.
    QByteArray path;

    /// Whether the path was a symbolic link.
    bool isLink = false;
};

/// Follows the symbolic links of `path`. Throws CommandError if they lead in a circle.
Place placeOf(const QByteArray &path);
