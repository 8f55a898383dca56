// SPDX-License-Identifier: MIT
#include "Shared/HMAC.h"
#include "Shared/KeyGen.h"
#include "Shared/Secret.h"
#include "Shared/TagComparison.h"

#include <QRandomGenerator>
#include <QString>
#include <gtest/gtest.h>

#include <new>

namespace Pellarvine::detail {

namespace {

QByteArray key(QByteArrayView passphrase, QByteArrayView salt)
{
    return QByteArrayView(KeyGen::generateAES256(passphrase, salt)).toByteArray();
}

QByteArray randomBytes(QRandomGenerator &random, qsizetype length)
{
    QByteArray bytes(length, Qt::Uninitialized);
    random.generate(bytes.begin(), bytes.end());
    return bytes;
}

QByteArray tag(QByteArrayView key, QByteArrayView message)
{
    HMAC hmac(key);
    hmac.feed(message);
    return hmac.finalize();
}

} // namespace

TEST(KeyGen, matches_libcryptos_own_derivation)
{
    QRandomGenerator random(1);
    // Keys up to SHA-1's block of 64 bytes are padded, longer ones are hashed.
    for (const qsizetype length : { 0, 1, 20, 63, 64, 65, 128, 1000 }) {
        const QByteArray passphrase = randomBytes(random, length);
        const QByteArray salt = randomBytes(random, 8);
        QByteArray expected(32, Qt::Uninitialized);
        ASSERT_EQ(PKCS5_PBKDF2_HMAC(passphrase.data(), int(passphrase.size()),
                                    reinterpret_cast<const unsigned char *>(salt.data()),
                                    int(salt.size()), 10000, EVP_sha1(), int(expected.size()),
                                    reinterpret_cast<unsigned char *>(expected.data())),
                  1);
        EXPECT_EQ(key(passphrase, salt), expected) << length;
    }
}

TEST(HMAC, is_of_the_joined_pieces_and_takes_empty_keys_and_pieces)
{
    HMAC pieces("key");
    pieces.feed("ab");
    pieces.feed({});
    pieces.feed("c");
    EXPECT_EQ(pieces.finalize(), tag("key", "abc"));
    // HMAC-SHA256 of nothing under no key, from Python's hmac.
    EXPECT_EQ(tag({}, {}).toHex(),
              "b613679a0814d9ec772f95d778c35fc5ff1697c493715653c6c712144292c5ad");
}

TEST(HMAC, objects_do_not_disturb_each_other)
{
    HMAC first("first");
    first.feed("abc");
    HMAC second("second");
    second.feed("abc");
    EXPECT_EQ(first.finalize(), tag("first", "abc"));
    EXPECT_EQ(second.finalize(), tag("second", "abc"));
}

TEST(TagComparison, sees_a_difference_at_each_place_and_in_each_bit)
{
    const QByteArray trusted =
            QByteArray::fromHex("000102030405060708090a0b0c0d0e0f808182838485868788898a8b8c8d8eff");
    EXPECT_TRUE(isEqualComparingAllBytes(trusted, trusted));
    for (qsizetype bit = 0; bit < 8 * trusted.size(); ++bit) {
        QByteArray untrusted = trusted;
        untrusted[bit / 8] = char(untrusted[bit / 8] ^ (1 << bit % 8));
        EXPECT_FALSE(isEqualComparingAllBytes(trusted, untrusted)) << bit;
    }
}

TEST(TagComparison, a_wrong_length_is_a_difference_even_if_all_bytes_agree)
{
    const QByteArray trusted(32, 'x');
    for (const qsizetype length : { 0, 1, 31, 33, 64 })
        EXPECT_FALSE(isEqualComparingAllBytes(trusted, QByteArray(length, 'x'))) << length;
}

TEST(Secret, bytes_are_wiped_when_they_move_and_when_they_go)
{
    using Secret = SecretArray<16>;
    static_assert(!std::is_copy_constructible_v<Secret> && !std::is_copy_assignable_v<Secret>);
    alignas(Secret) unsigned char place[sizeof(Secret)];
    auto *const secret = new (place) Secret;
    std::fill_n(secret->data(), 16, 0x5a);

    Secret moved(std::move(*secret));
    EXPECT_EQ(QByteArrayView(moved), QByteArray(16, '\x5a'));
    EXPECT_EQ(QByteArrayView(*secret), QByteArray(16, '\0'));

    *secret = std::move(moved);
    secret->~Secret();
    EXPECT_EQ(QByteArrayView(place, sizeof place), QByteArray(sizeof place, '\0'));
}

TEST(Secret, a_passphrase_is_its_utf8_bytes)
{
    EXPECT_EQ(QByteArrayView(Passphrase(QString::fromUtf8("Grüße \U0001F511"))),
              QByteArray("Grüße \U0001F511"));
    EXPECT_TRUE(QByteArrayView(Passphrase(QString())).isEmpty());
    EXPECT_DEATH(Passphrase(QString(QChar(0xd800))), "Error: .*passphrase");
}

TEST(KeyGen, failure_stops_the_process_with_the_status)
{
    const auto deriveWithoutAlgorithms = [] {
        EVP_set_default_properties(nullptr, "no.such.provider=yes");
        KeyGen::generateAES256("x", "saltsalt");
    };
    EXPECT_DEATH(deriveWithoutAlgorithms(), "Error: Secure key generation failed! \\(0\\)\n$");
}

} // namespace Pellarvine::detail
