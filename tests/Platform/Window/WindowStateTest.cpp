// SPDX-License-Identifier: MIT
#include "Window/WindowState.h"

#include "ShownWindow.h"

#include <QDataStream>
#include <QIODevice>
#include <gtest/gtest.h>

using NS::Window;

TEST(WindowState, any_truncated_one_is_refused_and_changes_nothing)
{
    Window window(QRectF(100, 200, 400, 300), whole);
    const QByteArray state = window.saveState();
    const QRectF other(20, 30, 350, 250);
    window.setFrame(other);
    for (qsizetype length = 0; length < state.size(); ++length) {
        EXPECT_FALSE(window.restoreState(state.left(length))) << length;
        ASSERT_EQ(window.frame(), other) << length;
    }
    EXPECT_FALSE(window.restoreState(state + 'x'));
    EXPECT_EQ(window.frame(), other);
    EXPECT_TRUE(window.restoreState(state));
    EXPECT_EQ(window.frame(), QRectF(100, 200, 400, 322));
}

TEST(WindowState, with_sizes_that_no_window_has_is_refused)
{
    Window window(QRectF(100, 200, 400, 300), whole);
    const QByteArray state = window.saveState();
    // The offsets of the three rectangles, of four 32-bit numbers each.
    for (const int rectangle : { 8, 24, 50 }) {
        for (const qint32 right : { -1000, 99, 1 << 30 }) {
            QByteArray number;
            QDataStream(&number, QIODevice::WriteOnly) << right;
            QByteArray changed = state;
            changed.replace(rectangle + 8, 4, number);
            EXPECT_FALSE(window.restoreState(changed)) << rectangle << ' ' << right;
        }
    }
    EXPECT_EQ(window.frame(), QRectF(100, 200, 400, 322));
}

TEST(WindowState, grows_by_a_margin_and_shrinks_back)
{
    Window window(QRectF(100, 200, 400, 300), whole);
    const QByteArray state = window.saveState();
    const QByteArray grown = Pellarvine::detail::grownWindowState(state, 20, 0);
    EXPECT_EQ(Pellarvine::detail::grownWindowState(grown, -20, 0), state);
    ASSERT_TRUE(window.restoreState(grown));
    EXPECT_EQ(window.frame(), QRectF(80, 180, 440, 362));
}

TEST(WindowState, brings_back_a_maximised_window_and_its_normal_size)
{
    Window window(QRectF(100, 200, 400, 300), whole);
    window.show();
    window.zoom();
    const QByteArray state = window.saveState();
    Window other;
    EXPECT_TRUE(other.restoreState(state));
    other.show();
    EXPECT_TRUE(other.isMaximized());
    other.zoom();
    EXPECT_EQ(other.frame(), QRectF(100, 200, 400, 322));
}
