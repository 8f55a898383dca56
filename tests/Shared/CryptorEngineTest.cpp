// SPDX-License-Identifier: MIT
#include "Shared/CryptorEngine.h"

#include <QScopeGuard>
#include <gtest/gtest.h>

#include <sys/mman.h>

namespace Pellarvine::detail {

namespace {

using enum CryptorOperation;

static_assert(!std::is_copy_constructible_v<CryptorEngine>);
static_assert(std::is_nothrow_move_constructible_v<CryptorEngine>);

const QByteArray key =
        QByteArray::fromHex("603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4");
const QByteArray iv = QByteArray::fromHex("000102030405060708090a0b0c0d0e0f");

// NIST SP 800-38A, F.2.5.
const QByteArray plaintext = QByteArray::fromHex("6bc1bee22e409f96e93d7e117393172a"
                                                 "ae2d8a571e03ac9c9eb76fac45af8e51"
                                                 "30c81c46a35ce411e5fbc1191a0a52ef"
                                                 "f69f2445df4f9b17ad2b417be66c3710");
const QByteArray ciphertext = QByteArray::fromHex("f58c4c04d6e5f1ba779eabfb5f7bfbd6"
                                                  "9cfc4e967edb808d679f777bc6702c7d"
                                                  "39f23369a9d9bacfa530e26304231461"
                                                  "b2eb05e2c39be9fcda6c19078c6a9d1b");

QByteArray transformed(CryptorOperation operation, QByteArrayView data, qsizetype chunk)
{
    CryptorEngine engine(operation, key, iv);
    QByteArray result;
    for (; !data.isEmpty(); data = data.sliced(std::min(chunk, data.size())))
        result += engine.feed(data.first(std::min(chunk, data.size())));
    return result += engine.finalize();
}

} // namespace

TEST(CryptorEngine, keeps_back_at_most_one_block)
{
    CryptorEngine nothing(encrypt, key, iv);
    EXPECT_EQ(nothing.feed({}).size(), 0);
    EXPECT_EQ(nothing.finalize().size(), 16);

    CryptorEngine incomplete(encrypt, key, iv);
    EXPECT_EQ(incomplete.feed(plaintext.first(15)).size(), 0);
    EXPECT_EQ(incomplete.finalize().size(), 16);

    CryptorEngine decryptor(decrypt, key, iv);
    const QByteArray sealed = transformed(encrypt, plaintext.first(40), 40);
    EXPECT_EQ(decryptor.feed(sealed), plaintext.first(32));
    EXPECT_EQ(decryptor.finalize(), plaintext.sliced(32, 8));
}

TEST(CryptorEngine, all_lengths_in_all_chunks_come_back)
{
    for (qsizetype length = 0; length <= plaintext.size(); ++length) {
        const QByteArray text = plaintext.first(length);
        const QByteArray sealed = transformed(encrypt, text, 64);
        EXPECT_EQ(sealed.size(), (length / 16 + 1) * 16);
        for (const qsizetype chunk : { 1, 15, 16, 17, 31, 33, 80 }) {
            ASSERT_EQ(transformed(encrypt, text, chunk), sealed) << length << ' ' << chunk;
            ASSERT_EQ(transformed(decrypt, sealed, chunk), text) << length << ' ' << chunk;
        }
    }
}

TEST(CryptorEngine, results_stay_as_they_were_when_the_engine_goes_on)
{
    CryptorEngine engine(encrypt, key, iv);
    const QByteArray first = engine.feed(plaintext.first(32));
    const QByteArray second = engine.feed(plaintext.sliced(32));
    engine.finalize();
    EXPECT_EQ(first, ciphertext.first(32));
    EXPECT_EQ(second, ciphertext.sliced(32));
}

TEST(CryptorEngine, one_feed_of_more_than_2_gib_is_whole)
{
    // Pages that are never written take no memory.
    constexpr qsizetype length = (qsizetype(1) << 31) + 48;
    void *const pages =
            mmap(nullptr, length, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    const auto unmap = qScopeGuard([=] { munmap(pages, length); });

    CryptorEngine engine(decrypt, key, iv);
    const QByteArray result = engine.feed({ static_cast<const char *>(pages), length });
    // The last block is not returned yet. All blocks but the first are the same, because each is
    // chained to a block of zeros.
    ASSERT_EQ(result.size(), length - 16);
    EXPECT_EQ(result.last(16), result.sliced(16, 16));
    EXPECT_EQ(result.sliced(qsizetype(1) << 30, 16), result.sliced(16, 16));
}

TEST(CryptorEngine, failures_stop_the_process_with_their_messages)
{
    EXPECT_DEATH(CryptorEngine(encrypt, key.first(31), iv), "Could not create cryptor\n$");
    EXPECT_DEATH(CryptorEngine(encrypt, key, iv.first(15)), "Could not create cryptor\n$");

    const auto feedAfterTheEnd = [] {
        CryptorEngine engine(encrypt, key, iv);
        engine.finalize();
        engine.feed(plaintext);
    };
    EXPECT_DEATH(feedAfterTheEnd(), "Cryptor update failed\n$");

    const auto endOnBadPadding = [] {
        CryptorEngine engine(decrypt, key, iv);
        engine.feed(ciphertext);
        engine.finalize();
    };
    EXPECT_DEATH(endOnBadPadding(), "Cryptor finalize failed\n$");
}

} // namespace Pellarvine::detail
