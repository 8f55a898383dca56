// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>

class Progress;
class Signals;

/// One end of a pipeline: an open file descriptor, and its name for errors.
struct Stream
{
    int descriptor;
    QByteArray name;
};

/// What happens to the bytes on their way.
struct Transform
{
    std::function<QByteArray(QByteArrayView)> feed;
    std::function<QByteArray()> finalize;
};

/// Reads `source` to its end, and writes to `sink` what `transform` makes of it. Reading,
/// transforming and writing run on threads of their own, so that a file takes as long as the
/// slowest of the three alone; memory stays at about 12 MiB. Passes on what `transform` throws;
/// throws CommandError for a failed read or write and for an interruption. After a throw the
/// threads may still wait in a call of the system, so the caller must end the process.
void runPipeline(const Stream &source, const Stream &sink, Transform transform,
                 const Signals &signals, Progress &progress);
