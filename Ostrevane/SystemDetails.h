// SPDX-License-Identifier: MIT
// Not API: the machine, as a bug report describes it.
#pragma once

#include <QStringList>

namespace Pellarvine::detail {

/// Qt, the operating system, and the kernel with the machine, one line each. In English, for the
/// readers of reports. Any thread.
QStringList systemDetails();

} // namespace Pellarvine::detail
