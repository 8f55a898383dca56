// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <pellarvine/Platform/NSSegmentedControl.h>

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using NS::SegmentedControl;
using Tracking = SegmentedControl::SwitchTracking;
using testing::ElementsAre;

namespace {

class Control : public SegmentedControl
{
public:
    explicit Control(Tracking mode = Tracking::selectOne,
                     const QStringList &labels = { u"Day"_s, u"Week"_s, u"Month"_s })
    {
        setTrackingMode(mode);
        setLabels(labels);
        connect(this, &SegmentedControl::triggered, this,
                [this](int segment) { acted.push_back(segment); });
    }

    void open()
    {
        show();
        resize(sizeHint());
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        clearFocus(); // a window gives it to its only widget
        setFocus(Qt::TabFocusReason);
    }
    QPoint middle(int segment) const { return segmentRect(segment).center(); }
    std::vector<int> selected() const
    {
        std::vector<int> all;
        for (int i = 0; i < segmentCount(); ++i) {
            if (isSelectedForSegment(i))
                all.push_back(i);
        }
        return all;
    }
    void press(int key) { QTest::keyClick(this, Qt::Key(key)); }

    std::vector<int> acted;
};

QIcon blot(const QColor &color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return pixmap;
}

} // namespace

TEST(SegmentedControl, a_click_selects_one_of_them)
{
    Control control;
    control.open();
    EXPECT_EQ(control.selectedSegment(), -1);
    QSignalSpy selections(&control, &SegmentedControl::selectionChanged);
    QSignalSpy segments(&control, &SegmentedControl::selectedSegmentChanged);
    for (const int segment : { 1, 2, 2 })
        QTest::mouseClick(&control, Qt::LeftButton, {}, control.middle(segment));
    EXPECT_THAT(control.acted, ElementsAre(1, 2, 2));
    EXPECT_THAT(control.selected(), ElementsAre(2));
    EXPECT_EQ(selections.count(), 2);
    EXPECT_EQ(segments.count(), 2);
    QTest::mouseClick(&control, Qt::RightButton, {}, control.middle(0));
    EXPECT_EQ(control.selectedSegment(), 2);
}

TEST(SegmentedControl, a_click_switches_any_of_them)
{
    Control control(Tracking::selectAny);
    control.open();
    for (const int segment : { 2, 0, 1, 0 })
        QTest::mouseClick(&control, Qt::LeftButton, {}, control.middle(segment));
    EXPECT_THAT(control.acted, ElementsAre(2, 0, 1, 0));
    EXPECT_THAT(control.selected(), ElementsAre(1, 2));
    EXPECT_EQ(control.selectedSegment(), 1) << "the one selected last";
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.middle(1));
    EXPECT_EQ(control.selectedSegment(), 2) << "of those that are left";
}

TEST(SegmentedControl, a_click_acts_and_leaves_nothing_selected_where_it_is_momentary)
{
    Control control(Tracking::momentary);
    control.open();
    QSignalSpy selections(&control, &SegmentedControl::selectionChanged);
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.middle(1));
    control.setSelectedSegment(2);
    control.setSelected(true, 2);
    EXPECT_THAT(control.acted, ElementsAre(1));
    EXPECT_EQ(control.selectedSegment(), -1);
    EXPECT_EQ(selections.count(), 0);
}

TEST(SegmentedControl, dragging_off_cancels_and_back_on_does_not)
{
    Control control;
    control.open();
    QTest::mousePress(&control, Qt::LeftButton, {}, control.middle(0));
    EXPECT_EQ(control.selectedSegment(), -1) << "until the button is released";
    QTest::mouseMove(&control, control.middle(1));
    QTest::mouseRelease(&control, Qt::LeftButton, {}, control.middle(1));
    EXPECT_TRUE(control.acted.empty());
    QTest::mousePress(&control, Qt::LeftButton, {}, control.middle(0));
    QTest::mouseMove(&control, QPoint(-50, -50));
    QTest::mouseMove(&control, control.middle(0));
    QTest::mouseRelease(&control, Qt::LeftButton, {}, control.middle(0));
    EXPECT_THAT(control.acted, ElementsAre(0));
    QTest::mousePress(&control, Qt::LeftButton, {}, control.middle(1));
    control.setEnabled(false, 1);
    QTest::mouseRelease(&control, Qt::LeftButton, {}, control.middle(1));
    EXPECT_THAT(control.acted, ElementsAre(0));
}

TEST(SegmentedControl, keys_move_within_it_and_act)
{
    using enum SegmentedControl::SwitchTracking;
    using enum Qt::Key;
    using Ints = std::vector<int>;
    constexpr auto ltr = Qt::LeftToRight;
    constexpr auto rtl = Qt::RightToLeft;
    const struct
    {
        Tracking mode;
        Qt::LayoutDirection direction;
        int start;
        QList<Qt::Key> keys;
        int focused;
        Ints acted;
        Ints selected;
    } rows[] = {
        { selectOne, ltr, 1, { Key_Right }, 3, { 3 }, { 3 } },
        { selectOne, ltr, 3, { Key_Right, Key_Right }, 3, {}, { 3 } },
        { selectOne, ltr, 3, { Key_Left, Key_Left, Key_Left }, 0, { 1, 0 }, { 0 } },
        { selectOne, rtl, 1, { Key_Left }, 3, { 3 }, { 3 } },
        { selectOne, rtl, 1, { Key_Right }, 0, { 0 }, { 0 } },
        { selectOne, ltr, 1, { Key_End }, 3, { 3 }, { 3 } },
        { selectOne, ltr, 3, { Key_Home }, 0, { 0 }, { 0 } },
        { selectOne, ltr, 0, { Key_Home }, 0, {}, { 0 } },
        { selectOne, ltr, -1, { Key_Space }, 0, { 0 }, { 0 } },
        { selectOne, ltr, -1, { Key_Right }, 1, { 1 }, { 1 } },
        { selectOne, ltr, -1, { Key_Left }, 0, { 0 }, { 0 } },
        { selectOne, ltr, 2, { Key_Right }, 1, { 1 }, { 1 } },
        { selectOne, ltr, 1, { Key_Up, Key_Return }, 1, {}, { 1 } },
        { selectAny, ltr, -1, { Key_Right, Key_Right }, 3, {}, {} },
        { selectAny, ltr, -1, { Key_Space, Key_End, Key_Space }, 3, { 0, 3 }, { 0, 3 } },
        { selectAny, ltr, 1, { Key_Space, Key_Space, Key_Space }, 1, { 1, 1, 1 }, {} },
        { momentary, ltr, -1, { Key_Right, Key_Space }, 1, { 1 }, {} },
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(&row - rows);
        Control control(row.mode, { u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s });
        control.setLayoutDirection(row.direction);
        control.setEnabled(false, 2);
        control.setEnabled(false, 4);
        control.setSelectedSegment(row.start);
        control.open();
        for (const Qt::Key key : row.keys)
            control.press(key);
        EXPECT_EQ(control.focusedSegment(), row.focused);
        EXPECT_EQ(control.acted, row.acted);
        EXPECT_EQ(control.selected(), row.selected);
    }
}

TEST(SegmentedControl, is_one_tab_stop)
{
    QWidget window;
    auto *const layout = new QHBoxLayout(&window);
    auto *const before = new QLineEdit;
    auto *const control = new Control;
    auto *const after = new QLineEdit;
    for (QWidget *const widget : { static_cast<QWidget *>(before), static_cast<QWidget *>(control),
                                   static_cast<QWidget *>(after) })
        layout->addWidget(widget);
    window.show();
    before->setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_TRUE(control->hasFocus());
    QTest::keyClick(control, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    QTest::keyClick(after, Qt::Key_Backtab);
    EXPECT_TRUE(control->hasFocus());
}

TEST(SegmentedControl, leaving_while_space_is_down_cancels)
{
    Control control(Tracking::momentary);
    control.open();
    QTest::keyPress(&control, Qt::Key_Space);
    control.clearFocus();
    QTest::keyRelease(&control, Qt::Key_Space);
    EXPECT_TRUE(control.acted.empty());
}

TEST(SegmentedControl, an_ampersand_marks_a_shortcut)
{
    Control control(Tracking::selectOne, { u"&Day"_s, u"&Week"_s, u"R && D"_s });
    control.open();
    QTest::keyClick(&control, Qt::Key_W, Qt::AltModifier);
    EXPECT_THAT(control.acted, ElementsAre(1));
    control.setLabel(u"&Fortnight"_s, 1);
    QTest::keyClick(&control, Qt::Key_W, Qt::AltModifier);
    EXPECT_THAT(control.acted, ElementsAre(1));
    QTest::keyClick(&control, Qt::Key_F, Qt::AltModifier);
    EXPECT_THAT(control.acted, ElementsAre(1, 1));
    control.setSegmentCount(1);
    QTest::keyClick(&control, Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(control.acted.size(), 2U);
}

TEST(SegmentedControl, the_shortcut_of_a_disabled_segment_is_anothers)
{
    QWidget window;
    QHBoxLayout layout(&window);
    auto *const control = new Control(Tracking::momentary, { u"&Day"_s, u"&Week"_s });
    QPushButton button(u"&Delete"_s);
    layout.addWidget(control);
    layout.addWidget(&button);
    QSignalSpy clicks(&button, &QPushButton::clicked);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    control->setEnabled(false, 0);
    for (const QString &label : { u"&Day"_s, u"D&ate"_s, u"&Day"_s }) {
        control->setLabel(label, 0);
        QTest::keyClick(&window, Qt::Key_D, Qt::AltModifier);
        EXPECT_TRUE(clicks.wait(1000)) << qPrintable(label); // the button shows that it is down
    }
    button.setEnabled(false);
    control->setEnabled(true, 0);
    QTest::keyClick(&window, Qt::Key_D, Qt::AltModifier);
    EXPECT_THAT(control->acted, ElementsAre(0));
}

TEST(SegmentedControl, a_disabled_control_does_nothing)
{
    Control control;
    control.open();
    control.setEnabled(false);
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.middle(0));
    control.click(0);
    EXPECT_TRUE(control.acted.empty());
    EXPECT_EQ(control.focusedSegment(), -1);
    control.setSelectedSegment(2);
    EXPECT_EQ(control.selectedSegment(), 2) << "a call may";
}

TEST(SegmentedControl, a_selection_that_the_new_mode_cannot_have_is_given_up)
{
    Control control(Tracking::selectAny);
    for (const int segment : { 2, 0, 1 })
        control.setSelected(true, segment);
    QSignalSpy modes(&control, &SegmentedControl::trackingModeChanged);
    QSignalSpy selections(&control, &SegmentedControl::selectionChanged);
    control.setTrackingMode(Tracking::selectOne);
    EXPECT_THAT(control.selected(), ElementsAre(1));
    control.setSelected(true, 0);
    EXPECT_THAT(control.selected(), ElementsAre(0));
    control.setTrackingMode(Tracking::momentary);
    control.setTrackingMode(Tracking::momentary);
    EXPECT_THAT(control.selected(), ElementsAre());
    EXPECT_EQ(modes.count(), 2);
    EXPECT_EQ(selections.count(), 3);
}

TEST(SegmentedControl, segments_come_and_go_at_the_trailing_end)
{
    Control control;
    control.setSelectedSegment(2);
    control.setTag(7, 1);
    QSignalSpy counts(&control, &SegmentedControl::segmentCountChanged);
    QSignalSpy labels(&control, &SegmentedControl::labelsChanged);
    QSignalSpy segments(&control, &SegmentedControl::selectedSegmentChanged);
    control.setSegmentCount(2);
    EXPECT_EQ(control.selectedSegment(), -1);
    EXPECT_EQ(segments.count(), 1);
    control.setSegmentCount(4);
    control.setSegmentCount(4);
    EXPECT_EQ(control.labels(), QStringList({ u"Day"_s, u"Week"_s, {}, {} }));
    EXPECT_TRUE(control.isEnabledForSegment(3));
    EXPECT_EQ(counts.count(), 2);
    EXPECT_TRUE(control.selectSegmentWithTag(7));
    EXPECT_FALSE(control.selectSegmentWithTag(8));
    EXPECT_EQ(control.selectedSegment(), 1);
    labels.clear();
    control.setLabels(control.labels());
    EXPECT_EQ(labels.count(), 0);
    control.setLabels({ u"Year"_s, u"Week"_s, u"Day"_s });
    EXPECT_EQ(labels.count(), 1) << "and never with some of the labels only";
    EXPECT_EQ(labels.takeFirst()[0].toStringList(), control.labels());
    EXPECT_EQ(counts.takeLast()[0].toInt(), 3);
}

TEST(SegmentedControl, a_segment_that_does_not_exist_is_warned_about)
{
    Control control;
    testing::internal::CaptureStdout();
    control.setSelectedSegment(3);
    control.setLabel(u"x"_s, -2);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Warning: a control of 3 segments has no segment 3\n"
              "Warning: a control of 3 segments has no segment -2\n");
    EXPECT_EQ(control.selectedSegment(), -1);
}

TEST(SegmentedControl, it_may_be_deleted_in_its_signals)
{
    const auto change = [](SegmentedControl *control, int way) {
        switch (way) {
        case 0:
            return control->click(1);
        case 1:
            return control->setTrackingMode(Tracking::momentary);
        case 2:
            return control->setLabels({ u"1"_s, u"2"_s });
        default:
            return control->setSegmentCount(1);
        }
    };
    for (int way = 0; way < 4; ++way) {
        for (int signal = 0; signal < 3; ++signal) {
            QPointer<Control> control = new Control;
            control->setSelectedSegment(2);
            const auto end = [&] {
                delete control;
            };
            if (signal == 0)
                QObject::connect(control, &SegmentedControl::selectionChanged, end);
            else if (signal == 1)
                QObject::connect(control, &SegmentedControl::segmentCountChanged, end);
            else
                QObject::connect(control, &SegmentedControl::labelsChanged, end);
            change(control, way);
            EXPECT_EQ(control.isNull(), signal == 0 || way > 1) << way << ' ' << signal;
            delete control;
        }
    }
}

TEST(SegmentedControl, a_slot_may_take_away_the_segment_that_acts)
{
    Control control;
    QObject::connect(&control, &SegmentedControl::selectionChanged, &control,
                     [&] { control.setLabels({ u"Never"_s }); });
    control.click(2);
    EXPECT_EQ(control.labels(), QStringList(u"Never"_s));
    EXPECT_THAT(control.acted, ElementsAre());
    control.click(0);
    EXPECT_THAT(control.acted, ElementsAre(0));
}

TEST(SegmentedControl, segments_have_the_given_width_or_that_of_their_contents)
{
    Control control;
    control.setWidth(40, 0);
    control.setWidth(60, 2);
    control.resize(control.sizeHint());
    EXPECT_EQ(control.segmentRect(0), QRect(1, 1, 40, control.height() - 2));
    EXPECT_EQ(control.segmentRect(1).left(), 42);
    EXPECT_GT(control.segmentRect(1).width(), control.fontMetrics().horizontalAdvance(u"Week"_s));
    EXPECT_EQ(control.segmentRect(2).right(), control.width() - 2);
    EXPECT_EQ(control.segmentRect(2).width(), 60);
    const int fitting = control.segmentRect(1).width();
    control.setLabel(u"Fortnight"_s, 1);
    EXPECT_GT(control.sizeHint().width(), control.width());
    control.setImage(blot(Qt::red), 1);
    EXPECT_GT(control.sizeHint().width(), 40 + 60 + fitting + 16);
    control.resize(90, control.height());
    EXPECT_EQ(control.segmentRect(2).right(), 88) << "too narrow, all give way";
    EXPECT_LT(control.segmentRect(0).width(), 40);
    control.setWidth(12, 0);
    EXPECT_EQ(control.segmentRect(0).width(), 12) << "but the widest first";
    EXPECT_EQ(control.segmentRect(2).right(), 88);

    Control roomy;
    const int all = roomy.sizeHint().width();
    roomy.resize(all - 30, 24);
    for (const int segment : { 0, 1, 2 }) {
        EXPECT_GE(roomy.segmentRect(segment).width(),
                  roomy.fontMetrics().horizontalAdvance(roomy.labelForSegment(segment)))
                << "padding goes before text";
    }
    EXPECT_EQ(roomy.segmentRect(2).right(), all - 32);
    EXPECT_LT(control.minimumSizeHint().width(), control.sizeHint().width());
}

TEST(SegmentedControl, tool_tips_are_the_segments_own_or_the_label_that_is_cut_off)
{
    Control control;
    control.open();
    control.setToolTip(u"Seven days"_s, 1);
    const auto toolTipAt = [&](int segment) {
        QHelpEvent event(QEvent::ToolTip, control.middle(segment), QPoint(5, 5));
        QApplication::sendEvent(&control, &event);
        QString shown = QToolTip::isVisible() ? QToolTip::text() : QString();
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); })); // after a while
        return shown;
    };
    EXPECT_EQ(toolTipAt(1), u"Seven days"_s);
    EXPECT_EQ(toolTipAt(0), QString());
    control.setLabel(u"A very long label indeed"_s, 0);
    EXPECT_EQ(toolTipAt(0), u"A very long label indeed"_s);
    control.setLabel(u"&Research && <b>development</b>"_s, 0);
    EXPECT_EQ(QTextDocumentFragment::fromHtml(toolTipAt(0)).toPlainText(),
              u"Research & <b>development</b>"_s);
    control.setToolTip(u"Scope"_s);
    EXPECT_EQ(toolTipAt(0), u"Scope"_s);
}

TEST(SegmentedControl, the_selected_segment_is_filled_with_the_highlight_up_to_the_edge)
{
    Control control(Tracking::selectAny, { {}, {}, {} });
    for (int i = 0; i < 3; ++i)
        control.setWidth(30, i);
    QPalette palette;
    palette.setColor(QPalette::Button, Qt::white);
    palette.setColor(QPalette::Highlight, Qt::red);
    palette.setColor(QPalette::Window, Qt::black); // also the colour of the lines
    palette.setColor(QPalette::WindowText, Qt::black);
    control.setPalette(palette);
    control.resize(94, 24);
    control.setSelectedSegment(1);
    for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        control.setLayoutDirection(direction);
        control.setSelectedSegment(0);
        const bool isMirrored = direction == Qt::RightToLeft;
        const auto placed = [&](const QRect &rect) {
            return isMirrored ? QRect(94 - rect.right() - 1, rect.y(), rect.width(), rect.height())
                              : rect;
        };
        for (const int scale : { 1, 2 }) {
            const QImage image = picture(control, scale);
            expectFilled(image, placed({ 0, 6, 32, 12 }), Qt::red);
            expectFilled(image, placed({ 6, 0, 26, 24 }), Qt::red);
            expectFilled(image, placed({ 32, 1, 30, 22 }), Qt::white);
            expectFilled(image, placed({ 62, 0, 1, 24 }), Qt::black);
            expectFilled(image, placed({ 32, 0, 40, 1 }), Qt::black);
            expectFilled(image, placed({ 93, 6, 1, 12 }), Qt::black);
            expectFilled(image, { 0, 0, 1, 1 }, ground);
        }
    }
}

TEST(SegmentedControl, its_lines_are_equally_thick_on_every_screen)
{
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        for (int place = 0; place < 8; ++place) {
            QWidget window;
            window.resize(120, 40);
            QPalette palette;
            palette.setColor(QPalette::Button, Qt::white);
            palette.setColor(QPalette::Window, Qt::black); // also the colour of the lines
            palette.setColor(QPalette::WindowText, Qt::black);
            window.setPalette(palette);
            NS::SegmentedControl control(&window);
            control.setSegmentCount(3);
            control.setGeometry(place, 3, 90 + place, 24);
            const QImage image = picture(window, scale);
            QString row;
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, qRound(15 * scale));
                row += color == ground      ? u' '
                       : color == Qt::black ? u'#'
                       : color == Qt::white ? u'.'
                                            : u'?';
            }
            row = row.trimmed().replace(QRegularExpression(u"\\.+"_s), u"."_s);
            const QString stroke(int(scale), u'#');
            EXPECT_EQ(row.toStdString(), QStringList(4, stroke).join(u'.').toStdString())
                    << scale << " at " << place;
        }
    }
}

TEST(SegmentedControl, the_ring_in_its_selection_is_equally_thick_on_every_screen)
{
    Control control(Tracking::selectOne, { QString() });
    control.open();
    control.resize(61, 31);
    control.setSelectedSegment(0);
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        SCOPED_TRACE(scale);
        expectOutline(picture(control, scale),
                      pixelsOf(control.segmentRect(0).adjusted(2, 2, -2, -2), scale),
                      control.palette().color(QPalette::HighlightedText), int(scale));
    }
}

TEST(SegmentedControl, style_sheets_set_its_colours_and_no_more)
{
    Control control(Tracking::selectOne, { QString(3, QChar(u'█')), {} });
    const QSize size = control.sizeHint();
    control.setStyleSheet(u"color: red; background-color: yellow; padding: 20px;"
                          "border: 5px solid green; selection-background-color: blue"_s);
    control.setSelectedSegment(1);
    EXPECT_EQ(control.sizeHint(), size);
    control.resize(size);
    const QImage seen = control.grab().toImage();
    const auto inside = [&](int segment) {
        const QRect rect = control.segmentRect(segment);
        return seen.pixelColor(rect.left() + 4, rect.center().y());
    };
    EXPECT_GT(inside(0).green(), 200);
    EXPECT_LT(inside(0).blue(), 60); // a little lighter than the yellow behind
    EXPECT_EQ(inside(1), QColor(Qt::blue));
    EXPECT_EQ(seen.pixelColor(control.segmentRect(0).center()), QColor(Qt::red));
}

TEST(SegmentedControl, a_disabled_selected_segment_can_be_read)
{
    Control control(Tracking::selectOne, { QString(3, QChar(u'█')) });
    control.setSelectedSegment(0);
    control.resize(control.sizeHint());
    control.setEnabled(false);
    const QImage image = picture(control, 1);
    const QRect rect = control.segmentRect(0);
    const int text = image.pixelColor(rect.center()).lightness();
    const int fill = image.pixelColor(rect.left() + 5, rect.center().y()).lightness();
    EXPECT_GT(std::abs(text - fill), 60);
}

TEST(SegmentedControl, the_focus_shows_after_keys_and_not_after_the_mouse)
{
    Control control(Tracking::momentary);
    control.open();
    QPalette palette = control.palette();
    palette.setColor(QPalette::Highlight, Qt::red);
    control.setPalette(palette);
    const auto showsRing = [&] {
        const QRect rect = control.segmentRect(control.focusedSegment());
        const QImage image = control.grab().toImage();
        return image.pixelColor(rect.center().x(), rect.top() + 2).red() > 200
               && image.pixelColor(rect.center().x(), rect.top() + 2).green() < 60;
    };
    EXPECT_TRUE(showsRing());
    QTest::mouseClick(&control, Qt::LeftButton, {}, control.middle(2));
    EXPECT_FALSE(showsRing());
    control.press(Qt::Key_Left);
    EXPECT_TRUE(showsRing());
    control.clearFocus();
    EXPECT_FALSE(showsRing());
}

// A screen reader

TEST(SegmentedControl, is_a_tab_list_to_a_screen_reader)
{
    Control control(Tracking::selectOne, { u"&Day"_s, u"R && D"_s, {} });
    control.setToolTip(u"Longest"_s, 2);
    control.setToolTip(u"Hours"_s, 0);
    control.setEnabled(false, 1);
    control.setSelectedSegment(2);
    control.setAccessibleName(u"Scope"_s);
    control.open();
    QAccessibleInterface *const list = QAccessible::queryAccessibleInterface(&control);
    EXPECT_EQ(list->role(), QAccessible::PageTabList);
    EXPECT_EQ(list->text(QAccessible::Name), u"Scope"_s);
    ASSERT_EQ(list->childCount(), 3);
    QAccessibleInterface *const day = list->child(0);
    EXPECT_EQ(day->role(), QAccessible::PageTab);
    EXPECT_EQ(day->parent(), list);
    EXPECT_EQ(list->indexOfChild(day), 0);
    EXPECT_EQ(day->text(QAccessible::Name), u"Day"_s);
    EXPECT_EQ(day->text(QAccessible::Description), u"Hours"_s);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), u"R & D"_s);
    EXPECT_EQ(list->child(2)->text(QAccessible::Name), u"Longest"_s);
    EXPECT_FALSE(day->state().selected);
    EXPECT_TRUE(list->child(1)->state().disabled);
    EXPECT_TRUE(list->child(2)->state().selected);
    EXPECT_TRUE(list->child(2)->state().focused);
    EXPECT_EQ(list->focusChild(), list->child(2));
    const QPoint center = day->rect().center();
    EXPECT_EQ(list->childAt(center.x(), center.y()), day);
    EXPECT_EQ(list->child(3), nullptr);

    EXPECT_TRUE(list->child(1)->actionInterface()->actionNames().isEmpty());
    day->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(control.acted, ElementsAre(0));
    EXPECT_TRUE(day->state().selected);
    control.setSegmentCount(0);
    EXPECT_FALSE(day->isValid());
    EXPECT_EQ(day->text(QAccessible::Name), QString());
}

TEST(SegmentedControl, is_toggle_buttons_or_buttons_to_a_screen_reader)
{
    Control control(Tracking::selectAny);
    control.setSelected(true, 1);
    QAccessibleInterface *const group = QAccessible::queryAccessibleInterface(&control);
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->child(0)->role(), QAccessible::Button);
    EXPECT_TRUE(group->child(0)->state().checkable);
    EXPECT_FALSE(group->child(0)->state().checked);
    EXPECT_TRUE(group->child(1)->state().checked);
    group->child(0)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(group->child(0)->state().checked);
    control.setTrackingMode(Tracking::momentary);
    EXPECT_FALSE(group->child(0)->state().checkable);
    EXPECT_THAT(group->child(0)->actionInterface()->actionNames(),
                testing::Contains(QAccessibleActionInterface::pressAction()));
}

TEST(SegmentedControl, its_size_hint_follows_its_font)
{
    Control control;
    const QSize hint = control.sizeHint();
    const QSize least = control.minimumSizeHint();
    QFont font = control.font();
    font.setPointSizeF(2 * font.pointSizeF());
    control.setFont(font);
    EXPECT_GT(control.sizeHint().width(), hint.width());
    EXPECT_GT(control.minimumSizeHint().width(), least.width());
    control.setFont({});
    EXPECT_EQ(control.sizeHint(), hint);
}
