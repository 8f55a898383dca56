// SPDX-License-Identifier: MIT
#pragma once

#include "Pipeline.h"

#include <memory>
#include <optional>
#include <sys/types.h>

class Signals;

/// Where a run's result goes. Destroying it without `commit()` leaves nothing behind.
class Output
{
public:
    virtual ~Output() = default;

    /// Where to write.
    virtual Stream stream() const = 0;

    /// Puts what was written in its place. Throws CommandError.
    virtual void commit() = 0;
};

/// When a stream, a FIFO or a device gets its bytes. A file appears whole in either case.
enum class Release {
    atOnce,
    onceCommitted, ///< from a temporary file without a name
};

/// The output of that name; "-" is standard output. `replaces` says whether a file may exist.
/// `mode` is the new file's; without one it is what the process gives new files. Throws
/// CommandError, for a terminal that would get bytes at once too, since they are no text.
std::unique_ptr<Output> openOutput(const QByteArray &path, Release release, bool replaces,
                                   std::optional<mode_t> mode, const Signals &signals);
