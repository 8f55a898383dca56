// SPDX-License-Identifier: MIT
#include "Controls/SegmentGeometry.h"

#include <gmock/gmock.h>

using namespace Pellarvine::detail;
using testing::DoubleNear;
using testing::Pointwise;

TEST(SegmentGeometry, padding_gives_way_before_the_widest_segments_do)
{
    const QList<SegmentWidths> segments { { 40, 24 }, { 80, 64 }, { 60, 60 } };
    const std::pair<double, QList<double>> rows[] = {
        { 500, { 40, 80, 60 } }, { 180, { 40, 80, 60 } },
        { 164, { 32, 72, 60 } }, // the padding is half as wide
        { 148, { 24, 64, 60 } }, { 140, { 24, 58, 58 } }, // the two widest share the rest
        { 60, { 20, 20, 20 } },  { 0, { 0, 0, 0 } },
    };
    for (const auto &[available, widths] : rows) {
        EXPECT_THAT(fittedSegmentWidths(segments, available), Pointwise(DoubleNear(1e-9), widths))
                << available;
    }
}

TEST(SegmentGeometry, fractions_of_a_unit_add_up_to_the_width_of_the_control)
{
    const QList<SegmentWidths> thirds(3, { 20.0 + 1.0 / 3, 20.0 + 1.0 / 3 });
    EXPECT_EQ(segmentRects(thirds, { 65, 24 }, Qt::LeftToRight),
              QList<QRect>({ { 1, 1, 20, 22 }, { 22, 1, 21, 22 }, { 44, 1, 20, 22 } }));
    EXPECT_EQ(segmentRects(thirds, { 65, 24 }, Qt::RightToLeft),
              QList<QRect>({ { 44, 1, 20, 22 }, { 22, 1, 21, 22 }, { 1, 1, 20, 22 } }));
}

TEST(SegmentGeometry, every_pixel_belongs_to_one_segment)
{
    for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
        const QSize size(94, 24); // three times 30 units, and four lines
        const QList<QRect> rects =
                segmentRects(QList<SegmentWidths>(3, { 30, 30 }), size, direction);
        const bool isMirrored = direction == Qt::RightToLeft;
        int changes = 0;
        for (int x = 0; x < size.width(); ++x) {
            const int here = segmentAt(rects, { x, 0 }, direction);
            ASSERT_GE(here, 0) << x;
            changes += x > 0 && here != segmentAt(rects, { x - 1, 23 }, direction);
        }
        EXPECT_EQ(changes, 2);
        EXPECT_EQ(segmentAt(rects, { 0, 5 }, direction), isMirrored ? 2 : 0);

        const QList<QRect> roomy =
                segmentRects(QList<SegmentWidths>(3, { 30, 30 }), size + QSize(50, 0), direction);
        EXPECT_EQ(segmentAt(roomy, { isMirrored ? 10 : 134, 5 }, direction), -1);
    }
}
