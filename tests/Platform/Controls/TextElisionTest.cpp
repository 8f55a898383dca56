// SPDX-License-Identifier: MIT
#include "Controls/TextElision.h"

#include "Text/NSMutableAttributedString.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using NS::AttributedString;
using Pellarvine::detail::elidedLine;
using Pellarvine::detail::elidedLines;
using Pellarvine::detail::LineFits;

namespace {

// A line fits if it has at most `units` UTF-16 units.
LineFits atMost(qsizetype units)
{
    return [units](const AttributedString &line) {
        return line.length() <= units;
    };
}

} // namespace

TEST(TextElision, keeps_the_longest_part_that_fits)
{
    const QString family =
            u"ab\U0001F468‍\U0001F469‍\U0001F467cd"_s; // the family has eight units
    const struct
    {
        QString line;
        Qt::TextElideMode mode;
        qsizetype room;
        QString expected;
    } rows[] = {
        { u"abcdefgh"_s, Qt::ElideRight, 5, u"abcd…"_s },
        { u"abcdefgh"_s, Qt::ElideLeft, 5, u"…efgh"_s },
        { u"abcdefgh"_s, Qt::ElideMiddle, 5, u"ab…gh"_s },
        { u"abcdefgh"_s, Qt::ElideMiddle, 4, u"ab…h"_s },
        { u"abcdefgh"_s, Qt::ElideRight, 1, u"…"_s },
        { u"abcdefgh"_s, Qt::ElideRight, 0, u"…"_s },
        { u""_s, Qt::ElideRight, 5, u"…"_s },
        { u"one two"_s, Qt::ElideRight, 5, u"one…"_s },
        { u"one two"_s, Qt::ElideLeft, 5, u"…two"_s },
        { u"one  two"_s, Qt::ElideMiddle, 7, u"one…two"_s },
        { family, Qt::ElideRight, 10, u"ab…"_s },
        { family, Qt::ElideLeft, 10, u"…cd"_s },
    };
    for (const auto &row : rows) {
        EXPECT_EQ(elidedLine(AttributedString(row.line), row.mode, atMost(row.room)).string(),
                  row.expected)
                << qPrintable(row.line) << ' ' << row.mode << ' ' << row.room;
    }
}

TEST(TextElision, cuts_each_line_that_is_too_long_and_no_other)
{
    const AttributedString text(u"short\n\nmuch too long\nlast\n"_s);
    EXPECT_EQ(elidedLines(text, Qt::ElideRight, atMost(6)).string(), u"short\n\nmuch…\nlast\n"_s);
    EXPECT_EQ(elidedLines(text, Qt::ElideRight, atMost(20)), text);
}

TEST(TextElision, the_ellipsis_looks_like_the_text_before_it)
{
    NS::Attributes marked { { u"mark"_s, 1 } };
    NS::MutableAttributedString text(u"ab"_s, marked);
    text.append(AttributedString(u"cdef"_s));
    const AttributedString cut = elidedLine(text, Qt::ElideRight, atMost(3));
    EXPECT_EQ(cut, AttributedString(u"ab…"_s, marked));
}
