// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Shared/MemberBinding.h>

#include <QSlider>
#include <QSpinBox>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine {

static_assert(
        detail::FitsInto<int,
                         int> && !detail::FitsInto<double, int> && !detail::FitsInto<QString, int>);

namespace {

// Stores a little more than each value that it gets.
class Level : public QObject
{
    Q_OBJECT

public:
    explicit Level(double surplus = 0)
        : m_surplus(surplus)
    { }
    double value() const { return m_value; }
    void setValue(double value)
    {
        m_value = value + m_surplus;
        ++writes;
        Q_EMIT valueChanged();
    }

    int writes = 0;

Q_SIGNALS:
    void valueChanged();

private:
    double m_value = 0;
    double m_surplus;
};

const auto level = property(&Level::value, &Level::setValue, &Level::valueChanged);
const auto sliderValue = property(&QSlider::value, &QSlider::setValue, &QSlider::valueChanged);
const auto boxValue = property(&QSpinBox::value, &QSpinBox::setValue, &QSpinBox::valueChanged);

} // namespace

TEST(MemberBinding, the_first_side_wins_and_changes_go_both_ways_or_only_forward)
{
    for (const bool twoWay : { true, false }) {
        QSlider slider;
        QSpinBox box;
        slider.setValue(7);
        std::optional<MemberBinding> binding;
        binding.emplace(&slider, sliderValue, &box, boxValue, twoWay);
        EXPECT_EQ(box.value(), 7);
        slider.setValue(8);
        EXPECT_EQ(box.value(), 8);
        box.setValue(9);
        EXPECT_EQ(slider.value(), twoWay ? 9 : 8);
        binding.reset();
        slider.setValue(1);
        EXPECT_EQ(box.value(), 9);
    }
}

TEST(MemberBinding, an_equal_side_is_not_written_also_if_it_is_not_a_number)
{
    Level first;
    Level second;
    const MemberBinding binding(&first, level, &second, level);
    EXPECT_EQ(second.writes, 0);
    first.setValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan(second.value()));
    EXPECT_EQ(first.writes + second.writes, 2);
}

TEST(MemberBinding, sides_that_never_agree_are_stopped_with_a_warning)
{
    Level first(1);
    Level second(1);
    const MemberBinding binding(&first, level, &second, level);
    ::testing::internal::CaptureStdout();
    first.setValue(1);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), ::testing::HasSubstr("does not settle"));
    EXPECT_EQ(first.writes + second.writes, 17);
}

TEST(MemberBinding, either_side_and_the_binding_may_be_destroyed_during_a_change)
{
    Level first;
    auto second = std::make_unique<Level>();
    std::optional<MemberBinding> binding;
    binding.emplace(&first, level, second.get(), level);
    QObject::connect(second.get(), &Level::valueChanged, second.get(), [&] {
        binding.reset();
        second.reset();
    });
    first.setValue(3);
    EXPECT_FALSE(second);
    first.setValue(4);
    EXPECT_EQ(first.value(), 4);
}

} // namespace Pellarvine

#include "MemberBindingTest.moc"
