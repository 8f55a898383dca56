// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QStringView>

namespace Pellarvine::detail {

/// How many user-perceived characters (extended grapheme clusters) a text has, by ICU's rules.
/// Linear; nearly free for texts in which each unit is a character.
PELLARVINE_INTERNAL_EXPORT qsizetype graphemeClusterCount(QStringView text);

} // namespace Pellarvine::detail
