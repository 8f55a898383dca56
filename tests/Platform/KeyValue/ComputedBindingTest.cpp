// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/NSComputedBinding.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>

#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

TEST(ComputedBinding, a_property_follows_each_of_its_sources)
{
    Person ada(u"Ada"_s);
    Person partner(u"Grace"_s);
    QLabel label;
    int calls = 0;
    NS::bind(&label, u"text"_s,
             { { &ada, u"name"_s }, { &ada, u"partner.name"_s }, { &ada, u"age"_s } },
             [&calls](const QString &name, const std::optional<QString> &other, int age) {
                 ++calls;
                 return u"%1+%2, %3"_s.arg(name, other.value_or(u"nobody"_s)).arg(age);
             });
    EXPECT_EQ(label.text(), u"Ada+nobody, 0"_s);
    EXPECT_EQ(calls, 1);
    ada.setAge(36);
    ada.setProperty("partner", QVariant::fromValue(&partner));
    EXPECT_EQ(label.text(), u"Ada+Grace, 36"_s);
    partner.setProperty("name", u"Emmy"_s);
    EXPECT_EQ(label.text(), u"Ada+Emmy, 36"_s);
    EXPECT_EQ(calls, 4);
    NS::unbind(&label, u"text"_s);
    ada.setAge(37);
    EXPECT_EQ(calls, 4);
}

TEST(ComputedBinding, a_source_is_kept_by_a_shared_pointer_and_has_no_value_once_it_is_gone)
{
    auto kept = std::make_shared<Person>(u"Ada"_s);
    auto watched = std::make_unique<Person>(u"Grace"_s);
    Person other;
    QLabel label;
    NS::bind(
            &label, u"text"_s,
            { { std::shared_ptr<Person>(kept), u"name"_s },
              { watched.get(), u"name"_s },
              { &other, u"age"_s } },
            [](const QString &first, const QString &second, int) { return first + u'/' + second; });
    const std::weak_ptr<Person> reference = std::exchange(kept, nullptr);
    watched.reset();
    EXPECT_EQ(label.text(), u"Ada/"_s);
    other.setAge(1);
    EXPECT_EQ(label.text(), u"Ada/"_s);
    NS::unbind(&label, u"text"_s);
    EXPECT_TRUE(reference.expired());
}

TEST(ComputedBinding, what_cannot_be_computed_is_an_error_at_first_and_a_warning_later)
{
    Person person;
    QLabel label(u"before"_s);
    bool throws = true;
    const auto length = [&](const QString &name) {
        if (throws)
            throw std::runtime_error("no length");
        return name.size();
    };
    EXPECT_THROW(NS::bind(&label, u"text"_s, { { &person, u"name"_s } }, length),
                 std::runtime_error);
    throws = false;
    EXPECT_THROW(NS::bind(&label, u"text"_s, { { &person, u"nmae"_s } }, length),
                 NS::KeyValueException);
    EXPECT_THROW(NS::bind(&label, u"txet"_s, { { &person, u"name"_s } }, length),
                 NS::KeyValueException);
    person.setProperty("name", u"Ada"_s);
    EXPECT_EQ(label.text(), u"before"_s);
    EXPECT_TRUE(NS::infoForBinding(&label, u"text"_s).isEmpty());
    NS::bind(&label, u"text"_s, { { &person, u"name"_s } }, length);
    EXPECT_EQ(label.text(), u"3"_s);
    throws = true;
    ::testing::internal::CaptureStdout();
    person.setProperty("name", u"Grace"_s);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), ::testing::HasSubstr("no length"));
    EXPECT_EQ(label.text(), u"3"_s);
}

TEST(ComputedBinding, it_lives_beside_the_other_bindings_of_its_control)
{
    Person person;
    QSlider slider;
    person.setAge(70);
    person.setProperty("height", 60.0);
    NS::bind(&slider, u"value"_s, &person, u"age"_s);
    NS::bind(&slider, u"maximum"_s, { { &person, u"height"_s }, { &person, u"isMember"_s } },
             [](double height, bool isMember) { return isMember ? 1000 : int(height); });
    EXPECT_EQ(slider.value(), 60);
    EXPECT_EQ(person.age(), 70);
    person.setProperty("isMember", true);
    EXPECT_EQ(slider.value(), 70);
    // The function may destroy the binding.
    QPushButton button;
    NS::bind(&button, u"enabled"_s, { { &person, u"age"_s } }, [&](int age) {
        if (age > 70)
            NS::unbind(&button, u"enabled"_s);
        return age < 10;
    });
    EXPECT_FALSE(button.isEnabled());
    person.setAge(71);
    person.setAge(5);
    EXPECT_FALSE(button.isEnabled());
}

TEST(ComputedBinding, functions_that_never_settle_are_stopped_with_a_warning)
{
    ::testing::internal::CaptureStdout();
    {
        Person first;
        Person second;
        Person third;
        NS::bind(&first, u"age"_s, { { &second, u"age"_s }, { &third, u"age"_s } },
                 [](int one, int other) { return one + other + 1; });
        for (Person *const person : { &second, &third })
            NS::bind(person, u"age"_s, { { &first, u"age"_s } }, [](int age) { return age + 1; });
        EXPECT_LT(first.ageWrites, 100);
    }
    const std::string output = ::testing::internal::GetCapturedStdout();
    EXPECT_THAT(output, ::testing::HasSubstr("Person.age does not settle"));
    EXPECT_LT(std::count(output.begin(), output.end(), '\n'), 10);
}

TEST(ComputedBinding, a_function_that_changes_a_source_is_shown_by_its_last_value)
{
    Person person;
    QLabel label;
    NS::bind(&label, u"text"_s, { { &person, u"age"_s } }, [&](int age) {
        person.setAge(qMin(age, 150));
        return age;
    });
    person.setAge(200);
    EXPECT_EQ(label.text(), u"150"_s);
}

TEST(ComputedBinding, all_changes_that_wait_are_carried_if_one_of_them_deletes_the_group)
{
    Person source;
    Person first;
    Person second;
    auto *group = new Pellarvine::BindingGroup;
    for (Person *const person : { &first, &second })
        NS::bind(
                person, u"age"_s, { { &source, u"age"_s } }, [](int age) { return age; }, group);
    QObject::connect(&first, &Person::ageChanged, &source,
                     [&] { delete std::exchange(group, nullptr); });
    source.setAge(5);
    group->flush();
    EXPECT_EQ(first.age(), 5);
    EXPECT_EQ(second.age(), 5);
}
