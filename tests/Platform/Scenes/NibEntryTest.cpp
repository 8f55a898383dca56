// SPDX-License-Identifier: MIT
#include "Scenes/NibEntry.h"

#include <gmock/gmock.h>

using NS::LayoutAttribute;
using NS::LayoutRelation;
using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

TEST(NibEntry, an_entry_is_read_into_its_parts)
{
    const std::tuple<const char *, const char *, NibEntry> rows[] = {
        { "outlets", "owner.nameField", NibOutlet { { u"owner"_s, u"nameField"_s } } },
        { "outlets", "self.a.b", NibOutlet { { u"self"_s, u"a.b"_s } } },
        { "bindings", "text=owner.name", NibBinding { u"text"_s, { u"owner"_s, u"name"_s } } },
        { "bindings", "text = panel.account.name",
          NibBinding { u"text"_s, { u"panel"_s, u"account.name"_s } } },
        { "bindings", "enabled = !owner.busy",
          NibBinding { u"enabled"_s, { u"owner"_s, u"busy"_s }, { .negates = true } } },
        { "bindings", "text=! owner.a.b|commit|format( \"%d | (x)\" ) | required",
          NibBinding { u"text"_s,
                       { u"owner"_s, u"a.b"_s },
                       { .negates = true,
                         .commits = true,
                         .isRequired = true,
                         .format = u"%d | (x)"_s } } },
        { "bindings", "text = owner.name | popover | oneWay | placeholder(\"None\")",
          NibBinding { u"text"_s,
                       { u"owner"_s, u"name"_s },
                       { .hasPopover = true, .isOneWay = true, .placeholder = u"None"_s } } },
        { "actions", "clicked->owner.save",
          NibAction { u"clicked"_s, { u"owner"_s, {} }, u"save"_s } },
        { "actions", "clicked(bool) -> owner.document.save (bool)",
          NibAction { u"clicked(bool)"_s, { u"owner"_s, u"document"_s }, u"save (bool)"_s } },
        { "constraints", "leading = superview.leading + 8.5",
          NibConstraint { LayoutAttribute::leading, LayoutRelation::equal, 1, u"superview"_s,
                          LayoutAttribute::leading, 8.5, 1000 } },
        { "constraints", "lastBaseline>=panel.top-.5@250",
          NibConstraint { LayoutAttribute::lastBaseline, LayoutRelation::greaterThanOrEqual, 1,
                          u"panel"_s, LayoutAttribute::top, -0.5, 250 } },
        { "constraints", "width <= 0.5 * self.height @ 750",
          NibConstraint { LayoutAttribute::width, LayoutRelation::lessThanOrEqual, 0.5, u"self"_s,
                          LayoutAttribute::height, 0, 750 } },
        { "constraints", "height == -20",
          NibConstraint { LayoutAttribute::height, LayoutRelation::equal, 0, QString(),
                          LayoutAttribute::notAnAttribute, -20, 1000 } },
    };
    for (const auto &[property, text, entry] : rows) {
        ASSERT_TRUE(holdsNibEntries(QString::fromUtf8(property)));
        EXPECT_TRUE(nibEntry(QString::fromUtf8(property), QString::fromUtf8(text)) == entry)
                << text;
    }
    EXPECT_FALSE(holdsNibEntries(u"outlet"_s));
}

TEST(NibEntry, what_is_no_entry_is_a_fault_that_names_what_is_wrong)
{
    using enum NS::NibError::Reason;
    const struct
    {
        const char *property;
        const char *text;
        NS::NibError::Reason reason;
        const char *name; // null for the whole text
        const char *message;
    } rows[] = {
        { "outlets", "field", malformed, nullptr, "an outlet has the form" },
        { "outlets", "owner.", malformed, nullptr, "has the form" },
        { "outlets", "owner.a owner.b", malformed, nullptr, "has the form" },
        { "bindings", "text: owner.name", malformed, nullptr, "a binding has the form" },
        { "bindings", "text = owner", malformed, nullptr, "has the form" },
        { "bindings", "text = owner.name | done | required", malformed, "done",
          "\"done\" is none of the options" },
        { "bindings", "text = owner.name | commit(\"now\")", malformed, "commit(\"now\")",
          "is none of the options" },
        { "bindings", "text = owner.name | format(\"%1\") | format(\"%2\")", malformed, "format",
          "the option \"format\" is there twice" },
        { "bindings", "text = owner.name | commit | format", malformed, "format",
          "is none of the options" },
        { "bindings", "text = owner.name |", malformed, "|", "is none of the options" },
        { "bindings", "text = owner.name | format(\"%n\")", malformed, "%n",
          "no format with one conversion" },
        { "actions", "clicked", malformed, nullptr, "an action has the form" },
        { "actions", "clicked -> save", malformed, nullptr, "has the form" },
        { "constraints", "width = 8.8.8", malformed, nullptr, "a constraint has the form" },
        { "constraints", "width = 2 * 8", malformed, nullptr, "has the form" },
        { "constraints", "width < 8", malformed, nullptr, "has the form" },
        { "constraints", "leading = 8", malformed, nullptr, "cannot be compared" },
        { "constraints", "leading = self.top", malformed, nullptr, "cannot be compared" },
        { "constraints", "middle = self.left", unknownKeyPath, "middle",
          "no attribute \"middle\"" },
        { "constraints", "left = self.middle", unknownKeyPath, "middle",
          "no attribute \"middle\"" },
    };
    for (const auto &row : rows) {
        try {
            nibEntry(QString::fromUtf8(row.property), QString::fromUtf8(row.text));
            ADD_FAILURE() << row.text;
        } catch (const NibFault &fault) {
            EXPECT_EQ(fault.reason, row.reason) << row.text;
            EXPECT_EQ(fault.name, QString::fromUtf8(row.name ? row.name : row.text));
            EXPECT_THAT(fault.message.toStdString(), ::testing::HasSubstr(row.message));
        }
    }
}

TEST(NibEntry, entries_stand_on_lines_of_their_own_and_know_where)
{
    const QString text = u" a.b\n\n\tc.d \n"_s;
    const QList<NibText> placed = nibEntries({ text, { 7, 30 } });
    ASSERT_EQ(placed.size(), 2);
    EXPECT_EQ(placed[0].text, u"a.b"_s);
    EXPECT_EQ(placed[0].place.line, 7);
    EXPECT_EQ(placed[0].place.column, 31);
    EXPECT_EQ(placed[1].text, u"c.d"_s);
    EXPECT_EQ(placed[1].place.line, 9);
    EXPECT_EQ(placed[1].place.column, 2);

    // A tree that was made by code has no places.
    const QList<NibText> unplaced = nibEntries({ text, {} });
    ASSERT_EQ(unplaced.size(), 2);
    EXPECT_EQ(unplaced[1].place.line, 0);
    EXPECT_EQ(unplaced[1].place.column, 0);
}

} // namespace Pellarvine::detail
