// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Text/NSAttributeMerger.h"
#include "Text/NSMutableAttributedString.h"

#include <QStringView>

namespace Pellarvine::detail {

/// Goes through a text once from left to right and keeps, restyles or drops one stretch after
/// another: any number of edits in one pass over units and runs. Places are those of the text as
/// it was.
///
///     AttributedStringRewriter rewriter(text); // "a **b** c"
///     rewriter.keep(2);
///     rewriter.drop(4);
///     rewriter.keep(5, bold);
///     rewriter.drop(7);
///     rewriter.finish(); // "a b c"
///
/// The kept units move up inside the buffer that they stand in, so that what lies ahead can still
/// be read, and nothing large is allocated. The text is in pieces until `finish()`.
class PELLARVINE_INTERNAL_EXPORT AttributedStringRewriter
{
public:
    explicit AttributedStringRewriter(NS::MutableAttributedString &text);
    Q_DISABLE_COPY_MOVE(AttributedStringRewriter)

    /// The text as it was, readable from the end of what was kept or dropped last.
    QStringView source() const { return { m_units, m_length }; }

    /// Keeps the units up to `end` as they are.
    void keep(qsizetype end);
    /// Keeps the units up to `end` and adds attributes to theirs.
    void keep(qsizetype end, const NS::Attributes &added);
    void drop(qsizetype end) { m_read = end; }
    /// Keeps the rest and puts the text together.
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

    // The runs move up inside their list as the units do. Since there may come to be more of them,
    // there is room between those that are written and those that are yet to be read.
    NS::AttributedString::Run *m_runs;
    qsizetype m_readRuns = 0;
    qsizetype m_writtenRuns = 0;
};

} // namespace Pellarvine::detail
