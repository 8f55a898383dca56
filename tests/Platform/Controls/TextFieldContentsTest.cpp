// SPDX-License-Identifier: MIT
#include "Controls/TextFieldContents.h"

#include <QSignalSpy>
#include <QTextCursor>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using NS::AttributedString;
using Pellarvine::detail::TextFieldContents;
using Pellarvine::detail::TextFieldFormat;

namespace {

AttributedString marked(const QString &string)
{
    return AttributedString(string, { { u"mark"_s, 1 } });
}

} // namespace

TEST(TextFieldContents, an_edit_takes_the_attributes_around_it)
{
    TextFieldContents contents;
    contents.setText(marked(u"one two"_s));
    contents.size(-1); // makes the layout: a document without one reports no changes
    QSignalSpy edits(&contents, &TextFieldContents::edited);
    QTextCursor cursor(&contents.document());
    cursor.setPosition(3);
    cursor.insertText(u" and\na half"_s);
    EXPECT_EQ(contents.text(), marked(u"one and\na half two"_s));
    EXPECT_EQ(edits.count(), 1);
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    EXPECT_TRUE(contents.text().isEmpty());
    EXPECT_EQ(edits.count(), 2);
}

TEST(TextFieldContents, a_change_by_the_program_is_no_edit)
{
    TextFieldContents contents;
    contents.size(-1);
    QSignalSpy edits(&contents, &TextFieldContents::edited);
    const AttributedString text = marked(u"first\r\nsecond"_s); // a document drops the \r
    contents.setText(text);
    TextFieldFormat format = contents.format();
    format.alignment = Qt::AlignRight;
    format.wraps = false;
    contents.setFormat(format);
    contents.refill();
    EXPECT_EQ(contents.text(), text);
    EXPECT_EQ(edits.count(), 0);
}

TEST(TextFieldContents, is_elided_where_a_line_or_the_lines_have_no_room)
{
    TextFieldContents contents;
    contents.setText(AttributedString(u"A label that is as long as a short sentence"_s));
    const QSize natural = contents.size(-1);
    const int half = natural.width() / 2;
    const QSize room(half, contents.size(half).height());
    EXPECT_GE(room.height(), 2 * natural.height() - 1);
    EXPECT_FALSE(contents.isElided(room)) << "it wraps";
    EXPECT_TRUE(contents.isElided(room - QSize(0, natural.height() / 2)));
    TextFieldFormat format = contents.format();
    format.maximumNumberOfLines = 1;
    contents.setFormat(format);
    EXPECT_TRUE(contents.isElided(room));
    EXPECT_EQ(contents.size(half).height(), natural.height());
    format.wraps = false;
    contents.setFormat(format);
    EXPECT_TRUE(contents.isElided(room));
    EXPECT_FALSE(contents.isElided(natural));
    format.elideMode = Qt::ElideNone;
    contents.setFormat(format);
    EXPECT_FALSE(contents.isElided(room));
}
