// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QStringView>

namespace Pellarvine::detail {

/// Counts the user-perceived characters (extended grapheme clusters) of a text by ICU's rules.
/// Linear; nearly free for a text below U+0200 without carriage returns, where each unit is a
/// character.
class PELLARVINE_INTERNAL_EXPORT GraphemeClusterCounter
{
public:
    /// May be called again after units have been taken out of the text, but not after others have
    /// come in: what was found out about its units is remembered.
    qsizetype count(QStringView text);

private:
    bool m_isPlain = false;
};

} // namespace Pellarvine::detail
