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

/// The transformation of the bytes.
struct Transform
{
    std::function<QByteArray(QByteArrayView)> feed;
    std::function<QByteArray()> finalize;
};

/// Reads `source` to its end and writes the transformed bytes to `sink`. Reading, transforming and
/// writing have a thread each, so a file takes the time of the slowest of the three. Memory stays
/// at about 12 MiB. Passes on exceptions of `transform`. Throws CommandError for a failed read or
/// write and for an interruption. After an exception the threads may still be blocked in the
/// system, so the caller must end the process.
void runPipeline(const Stream &source, const Stream &sink, Transform transform,
                 const Signals &signals, Progress &progress);
