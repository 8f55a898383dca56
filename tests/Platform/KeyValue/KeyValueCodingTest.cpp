// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/KeyValueEquality.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

// A person with a property of each kind that refers to another person.
class KeyValueCoding : public ::testing::Test
{
protected:
    KeyValueCoding()
    {
        registerSharedPointer<Person>();
        person.partner = &partner;
        person.stranger = &partner;
        person.doctor = std::make_shared<Person>(u"Cid"_s);
        person.mentor = std::make_shared<Person>(u"Dov"_s);
        person.address = { u"Oslo"_s, 2 };
        person.settings = { { u"font"_s, QVariantMap { { u"size"_s, 12 } } },
                            { u"owner"_s, QVariant::fromValue(&partner) },
                            { u"home"_s, QVariant::fromValue(person.address) } };
        partner.address = { u"Rome"_s, 1 };
        person.setProperty("hobby", u"chess"_s);
    }

    Person person { u"Ada"_s };
    Person partner { u"Bea"_s };
};

KeyValueException caught(const std::function<void()> &action)
{
    try {
        action();
    } catch (const KeyValueException &error) {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return { KeyValueException::undefinedKey, {}, {}, {} };
}

} // namespace

TEST(SharedPointers, are_known_before_several_threads_can_register_them)
{
    EXPECT_TRUE((QMetaType::hasRegisteredConverterFunction<std::shared_ptr<QObject>, QObject *>()));
}

TEST_F(KeyValueCoding, paths_lead_through_objects_shared_pointers_gadgets_and_maps)
{
    const std::tuple<QString, QVariant, QVariant> rows[] = {
        { u"name"_s, u"Ada"_s, u"Eve"_s },
        { u"level"_s, 0, 7 },
        { u"hobby"_s, u"chess"_s, u"go"_s },
        { u"partner.name"_s, u"Bea"_s, u"Eve"_s },
        { u"self.partner.self.age"_s, 0, 30 },
        { u"doctor.name"_s, u"Cid"_s, u"Eve"_s },
        { u"mentor.name"_s, u"Dov"_s, u"Eve"_s },
        { u"stranger.secret"_s, 0, 4 },
        { u"address.city"_s, u"Oslo"_s, u"Bergen"_s },
        { u"partner.address.city"_s, u"Rome"_s, u"Bari"_s },
        { u"settings.font.size"_s, 12, 14 },
        { u"settings.home.storey"_s, 2, 5 },
        { u"settings.owner.age"_s, 30, 31 },
        { u"settings.colour"_s, {}, u"red"_s },
    };
    for (const auto &[path, value, other] : rows) {
        EXPECT_EQ(valueForKeyPath(&person, path), value) << path.toStdString();
        setValueForKeyPath(&person, path, other);
        EXPECT_EQ(valueForKeyPath(&person, path), other) << path.toStdString();
    }
    EXPECT_EQ(valueForKeyPath(&person, u"settings.font.size"_s), 14); // unchanged
}

TEST_F(KeyValueCoding, a_null_on_the_path_reads_as_no_value_and_ignores_writes)
{
    person.settings[u"nobody"_s] = nullObject();
    for (const QString &path : { u"partner.partner.name"_s, u"settings.nobody.name"_s,
                                 u"settings.nothing.deep"_s, u"partner.doctor.name"_s }) {
        EXPECT_FALSE(valueForKeyPath(&person, path).isValid()) << path.toStdString();
        EXPECT_NO_THROW(setValueForKeyPath(&person, path, 1)) << path.toStdString();
        EXPECT_FALSE(valueForKeyPath(&person, path).isValid()) << path.toStdString();
    }
    EXPECT_FALSE(valueForKeyPath(&partner, u"partner"_s).isValid());
    EXPECT_FALSE(valueForKeyPath(&partner, u"doctor"_s).isValid());
    EXPECT_FALSE(valueForKeyPath(&partner, u"mentor"_s).isValid());
}

TEST_F(KeyValueCoding, a_path_that_does_not_fit_raises_and_names_class_path_and_key)
{
    using enum KeyValueException::Reason;
    const struct
    {
        QString path;
        QVariant value;
        KeyValueException::Reason reason;
        QByteArray className;
        QString key;
    } rows[] = {
        { u"surname"_s, 1, undefinedKey, "Person", u"surname"_s },
        { u""_s, 1, undefinedKey, "Person", u""_s },
        { u"partner..name"_s, 1, undefinedKey, "Person", u""_s },
        // A malformed path is an error, even if an object on it is null.
        { u"doctor."_s, 1, undefinedKey, "Person", u""_s },
        { u"doctor..name"_s, 1, undefinedKey, "Person", u""_s },
        { u"partner.surname"_s, 1, undefinedKey, "Person", u"surname"_s },
        { u"address.town"_s, 1, undefinedKey, "Address", u"town"_s },
        { u"settings.home.town"_s, 1, undefinedKey, "Address", u"town"_s },
        { u"name.length"_s, 1, undefinedKey, "QString", u"length"_s },
        { u"initials"_s, u"E"_s, readOnly, "Person", u"initials"_s },
        { u"address.country"_s, u"Chile"_s, readOnly, "Address", u"country"_s },
        { u"partner.age"_s, u"abc"_s, notConvertible, "Person", u"age"_s },
        { u"age"_s, 3.7, notConvertible, "Person", u"age"_s },
        { u"age"_s, 1LL << 40, notConvertible, "Person", u"age"_s },
        { u"age"_s, std::nan(""), notConvertible, "Person", u"age"_s },
        { u"isMember"_s, u"abc"_s, notConvertible, "Person", u"isMember"_s },
        { u"mood"_s, u"furious"_s, notConvertible, "Person", u"mood"_s },
        { u"address.storey"_s, u"abc"_s, notConvertible, "Address", u"storey"_s },
        { u"address"_s, 1, notConvertible, "Person", u"address"_s },
    };
    for (const auto &row : rows) {
        const KeyValueException error =
                caught([&] { setValueForKeyPath(&person, row.path, row.value); });
        EXPECT_EQ(error.reason(), row.reason) << error.what();
        EXPECT_EQ(error.className(), row.className) << error.what();
        EXPECT_EQ(error.keyPath(), row.path);
        EXPECT_EQ(error.key(), row.key) << error.what();
    }
    EXPECT_EQ(person.dynamicPropertyNames(), QList<QByteArray> { "hobby" });
    EXPECT_EQ(partner.age(), 0);
}

TEST_F(KeyValueCoding, an_object_of_another_class_does_not_become_a_null_pointer)
{
    QObject other;
    const KeyValueException error =
            caught([&] { setValueForKeyPath(&person, u"partner"_s, QVariant::fromValue(&other)); });
    EXPECT_EQ(error.reason(), KeyValueException::notConvertible);
    EXPECT_EQ(person.partner, &partner);
    setValueForKeyPath(&person, u"partner"_s, QVariant::fromValue(static_cast<QObject *>(&person)));
    EXPECT_EQ(person.partner, &person);
}

TEST_F(KeyValueCoding, a_reading_of_an_unknown_key_raises_with_a_line_for_logs)
{
    const KeyValueException error = caught([&] { valueForKeyPath(&person, u"partner.surname"_s); });
    EXPECT_STREQ(error.what(), "Person has no key \"surname\" (key path \"partner.surname\")");
    EXPECT_EQ(caught([] { valueForKeyPath(nullptr, u"name"_s); }).className(), "nullptr");
    const std::pair<QString, QString> rows[] = { { u"nmae"_s, u"name"_s },
                                                 { u"address.ctiy"_s, u"city"_s },
                                                 { u"hoby"_s, u"hobby"_s } }; // a dynamic one
    for (const auto &[path, key] : rows) {
        const KeyValueException misspelt =
                caught([&, &path = path] { valueForKeyPath(&person, path); });
        EXPECT_TRUE(QString::fromUtf8(misspelt.what())
                            .contains(u"\": did you mean \"%1\"? "_s.arg(key)))
                << misspelt.what();
    }
}

TEST_F(KeyValueCoding, values_are_converted_if_nothing_is_lost)
{
    const std::tuple<QString, QVariant, QVariant> rows[] = {
        { u"age"_s, 3.0, 3 },
        { u"age"_s, u"12"_s, 12 },
        { u"age"_s, true, 1 },
        { u"name"_s, 42, u"42"_s },
        { u"height"_s, 2, 2.0 },
        { u"isMember"_s, 2, true },
        { u"isMember"_s, u"False"_s, false },
        { u"mood"_s, u"cross"_s, QVariant::fromValue(Person::cross) },
        { u"mood"_s, 0, QVariant::fromValue(Person::calm) },
        { u"note"_s, 3.7, 3.7 },
        { u"address.storey"_s, 3.0, 3 },
        { u"settings.any"_s, 3.7, 3.7 },
    };
    for (const auto &[path, value, stored] : rows) {
        setValueForKeyPath(&person, path, value);
        EXPECT_EQ(valueForKeyPath(&person, path), stored) << path.toStdString();
    }
}

TEST_F(KeyValueCoding, no_value_empties_each_kind_of_property)
{
    person.setAge(30);
    person.nickname = u"Addie"_s;
    for (const QString &path : { u"age"_s, u"name"_s, u"partner"_s, u"doctor"_s, u"nickname"_s,
                                 u"hobby"_s, u"settings.font"_s, u"address.city"_s })
        setValueForKeyPath(&person, path, {});
    EXPECT_EQ(person.age(), 0);
    EXPECT_EQ(person.name, u""_s);
    EXPECT_EQ(person.partner, nullptr);
    EXPECT_EQ(person.doctor, nullptr);
    EXPECT_EQ(person.nickname, u"none"_s);
    EXPECT_FALSE(valueForKeyPath(&person, u"hobby"_s).isValid()); // still a key
    EXPECT_FALSE(person.settings.contains(u"font"_s));
    EXPECT_EQ(person.address, (Address { u""_s, 2 }));
}

} // namespace NS
