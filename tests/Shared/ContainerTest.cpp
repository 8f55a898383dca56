// SPDX-License-Identifier: MIT
#include "Shared/CryptorEngine.h"
#include "Shared/HMAC.h"
#include "Shared/KeyGen.h"

#include <pellarvine/Shared/Data+Random.h>
#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

#include <QRandomGenerator>
#include <gmock/gmock.h>
#include <openssl/err.h>
#include <openssl/evp.h>

#include <unordered_set>

namespace Pellarvine {

namespace {

static_assert(!std::is_copy_constructible_v<Encryptor> && !std::is_copy_assignable_v<Encryptor>);
static_assert(!std::is_copy_constructible_v<Decryptor> && !std::is_copy_assignable_v<Decryptor>);
static_assert(std::is_nothrow_move_constructible_v<
                      Encryptor> && std::is_nothrow_move_assignable_v<Encryptor>);
static_assert(std::is_nothrow_move_constructible_v<
                      Decryptor> && std::is_nothrow_move_assignable_v<Decryptor>);

const QString passphrase = QString::fromUtf8("Grüße, 世界 \U0001F511");

// Made by independent-container.py, which uses nothing of this library.
const QByteArray foreignPlaintext = "The quick brown fox jumps over the lazy dog.";
const QByteArray foreignContainer =
        QByteArray::fromHex("3a2d290010111213141516172021222324252627303132333435363738393a3b"
                            "3c3d3e3f98b2e8c84b44354632295e5218529bede17343444a15cf9584351978"
                            "b9c3d7b3eee81643cf4ff63871b90f701f35fb6e32ea2e96d0873abb9ba99c9c"
                            "fc13a8c9bfc4e2bb856f72d9bf782e053fddba74");

template <typename Cryptor>
QByteArray feedInChunks(Cryptor &cryptor, QByteArrayView data, qsizetype chunk)
{
    QByteArray result;
    for (; !data.isEmpty(); data = data.sliced(std::min(chunk, data.size())))
        result += cryptor.feed(data.first(std::min(chunk, data.size())));
    return result;
}

// Opens `container`. Returns its plaintext, or the code of the error.
std::variant<QByteArray, CryptorError::Code> outcome(QByteArrayView container,
                                                     const QString &text = passphrase)
{
    try {
        return Decryptor::decrypt(container, text);
    } catch (const CryptorError &error) {
        return error.code();
    }
}

QByteArray textOfLength(qsizetype length)
{
    QRandomGenerator random(quint32(length) + 1);
    QByteArray text(length, Qt::Uninitialized);
    random.generate(text.begin(), text.end());
    return text;
}

} // namespace

TEST(Decryptor, opens_a_container_made_by_another_implementation)
{
    EXPECT_EQ(Decryptor::decrypt(foreignContainer, passphrase), foreignPlaintext);
    for (qsizetype chunk = 1; chunk <= foreignContainer.size(); ++chunk) {
        Decryptor decryptor(passphrase);
        QByteArray result = feedInChunks(decryptor, foreignContainer, chunk);
        ASSERT_EQ(result += decryptor.finalize(), foreignPlaintext) << chunk;
    }
}

TEST(Encryptor, containers_come_back_for_all_kinds_of_lengths_chunks_and_passphrases)
{
    const std::tuple<qsizetype, qsizetype, QString> cases[] = {
        { 0, 1, passphrase },
        { 1, 1, QString() },
        { 100, 1, passphrase },
        { 100, 15, QStringLiteral("p") },
        { 100, 16, QString(200, QChar(u'ü')) },
        { 100, 17, QStringLiteral("with\0zero") },
        { 50000, 16384, passphrase },
        { 50000, 16385, passphrase },
        { 1 << 20, 1 << 20, passphrase },
        { 1 << 17, 1, passphrase },
    };
    for (const auto &[length, chunk, secret] : cases) {
        const QByteArray text = textOfLength(length);
        Encryptor encryptor(secret);
        QByteArray container = feedInChunks(encryptor, text, chunk);
        if (text.isEmpty())
            container = encryptor.feed({});
        container += encryptor.finalize();
        EXPECT_EQ(Decryptor::decrypt(container, secret), text) << length;
        Decryptor decryptor(secret);
        QByteArray result = feedInChunks(decryptor, container, chunk);
        EXPECT_EQ(result += decryptor.finalize(), text) << length << ' ' << chunk;
    }
}

TEST(Encryptor, gives_the_header_with_the_first_feed_only)
{
    Encryptor encryptor(passphrase);
    ASSERT_TRUE(encryptor.header());
    const QByteArray header = *encryptor.header();
    EXPECT_EQ(header.first(4), QByteArray(":-)\0", 4));
    EXPECT_EQ(encryptor.feed({}), header);
    EXPECT_FALSE(encryptor.header());
    EXPECT_EQ(encryptor.feed({}), "");
    EXPECT_EQ(outcome(header + encryptor.finalize()),
              (std::variant<QByteArray, CryptorError::Code>(QByteArray())));
}

TEST(Encryptor, without_a_feed_the_header_is_left_to_the_caller)
{
    Encryptor encryptor(passphrase);
    const QByteArray end = encryptor.finalize();
    EXPECT_EQ(end.size(), 48);
    EXPECT_EQ(Decryptor::decrypt(*encryptor.header() + end, passphrase), "");
}

TEST(Encryptor, a_replaced_header_is_what_the_first_feed_gives)
{
    Encryptor encryptor(passphrase);
    encryptor.setHeader(QByteArray("front"));
    EXPECT_EQ(encryptor.feed(QByteArray(16, 'x')).size(), 5 + 16);
    Encryptor bare(passphrase);
    bare.setHeader(std::nullopt);
    EXPECT_EQ(bare.feed(QByteArray(16, 'x')).size(), 16);
}

TEST(Encryptor, salts_and_iv_are_fresh_each_time)
{
    const QByteArray first = Encryptor::encrypt("same", passphrase);
    const QByteArray second = Encryptor::encrypt("same", passphrase);
    EXPECT_NE(first.sliced(4, 8), second.sliced(4, 8));
    EXPECT_NE(first.sliced(12, 8), second.sliced(12, 8));
    EXPECT_NE(first.sliced(20, 16), second.sliced(20, 16));
    EXPECT_NE(first.sliced(4, 8), first.sliced(12, 8));
}

TEST(Encryptor, goes_on_after_it_is_moved)
{
    Encryptor first(passphrase);
    QByteArray container = first.feed("abc");
    Encryptor second(std::move(first));
    container += second.feed("def");
    container += second.finalize();

    Decryptor reader(passphrase);
    QByteArray text = reader.feed(container.first(60));
    Decryptor other(QStringLiteral("unused"));
    other = std::move(reader);
    text += other.feed(container.sliced(60));
    EXPECT_EQ(text += other.finalize(), "abcdef");
}

TEST(Decryptor, a_flipped_bit_anywhere_has_its_error)
{
    const QByteArray container = Encryptor::encrypt({}, passphrase);
    for (qsizetype bit = 0; bit < 8 * container.size(); ++bit) {
        QByteArray changed = container;
        changed[bit / 8] = char(changed[bit / 8] ^ (1 << bit % 8));
        const auto expected =
                bit < 32 ? CryptorError::invalidFileFormat : CryptorError::invalidHMAC;
        ASSERT_EQ(std::get<CryptorError::Code>(outcome(changed)), expected) << "bit " << bit;
    }
}

TEST(Decryptor, a_cut_at_any_length_has_its_error)
{
    for (qsizetype length = 0; length < foreignContainer.size(); ++length) {
        const auto expected = length < 36 ? CryptorError::truncatedFile : CryptorError::invalidHMAC;
        ASSERT_EQ(std::get<CryptorError::Code>(outcome(foreignContainer.first(length))), expected)
                << "length " << length;
    }
    EXPECT_EQ(std::get<CryptorError::Code>(outcome(foreignContainer + '\0')),
              CryptorError::invalidHMAC);
}

TEST(Decryptor, a_wrong_passphrase_shows_only_at_the_end)
{
    Decryptor decryptor(QStringLiteral("wrong"));
    EXPECT_FALSE(decryptor.feed(foreignContainer).isEmpty());
    EXPECT_THROW(decryptor.finalize(), CryptorError);
    // Passphrases are not normalised: a text that looks the same is another passphrase.
    EXPECT_EQ(std::get<CryptorError::Code>(outcome(
                      foreignContainer, passphrase.normalized(QString::NormalizationForm_D))),
              CryptorError::invalidHMAC);
}

TEST(Decryptor, a_foreign_file_shows_with_the_headers_last_byte_and_the_next_header_counts)
{
    Decryptor decryptor(passphrase);
    for (int i = 0; i < 35; ++i)
        EXPECT_EQ(decryptor.feed("#"), "");
    EXPECT_EQ(decryptor.buffer(), QByteArray(35, '#'));
    EXPECT_THAT([&] { decryptor.feed("#" + foreignContainer); },
                ::testing::Throws<CryptorError>(CryptorError(CryptorError::invalidFileFormat)));
    EXPECT_EQ(decryptor.buffer(), "");
    EXPECT_EQ(decryptor.engine(), nullptr);
    EXPECT_EQ(decryptor.hmac(), nullptr);

    QByteArray text = decryptor.feed(foreignContainer);
    EXPECT_NE(decryptor.engine(), nullptr);
    EXPECT_NE(decryptor.hmac(), nullptr);
    EXPECT_EQ(text += decryptor.finalize(), foreignPlaintext);
}

TEST(Decryptor, its_state_can_be_set_from_outside)
{
    Decryptor collecting(passphrase);
    collecting.setBuffer(foreignContainer.first(50));
    QByteArray text = collecting.feed(foreignContainer.sliced(50));
    EXPECT_EQ(text += collecting.finalize(), foreignPlaintext);

    // A new engine and tag. They get only the container's body.
    const auto key = [](qsizetype salt) {
        return detail::KeyGen::generateAES256(passphrase.toUtf8(),
                                              foreignContainer.sliced(salt, 8));
    };
    Decryptor streaming(QStringLiteral("not used"));
    streaming.setEngine(std::make_unique<detail::CryptorEngine>(
            detail::CryptorOperation::decrypt, key(4), foreignContainer.sliced(20, 16)));
    streaming.setHmac(std::make_unique<detail::HMAC>(key(12)));
    streaming.hmac()->feed(foreignContainer.first(36));
    text = streaming.feed(foreignContainer.sliced(36));
    EXPECT_EQ(text += streaming.finalize(), foreignPlaintext);
}

TEST(Decryptor, bad_padding_under_a_right_tag_stops_the_process)
{
    const auto openForged = [] {
        QByteArray body = foreignContainer.first(36) + QByteArray(16, 'x');
        detail::HMAC hmac(detail::KeyGen::generateAES256(passphrase.toUtf8(), body.sliced(12, 8)));
        hmac.feed(body);
        Decryptor::decrypt(body += hmac.finalize(), passphrase);
    };
    EXPECT_DEATH(openForged(), "Cryptor finalize failed\n$");
}

TEST(Container, leaves_nothing_in_the_threads_error_queue)
{
    ERR_clear_error();
    outcome(foreignContainer);
    outcome(foreignContainer.first(40));
    Encryptor::encrypt("text", passphrase);
    EXPECT_EQ(ERR_peek_error(), 0UL);
}

TEST(Container, a_random_source_that_fails_stops_the_process_with_the_status)
{
    const auto drawWithoutSource = [] {
        EVP_set_default_properties(nullptr, "no.such.provider=yes");
        secureRandomData(8);
    };
    EXPECT_DEATH(drawWithoutSource(), "Error: could not generate secure random data: 0\n$");
}

TEST(CryptorError, is_compared_hashed_and_caught_as_an_exception)
{
    EXPECT_EQ(CryptorError::invalidFileFormat, 0);
    EXPECT_EQ(CryptorError::invalidHMAC, 1);
    EXPECT_EQ(CryptorError::truncatedFile, 2);
    EXPECT_NE(CryptorError(CryptorError::invalidHMAC), CryptorError(CryptorError::truncatedFile));
    const std::unordered_set<CryptorError> both { CryptorError::invalidHMAC,
                                                  CryptorError::truncatedFile,
                                                  CryptorError::invalidHMAC };
    EXPECT_EQ(both.size(), 2U);
    EXPECT_THAT([] { throw CryptorError(CryptorError::invalidHMAC); },
                ::testing::ThrowsMessage<std::exception>("wrong passphrase or damaged container"));
}

} // namespace Pellarvine
