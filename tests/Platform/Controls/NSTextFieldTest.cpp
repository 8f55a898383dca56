// SPDX-License-Identifier: MIT
#include "Drawing/Shades.h"

#include <pellarvine/Platform/NSColor.h>
#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSMutableAttributedString.h>
#include <pellarvine/Platform/NSParagraphStyle.h>
#include <pellarvine/Platform/NSTextField.h>
#include <pellarvine/Platform/NSView.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using NS::AttributedString;
using NS::TextField;

namespace {

const QString longText =
        u"A field that wraps asks for as much height as its text needs at the width "
        "that it got, in every layout, and never cuts a line off."_s;

class Field : public TextField
{
public:
    explicit Field(const QString &text = {})
    {
        setStringValue(text);
        setOpensLinks(false);
    }

    QTextBrowser *editor() const { return findChild<QTextBrowser *>(); }

    void showInFront()
    {
        resize(sizeHint());
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
        setFocus();
    }

    QImage picture() { return grab().toImage().convertToFormat(QImage::Format_ARGB32); }
};

// The device-independent rectangle around all pixels that differ from the corner's colour.
QRect inked(const QImage &image)
{
    const double ratio = image.devicePixelRatio();
    const QRgb background = image.pixel(0, image.height() - 1);
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != background)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return { (QPointF(ink.topLeft()) / ratio).toPoint(), ink.size() / ratio };
}

bool hasPixelLike(const QImage &image, QColor color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (std::abs(pixel.red() - color.red()) < 40
                && std::abs(pixel.green() - color.green()) < 40
                && std::abs(pixel.blue() - color.blue()) < 40)
                return true;
        }
    }
    return false;
}

} // namespace

// Sizes

TEST(TextField, is_as_wide_as_its_text_and_as_high_as_that_at_its_width)
{
    Field field(u"Short"_s);
    const int line = field.sizeHint().height();
    // Fonts with fractional advances may need a whole pixel more.
    const double advance = QFontMetricsF(field.font()).horizontalAdvance(u"Short"_s);
    EXPECT_GE(field.sizeHint().width(), advance);
    EXPECT_LT(field.sizeHint().width(), advance + 2.0);
    EXPECT_EQ(field.heightForWidth(1000), line);
    field.setStringValue(longText);
    EXPECT_GE(field.heightForWidth(200), 3 * line);
    EXPECT_GT(field.heightForWidth(100), field.heightForWidth(200));
    field.setPreferredMaxLayoutWidth(200);
    EXPECT_LE(field.sizeHint().width(), 200);
    EXPECT_EQ(field.sizeHint().height(), field.heightForWidth(200));
    for (const double much : { 1e5, 1e10, std::numeric_limits<double>::infinity() }) {
        field.setPreferredMaxLayoutWidth(much);
        EXPECT_GT(field.sizeHint().width(), 600) << much;
        EXPECT_EQ(field.sizeHint().height(), line) << much;
    }
    field.setWraps(false);
    EXPECT_FALSE(field.hasHeightForWidth());
    EXPECT_FALSE(field.sizePolicy().hasHeightForWidth());
    EXPECT_EQ(field.sizeHint().height(), line);
    EXPECT_GT(field.sizeHint().width(), 600);
}

TEST(TextField, gets_its_height_from_qt_layouts_and_from_constraints)
{
    QWidget column;
    auto *const inLayout = new Field(longText);
    auto *const layout = new QVBoxLayout(&column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(inLayout);
    layout->addStretch();
    column.resize(180, 600);

    QWidget panel;
    auto *const constrained = new Field(longText);
    NS::addSubview(&panel, constrained);
    NS::LayoutConstraint::activateConstraints({
            NS::topAnchor(constrained).constraintEqualToAnchor(NS::topAnchor(&panel)),
            NS::leadingAnchor(constrained).constraintEqualToAnchor(NS::leadingAnchor(&panel)),
            NS::trailingAnchor(constrained).constraintEqualToAnchor(NS::trailingAnchor(&panel)),
    });
    panel.resize(180, 600);
    for (const int width : { 180, 90, 260 }) {
        column.resize(width, 600);
        panel.resize(width, 600);
        NS::layoutSubtreeIfNeeded(&column);
        NS::layoutSubtreeIfNeeded(&panel);
        EXPECT_EQ(inLayout->size(), QSize(width, inLayout->heightForWidth(width)));
        EXPECT_EQ(constrained->size(), inLayout->size());
    }
}

TEST(TextField, breaks_a_word_that_is_longer_than_a_line)
{
    Field field(QString(60, u'm'));
    const int line = Field(u"m"_s).sizeHint().height();
    EXPECT_GE(field.heightForWidth(120), 3 * line);
    field.resize(120, field.heightForWidth(120));
    EXPECT_LE(inked(field.picture()).right(), 120);
    EXPECT_GT(inked(field.picture()).bottom(), 2 * line);
}

TEST(TextField, has_the_height_of_qts_line_edit_and_its_baseline)
{
    Field field(u"Height"_s);
    field.setWraps(false);
    field.setBezeled(true);
    QLineEdit edit;
    EXPECT_EQ(field.sizeHint().height(), edit.sizeHint().height());

    QWidget panel;
    auto *const name = new QLabel(u"Name"_s);
    for (QWidget *const widget : { static_cast<QWidget *>(name), static_cast<QWidget *>(&field) })
        NS::addSubview(&panel, widget);
    NS::LayoutConstraint::activateConstraints({
            NS::topAnchor(&field).constraintEqualToAnchor(NS::topAnchor(&panel), 20),
            NS::firstBaselineAnchor(name).constraintEqualToAnchor(NS::firstBaselineAnchor(&field)),
    });
    panel.resize(300, 100);
    NS::layoutSubtreeIfNeeded(&panel);
    const QFontMetricsF metrics(name->font());
    const double baseline = name->y() + (name->height() + metrics.ascent() - metrics.descent()) / 2;
    EXPECT_NEAR(baseline, 20 + field.firstBaselineOffsetFromTop(), 1.0);
    field.setParent(nullptr);
}

TEST(TextField, shows_what_fits_and_an_ellipsis)
{
    const int line = Field(u"Mg"_s).sizeHint().height();
    Field single(u"One line that is too long"_s);
    single.setWraps(false);
    const int natural = single.sizeHint().width();
    EXPECT_LT(single.minimumSizeHint().width(), natural / 2);
    single.resize(natural / 2, line);
    const int inkEnd = inked(single.picture()).right();
    EXPECT_LE(inkEnd, natural / 2);
    EXPECT_GT(inkEnd, natural / 2 - 20);
    // The tool tip shows the whole text, with characters that are markup to Qt.
    single.setStringValue(u"Notes & plans that take more than this line"_s);
    QHelpEvent help(QEvent::ToolTip, {}, single.mapToGlobal(QPoint()));
    QApplication::sendEvent(&single, &help);
    EXPECT_TRUE(Qt::mightBeRichText(QToolTip::text()));
    EXPECT_EQ(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(),
              single.stringValue());
    single.setStringValue(u"One line that is too long"_s);
    single.setElideMode(Qt::ElideNone);
    EXPECT_EQ(single.minimumSizeHint().width(), natural);

    Field lines(longText);
    lines.setMaximumNumberOfLines(2);
    EXPECT_EQ(lines.heightForWidth(150), 2 * line);
    lines.resize(150, 10 * line);
    const QRect ink = inked(lines.picture());
    EXPECT_LE(ink.height(), 2 * line);
    lines.setMaximumNumberOfLines(0);
    EXPECT_GT(inked(lines.picture()).height(), 2 * line);
}

TEST(TextField, never_shows_a_part_of_a_line_unless_there_is_no_room_for_one)
{
    const int line = Field(u"Mg"_s).sizeHint().height();
    Field lines(longText);
    for (const int count : { 3, 2, 1 }) {
        for (const int more : { 0, line / 2, line - 1 }) {
            lines.resize(150, count * line + more);
            const QRect ink = inked(lines.picture());
            EXPECT_LE(ink.height(), count * line);
            EXPECT_GT(ink.height(), (count - 1) * line) << count << ' ' << more;
        }
    }
    // A line that is too high loses as much above as below, as in a QLabel.
    for (const bool isSelectable : { false, true }) {
        Field low(u"MMMM"_s);
        low.setSelectable(isSelectable);
        low.resize(low.sizeHint());
        const QImage whole = low.picture();
        low.resize(low.width(), line - 6);
        const double ratio = whole.devicePixelRatio();
        EXPECT_EQ(low.picture(),
                  whole.copy(0, int(3 * ratio), whole.width(), int((line - 6) * ratio)));
        EXPECT_EQ(low.minimumSizeHint().height(), line);
    }
    // The height of a line is that of the field's font.
    QFont large = QApplication::font();
    large.setPointSizeF(3 * large.pointSizeF());
    Field title;
    title.setAttributedStringValue(
            AttributedString(longText, { { NS::FontAttributeName, large } }));
    EXPECT_EQ(title.minimumSizeHint().height(), title.heightForWidth(10000));
}

// Looks

TEST(TextField, aligns_by_the_direction_of_the_layout)
{
    const std::tuple<Qt::Alignment, Qt::LayoutDirection, bool> rows[] = {
        { Qt::AlignLeft, Qt::LeftToRight, true },
        { Qt::AlignRight, Qt::LeftToRight, false },
        { Qt::AlignLeft, Qt::RightToLeft, false },
        { Qt::AlignRight, Qt::RightToLeft, true },
        { Qt::AlignLeft | Qt::AlignAbsolute, Qt::RightToLeft, true },
    };
    NS::ParagraphStyle style;
    for (const auto &[alignment, direction, isAtLeft] : rows) {
        Field plain(u"Text"_s);
        Field styled;
        style.alignment = alignment;
        styled.setAttributedStringValue(AttributedString(
                u"Text"_s, { { NS::ParagraphStyleAttributeName, QVariant::fromValue(style) } }));
        for (Field *const field : { &plain, &styled }) {
            field->setLayoutDirection(direction);
            field->setAlignment(alignment);
            field->resize(200, 40);
            const QRect ink = inked(field->picture());
            EXPECT_EQ(ink.left() < 5, isAtLeft) << (field == &styled) << int(direction);
            EXPECT_EQ(ink.right() > 194, !isAtLeft) << (field == &styled) << int(direction);
        }
    }
}

TEST(TextField, a_text_keeps_its_own_direction_in_a_program_that_runs_the_other_way)
{
    const auto picture = [](bool isSelectable) {
        Field field(u"Open?"_s);
        field.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
        field.setSelectable(isSelectable);
        field.resize(field.sizeHint());
        return field.picture();
    };
    const QImage expected = picture(false);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(picture(false), expected); // the question mark stays at the right
    EXPECT_EQ(picture(true), expected);
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST(TextField, takes_its_colours_from_the_palette_until_they_are_set)
{
    Field field(u"Ink"_s);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(30, 30, 40));
    palette.setColor(QPalette::WindowText, QColor(200, 255, 200));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 60, 60));
    palette.setColor(QPalette::Base, QColor(0, 0, 120));
    field.setPalette(palette);
    field.resize(60, 30);
    EXPECT_TRUE(hasPixelLike(field.picture(), QColor(200, 255, 200)));
    field.setEnabled(false);
    EXPECT_FALSE(hasPixelLike(field.picture(), QColor(200, 255, 200)));
    field.setEnabled(true);
    field.setDrawsBackground(true);
    EXPECT_EQ(field.picture().pixelColor(1, 1), QColor(0, 0, 120));
    field.setBackgroundColor(Qt::yellow);
    field.setTextColor(Qt::red);
    EXPECT_EQ(field.picture().pixelColor(1, 1), QColor(Qt::yellow));
    EXPECT_TRUE(hasPixelLike(field.picture(), Qt::red));
    // If the text is selectable, another widget draws it.
    field.setSelectable(true);
    EXPECT_EQ(field.picture().pixelColor(1, 1), QColor(Qt::yellow));
    EXPECT_TRUE(hasPixelLike(field.picture(), Qt::red));
}

// A label has no text document, and must look the same as a field that has one.
TEST(TextField, looks_the_same_to_read_and_to_select)
{
    QFont bold = QApplication::font();
    bold.setBold(true);
    QFont large = bold;
    large.setPointSizeF(2 * bold.pointSizeF());
    NS::ParagraphStyle spaced;
    spaced.headIndent = 20;
    spaced.firstLineHeadIndent = 35.5;
    spaced.paragraphSpacingBefore = 3;
    spaced.paragraphSpacing = 7;
    spaced.lineSpacing = 2.5;
    NS::ParagraphStyle justified;
    justified.alignment = Qt::AlignJustify;
    NS::ParagraphStyle centred;
    centred.alignment = Qt::AlignHCenter;
    NS::ParagraphStyle toTheLeft = spaced;
    toTheLeft.baseWritingDirection = Qt::RightToLeft;
    NS::ParagraphStyle unbroken;
    unbroken.wrapMode = QTextOption::NoWrap;
    const auto styled = [](const NS::ParagraphStyle &style) {
        return NS::Attributes { { NS::ParagraphStyleAttributeName, QVariant::fromValue(style) } };
    };
    const QString paragraphs = u"\nFirst\n\n"_s + longText + u"\n"_s + longText + u"\n"_s;
    const NS::Attributes colours { { NS::FontAttributeName, bold },
                                   { NS::ForegroundColorAttributeName, QColor(Qt::blue) },
                                   { NS::BackgroundColorAttributeName, QColor(Qt::yellow) } };
    const NS::Attributes lines { { NS::UnderlineStyleAttributeName, 1 },
                                 { NS::KernAttributeName, 1.5 },
                                 { u"mark"_s, 1 } };
    const struct
    {
        QString string;
        NS::Attributes everywhere;
        NS::Attributes inside; // from the 9th unit to the 28th
    } rows[] = {
        { longText, {}, colours },
        { longText, { { u"mark"_s, 2 } }, lines },
        { paragraphs, {}, { { NS::FontAttributeName, large } } },
        { paragraphs, styled(spaced), colours },
        { paragraphs, styled(justified), lines },
        { paragraphs, styled(centred), {} },
        { paragraphs, styled(toTheLeft), {} },
        { paragraphs, styled(unbroken), {} },
        { u"large\n"_s, { { NS::FontAttributeName, large } }, {} },
        { u"a\tb\tc\r\nd\u2028e\u2029f\rg"_s, styled(spaced), {} },
        { u"שלום עולם (1) ועוד קצת טקסט\nand English after it\nשלום"_s, {}, colours },
        { u"مرحبا بالعالم office fi ﷽ 👩‍👩‍👧 soft\u00adhyphen"_s,
          {},
          lines },
        { QString(60, u'm') + u' ' + longText, {}, {} },
        { {}, {}, {} },
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.string.left(20).toStdString() + " row " + std::to_string(&row - rows));
        NS::MutableAttributedString text(row.string);
        text.addAttributes(row.everywhere, 0, text.length());
        text.addAttributes(row.inside, 8, 20);
        for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
            if (direction == Qt::RightToLeft && row.everywhere == styled(unbroken))
                continue; // an editor scrolls to the other end
            Field field;
            field.setLayoutDirection(direction);
            field.setAttributedStringValue(AttributedString(text));
            for (const int width : { 300, 120, 200 }) { // narrower, twice, then wider
                field.resize(width, field.heightForWidth(width));
                const QImage read = field.picture();
                field.setSelectable(true);
                EXPECT_EQ(field.picture(), read) << width;
                EXPECT_EQ(std::ceil(field.editor()->document()->size().height()),
                          field.heightForWidth(width))
                        << width;
                field.setSelectable(false);
                EXPECT_EQ(field.picture(), read) << width;
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the editor
            }
        }
    }
}

// Properties

TEST(TextField, an_equal_value_changes_nothing)
{
    Field field(u"Text"_s);
    const QSignalSpy strings(&field, &TextField::stringValueChanged);
    const QSignalSpy texts(&field, &TextField::attributedStringValueChanged);
    const AttributedString underlined(u"Text"_s, { { NS::UnderlineStyleAttributeName, 1 } });
    field.setStringValue(u"Text"_s);
    EXPECT_EQ(texts.size(), 0);
    field.setAttributedStringValue(underlined);
    field.setAttributedStringValue(underlined);
    EXPECT_EQ(strings.size(), 0);
    EXPECT_EQ(texts.size(), 1);
    field.setStringValue(u"Text"_s); // removes the underline
    EXPECT_EQ(field.attributedStringValue(), AttributedString(u"Text"_s));

    for (const char *const name :
         { "wraps", "selectable", "editable", "bezeled", "drawsBackground", "opensLinks" }) {
        const QMetaObject *const meta = field.metaObject();
        const QMetaProperty property = meta->property(meta->indexOfProperty(name));
        QSignalSpy changes(&field, property.notifySignal());
        const bool value = property.read(&field).toBool();
        EXPECT_TRUE(property.write(&field, value)) << name;
        EXPECT_EQ(changes.size(), 0) << name;
        EXPECT_TRUE(property.write(&field, !value)) << name;
        EXPECT_EQ(changes.size(), 1) << name;
        EXPECT_EQ(property.read(&field).toBool(), !value) << name;
    }
}

// Selecting and editing

TEST(TextField, what_is_selected_with_the_keyboard_is_copied)
{
    Field field(u"Copy me"_s);
    field.setSelectable(true);
    field.showInFront();
    QTest::keyClick(field.editor(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field.editor(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Copy me"_s);
    QTest::keyClick(field.editor(), Qt::Key_X);
    EXPECT_EQ(field.stringValue(), u"Copy me"_s);
}

TEST(TextField, text_that_was_scrolled_to_select_goes_back_when_the_focus_leaves)
{
    Field field(longText);
    field.setSelectable(true);
    field.setMaximumNumberOfLines(2);
    field.setPreferredMaxLayoutWidth(150);
    field.showInFront();
    const QScrollBar *const place = field.editor()->verticalScrollBar();
    QTest::keyClick(field.editor(), Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_GT(place->value(), 0);
    EXPECT_TRUE(field.editor()->textCursor().hasSelection());
    field.editor()->clearFocus();
    EXPECT_FALSE(field.editor()->textCursor().hasSelection());
    EXPECT_EQ(place->value(), 0);
}

TEST(TextField, a_text_to_read_begins_at_its_beginning)
{
    NS::MutableAttributedString text(longText);
    text.addAttributes({ { NS::LinkAttributeName, QUrl(u"notes:1"_s) } }, 2, 5);
    for (const bool isSelectable : { false, true }) {
        Field field;
        field.setSelectable(isSelectable);
        field.setAttributedStringValue(NS::AttributedString(u"first"_s, text.attributes(2)));
        field.setAttributedStringValue(text);
        field.resize(100, 30);
        field.show();
        field.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&field));
        ASSERT_TRUE(field.editor()->hasFocus());
        EXPECT_EQ(field.editor()->verticalScrollBar()->value(), 0) << isSelectable;
        QTest::keyClick(field.editor(), Qt::Key_Tab);
        EXPECT_EQ(field.editor()->textCursor().selectedText(), longText.mid(2, 5)) << isSelectable;
        field.setPalette(QPalette(QColor(40, 40, 40)));
        EXPECT_EQ(field.editor()->textCursor().selectedText(), longText.mid(2, 5)) << "still";
    }
}

TEST(TextField, a_text_to_edit_shows_its_beginning_and_stays_where_the_user_is)
{
    for (const bool wraps : { false, true }) {
        Field field;
        field.setEditable(true);
        field.setWraps(wraps);
        field.setStringValue(longText);
        field.resize(100, 30);
        QWidget window;
        field.setParent(&window);
        window.show();
        EXPECT_EQ(field.editor()->verticalScrollBar()->value(), 0);
        EXPECT_EQ(field.editor()->horizontalScrollBar()->value(), 0);
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        field.setStringValue({});
        field.setFocus();
        QObject::connect(&field, &TextField::textEdited, &field,
                         [&](const QString &text) { field.setStringValue(text.toUpper()); });
        QTest::keyClicks(field.editor(), u"abc"_s);
        EXPECT_EQ(field.stringValue(), u"ABC"_s);
        field.setParent(nullptr);
    }
}

TEST(TextField, a_long_line_shows_its_beginning_in_either_direction)
{
    const QString hebrew = QString(u"שלום "_s).repeated(20);
    const int line = Field(hebrew.left(4)).sizeHint().height();
    for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        for (const QString &text : { longText, hebrew }) {
            for (const bool isEditable : { false, true }) {
                Field field;
                field.setLayoutDirection(direction);
                field.setWraps(false);
                field.setSelectable(true);
                field.setEditable(isEditable);
                field.setStringValue(text);
                field.resize(100, 30);
                QWidget window; // whose focus is elsewhere
                QLineEdit other(&window);
                field.setParent(&window);
                window.show();
                other.setFocus();
                QCoreApplication::processEvents();
                for (const int width : { 100, 70, 71 }) {
                    field.resize(width, line);
                    field.setElideMode(width == 70 ? Qt::ElideMiddle : Qt::ElideLeft);
                    field.setWraps(width == 71);
                    field.setWraps(false);
                    const QRect room = field.editor()->viewport()->rect().adjusted(-1, 0, 1, 0);
                    EXPECT_TRUE(room.contains(field.editor()->cursorRect()))
                            << direction << ' ' << qPrintable(text.left(2)) << ' ' << isEditable
                            << ' ' << width;
                }
                field.setParent(nullptr);
            }
        }
    }
}

TEST(TextField, links_follow_the_palette_and_the_state_also_in_a_text_to_edit)
{
    const QColor dark(40, 40, 40);
    for (const bool isEditable : { false, true }) {
        Field field;
        NS::MutableAttributedString text(u"MMMM"_s);
        text.addAttributes({ { NS::LinkAttributeName, QUrl(u"notes:1"_s) } }, 0, 4);
        field.setAttributedStringValue(text);
        field.setEditable(isEditable);
        field.resize(100, 30);
        QPalette palette { dark };
        palette.setColor(QPalette::Disabled, QPalette::Link, Qt::magenta);
        field.setPalette(palette);
        const QColor readable = Pellarvine::detail::linkColor(field.palette());
        EXPECT_TRUE(hasPixelLike(field.picture(), readable)) << isEditable;
        field.setEnabled(false);
        EXPECT_TRUE(hasPixelLike(field.picture(), Qt::magenta)) << isEditable;
    }
}

TEST(TextField, edits_a_single_line_and_says_when_it_is_done)
{
    Field field(u"ab"_s);
    field.setWraps(false);
    field.setEditable(true);
    field.showInFront();
    const QSignalSpy edits(&field, &TextField::textEdited);
    const QSignalSpy ends(&field, &TextField::editingFinished);
    QTest::keyClick(field.editor(), Qt::Key_End);
    QTest::keyClicks(field.editor(), u"cd"_s);
    EXPECT_EQ(field.stringValue(), u"abcd"_s);
    EXPECT_EQ(edits.size(), 2);
    EXPECT_EQ(ends.size(), 0);
    QTest::keyClick(field.editor(), Qt::Key_Return);
    EXPECT_EQ(field.stringValue(), u"abcd"_s);
    EXPECT_EQ(ends.size(), 1);
    QGuiApplication::clipboard()->setText(u"1\n2"_s);
    QTest::keyClick(field.editor(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field.stringValue(), u"abcd1 2"_s);
    field.editor()->clearFocus();
    EXPECT_EQ(ends.size(), 2);
    QTest::keyClick(field.editor(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field.stringValue(), u"ab"_s);
}

TEST(TextField, grows_with_the_lines_that_are_typed_and_keeps_attributes)
{
    Field field;
    field.setAttributedStringValue(
            AttributedString(u"red"_s, { { NS::ForegroundColorAttributeName, QColor(Qt::red) } }));
    field.setEditable(true);
    field.showInFront();
    const int before = field.sizeHint().height();
    QTest::keyClick(field.editor(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(field.editor(), Qt::Key_Return);
    QTest::keyClicks(field.editor(), u"more"_s);
    EXPECT_EQ(field.stringValue(), u"red\nmore"_s);
    EXPECT_EQ(field.sizeHint().height(), 2 * before);
    EXPECT_EQ(field.attributedStringValue().attribute(NS::ForegroundColorAttributeName, 6),
              QVariant(QColor(Qt::red)));
}

TEST(TextField, a_click_on_a_link_tells_where_it_leads)
{
    Field field;
    NS::MutableAttributedString text(u"See the notes."_s);
    text.addAttributes({ { NS::LinkAttributeName, QUrl(u"notes:2.4"_s) } }, 0, 7);
    field.setAttributedStringValue(text);
    field.showInFront();
    QSignalSpy links(&field, &TextField::linkActivated);
    QTest::keyClick(field.editor(), Qt::Key_Tab);
    QTest::keyClick(field.editor(), Qt::Key_Return);
    ASSERT_EQ(links.size(), 1);
    EXPECT_EQ(links[0][0].toUrl(), QUrl(u"notes:2.4"_s));
    QTest::mouseClick(field.editor()->viewport(), Qt::LeftButton, {}, { 10, 8 });
    EXPECT_EQ(links.size(), 2);
    EXPECT_TRUE(hasPixelLike(field.picture(), field.palette().color(QPalette::Link)));
    field.setPalette(QPalette(QColor(40, 40, 40))); // it has a dark blue for links
    const QColor readable = Pellarvine::detail::linkColor(field.palette());
    EXPECT_GE(Pellarvine::detail::contrast(readable, QColor(40, 40, 40)), 4.5);
    EXPECT_TRUE(hasPixelLike(field.picture(), readable));
    field.setStringValue(u"Without"_s);
    EXPECT_FALSE(field.editor() && field.editor()->isVisible());
}

TEST(TextField, a_right_click_beside_a_link_is_left_to_the_parent)
{
    QWidget window;
    window.setContextMenuPolicy(Qt::CustomContextMenu);
    const QSignalSpy asked(&window, &QWidget::customContextMenuRequested);
    auto *const field = new Field;
    field->setParent(&window);
    NS::MutableAttributedString text(u"See the notes."_s);
    text.addAttributes({ { NS::LinkAttributeName, QUrl(u"notes:2.4"_s) } }, 0, 3);
    field->setAttributedStringValue(text);
    field->resize(200, 30);
    window.show();
    QWidget *const viewport = field->editor()->viewport();
    const auto click = [&](QPoint place) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        QWidget *const menu = QApplication::activePopupWidget();
        return menu && menu->close();
    };
    EXPECT_TRUE(click({ 5, 8 })) << "to copy the link";
    EXPECT_EQ(asked.count(), 0);
    EXPECT_FALSE(click({ 180, 8 }));
    EXPECT_EQ(asked.count(), 1);
}

TEST(TextField, tab_reaches_it_in_its_place_also_if_it_becomes_editable_later)
{
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit before;
    auto *const field = new Field;
    QLineEdit after;
    for (QWidget *const widget : { static_cast<QWidget *>(&before), static_cast<QWidget *>(field),
                                   static_cast<QWidget *>(&after) })
        layout.addWidget(widget);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (int time = 0; time < 2; ++time) {
        field->setEditable(true);
        before.setFocus();
        for (QWidget *const next : { field->focusProxy(), static_cast<QWidget *>(&after) }) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(window.focusWidget(), next) << time;
        }
        QTest::keyClick(&after, Qt::Key_Backtab);
        EXPECT_TRUE(field->hasFocus()) << time;
        field->setEditable(false);
    }
}

TEST(TextField, a_scroll_area_around_it_follows_the_keyboard)
{
    QScrollArea area;
    auto *const content = new QWidget;
    auto *const layout = new QVBoxLayout(content);
    auto *const field = new Field;
    auto *const label = new Field;
    NS::MutableAttributedString text(longText + u" See the notes."_s);
    text.addAttributes({ { NS::LinkAttributeName, QUrl(u"notes:1"_s) } }, 0, 3);
    text.addAttributes({ { NS::LinkAttributeName, QUrl(u"notes:2"_s) } }, text.length() - 6, 5);
    label->setAttributedStringValue(text);
    layout->addWidget(field);
    layout->addWidget(label);
    area.setWidgetResizable(true);
    area.setWidget(content);
    area.resize(120, 60);
    area.show();
    area.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
    const auto isSeen = [&](const Field *place) {
        QCoreApplication::sendPostedEvents();
        const QTextBrowser *const editor = place->editor();
        const QRect caret = editor->cursorRect();
        const QPoint corner = editor->viewport()->mapTo(area.viewport(), caret.topLeft());
        return area.viewport()->rect().contains(QRect(corner, caret.size()));
    };
    field->setEditable(true);
    field->setFocus();
    for (int line = 0; line < 10; ++line) {
        QTest::keyClick(field->editor(), Qt::Key_Return);
        EXPECT_TRUE(isSeen(field)) << line;
    }
    QTest::keyClick(field->editor(), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_TRUE(isSeen(field));
    for (int link = 0; link < 2; ++link) {
        QTest::keyClick(area.focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(isSeen(label)) << link;
    }
}

TEST(TextField, a_screen_reader_finds_static_text_or_text_to_edit)
{
    Field label(u"Read me"_s);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&label);
    EXPECT_EQ(accessible->role(), QAccessible::StaticText);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Read me"_s);

    QWidget window;
    auto *const name = new QLabel(u"&Name"_s, &window);
    auto *const field = new Field(u"Mira"_s);
    field->setParent(&window);
    field->setEditable(true);
    name->setBuddy(field);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    field->setFocus();
    EXPECT_TRUE(field->editor()->hasFocus());
    accessible = QAccessible::queryAccessibleInterface(field->editor());
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Name"_s);
    EXPECT_TRUE(accessible->state().editable);
    ASSERT_TRUE(accessible->textInterface());
    EXPECT_EQ(accessible->textInterface()->text(0, 4), u"Mira"_s);
}

TEST(TextField, a_screen_reader_finds_a_name_before_the_focus_is_there)
{
    QWidget window;
    auto *const field = new Field(u"Mira"_s);
    field->setParent(&window);
    field->setSelectable(true);
    const auto name = [&] {
        QAccessibleInterface *const own = QAccessible::queryAccessibleInterface(field);
        return own->child(0)->text(QAccessible::Name);
    };
    EXPECT_EQ(name(), u"Mira"_s);
    field->setEditable(true);
    EXPECT_EQ(name(), QString()) << "its text is its value";
    field->setPlaceholderString(u"Who?"_s);
    EXPECT_EQ(name(), u"Who?"_s);
    auto *const label = new QLabel(u"&Name"_s, &window);
    label->setBuddy(field);
    EXPECT_EQ(name(), u"Name"_s);
    label->setText(u"&First name"_s);
    EXPECT_EQ(name(), u"First name"_s);
    field->setAccessibleName(u"Author"_s);
    EXPECT_EQ(name(), u"Author"_s);
}

TEST(TextField, editing_may_end_while_an_edit_is_reported)
{
    Field field(u"ab"_s);
    field.setEditable(true);
    field.showInFront();
    QObject::connect(&field, &TextField::textEdited, &field, [&] { field.setEditable(false); });
    QTest::keyClicks(field.editor(), u"c"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(field.editor(), nullptr);
    EXPECT_EQ(field.stringValue(), u"cab"_s);
    field.setEditable(true);
    EXPECT_EQ(field.editor()->toPlainText(), u"cab"_s);
}

TEST(TextField, a_slot_may_set_another_text)
{
    for (const bool isTyped : { false, true }) {
        Field field;
        Field mirror;
        Field styledMirror;
        field.setEditable(true);
        const auto raise = [&](const QString &text) {
            field.setStringValue(text.toUpper());
        };
        if (isTyped)
            QObject::connect(&field, &TextField::textEdited, &field, raise);
        else
            QObject::connect(&field, &TextField::stringValueChanged, &field, raise);
        QObject::connect(&field, &TextField::stringValueChanged, &mirror,
                         &TextField::setStringValue);
        QObject::connect(&field, &TextField::attributedStringValueChanged, &styledMirror,
                         &TextField::setAttributedStringValue);
        if (isTyped)
            QTest::keyClicks(field.editor(), u"a"_s);
        else
            field.setStringValue(u"a"_s);
        EXPECT_EQ(field.stringValue(), u"A"_s);
        EXPECT_EQ(styledMirror.stringValue(), u"A"_s) << isTyped;
        EXPECT_TRUE(mirror.stringValue() == u"A"_s || !isTyped);
    }
}

TEST(TextField, a_slot_may_delete_it)
{
    const QPointer<Field> field = new Field;
    QObject::connect(field, &TextField::stringValueChanged, field, [&] { delete field; });
    field->setStringValue(u"a"_s);
    EXPECT_FALSE(field);
}

TEST(TextField, a_single_line_to_select_is_aligned_anew_with_each_text_and_alignment)
{
    NS::ParagraphStyle centred;
    centred.alignment = Qt::AlignHCenter;
    NS::ParagraphStyle left;
    left.alignment = Qt::AlignLeft;
    const auto title = [](const NS::ParagraphStyle &style) {
        return AttributedString(
                u"Title"_s, { { NS::ParagraphStyleAttributeName, QVariant::fromValue(style) } });
    };
    const AttributedString inTheMiddle = title(centred);
    const AttributedString onTheLeft = title(left);
    for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        Field shown;
        Field selected;
        selected.setSelectable(true);
        const auto expectSameInk = [&](const char *what) {
            EXPECT_LE((inked(shown.picture()).center() - inked(selected.picture()).center())
                              .manhattanLength(),
                      2)
                    << what << ' ' << direction;
        };
        const auto both = [&](const auto &change) {
            change(shown);
            change(selected);
        };
        both([&](Field &field) {
            field.setLayoutDirection(direction);
            field.setWraps(false);
            field.setStringValue(u"Title"_s);
            field.resize(300, 40);
            field.show();
        });
        expectSameInk("as made");
        both([](Field &field) { field.setAlignment(Qt::AlignRight | Qt::AlignVCenter); });
        expectSameInk("right");
        both([](Field &field) { field.resize(200, 40); });
        expectSameInk("resized");
        both([](Field &field) { field.setAlignment(Qt::AlignLeft | Qt::AlignVCenter); });
        expectSameInk("left");
        both([&](Field &field) { field.setAttributedStringValue(inTheMiddle); });
        expectSameInk("centred");
        both([&](Field &field) { field.setAttributedStringValue(onTheLeft); });
        expectSameInk("a paragraph on the left");
        for (const auto other : { Qt::RightToLeft, Qt::LeftToRight, direction }) {
            both([&](Field &field) { field.setLayoutDirection(other); });
            expectSameInk("in another direction");
        }
        both([](Field &field) { field.setStringValue(u"Title"_s); });
        both([](Field &field) { field.resize(100, 40); });
        expectSameInk("as made, narrower");
    }
}

TEST(TextField, the_placeholder_stands_where_the_text_will)
{
    for (const bool isEditable : { false, true }) {
        for (const Qt::Alignment side : { Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight }) {
            for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
                Field field(u"Title"_s);
                field.setLayoutDirection(direction);
                field.setEditable(isEditable);
                field.setWraps(false);
                field.setAlignment(side | Qt::AlignVCenter);
                field.resize(300, 40);
                const QRect text = inked(field.picture());
                field.setStringValue({});
                field.setPlaceholderString(u"Title"_s);
                const QRect placeholder = inked(field.picture());
                EXPECT_LE((placeholder.center() - text.center()).manhattanLength(), 2)
                        << isEditable << ' ' << side.toInt() << ' ' << direction;
                field.setPlaceholderString(longText); // is elided
                EXPECT_LE(inked(field.picture()).height(), field.sizeHint().height());
            }
        }
    }
    Field field;
    field.setEditable(true);
    field.resize(300, 40);
    const QImage empty = field.picture();
    field.setPlaceholderString(u"Title"_s);
    EXPECT_NE(field.picture(), empty);
    QInputMethodEvent composing(u" "_s, {});
    QApplication::sendEvent(field.editor(), &composing);
    EXPECT_EQ(field.picture(), empty) << "an input method has begun a text";
}

TEST(TextField, style_sheets_never_hide_the_text_of_the_editor)
{
    for (const bool isBezeled : { false, true }) {
        Field field(u"Editable"_s);
        field.setStyleSheet(u"border: 3px solid blue; padding: 8px; color: red"_s);
        field.setEditable(true);
        field.setBezeled(isBezeled);
        field.resize(180, 40);
        field.show();
        EXPECT_TRUE(hasPixelLike(field.picture(), Qt::red));
        EXPECT_EQ(hasPixelLike(field.picture(), Qt::blue), isBezeled);
        field.setStyleSheet({});
        field.setStyleSheet(u"padding: 18px; color: green"_s);
        EXPECT_TRUE(hasPixelLike(field.picture(), QColor(0, 128, 0))) << "later";
    }
}
