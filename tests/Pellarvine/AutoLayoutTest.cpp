// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/NSView+AutoLayout.h>
#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSView.h>

#include <QWidget>
#include <gmock/gmock.h>

namespace {

// A subview with that size hint.
class Sized : public QWidget
{
public:
    explicit Sized(QSize size, QWidget *parent = nullptr)
        : QWidget(parent)
        , m_size(size)
    { }
    QSize sizeHint() const override { return m_size; }

private:
    QSize m_size;
};

// Overrides the pinning functions by invokable methods.
class Pinning : public QWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE void pinWidthAndHeight(QWidget *view) { note("edges", view); }
    Q_INVOKABLE void pinWidthAndHeight(QWidget *view, double border)
    {
        note("edges", view, border);
    }
    Q_INVOKABLE void pinCenter(QWidget *view) { note("centre", view); }
    Q_INVOKABLE void pinCenterAndConstrainInside(QWidget *view) { note("inside", view); }
    Q_INVOKABLE void pinCenterAndConstrainInside(QWidget *view, double border)
    {
        note("inside", view, border);
    }

    std::vector<std::string> calls;

private:
    void note(const std::string &name, QWidget *view, double border = 0.0)
    {
        EXPECT_EQ(view->parentWidget(), this);
        calls.push_back(name + ' ' + std::to_string(int(border)));
    }
};

class Parent : public QWidget
{
public:
    Parent() { resize(100, 50); }

    QRectF frameOf(QWidget *subview)
    {
        NS::layoutSubtreeIfNeeded(this);
        return NS::frame(subview);
    }
};

} // namespace

TEST(AutoLayout, a_pinned_subview_fills_its_parent)
{
    Parent parent;
    auto *const subview = new QWidget;
    NS::addAndPin(&parent, subview);
    EXPECT_EQ(subview->parentWidget(), &parent);
    EXPECT_EQ(parent.frameOf(subview), QRectF(0, 0, 100, 50));
    parent.resize(321, 123);
    EXPECT_EQ(parent.frameOf(subview), QRectF(0, 0, 321, 123));
}

TEST(AutoLayout, a_border_lies_around_a_pinned_subview)
{
    Parent parent;
    auto *const subview = new QWidget;
    NS::addAndPin(&parent, subview, 8);
    EXPECT_EQ(parent.frameOf(subview), QRectF(8, 8, 84, 34));
    Parent outer;
    auto *const larger = new QWidget;
    NS::addAndPin(&outer, larger, -8);
    EXPECT_EQ(outer.frameOf(larger), QRectF(-8, -8, 116, 66));
}

TEST(AutoLayout, a_centred_subview_keeps_its_own_size)
{
    Parent parent;
    auto *const small = new Sized({ 20, 10 });
    auto *const large = new Sized({ 120, 90 });
    NS::addAndCenter(&parent, small);
    NS::addAndCenter(&parent, large);
    EXPECT_EQ(parent.frameOf(small), QRectF(40, 20, 20, 10));
    EXPECT_EQ(parent.frameOf(large), QRectF(-10, -20, 120, 90));
}

TEST(AutoLayout, a_subview_constrained_to_the_bounds_stays_centred_within_the_border)
{
    const std::tuple<QSize, double, QRectF> rows[] = {
        { { 40, 30 }, 0, { 30, 10, 40, 30 } },
        { { 140, 30 }, 0, { 0, 10, 100, 30 } },
        { { 140, 130 }, 0, { 0, 0, 100, 50 } },
        // A subview may be larger than its parent by 8 units on each side.
        { { 116, 66 }, 8, { -8, -8, 116, 66 } },
        { { 140, 130 }, 8, { -8, -8, 116, 66 } },
        { { 140, 130 }, -8, { 8, 8, 84, 34 } },
    };
    for (const auto &[wanted, border, frame] : rows) {
        Parent parent;
        auto *const subview = new Sized(wanted);
        ::testing::internal::CaptureStdout();
        if (border == 0.0)
            NS::addCenteredAndConstrainedToBounds(&parent, subview);
        else
            NS::addCenteredAndConstrainedToBounds(&parent, subview, border);
        EXPECT_EQ(parent.frameOf(subview), frame)
                << wanted.width() << " x " << wanted.height() << ", " << border;
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    }
}

TEST(AutoLayout, pinning_twice_constrains_twice)
{
    Parent parent;
    auto *const subview = new QWidget;
    NS::addAndPin(&parent, subview, 8);
    ::testing::internal::CaptureStdout();
    NS::pinWidthAndHeight(&parent, subview, 8);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(parent.frameOf(subview), QRectF(8, 8, 84, 34));
    // The constraints of the first call are still active, and contradict other ones.
    ::testing::internal::CaptureStdout();
    NS::pinWidthAndHeight(&parent, subview, 12);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                ::testing::StartsWith("Warning: dropped the constraint QWidget.leading == "
                                      "QWidget/QWidget[1].leading - 12, which contradicts "
                                      "QWidget.leading == QWidget/QWidget[1].leading - 8"));
    EXPECT_EQ(parent.frameOf(subview), QRectF(8, 8, 84, 34));
}

TEST(AutoLayout, siblings_can_be_pinned_to_each_other)
{
    Parent parent;
    auto *const one = new QWidget(&parent);
    auto *const other = new QWidget(&parent);
    NS::pinWidthAndHeight(&parent, one, 10);
    NS::pinWidthAndHeight(one, other, 5);
    EXPECT_EQ(parent.frameOf(other), QRectF(15, 15, 70, 20));
}

TEST(AutoLayout, a_parents_own_pin_method_is_called_instead)
{
    Pinning receiver;
    NS::addAndPin(&receiver, new QWidget);
    NS::addAndPin(&receiver, new QWidget, 1);
    NS::addAndCenter(&receiver, new QWidget);
    NS::addCenteredAndConstrainedToBounds(&receiver, new QWidget);
    NS::addCenteredAndConstrainedToBounds(&receiver, new QWidget, 2);
    EXPECT_EQ(receiver.calls, (std::vector<std::string> { "edges 0", "edges 1", "centre 0",
                                                          "inside 0", "inside 2" }));
}

TEST(AutoLayout, adding_turns_a_given_frame_into_a_constrained_one)
{
    Parent parent;
    auto *const subview = new QWidget;
    subview->setGeometry(1, 2, 3, 4);
    NS::setTranslatesAutoresizingMaskIntoConstraints(subview, true);
    NS::addAndPin(&parent, subview);
    EXPECT_FALSE(NS::translatesAutoresizingMaskIntoConstraints(subview));
    EXPECT_EQ(parent.frameOf(subview), QRectF(0, 0, 100, 50));
}

#include "AutoLayoutTest.moc"
