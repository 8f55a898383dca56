// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"
#include "Shared/PatternMatch.h"

#include <QString>

#include <memory>

namespace Pellarvine::detail {

/// The matches of an ICU regular expression in one text, from left to right.
class PELLARVINE_INTERNAL_EXPORT RegularExpression
{
public:
    /// Searches the first `length` units of `text`, which must outlive this object. Stops the
    /// process if the pattern does not compile.
    RegularExpression(const QString &pattern, QStringView text, qsizetype length);
    ~RegularExpression();
    Q_DISABLE_COPY_MOVE(RegularExpression)

    /// Finds the next match and says whether there is one. A search that outgrows ICU's stack, or
    /// takes seconds because the pattern backtracks without end, gives up with a warning: there
    /// is no next match then.
    bool findNext(PatternMatch &match);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine::detail
