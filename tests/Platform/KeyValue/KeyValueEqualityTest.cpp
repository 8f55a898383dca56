// SPDX-License-Identifier: MIT
#include "Person.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/KeyValueEquality.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace NS {

TEST(KeyValueEquality, numbers_of_different_types_are_compared_by_value)
{
    constexpr auto most = std::numeric_limits<qulonglong>::max();
    const std::tuple<QVariant, QVariant, bool> rows[] = {
        { 3, 3.0, true },
        { 3, 3.5, false },
        { true, 1, true },
        { 1.5F, 1.5, true },
        { QVariant::fromValue(Person::cross), 1, true },
        { QVariant::fromValue(Person::cross), QVariant::fromValue(Person::calm), false },
        { 3, 3ULL, true },
        { -1, most, false }, // the same bits
        { most, double(most), false }, // rounds up to 2^64
        { (1LL << 53) + 1, double(1LL << 53), false }, // where doubles skip integers
        { 1ULL << 63, std::ldexp(1.0, 63), true },
        { std::nan(""), std::nan(""), true },
        { std::nan(""), 0, false },
        { 3, u"3"_s, false },
    };
    for (const auto &[first, second, areEqual] : rows) {
        EXPECT_EQ(isEqual(first, second), areEqual) << first.typeName() << second.typeName();
        EXPECT_EQ(isEqual(second, first), areEqual) << first.typeName() << second.typeName();
    }
}

TEST(KeyValueEquality, values_of_other_types_are_equal_by_their_own_operator)
{
    const Address oslo { u"Oslo"_s, 2 };
    EXPECT_TRUE(isEqual(QVariant::fromValue(oslo), QVariant::fromValue(Address { u"Oslo"_s, 2 })));
    EXPECT_FALSE(isEqual(QVariant::fromValue(oslo), QVariant::fromValue(Address { u"Bod"_s, 2 })));
    EXPECT_FALSE(isEqual(u"a"_s, QByteArray("a")));
    const QVariant token = QVariant::fromValue(Token { 1 });
    EXPECT_FALSE(isEqual(token, QVariant::fromValue(Token { 1 })));
}

TEST(KeyValueEquality, no_value_equals_only_no_value)
{
    EXPECT_TRUE(isEqual(QVariant(), QVariant()));
    EXPECT_FALSE(isEqual(QVariant(), nullObject()));
    EXPECT_FALSE(isEqual(nullObject(), QVariant()));
    EXPECT_TRUE(isEqual(nullObject(), nullObject()));
    EXPECT_FALSE(isEqual(QVariant(), 0));
    EXPECT_TRUE(isNullObject(nullObject()));
    EXPECT_FALSE(isNullObject(QVariant()));
}

TEST(KeyValueEquality, objects_are_equal_by_identity_or_as_they_say_themselves)
{
    registerSharedPointer<Person>();
    const auto shared = std::make_shared<Person>(u"Ada"_s);
    const QVariant plain = QVariant::fromValue(shared.get());
    EXPECT_TRUE(isEqual(plain, QVariant::fromValue(static_cast<QObject *>(shared.get()))));
    EXPECT_TRUE(isEqual(plain, QVariant::fromValue(shared)));
    EXPECT_TRUE(isEqual(plain, QVariant::fromValue(std::shared_ptr<QObject>(shared))));

    Person other(u"Ada"_s);
    Namesake namesake(u"Ada"_s);
    EXPECT_FALSE(isEqual(&other, shared.get()));
    EXPECT_FALSE(isEqual(&other, &namesake)); // calls isEqual() of the first object
    EXPECT_TRUE(isEqual(&namesake, &other));
    EXPECT_TRUE(isEqual(QVariant::fromValue(&namesake), plain));
    other.name = u"Bea"_s;
    EXPECT_FALSE(isEqual(&namesake, &other));
    EXPECT_FALSE(isEqual(&namesake, nullptr));
}

} // namespace NS
