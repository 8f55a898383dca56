// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/NSKeyValueBinding.h>

#include <QLabel>
#include <QLineEdit>
#include <gmock/gmock.h>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

NS::KeyValueException::Reason reasonOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const NS::KeyValueException &error) {
        return error.reason();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

// Its value is the one that was set plus one.
class Restless : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int age MEMBER m_age WRITE setAge NOTIFY ageChanged)

public:
    void setAge(int age)
    {
        m_age = age + 1;
        Q_EMIT ageChanged();
    }

Q_SIGNALS:
    void ageChanged();

private:
    int m_age = 0;
};

} // namespace

TEST(KeyValueBinding, a_side_that_reports_no_changes_or_is_read_only_is_bound_one_way)
{
    Person person(u"Ada"_s);
    QLabel label;
    QLineEdit initials;
    NS::bind(&label, u"text"_s, &person, u"name"_s);
    NS::bind(&initials, u"text"_s, &person, u"initials"_s);
    initials.setText(u"Z"_s);
    EXPECT_EQ(person.name, u"Ada"_s);
    person.setProperty("name", u"Grace"_s);
    EXPECT_EQ(label.text(), u"Grace"_s);
    EXPECT_EQ(initials.text(), u"G"_s);
}

TEST(KeyValueBinding, a_value_that_does_not_fit_is_a_warning_and_stays_where_it_is)
{
    Person person;
    person.setAge(12);
    QLineEdit field;
    NS::bind(&field, u"text"_s, &person, u"age"_s);
    ::testing::internal::CaptureStdout();
    field.setText(u"twelve"_s);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                ::testing::AllOf(::testing::HasSubstr("twelve"), ::testing::HasSubstr("age")));
    EXPECT_EQ(person.age(), 12);
    EXPECT_EQ(field.text(), u"twelve"_s);
}

TEST(KeyValueBinding, null_on_the_path_empties_the_property)
{
    Person person;
    Person partner(u"Ada"_s);
    person.setProperty("partner", QVariant::fromValue(&partner));
    QLineEdit field;
    NS::bind(&field, u"text"_s, &person, u"partner.name"_s);
    EXPECT_EQ(field.text(), u"Ada"_s);
    person.setProperty("partner", QVariant::fromValue<Person *>(nullptr));
    EXPECT_EQ(field.text(), QString());
}

TEST(KeyValueBinding, sides_that_never_agree_are_stopped_with_a_warning)
{
    Restless first;
    Restless second;
    ::testing::internal::CaptureStdout();
    NS::bind(&first, u"age"_s, &second, u"age"_s);
    NS::bind(&second, u"age"_s, &first, u"age"_s);
    second.setAge(5);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                ::testing::HasSubstr("Restless.age to age does not settle"));
}

TEST(KeyValueBinding, a_second_binding_of_a_name_replaces_the_first_and_unbinding_ends_it)
{
    Person first(u"Ada"_s);
    Person second(u"Grace"_s);
    QLineEdit field;
    NS::bind(&field, u"text"_s, &first, u"name"_s);
    NS::bind(&field, u"text"_s, &second, u"name"_s);
    EXPECT_EQ(first.name, u"Ada"_s);
    field.setText(u"Emmy"_s);
    EXPECT_EQ(first.name, u"Ada"_s);
    EXPECT_EQ(second.name, u"Emmy"_s);

    NS::unbind(&field, u"text"_s);
    NS::unbind(&field, u"enabled"_s);
    second.setProperty("name", u"Sofia"_s);
    EXPECT_EQ(field.text(), u"Emmy"_s);
    EXPECT_TRUE(NS::infoForBinding(&field, u"text"_s).isEmpty());
}

TEST(KeyValueBinding, the_info_names_the_observed_object_and_the_key_path)
{
    auto person = std::make_unique<Person>();
    QLineEdit field;
    NS::bind(&field, NS::NSValueBinding, person.get(), u"address.city"_s);
    QVariantMap info = NS::infoForBinding(&field, u"value"_s);
    EXPECT_EQ(info[NS::NSObservedObjectKey].value<QObject *>(), person.get());
    EXPECT_EQ(info[NS::NSObservedKeyPathKey], u"address.city"_s);
    EXPECT_TRUE(NS::infoForBinding(&field, u"text"_s).isEmpty());
    person.reset();
    info = NS::infoForBinding(&field, u"value"_s);
    EXPECT_EQ(info[NS::NSObservedObjectKey].value<QObject *>(), nullptr);
    field.setText(u"Oslo"_s); // must not crash
}

TEST(KeyValueBinding, either_side_may_be_destroyed_in_the_middle_of_a_change)
{
    auto person = std::make_unique<Person>(u"Ada"_s);
    auto *const control = new Person;
    NS::bind(control, u"name"_s, person.get(), u"name"_s);
    QObject::connect(control, &Person::nameChanged, control, [control] { delete control; });
    person->setProperty("name", u"Grace"_s);
    EXPECT_EQ(person->name, u"Grace"_s);

    QLineEdit other;
    NS::bind(&other, u"text"_s, person.get(), u"name"_s);
    QObject::connect(person.get(), &Person::nameChanged, person.get(), [&] { person.reset(); });
    other.setText(u"Emmy"_s);
    EXPECT_FALSE(person);
    EXPECT_EQ(other.text(), u"Emmy"_s);
}

TEST(KeyValueBinding, what_cannot_be_bound_is_an_error_and_leaves_nothing_bound)
{
    Person person(u"Ada"_s);
    QLineEdit field(u"before"_s);
    using Error = NS::KeyValueException;
    const struct
    {
        QString binding;
        QString keyPath;
        Error::Reason reason;
    } rows[] = {
        { u"txet"_s, u"name"_s, Error::undefinedKey },
        { u"text"_s, u"nmae"_s, Error::undefinedKey },
        { u"text"_s, u"name.length"_s, Error::undefinedKey },
        { u"text"_s, u"secret"_s, Error::notObservable },
        { u"acceptableInput"_s, u"isMember"_s, Error::readOnly },
    };
    for (const auto &row : rows) {
        EXPECT_EQ(reasonOf([&] { NS::bind(&field, row.binding, &person, row.keyPath); }),
                  row.reason)
                << qPrintable(row.binding + u' ' + row.keyPath);
        EXPECT_TRUE(NS::infoForBinding(&field, row.binding).isEmpty());
    }
    person.setProperty("name", u"Grace"_s);
    EXPECT_EQ(field.text(), u"before"_s);
}

#include "NSKeyValueBindingTest.moc"
