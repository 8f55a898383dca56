// SPDX-License-Identifier: MIT
#pragma once

#include "Pipeline.h"

#include <QString>

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

/// A file written beside its place and renamed over it. `mode` is the new file's; without one it
/// is what the process gives new files. Throws CommandError if `path` exists and is not to be
/// replaced.
std::unique_ptr<Output> makeFileOutput(const QString &path, bool replaces,
                                       std::optional<mode_t> mode);

/// Standard output, written at once.
std::unique_ptr<Output> makeStreamOutput();

/// Standard output, written by `commit()` from a temporary file without a name.
std::unique_ptr<Output> makeSpooledOutput(const Signals &signals);
