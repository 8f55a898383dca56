// SPDX-License-Identifier: MIT
// Not API: the end of a container that another program may have made.
#pragma once

#include "Shared/Decryptor.h"

#include <optional>

namespace Pellarvine::detail {

/// As `Decryptor::finalize()`, which stops the process if the text under a right tag has a wrong
/// length or padding. This answers that with nothing.
PELLARVINE_PRIVATE_EXPORT std::optional<Data> finalizeIfWellFormed(Decryptor &decryptor);

} // namespace Pellarvine::detail
