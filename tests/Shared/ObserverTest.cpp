// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/KeyValueEquality.h>
#include <pellarvine/Shared/Observer.h>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace Pellarvine {

static_assert(!std::is_default_constructible_v<Observer>);
static_assert(!std::is_copy_constructible_v<Observer>);

TEST(Observer, is_told_the_current_value_while_it_is_made_unless_it_asks_not_to_be)
{
    Person person(u"Ada"_s);
    QVariantList told;
    const auto record = [&told](const QVariant &value) {
        told.append(value);
    };
    const Observer first(&person, u"name"_s, record);
    EXPECT_EQ(told, QVariantList { u"Ada"_s });
    const Observer second(&person, u"name"_s, false, record);
    EXPECT_EQ(told.size(), 1);
    NS::setValueForKeyPath(&person, u"name"_s, u"Bea"_s);
    EXPECT_EQ(told, (QVariantList { u"Ada"_s, u"Bea"_s, u"Bea"_s }));
}

TEST(Observer, is_told_the_null_object_where_the_property_is_null)
{
    Person person;
    person.partner = &person;
    QVariant told;
    const Observer observer(&person, u"partner"_s, [&](const QVariant &value) { told = value; });
    EXPECT_EQ(told.value<Person *>(), &person);
    NS::setValueForKeyPath(&person, u"partner"_s, {});
    EXPECT_TRUE(NS::isNullObject(told));
}

TEST(Observer, passes_on_no_value_for_a_change_without_one_and_stops_without_a_change)
{
    Person person;
    QVariant told = 1;
    Observer observer(&person, u"name"_s, [&](const QVariant &value) { told = value; });
    const NS::KeyValueChange empty;
    observer.observeValue({}, nullptr, &empty);
    EXPECT_FALSE(told.isValid());
    EXPECT_DEATH(observer.observeValue({}, nullptr, nullptr), "without a change");
}

TEST(Observer, keeps_a_shared_object_and_outlives_a_plain_one)
{
    int calls = 0;
    const auto count = [&calls](const QVariant &) {
        ++calls;
    };
    std::weak_ptr<Person> watched;
    {
        auto shared = std::make_shared<Person>();
        watched = shared;
        const Observer observer(std::move(shared), u"age"_s, false, count);
        ASSERT_FALSE(watched.expired());
        watched.lock()->setAge(1);
        EXPECT_EQ(calls, 1);
    }
    EXPECT_TRUE(watched.expired());

    auto plain = std::make_unique<Person>();
    const Observer observer(plain.get(), u"age"_s, false, count);
    plain.reset();
    EXPECT_EQ(calls, 1);
}

TEST(Observer, may_be_destroyed_in_its_callback_whose_captures_live_to_the_end_of_it)
{
    Person person;
    std::optional<Observer> observer;
    const auto captured = std::make_shared<int>(0);
    std::weak_ptr<int> watched = captured;
    observer.emplace(&person, u"age"_s, false, [captured, &observer](const QVariant &value) {
        if (value.toInt() == 2)
            observer.reset();
        ++*captured;
    });
    person.setAge(1);
    person.setAge(2);
    person.setAge(3);
    EXPECT_EQ(*captured, 2);
    EXPECT_EQ(watched.use_count(), 1); // the callback is gone
}

TEST(Observer, may_change_what_it_observes_and_is_told_within_the_call)
{
    Person person;
    person.setProperty("hobby", 0);
    for (const QString &path : { u"age"_s, u"level"_s, u"hobby"_s }) {
        QVariantList told;
        const Observer observer(&person, path, false, [&](const QVariant &value) {
            told.append(value);
            if (value.toInt() < 50)
                NS::setValueForKeyPath(&person, path, value.toInt() + 1);
        });
        NS::setValueForKeyPath(&person, path, 1);
        EXPECT_EQ(told.size(), 50) << path.toStdString();
        EXPECT_EQ(told.last(), 50) << path.toStdString();
    }
}

TEST(Observer, an_exception_of_the_first_call_leaves_the_constructor)
{
    Person person;
    int calls = 0;
    EXPECT_THROW(static_cast<void>(Observer(&person, u"age"_s,
                                            [&](const QVariant &) {
                                                ++calls;
                                                throw std::runtime_error("no");
                                            })),
                 std::runtime_error);
    person.setAge(1);
    EXPECT_EQ(calls, 1);
    EXPECT_THROW(static_cast<void>(Observer(&person, u"aeg"_s, {})), NS::KeyValueException);
    EXPECT_THROW(static_cast<void>(Observer(&person, u"age"_s, {})), std::invalid_argument);
    person.setAge(2);
}

TEST(Observer, a_warning_for_what_its_callback_throws_names_the_class_and_the_key_path)
{
    Person person;
    const Observer observer(&person, u"address.city"_s, false,
                            [](const QVariant &) { throw std::runtime_error("no map"); });
    ::testing::internal::CaptureStdout();
    NS::setValueForKeyPath(&person, u"address.city"_s, u"Oslo"_s);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Warning: no map (the observer of Person.address.city)\n");
}

} // namespace Pellarvine
