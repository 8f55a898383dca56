// SPDX-License-Identifier: MIT
// Not API: the text in the machine field of the system's identification.
#pragma once

#include "Base/Global.h"

#include <QString>

#include <array>
#include <cstdint>

namespace Pellarvine::detail {

/// The field, zeros where nothing stands.
using MachineField = std::array<std::int8_t, 256>;

/// Every byte but the zeros, also behind them, as the character of that code. A negative byte stops
/// the process.
PELLARVINE_INTERNAL_EXPORT QString deviceModel(const MachineField &machine);

} // namespace Pellarvine::detail
