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

TEST(KeyGen, matches_pbkdf2_of_another_implementation)
{
    // RFC 6070's inputs at 10000 rounds and 32 bytes, by Python's hashlib.
    EXPECT_EQ(key("password", "salt").toHex(),
              "a2c2646186828474b754591a547c18f132d88d744c152655a470161a1a052135");
    EXPECT_EQ(key("passwordPASSWORDpassword", "saltSALTsaltSALTsaltSALTsaltSALTsalt").toHex(),
              "8cbf51c8b1eec71603677767fb859d64dac658b0e80de1cb8f5b19a0ebac0465");
    EXPECT_EQ(key(QByteArrayView("pass\0word", 9), QByteArrayView("sa\0lt", 5)).toHex(),
              "85f29aba68f6f90c23962a00d205011060066b2057712672e74fc6fd3cbd7dd8");
    EXPECT_EQ(key("", QByteArray(8, '\0')).toHex(),
              "ea3390827e11f2728d8050a01a8876c99588ccedb47fb3b099bbaf9b22685a47");
    EXPECT_EQ(key(QByteArray(100, 'x'), "saltsalt").toHex(),
              "c2e9e38de7312ac52e955d973394a74fb47671baf2b46cde3508d99df1f76b86");
}

TEST(KeyGen, matches_libcryptos_own_derivation)
{
    QRandomGenerator random(1);
    // Around SHA-1's block of 64 bytes, where a key is padded or hashed.
    for (const qsizetype length : { 1, 20, 63, 64, 65, 128, 1000 }) {
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

TEST(KeyGen, texts_of_different_normal_forms_give_different_keys)
{
    const QString composed = QString::fromUtf8("\u00e9");
    const QString decomposed = QString::fromUtf8("e\u0301");
    EXPECT_EQ(key(Passphrase(composed), "saltsalt").toHex(),
              "e3e6b6d283156bf0fbd6cdcc5c4d05de6660ef65b175ee6f3898a86ecdd55860");
    EXPECT_EQ(key(Passphrase(decomposed), "saltsalt").toHex(),
              "ac86357f2d54adafdb2f81649fbc2da45c752f9ea03f68a005ec024a26b13e22");
}

TEST(HMAC, matches_the_vectors_of_rfc_4231)
{
    EXPECT_EQ(tag(QByteArray(20, '\x0b'), "Hi There").toHex(),
              "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
    EXPECT_EQ(tag("Jefe", "what do ya want for nothing?").toHex(),
              "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
    EXPECT_EQ(tag(QByteArray(20, '\xaa'), QByteArray(50, '\xdd')).toHex(),
              "773ea91e36800e46854db8ebd09181a72959098b3ef8c122d9635514ced565fe");
    EXPECT_EQ(tag(QByteArray(131, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First")
                      .toHex(),
              "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
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
