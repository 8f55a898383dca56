// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Text/NSAttributeMerger.h"
#include "Text/NSMutableAttributedString.h"

#include <QStringView>

namespace Pellarvine::detail {

/// Edits a text in one pass from left to right: keeps, restyles or drops one range after another.
/// Locations are those of the original text.
///
///     AttributedStringRewriter rewriter(text); // "a **b** c"
///     rewriter.keep(2);
///     rewriter.drop(4);
///     rewriter.keep(5, bold);
///     rewriter.drop(7);
///     rewriter.finish(); // "a b c"
///
/// Kept units move forward inside their buffer, so the rest can still be read and nothing large is
/// allocated. The text is not valid before `finish()`.
class PELLARVINE_INTERNAL_EXPORT AttributedStringRewriter
{
public:
    explicit AttributedStringRewriter(NS::MutableAttributedString &text);
    Q_DISABLE_COPY_MOVE(AttributedStringRewriter)

    /// The original text, readable behind the last range.
    QStringView source() const { return { m_units, m_length }; }

    /// Keeps the units up to `end`.
    void keep(qsizetype end);
    /// Keeps the units up to `end` and adds attributes.
    void keep(qsizetype end, const NS::Attributes &added);
    void drop(qsizetype end) { m_read = end; }
    /// Keeps the rest and completes the text.
    void finish();

private:
    template <bool isRestyled, typename Restyle>
    void move(qsizetype end, Restyle restyle);
    void makeRoom();

    NS::MutableAttributedString &m_text;
    AttributeMerger m_merger;
    QChar *m_units;
    qsizetype m_length;
    qsizetype m_read = 0;
    qsizetype m_written = 0;

    // Runs move forward inside their list too. Their number can grow, so there is a gap between the
    // written and the unread ones.
    NS::AttributedString::Run *m_runs;
    qsizetype m_readRuns = 0;
    qsizetype m_writtenRuns = 0;
};

} // namespace Pellarvine::detail
