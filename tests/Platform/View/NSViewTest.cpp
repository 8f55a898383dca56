// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSView+Layer.h>
#include <pellarvine/Platform/NSView.h>

#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

#include <cstddef>
#include <new>

namespace {

// A view that counts its layout passes and lays out a child.
class Passing : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QMarginsF alignmentRectInsets READ alignmentRectInsets CONSTANT)

public:
    using QWidget::QWidget;

    Q_INVOKABLE void performLayout()
    {
        ++passes;
        widthAtPass = width();
        if (child)
            child->resize(width(), 10);
        if (marksItself)
            NS::setNeedsLayout(this);
    }

    QMarginsF alignmentRectInsets() const { return { 1, 2, 3, 4 }; }

    int passes = 0;
    int widthAtPass = 0;
    int paints = 0;
    int passesAtPaint = -1;
    bool marksItself = false;
    Passing *child = nullptr;

protected:
    void paintEvent(QPaintEvent *) override
    {
        ++paints;
        passesAtPaint = passes;
    }
};

} // namespace

TEST(View, frames_have_their_origin_at_the_lower_left_of_the_parent)
{
    QWidget parent;
    parent.resize(200, 100);
    QWidget child(&parent);
    NS::setFrame(&child, QRectF(10, 20, 30, 40));
    EXPECT_EQ(child.geometry(), QRect(10, 40, 30, 40));
    EXPECT_EQ(NS::frame(&child), QRectF(10, 20, 30, 40));
    EXPECT_EQ(NS::bounds(&child), QRectF(0, 0, 30, 40));
    parent.resize(200, 130);
    EXPECT_EQ(NS::frame(&child), QRectF(10, 50, 30, 40)); // Qt keeps the distance from the top
}

TEST(View, a_windows_frame_is_that_of_its_screen)
{
    QWidget window;
    window.setGeometry(50, 60, 200, 100);
    const double height = window.screen()->geometry().height();
    EXPECT_EQ(NS::frame(&window), QRectF(50, height - 160, 200, 100));
    NS::setFrame(&window, QRectF(5, 6, 70, 80));
    EXPECT_EQ(NS::frame(&window), QRectF(5, 6, 70, 80));
}

TEST(View, edges_round_one_by_one_so_that_neighbours_still_touch)
{
    QWidget parent;
    parent.resize(100, 100);
    QWidget left(&parent);
    QWidget right(&parent);
    for (const double width : { 33.3, 33.5, 33.7 }) {
        NS::setFrame(&left, QRectF(0, 0, width, 10));
        NS::setFrame(&right, QRectF(width, 0, width, 10));
        EXPECT_EQ(NS::frame(&left).right(), NS::frame(&right).left()) << width;
        EXPECT_EQ(NS::frame(&right).right(), qRound(2 * width)) << width;
    }
    NS::setFrame(&left, QRectF(10, 10, -5, -5));
    EXPECT_EQ(NS::frame(&left).size(), QSizeF(0, 0));
}

TEST(View, flipping_twice_changes_nothing)
{
    const QRectF rect(1.5, 2.5, 3.25, 4.75);
    EXPECT_EQ(NS::flipped(rect, 10), QRectF(1.5, 2.75, 3.25, 4.75));
    EXPECT_EQ(NS::flipped(NS::flipped(rect, 10), 10), rect);
    EXPECT_EQ(NS::flipped(QPointF(1, 2), 10), QPointF(1, 8));
}

TEST(View, a_widget_sets_its_aligned_part)
{
    EXPECT_EQ(NS::alignmentRectInsets(std::make_unique<QWidget>().get()), QMarginsF());
    EXPECT_EQ(NS::alignmentRectInsets(std::make_unique<Passing>().get()), QMarginsF(1, 2, 3, 4));
}

TEST(View, an_added_subview_shows_with_its_parent_unless_it_was_hidden)
{
    QWidget parent;
    parent.show();
    auto *const shown = new QWidget;
    auto *const hidden = new QWidget;
    hidden->hide();
    NS::addSubview(&parent, shown);
    NS::addSubview(&parent, hidden);
    EXPECT_TRUE(shown->isVisible());
    EXPECT_FALSE(hidden->isVisible());
    NS::addSubview(&parent, shown);
    EXPECT_EQ(parent.children(), (QObjectList { shown, hidden }));
}

TEST(LayoutPass, runs_once_before_the_next_paint)
{
    Passing view;
    view.resize(100, 50);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    view.passes = 0;
    NS::setNeedsLayout(&view);
    NS::setNeedsLayout(&view);
    EXPECT_TRUE(NS::needsLayout(&view));
    EXPECT_EQ(view.passes, 0);
    const int paints = view.paints;
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.paints > paints; }));
    EXPECT_EQ(view.passes, 1);
    EXPECT_EQ(view.passesAtPaint, 1);
    EXPECT_FALSE(NS::needsLayout(&view));
}

TEST(LayoutPass, a_change_of_size_marks_what_has_been_marked_before)
{
    Passing view;
    view.show();
    NS::setNeedsLayout(&view, false);
    view.resize(123, 45);
    EXPECT_TRUE(NS::needsLayout(&view));
    view.grab();
    EXPECT_EQ(view.widthAtPass, 123);
    EXPECT_EQ(view.passesAtPaint, 1);
}

TEST(LayoutPass, runs_now_for_a_hidden_tree_parents_first)
{
    QWidget window;
    window.resize(300, 200);
    auto *const box = new QVBoxLayout(&window);
    box->setContentsMargins(0, 0, 0, 0);
    auto *const outer = new Passing;
    box->addWidget(outer);
    auto *const inner = new Passing(outer);
    outer->child = inner;
    NS::setNeedsLayout(inner);
    NS::setNeedsLayout(outer);
    NS::layoutSubtreeIfNeeded(&window);
    EXPECT_EQ(outer->widthAtPass, 300);
    EXPECT_EQ(inner->widthAtPass, 300);
    EXPECT_EQ(inner->passes, 1);
    NS::layoutSubtreeIfNeeded(&window);
    EXPECT_EQ(outer->passes, 1);
}

TEST(LayoutPass, a_mark_set_by_the_pass_waits_for_the_next_one)
{
    Passing view;
    view.marksItself = true;
    NS::setNeedsLayout(&view);
    NS::layoutSubtreeIfNeeded(&view);
    EXPECT_EQ(view.passes, 1);
    EXPECT_TRUE(NS::needsLayout(&view));
}

TEST(LayoutPass, a_class_without_a_method_of_its_own_just_loses_its_mark)
{
    QWidget view;
    EXPECT_FALSE(NS::needsLayout(&view));
    NS::setNeedsLayout(&view);
    NS::layoutSubtreeIfNeeded(&view);
    EXPECT_FALSE(NS::needsLayout(&view));
}

TEST(LayoutPass, follows_a_marked_view_to_another_window)
{
    Passing first;
    Passing second;
    Passing view(&first);
    for (QWidget *const window : { &first, &second })
        window->show();
    NS::setNeedsLayout(&view);
    view.setParent(&second);
    view.show();
    const int paints = view.paints;
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.paints > paints; }));
    EXPECT_EQ(view.passes, 1);
    EXPECT_EQ(view.passesAtPaint, 1);
    view.setParent(nullptr);
}

TEST(View, a_view_made_at_the_address_of_an_earlier_one_has_nothing_of_it)
{
    alignas(QWidget) std::byte memory[sizeof(QWidget)];
    auto *view = new (memory) QWidget;
    NS::setNeedsLayout(view);
    NS::setWantsLayer(view, true);
    EXPECT_TRUE(NS::needsLayout(view));
    EXPECT_TRUE(NS::layer(view));
    view->~QWidget();
    view = new (memory) QWidget;
    EXPECT_FALSE(NS::needsLayout(view));
    EXPECT_FALSE(NS::layer(view));
    view->resize(10, 10);
    view->grab();
    EXPECT_FALSE(NS::needsLayout(view));
    view->~QWidget();
}

#include "NSViewTest.moc"
