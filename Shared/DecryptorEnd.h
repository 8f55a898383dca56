// SPDX-License-Identifier: MIT
// Not API: the end of a container that another program may have made.
#pragma once

#include "Shared/Decryptor.h"

#include <optional>

namespace Pellarvine::detail {

/// As `Decryptor::finalize()`, but returns nothing if the text has a valid tag and a wrong length
/// or padding. `Decryptor::finalize()` then aborts the process.
PELLARVINE_PRIVATE_EXPORT std::optional<Data> finalizeIfWellFormed(Decryptor &decryptor);

} // namespace Pellarvine::detail
