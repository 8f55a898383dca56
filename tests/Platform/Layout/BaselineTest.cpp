// SPDX-License-Identifier: MIT
#include "Layout/Baseline.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <gtest/gtest.h>

using NS::LayoutAttribute;

namespace Pellarvine::detail {

void PrintTo(const Baseline &baseline, std::ostream *stream)
{
    *stream << baseline.fraction << " * height + " << baseline.offset;
}

TEST(Baseline, a_label_has_its_lines_where_its_alignment_puts_them)
{
    QLabel label;
    label.setContentsMargins(0, 3, 0, 5);
    label.setMargin(2);
    const QFontMetricsF metrics(label.font());
    const Baseline centred { 0.5, (metrics.ascent() - metrics.descent()) / 2.0 };
    const Baseline atTop { 0.0, 5.0 + metrics.ascent() };
    const Baseline atBottom { 1.0, -7.0 - metrics.descent() };
    struct Row
    {
        Qt::Alignment alignment;
        bool wraps;
        Baseline first;
        Baseline last;
    };
    const Row rows[] = {
        { Qt::AlignVCenter, false, centred, centred },
        { Qt::AlignTop, false, atTop, atTop },
        { Qt::AlignBottom, false, atBottom, atBottom },
        { Qt::AlignVCenter, true, atTop, atBottom }, // wrapping text fills the height
    };
    for (const auto &[alignment, wraps, first, last] : rows) {
        label.setAlignment(alignment);
        label.setWordWrap(wraps);
        EXPECT_EQ(baselineOf(&label, LayoutAttribute::firstBaseline), first) << alignment << wraps;
        EXPECT_EQ(baselineOf(&label, LayoutAttribute::lastBaseline), last) << alignment << wraps;
    }
    label.setProperty("firstBaselineOffsetFromTop", 12);
    label.setProperty("lastBaselineOffsetFromBottom", 4);
    EXPECT_EQ(baselineOf(&label, LayoutAttribute::firstBaseline), (Baseline { 0.0, 12.0 }));
    EXPECT_EQ(baselineOf(&label, LayoutAttribute::lastBaseline), (Baseline { 1.0, -4.0 }));
}

template <typename Editor>
void expectBaselineWhereTheTextIs()
{
    Editor editor;
    editor.document()->setDocumentMargin(7);
    editor.setPlainText(QStringLiteral("One line"));
    editor.resize(200, 100);
    editor.ensurePolished();
    editor.show();
    const double top = editor.viewport()->y() + editor.cursorRect().top();
    const Baseline first = baselineOf(&editor, LayoutAttribute::firstBaseline);
    EXPECT_EQ(first.fraction, 0.0);
    EXPECT_NEAR(first.offset, top + QFontMetricsF(editor.font()).ascent(), 1.0);
    EXPECT_LT(baselineOf(&editor, LayoutAttribute::lastBaseline).offset, -7.0);
}

TEST(Baseline, a_text_editor_has_its_first_line_where_its_text_begins)
{
    expectBaselineWhereTheTextIs<QPlainTextEdit>();
    expectBaselineWhereTheTextIs<QTextEdit>();
}

} // namespace Pellarvine::detail
