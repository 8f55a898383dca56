// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"
#include "Shared/PatternMatch.h"

#include <QString>

#include <optional>

namespace Pellarvine::detail {

/// A regular expression of one of two shapes, in which every delimiter is a fixed text:
///
///     (opener)(.+?)(closer)
///     (opener)(.+?)(separator)(.+?)(closer)
///
/// Its matches are ICU's, found in time linear in the text. A matcher that tries one start after
/// another takes quadratic time for many openers without a closer.
class PELLARVINE_INTERNAL_EXPORT DelimiterPattern
{
public:
    /// Nothing if `regex` has another shape, or a part that only a regular-expression compiler
    /// understands.
    static std::optional<DelimiterPattern> recognized(QStringView regex);

    /// Finds the first match at or behind `from` and says whether there is one.
    bool find(QStringView text, qsizetype from, PatternMatch &match) const;

private:
    QString m_opener;
    QString m_separator; // empty in the first shape
    QString m_closer;
};

} // namespace Pellarvine::detail
