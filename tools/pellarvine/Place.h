// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

/// Where a path leads.
struct Place
{
    /// One of the process's own descriptors, as for /dev/stdout and /proc/self/fd/1. To open that
    /// path would not do: it starts a file at its beginning, and fails for a socket.
    std::optional<int> descriptor;

    /// The path behind all symbolic links, which need not exist.
    QByteArray path;

    /// Whether there was a symbolic link in place of the file.
    bool isLink = false;
};

/// Follows the symbolic links of `path`. Throws CommandError if they lead in a circle.
Place placeOf(const QByteArray &path);
