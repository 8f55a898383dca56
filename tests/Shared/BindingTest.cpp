// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/KeyValueEquality.h>
#include <pellarvine/Shared/Binding.h>
#include <pellarvine/Shared/TransformableBinding.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QThread>
#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine {

static_assert(!std::is_default_constructible_v<Binding>);
static_assert(!std::is_copy_constructible_v<Binding>);

namespace {

void set(QObject &object, const QString &path, const QVariant &value)
{
    NS::setValueForKeyPath(&object, path, value);
}

QVariant get(QObject &object, const QString &path)
{
    return NS::valueForKeyPath(&object, path);
}

// The text that `action` writes to standard output.
template <typename Action>
std::string output(Action action)
{
    ::testing::internal::CaptureStdout();
    action();
    return ::testing::internal::GetCapturedStdout();
}

} // namespace

TEST(Binding, changes_go_both_ways_or_only_forward)
{
    for (const bool twoWay : { true, false }) {
        Person first;
        Person second;
        std::optional<Binding> binding;
        binding.emplace(&first, u"age"_s, &second, u"level"_s, twoWay);
        first.setAge(3);
        EXPECT_EQ(second.level(), 3);
        second.setLevel(5);
        EXPECT_EQ(first.age(), twoWay ? 5 : 3);
        binding.reset();
        first.setAge(7);
        EXPECT_EQ(second.level(), 5);
    }
}

TEST(Binding, joins_the_widgets_of_a_window)
{
    QSlider slider;
    QSpinBox box;
    QLineEdit field;
    QLabel label;
    QAction action;
    QWidget window;
    slider.setValue(7);
    action.setCheckable(true);
    const Binding one(&slider, u"value"_s, &box, u"value"_s);
    const Binding two(&box, u"value"_s, &field, u"text"_s);
    const Binding three(&field, u"text"_s, &label, u"text"_s, false);
    const Binding four(&field, u"text"_s, &window, u"windowTitle"_s);
    const Binding five(&action, u"checked"_s, &slider, u"enabled"_s, false);
    EXPECT_EQ(window.windowTitle(), u"7"_s);
    EXPECT_FALSE(slider.isEnabled());
    window.setWindowTitle(u"42"_s);
    EXPECT_EQ(slider.value(), 42);
    EXPECT_EQ(label.text(), u"42"_s);
    slider.setValue(200); // the maximum
    EXPECT_EQ(field.text(), u"99"_s);
    action.toggle();
    EXPECT_TRUE(slider.isEnabled());
    // The box refuses an incomplete number. The field keeps it.
    EXPECT_NE(output([&] { field.setText(u"4x"_s); }).find("QSpinBox cannot take"),
              std::string::npos);
    EXPECT_EQ(box.value(), 99);
    EXPECT_EQ(field.text(), u"4x"_s);
    // The limited value of a widget is carried back.
    box.setMaximum(50);
    EXPECT_EQ(slider.value(), 50);
}

TEST(Binding, values_of_every_type_are_carried)
{
    const std::tuple<QString, QVariant, QVariant> rows[] = {
        { u"name"_s, u"Ada"_s, u"Bea"_s },
        { u"isMember"_s, true, false },
        { u"height"_s, 1.7, 1.8 },
        { u"mood"_s, QVariant::fromValue(Person::cross), QVariant::fromValue(Person::calm) },
        { u"address"_s, QVariant::fromValue(Address { u"Oslo"_s, 1 }),
          QVariant::fromValue(Address { u"Rome"_s, 1 }) },
        { u"address.city"_s, u"Oslo"_s, u"Rome"_s },
        { u"settings.font.size"_s, 12, 14 },
        { u"note"_s, 1, u"two"_s },
        { u"level"_s, 1, 2 },
        { u"hobby"_s, u"chess"_s, u"go"_s },
    };
    for (const auto &[path, value, other] : rows) {
        Person first;
        Person second;
        for (Person *const person : { &first, &second }) {
            person->settings = { { u"font"_s, QVariantMap() } };
            person->setProperty("hobby", 0);
        }
        set(first, path, value);
        const Binding binding(&first, path, &second, path);
        EXPECT_EQ(get(second, path), value) << path.toStdString();
        set(second, path, other);
        EXPECT_EQ(get(first, path), other) << path.toStdString();
        set(first, path, value);
        EXPECT_EQ(get(second, path), value) << path.toStdString();
    }
}

TEST(Binding, null_is_carried_as_no_value_which_transformers_see)
{
    Person first;
    Person second;
    first.partner = &second;
    QVariantList seen;
    const Binding plain(&first, u"partner"_s, &second, u"partner"_s, false);
    const Binding transformed(&first, u"partner"_s, &second, u"note"_s, false,
                              [&](const QVariant &value) {
                                  seen.append(value);
                                  return value.isValid() ? QVariant(1) : value;
                              });
    EXPECT_EQ(second.partner, &second);
    EXPECT_EQ(second.note, 1);
    set(first, u"partner"_s, {});
    EXPECT_EQ(second.partner, nullptr);
    EXPECT_FALSE(second.note.isValid());
    ASSERT_EQ(seen.size(), 2);
    EXPECT_FALSE(seen.last().isValid());
}

TEST(Binding, a_side_that_is_equal_already_is_not_written)
{
    Person first;
    Person second;
    second.setAge(3);
    second.ageWrites = 0;
    set(first, u"height"_s, 3.0);
    const Binding binding(&first, u"height"_s, &second, u"age"_s);
    EXPECT_EQ(second.ageWrites, 0); // 3.0 is 3
    set(first, u"height"_s, 4);
    EXPECT_EQ(second.ageWrites, 1);
}

TEST(Binding, a_property_bound_to_itself_takes_the_forward_direction_and_is_not_written)
{
    Person person;
    int forward = 0;
    const auto count = [&forward](const QVariant &value) {
        ++forward;
        return value;
    };
    const auto fail = [](const QVariant &value) {
        ADD_FAILURE() << "reverse";
        return value;
    };
    const Binding binding(&person, u"age"_s, &person, u"age"_s, true, count, fail);
    person.setAge(1);
    EXPECT_EQ(person.ageWrites, 1);
    EXPECT_EQ(forward, 3); // for the first value, and once for each registration
}

TEST(Binding, a_second_object_that_says_it_equals_the_first_counts_as_the_first)
{
    Person first(u"Ada"_s);
    Namesake second(u"Ada"_s);
    const Binding binding(&first, u"age"_s, &second, u"age"_s);
    second.setAge(5);
    EXPECT_EQ(first.age(), 0); // a forward pass: the two objects are equal
    second.name = u"Bea"_s;
    second.setAge(6);
    EXPECT_EQ(first.age(), 6);
}

TEST(Binding, replacing_an_object_moves_no_registration)
{
    Person first;
    Person second;
    Person other;
    Binding binding(&first, u"age"_s, &second, u"level"_s);
    binding.setSecond(&other);
    EXPECT_EQ(binding.second(), &other);
    first.setAge(1); // carried to the new second object
    EXPECT_EQ(other.level(), 1);
    EXPECT_EQ(second.level(), 0);
    other.setLevel(2); // not observed
    EXPECT_EQ(first.age(), 1);
    second.setLevel(3); // still observed, but ignored
    EXPECT_EQ(first.age(), 1);
    binding.setSecond(&second);
    second.setLevel(4);
    EXPECT_EQ(first.age(), 4);

    binding.setFirst(&other);
    first.setAge(5);
    EXPECT_EQ(second.level(), 4);
    second.setLevel(6);
    EXPECT_EQ(other.age(), 6);
    binding.setFirst(std::make_shared<Person>());
    second.setLevel(7);
    EXPECT_EQ(qobject_cast<Person *>(binding.first())->age(), 7);
    // A replacement that lacks the key is an error when it is used.
    QObject misfit;
    binding.setFirst(&misfit);
    EXPECT_NE(output([&] { second.setLevel(8); }).find("QObject has no key \"age\""),
              std::string::npos);
}

TEST(Binding, a_notification_of_another_object_is_ignored)
{
    Person first;
    Person second;
    Person other;
    Binding binding(&first, u"age"_s, &second, u"level"_s);
    const NS::KeyValueChange change { 9 };
    const NS::KeyValueChange empty;
    binding.observeValue(u"age"_s, &other, &change);
    binding.observeValue(u"level"_s, &first, &change);
    binding.observeValue(u"age"_s, nullptr, &change);
    binding.observeValue({}, &first, nullptr);
    EXPECT_EQ(second.level(), 0);
    binding.observeValue(u"age"_s, &first, &change);
    EXPECT_EQ(second.level(), 9);
    binding.observeValue(u"age"_s, &first, &empty);
    EXPECT_EQ(second.level(), 0);
    EXPECT_DEATH(binding.observeValue(u"age"_s, &first, nullptr), "without a change");
}

TEST(Binding, an_object_on_the_path_may_be_replaced_or_destroyed_on_either_side)
{
    Person one(u"Bea"_s);
    auto two = std::make_unique<Person>(u"Cid"_s);
    Person first;
    Person second;
    first.partner = &one;
    second.partner = &second;
    const Binding binding(&first, u"partner.name"_s, &second, u"partner.nickname"_s);
    EXPECT_EQ(second.nickname, u"Bea"_s);
    set(first, u"partner"_s, QVariant::fromValue(two.get()));
    EXPECT_EQ(second.nickname, u"Cid"_s);
    set(second, u"nickname"_s, u"Dov"_s);
    EXPECT_EQ(two->name, u"Dov"_s);
    EXPECT_EQ(one.name, u"Bea"_s);
    two.reset();
    EXPECT_EQ(second.nickname, u"none"_s); // null is carried
    set(first, u"partner"_s, QVariant::fromValue(&one));
    EXPECT_EQ(second.nickname, u"Bea"_s);

    auto three = std::make_unique<Person>();
    three->nickname = u"Eve"_s;
    set(second, u"partner"_s, QVariant::fromValue(three.get()));
    EXPECT_EQ(one.name, u"Eve"_s);
    set(one, u"name"_s, u"Fay"_s);
    EXPECT_EQ(three->nickname, u"Fay"_s);
    three.reset();
    EXPECT_EQ(one.name, u""_s);
    set(one, u"name"_s, u"Gus"_s); // not carried
    EXPECT_EQ(second.nickname, u"Bea"_s);
}

TEST(Binding, a_target_is_found_again_when_its_path_changes_without_saying_so)
{
    Person one;
    Person two;
    Person first;
    Person second;
    second.stranger = &one; // has no NOTIFY
    const Binding binding(&first, u"age"_s, &second, u"stranger.age"_s, false);
    first.setAge(1);
    EXPECT_EQ(one.age(), 1);
    second.stranger = &two;
    first.setAge(2);
    EXPECT_EQ(one.age(), 1);
    EXPECT_EQ(two.age(), 2);
    second.stranger = nullptr;
    first.setAge(3);
    EXPECT_EQ(two.age(), 2);
}

TEST(Binding, a_destroyed_object_ends_the_binding_and_a_shared_one_is_kept)
{
    auto first = std::make_unique<Person>();
    auto second = std::make_unique<Person>();
    int calls = 0;
    Binding binding(first.get(), u"age"_s, second.get(), u"age"_s, true,
                    [&calls](const QVariant &value) {
                        ++calls;
                        return value;
                    });
    second.reset();
    EXPECT_EQ(binding.second(), nullptr);
    first->setAge(1);
    EXPECT_EQ(calls, 1); // while it was made
    second = std::make_unique<Person>();
    const Binding other(first.get(), u"age"_s, second.get(), u"age"_s);
    first.reset();
    second->setAge(2);

    auto shared = std::make_shared<Person>();
    const std::weak_ptr<Person> watched = shared;
    {
        const Binding keeping(std::move(shared), u"age"_s, second.get(), u"level"_s);
        second->setLevel(6);
        ASSERT_FALSE(watched.expired());
        EXPECT_EQ(watched.lock()->age(), 6);
    }
    EXPECT_TRUE(watched.expired());
}

TEST(Binding, transformers_that_do_not_undo_each_other_are_stopped_with_one_warning)
{
    Person first;
    QSlider second;
    second.setMaximum(1000);
    const auto more = [](const QVariant &value) {
        return value.toInt() + 1;
    };
    const Binding binding(&first, u"age"_s, &second, u"value"_s, true, more, more);
    EXPECT_EQ(second.value(), 1);
    EXPECT_EQ(output([&] { first.setAge(10); }),
              "Warning: the binding of Person.age and QSlider.value does not settle; stopped after "
              "16 exchanges\n");
    EXPECT_EQ(first.ageWrites, 1 + Binding::deepestExchange / 2);
    EXPECT_EQ(first.age(), 10 + Binding::deepestExchange);
    // The limit applies to each change anew.
    EXPECT_NE(output([&] { second.setValue(100); }), "");
    EXPECT_EQ(second.value(), 100 + Binding::deepestExchange);
}

TEST(Binding, two_bindings_that_disagree_about_a_property_are_stopped_too)
{
    Person first;
    Person second;
    const auto more = [](const QVariant &value) {
        return value.toInt() + 1;
    };
    const Binding plain(&first, u"age"_s, &second, u"age"_s);
    ::testing::internal::CaptureStdout();
    const Binding growing(&first, u"age"_s, &second, u"age"_s, true, more, more);
    first.setAge(100);
    EXPECT_NE(::testing::internal::GetCapturedStdout(), "");
}

TEST(Binding, a_value_that_is_not_a_number_settles)
{
    Person first;
    Person second;
    const Binding binding(&first, u"height"_s, &second, u"height"_s);
    EXPECT_EQ(output([&] { set(first, u"height"_s, std::nan("")); }), "");
    EXPECT_TRUE(std::isnan(second.height));
}

TEST(Binding, a_value_that_cannot_be_compared_is_left_alone_with_one_warning)
{
    Person first;
    Person second;
    const std::string printed = output([&] {
        const Binding binding(&first, u"token"_s, &second, u"token"_s);
        first.setToken({ 3 });
    });
    EXPECT_EQ(printed, "Warning: Person.token is not written: its type Token has no operator ==\n");
    EXPECT_EQ(second.token().number, 0);
}

TEST(Binding, may_be_destroyed_by_its_transformer_and_by_what_it_writes)
{
    Person first;
    Person second;
    std::optional<Binding> binding;
    int calls = 0;
    binding.emplace(&first, u"age"_s, &second, u"age"_s, true,
                    [&calls, &binding, kept = u"kept"_s](const QVariant &value) {
                        if (value.toInt() > 0)
                            binding.reset();
                        calls += int(kept.size());
                        return value;
                    });
    first.setAge(1);
    EXPECT_EQ(calls, 8);
    EXPECT_EQ(second.age(), 0);

    binding.emplace(&first, u"age"_s, &second, u"age"_s);
    QObject::connect(&second, &Person::ageChanged, &second, [&] { binding.reset(); });
    first.setAge(2);
    EXPECT_FALSE(binding);
    EXPECT_EQ(second.age(), 2);
    first.setAge(3);
    EXPECT_EQ(second.age(), 2);
}

TEST(Binding, a_value_that_does_not_fit_is_thrown_at_first_and_printed_later)
{
    Person first;
    Person second;
    const auto make = [&](const QString &path, const QString &otherPath, bool twoWay) {
        const Binding binding(&first, path, &second, otherPath, twoWay);
    };
    EXPECT_THROW(make(u"aeg"_s, u"age"_s, false), NS::KeyValueException);
    EXPECT_THROW(make(u"age"_s, u"aeg"_s, false), NS::KeyValueException);
    EXPECT_THROW(make(u"secret"_s, u"age"_s, false), NS::KeyValueException);
    EXPECT_THROW(make(u"age"_s, u"secret"_s, true), NS::KeyValueException);
    EXPECT_NO_THROW(make(u"age"_s, u"secret"_s, false));
    first.name = u"Ada"_s;
    EXPECT_THROW(make(u"name"_s, u"age"_s, false), NS::KeyValueException);
    EXPECT_THROW(make(u"name"_s, u"initials"_s, false), NS::KeyValueException);
    EXPECT_EQ(output([&] { first.setAge(1); }), ""); // no observer is left

    const Binding binding(&first, u"height"_s, &second, u"age"_s);
    EXPECT_EQ(output([&] { set(first, u"height"_s, 3.7); }),
              "Warning: Person cannot take this value for its key \"age\": double 3.7 does not fit "
              "into "
              "int (key path \"age\")\n");
    EXPECT_EQ(second.age(), 0);
    EXPECT_EQ(first.height, 3.7);
}

TEST(Binding, a_warning_for_what_a_transformer_throws_names_both_sides)
{
    Person first;
    Person second;
    bool throws = false;
    const Binding binding(&first, u"age"_s, &second, u"level"_s, false, [&](const QVariant &value) {
        if (throws)
            throw std::runtime_error("no rate");
        return value;
    });
    throws = true;
    EXPECT_EQ(output([&] { first.setAge(1); }),
              "Warning: no rate (the binding of Person.age and Person.level)\n");
}

TEST(Binding, an_error_handler_is_told_what_does_not_fit_and_when_it_is_over)
{
    Person first;
    Person second;
    Binding binding(&first, u"height"_s, &second, u"age"_s, true, {}, [](const QVariant &age) {
        if (age.toInt() > 120)
            throw std::runtime_error("nobody is that old");
        return age;
    });
    std::vector<BindingError> errors;
    binding.setErrorHandler([&](const BindingError &error) { errors.push_back(error); });
    EXPECT_EQ(output([&] {
                  set(first, u"height"_s, 3.5);
                  set(first, u"height"_s, 4);
                  set(first, u"height"_s, 5);
                  second.setAge(130);
                  second.setAge(30);
              }),
              "");
    ASSERT_EQ(errors.size(), 4);
    EXPECT_EQ(errors[0].object, &second);
    EXPECT_EQ(errors[0].keyPath, u"age"_s);
    EXPECT_EQ(errors[0].value, 3.5);
    EXPECT_NE(errors[0].message.indexOf(u"double 3.5 does not fit into int"_s), -1);
    EXPECT_TRUE(errors[1].message.isEmpty());
    EXPECT_EQ(errors[2].object, &first);
    EXPECT_EQ(errors[2].value, 130);
    EXPECT_EQ(errors[2].message, u"nobody is that old"_s);
    EXPECT_TRUE(errors[3].message.isEmpty());
    EXPECT_EQ(first.height, 30);

    first.name = u"1"_s;
    auto ending = std::make_unique<Binding>(&first, u"name"_s, &second, u"level"_s, false);
    ending->setErrorHandler([&](const BindingError &) { ending.reset(); });
    set(first, u"name"_s, u"one"_s);
    EXPECT_FALSE(ending);
    EXPECT_EQ(second.level(), 1);
}

TEST(Binding, one_way_is_suggested_where_the_second_side_does_not_report_its_changes)
{
    Person person;
    QLabel label;
    EXPECT_THAT([&] { Binding(&person, u"name"_s, &label, u"text"_s).first(); },
                ::testing::ThrowsMessage<NS::KeyValueException>(
                        ::testing::HasSubstr("twoWayBinding = false")));
}

TEST(Binding, null_is_not_made_a_value_by_a_side_that_cannot_hold_it)
{
    for (const QString &path : { u"note"_s, u"hobby"_s }) {
        for (const QString &other : { u"name"_s, u"age"_s }) {
            Person first;
            Person second(u"Ada"_s);
            first.setProperty("hobby", 7);
            first.note = 7;
            second.setAge(36);
            int reversed = 0;
            const Binding binding(&first, path, &second, other);
            const TransformableBinding<int, QString> typed(
                    &first, path, &second, u"nickname"_s, true,
                    [](int value) { return QString::number(value); },
                    [&](const QString &text) {
                        ++reversed;
                        return text.toInt();
                    });
            EXPECT_EQ(get(first, path), 7);
            reversed = 0;
            set(first, path, {});
            EXPECT_FALSE(get(first, path).isValid()) << qPrintable(path + u' ' + other);
            EXPECT_EQ(reversed, 0);
            EXPECT_TRUE(second.name == u"Ada"_s || second.name.isEmpty());
            // A value keeps its type.
            set(first, path, 5);
            EXPECT_EQ(get(first, path), QVariant(5)) << qPrintable(path + u' ' + other);
            EXPECT_EQ(get(second, other), other == u"age"_s ? QVariant(5) : QVariant(u"5"_s));
            set(second, other, 6);
            EXPECT_EQ(get(first, path).toInt(), 6);
        }
    }
}

TEST(Binding, carries_back_a_value_that_a_slider_limits)
{
    Person person;
    QSlider slider;
    person.setProperty("note", 200.0);
    const Binding binding(&person, u"note"_s, &slider, u"value"_s);
    EXPECT_EQ(slider.value(), 99);
    set(person, u"note"_s, 5);
    set(person, u"note"_s, 500);
    EXPECT_EQ(person.note, 99);
}

TEST(Binding, a_replaced_object_is_not_kept)
{
    auto first = std::make_shared<Person>();
    const std::weak_ptr<Person> replaced = first;
    Person second;
    Binding binding(std::move(first), u"age"_s, &second, u"level"_s);
    binding.setFirst(std::make_shared<Person>());
    EXPECT_TRUE(replaced.expired());
    second.setLevel(3);
    EXPECT_EQ(get(*binding.first(), u"age"_s), 3);
}

TEST(Binding, a_widgets_own_state_counts_and_not_that_of_its_ancestors)
{
    for (const bool asText : { false, true }) {
        Person person;
        QWidget window;
        QWidget panel(&window);
        auto *const label = new QLabel(&panel);
        const auto bind = [&](const QString &property) -> std::unique_ptr<AnyBinding> {
            if (!asText)
                return std::make_unique<Binding>(&person, u"isMember"_s, label, property, false);
            return std::make_unique<TransformableBinding<bool, bool>>(
                    &person, u"isMember"_s, label, property, false, [](bool is) { return is; });
        };
        // Changes before the window is shown, and while an ancestor is disabled.
        panel.setEnabled(false);
        const auto visible = bind(u"visible"_s);
        const auto enabled = bind(u"enabled"_s);
        window.show();
        panel.setEnabled(true);
        EXPECT_FALSE(label->isVisible());
        EXPECT_FALSE(label->isEnabled());
        // Changes while they are hidden and disabled again.
        panel.hide();
        panel.setEnabled(false);
        set(person, u"isMember"_s, true);
        panel.show();
        panel.setEnabled(true);
        EXPECT_TRUE(label->isVisible());
        EXPECT_TRUE(label->isEnabled());
    }
}

#ifndef QT_NO_DEBUG
TEST(Binding, writing_to_a_property_with_a_binding_of_its_own_is_a_warning)
{
    Person first;
    Person second;
    QProperty<int> source(1);
    second.bindableLevel().setBinding([&] { return source.value(); });
    std::optional<Binding> binding;
    EXPECT_NE(output([&] {
                  binding.emplace(&first, u"age"_s, &second, u"level"_s);
              }).find("Person.level, which ended the QProperty binding"),
              std::string::npos);
    EXPECT_EQ(output([&] { first.setAge(4); }), "");
}

TEST(Binding, objects_of_two_threads_are_refused)
{
    Person first;
    Person second;
    QThread thread;
    second.moveToThread(&thread);
    EXPECT_DEATH(static_cast<void>(Binding(&first, u"age"_s, &second, u"level"_s)),
                 "Error: .*\"age\".*\"level\".*two threads");
}
#endif

} // namespace Pellarvine
