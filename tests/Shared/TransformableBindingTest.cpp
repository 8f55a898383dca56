// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Shared/TransformableBinding.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine {

using NumberToText = TransformableBinding<int, QString>;

static_assert(!std::is_default_constructible_v<NumberToText>);
static_assert(!std::is_copy_constructible_v<NumberToText>);

namespace {

void set(QObject &object, const QString &path, const QVariant &value)
{
    NS::setValueForKeyPath(&object, path, value);
}

QString text(int number)
{
    return u"<%1>"_s.arg(number);
}

int number(const QString &text)
{
    return text.mid(1).chopped(1).toInt();
}

} // namespace

TEST(TransformableBinding, transforms_both_ways_between_declared_types_and_between_boxes)
{
    // The properties of the first row have exactly these types. The others need a QVariant.
    const std::pair<QString, QString> rows[] = {
        { u"age"_s, u"name"_s },
        { u"note"_s, u"name"_s },
        { u"age"_s, u"note"_s },
        { u"partner.settings.size"_s, u"hobby"_s },
    };
    for (const auto &[firstPath, secondPath] : rows) {
        Person first;
        Person second;
        first.partner = &first;
        second.setProperty("hobby", 0);
        set(first, firstPath, 1);
        const NumberToText binding(&first, firstPath, &second, secondPath, true, text, number);
        EXPECT_EQ(NS::valueForKeyPath(&second, secondPath), u"<1>"_s) << firstPath.toStdString();
        set(first, firstPath, 2);
        EXPECT_EQ(NS::valueForKeyPath(&second, secondPath), u"<2>"_s) << firstPath.toStdString();
        set(second, secondPath, u"<3>"_s);
        EXPECT_EQ(NS::valueForKeyPath(&first, firstPath), 3) << firstPath.toStdString();
    }
}

TEST(TransformableBinding, no_value_passes_without_the_transformer)
{
    Person first;
    Person second;
    first.note = 1;
    second.note = 0;
    int calls = 0;
    const NumberToText binding(&first, u"note"_s, &second, u"note"_s, false, [&](int value) {
        ++calls;
        return text(value);
    });
    EXPECT_EQ(second.note, u"<1>"_s);
    set(first, u"note"_s, {});
    EXPECT_FALSE(second.note.isValid());
    EXPECT_EQ(calls, 1);
}

TEST(TransformableBinding, a_value_of_another_type_passes_as_it_is)
{
    const std::pair<QVariant, QVariant> rows[] = {
        { u"many"_s, u"many"_s }, { u"12"_s, u"12"_s }, { 3.7, 3.7 },
        { 3.0, u"<3>"_s }, // the same number
        { true, u"<1>"_s },
    };
    for (const auto &[value, arrives] : rows) {
        Person first;
        Person second;
        first.note = value;
        const NumberToText binding(&first, u"note"_s, &second, u"note"_s, false, text);
        EXPECT_EQ(second.note, arrives);
    }
}

TEST(TransformableBinding, objects_are_cast_to_the_class_that_the_transformer_takes)
{
    Person first;
    Person person(u"Ada"_s);
    QObject other;
    Person second;
    const TransformableBinding<Person *, QString> binding(
            &first, u"note"_s, &second, u"note"_s, false,
            [](Person *someone) { return someone->name; });
    set(first, u"note"_s, QVariant::fromValue(static_cast<QObject *>(&person)));
    EXPECT_EQ(second.note, u"Ada"_s);
    set(first, u"note"_s, QVariant::fromValue(&other));
    EXPECT_EQ(second.note.value<QObject *>(), &other);
}

TEST(TransformableBinding, one_way_never_calls_the_reverse_transformer)
{
    Person first;
    Person second;
    const NumberToText binding(&first, u"age"_s, &second, u"name"_s, false, text,
                               [](const QString &) {
                                   ADD_FAILURE() << "reverse";
                                   return 0;
                               });
    set(second, u"name"_s, u"<5>"_s);
    EXPECT_EQ(first.age(), 0);
    EXPECT_FALSE(binding.twoWayBinding());
    EXPECT_EQ(binding.secondKeyPath(), u"name"_s);
}

TEST(TransformableBinding, a_direction_without_a_transformer_carries_values_unchanged)
{
    Person first;
    Person second;
    const TransformableBinding<int, int> binding(&first, u"age"_s, &second, u"age"_s, true, {},
                                                 [](int value) { return value; });
    first.setAge(3);
    EXPECT_EQ(second.age(), 3);
    second.setAge(4);
    EXPECT_EQ(first.age(), 4);
}

TEST(TransformableBinding,
     an_exchange_ends_when_the_sides_are_equal_and_is_stopped_if_they_never_are)
{
    Person first;
    Person second;
    const TransformableBinding<int, double> settling(
            &first, u"age"_s, &second, u"height"_s, true,
            [](int age) { return age < 0 ? std::nan("") : age / 2.0; },
            [](double height) { return std::isnan(height) ? -1 : int(height * 2); });
    ::testing::internal::CaptureStdout();
    set(second, u"height"_s, 1.7); // 3, which is 1.5
    EXPECT_EQ(first.age(), 3);
    EXPECT_EQ(second.height, 1.5);
    set(second, u"height"_s, std::nan(""));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");

    const auto more = [](int value) {
        return value + 1;
    };
    const TransformableBinding<int, int> growing(&first, u"age"_s, &second, u"level"_s, true, more,
                                                 more);
    ::testing::internal::CaptureStdout();
    second.setLevel(100);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Warning: the binding of Person.age and Person.level does not settle; stopped after "
              "16 exchanges\n");
}

TEST(TransformableBinding, a_transformer_may_destroy_the_binding_the_target_or_its_path)
{
    Person first;
    auto second = std::make_unique<Person>();
    std::optional<NumberToText> binding;
    const auto emplace = [&](const QString &path, std::function<void()> meanwhile) {
        first.setAge(0);
        binding.emplace(&first, u"age"_s, second.get(), path, false,
                        [meanwhile = std::move(meanwhile), kept = u"kept"_s](int value) {
                            if (value > 0)
                                meanwhile();
                            return kept + text(value);
                        });
    };
    emplace(u"name"_s, [&] { binding.reset(); });
    first.setAge(1);
    EXPECT_EQ(second->name, u"kept<0>"_s);

    Person other;
    second->partner = second.get();
    emplace(u"partner.name"_s, [&] { set(*second, u"partner"_s, QVariant::fromValue(&other)); });
    first.setAge(1);
    EXPECT_EQ(other.name, u"kept<1>"_s); // the object that is there when the value is written

    second->partner = nullptr;
    emplace(u"name"_s, [&] { second.reset(); });
    first.setAge(1);
    EXPECT_EQ(binding->second(), nullptr);
}

} // namespace Pellarvine
