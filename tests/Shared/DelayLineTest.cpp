// SPDX-License-Identifier: MIT
#include "Shared/DelayLine.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace Pellarvine::detail {

TEST(DelayLine, releases_nothing_until_it_is_full_and_then_byte_for_byte)
{
    const QByteArray bytes("abcdefghijklmnopqrstuvwxyz0123456789");
    DelayLine line(32);
    EXPECT_EQ(line.feed(bytes.first(32)), "");
    EXPECT_EQ(line.buffer(), bytes.first(32));
    EXPECT_EQ(line.feed("!"), "a");
    EXPECT_EQ(line.feed(""), "");
    EXPECT_EQ(line.buffer(), bytes.sliced(1, 31) + '!');

    DelayLine slow(32);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(slow.feed(bytes.sliced(10 * i, 10)), "");
    EXPECT_EQ(slow.feed("54321"), "abc");
}

TEST(DelayLine, a_chunk_longer_than_the_delay_passes_at_once)
{
    const QByteArray bytes = QByteArray("0123456789").repeated(10);
    DelayLine line(32);
    EXPECT_EQ(line.feed(bytes), bytes.first(68));
    EXPECT_EQ(line.buffer(), bytes.last(32));
}

TEST(DelayLine, keeps_order_and_the_last_bytes_whatever_the_chunks)
{
    QRandomGenerator random(7);
    for (int run = 0; run < 500; ++run) {
        const qsizetype delay = random.bounded(1, 40);
        DelayLine line(delay);
        QByteArray fed;
        QByteArray left;
        for (int chunk = random.bounded(12); chunk > 0; --chunk) {
            QByteArray bytes(random.bounded(3 * int(delay)), Qt::Uninitialized);
            random.generate(bytes.begin(), bytes.end());
            fed += bytes;
            left += line.feed(bytes);
            ASSERT_LE(line.buffer().size(), delay);
        }
        ASSERT_EQ(line.buffer(), fed.last(std::min(fed.size(), delay)));
        ASSERT_EQ(left + line.buffer(), fed);
    }
}

} // namespace Pellarvine::detail
