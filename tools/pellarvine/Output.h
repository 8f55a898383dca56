// SPDX-License-Identifier: MIT
#pragma once

#include "Pipeline.h"

#include <memory>
#include <optional>
#include <sys/types.h>

class Signals;

/// The target of a run. Destroying it without `commit()` leaves no file.
class Output
{
public:
    virtual ~Output() = default;

    /// The descriptor to write to.
    virtual Stream stream() const = 0;

    /// Completes the file. Throws CommandError.
    virtual void commit() = 0;
};

/// When a stream, a FIFO or a device receives its bytes. A file always appears when it is complete.
enum class Release {
    atOnce,
    onceCommitted, ///< from a temporary file without a name
};

/// Opens an output; "-" is standard output. `replaces` allows an existing file. `mode` is the mode
/// of the new file; without it, the process's default. Throws CommandError, also for a terminal
/// that would receive binary data at once.
std::unique_ptr<Output> openOutput(const QByteArray &path, Release release, bool replaces,
                                   std::optional<mode_t> mode, const Signals &signals);
