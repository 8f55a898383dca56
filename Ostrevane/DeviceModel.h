// SPDX-License-Identifier: MIT
// Not API: the text in the machine field of the system's identification.
#pragma once

#include "Base/Global.h"

#include <QString>

#include <array>
#include <cstdint>

namespace Pellarvine::detail {

/// The field `machine` of uname(), filled with zeros.
using MachineField = std::array<std::int8_t, 256>;

/// Each byte that is not zero, even after a zero, as the character of that code. A negative byte
/// aborts the process.
PELLARVINE_INTERNAL_EXPORT QString deviceModel(const MachineField &machine);

} // namespace Pellarvine::detail
