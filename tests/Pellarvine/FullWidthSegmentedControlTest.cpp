// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Pellarvine/NSView+AutoLayout.h>
#include <pellarvine/Platform/NSView.h>

#include <QMargins>
#include <QVBoxLayout>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using Pellarvine::FullWidthSegmentedControl;
using testing::ElementsAre;

namespace {

class Control : public FullWidthSegmentedControl
{
public:
    explicit Control(int count) { setSegmentCount(count); }

    std::vector<double> widths() const
    {
        std::vector<double> all;
        all.reserve(segmentCount());
        for (int i = 0; i < segmentCount(); ++i)
            all.push_back(widthForSegment(i));
        return all;
    }
};

} // namespace

TEST(FullWidthSegmentedControl, its_segments_fill_the_frame_to_the_last_unit)
{
    const std::pair<int, std::vector<double>> cases[] = {
        { 0, {} },
        { 1, { 298 } },
        { 2, { 149, 148 } },
        { 3, { 99, 99, 98 } },
        { 4, { 74, 74, 74, 73 } },
        { 7, { 42, 42, 42, 42, 42, 42, 40 } },
    };
    for (const auto &[count, widths] : cases) {
        Control control(count);
        control.setFrame({ 10, 20, 300, 24 });
        EXPECT_EQ(control.widths(), widths);
        EXPECT_EQ(NS::bounds(&control).size(), QSizeF(300, 24));
        if (count > 0) {
            EXPECT_EQ(control.segmentRect(count - 1).right(), 298);
        }
    }
}

TEST(FullWidthSegmentedControl, segments_do_not_cover_the_alignment_insets)
{
    Control control(3);
    control.setProperty("alignmentRectInsets", QVariant::fromValue(QMarginsF(6, 50, 2.5, 50)));
    control.setFrame({ 0, 0, 300, 24 });
    EXPECT_THAT(control.widths(), ElementsAre(96, 96, 95.5));
}

TEST(FullWidthSegmentedControl, follows_its_frame_however_that_changes)
{
    QWidget window;
    auto *const layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *const control = new Control(3);
    layout->addWidget(control);
    window.show();
    for (const int width : { 300, 400, 150 }) {
        window.resize(width, 50);
        EXPECT_EQ(control->width(), width) << "it can shrink again";
        EXPECT_EQ(control->widthForSegment(0), (width - 2) / 3);
        EXPECT_EQ(control->segmentRect(2).right(), width - 2);
    }
    control->setParent(nullptr);
    control->resize(300, 24);
    EXPECT_THAT(control->widths(), ElementsAre(99, 99, 98)) << "while it is hidden, too";
    NS::setFrame(control, { 0, 0, 600, 24 });
    EXPECT_THAT(control->widths(), ElementsAre(199, 199, 198));
    delete control;

    QWidget panel;
    panel.resize(300, 80);
    auto *const pinned = new Control(3);
    NS::addAndPin(&panel, pinned, 8);
    NS::layoutSubtreeIfNeeded(&panel);
    EXPECT_THAT(pinned->widths(), ElementsAre(94, 94, 92));
}

TEST(FullWidthSegmentedControl, spreads_anew_when_it_gets_more_segments_or_a_frame)
{
    Control control(3);
    control.setFrame({ 0, 0, 300, 24 });
    control.setWidth(10, 0);
    EXPECT_THAT(control.widths(), ElementsAre(10, 99, 98)) << "until the next frame";
    control.setFrame({ 0, 0, 300, 24 });
    EXPECT_THAT(control.widths(), ElementsAre(99, 99, 98));
    control.setWidth(10, 0);
    NS::setFrame(&control, { 0, 0, 300, 24 });
    EXPECT_THAT(control.widths(), ElementsAre(99, 99, 98)) << "though it is where it was";
    control.setWidth(10, 0);
    control.show();
    EXPECT_THAT(control.widths(), ElementsAre(10, 99, 98)) << "being shown is no frame";
    control.setLabels({ u"A"_s, u"B"_s, u"C"_s, u"D"_s });
    EXPECT_THAT(control.widths(), ElementsAre(74, 74, 74, 73));
}

TEST(FullWidthSegmentedControl, asks_for_the_widest_label_in_every_segment)
{
    Control control(0);
    control.setLabels({ u"I"_s, u"A label that is long"_s });
    const int asked = control.sizeHint().width();
    NS::SegmentedControl plain;
    plain.setLabels({ u"A label that is long"_s, u"A label that is long"_s });
    EXPECT_EQ(asked, plain.sizeHint().width());
    control.setFrame({ 0, 0, 2000, 24 });
    EXPECT_EQ(control.sizeHint().width(), asked);
    EXPECT_LT(control.minimumSizeHint().width(), asked);
    QWidget narrow;
    auto *const layout = new QVBoxLayout(&narrow);
    layout->addWidget(&control);
    EXPECT_LT(layout->minimumSize().width(), asked) << "where there is no room, labels elide";
    control.setParent(nullptr);
}
