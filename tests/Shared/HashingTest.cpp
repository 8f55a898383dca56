// SPDX-License-Identifier: MIT
#include <pellarvine/Shared/Data+Hashing.h>
#include <pellarvine/Shared/Data+Random.h>

#include <QBuffer>
#include <QSet>
#include <gtest/gtest.h>
#include <openssl/evp.h>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

using enum HashingAlgorithm;

struct Vector
{
    HashingAlgorithm algorithm;
    QByteArray message;
    const char *digest;
};

// RFC 1321's test suite and the examples of FIPS 180-4.
const Vector vectors[] = {
    { md5, "abc", "900150983cd24fb0d6963f7d28e17f72" },
    { sha1, "abc", "a9993e364706816aba3e25717850c26c9cd0d89d" },
    { sha224, "abc", "23097d223405d8228642a477bda255b32aadbce4bda0b3f7e36c9da7" },
    { sha256, "", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855" },
    { sha256, "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
      "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1" },
    { sha384, "abc",
      "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed"
      "8086072ba1e7cc2358baeca134c825a7" },
    { sha512, "abc",
      "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
      "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f" },
};

// A device whose reads fail after some bytes.
class FailingDevice : public QIODevice
{
public:
    FailingDevice() { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }

protected:
    qint64 readData(char *data, qint64) override
    {
        if (m_hasGivenSome) {
            setErrorString(u"Input/output error"_s);
            return -1;
        }
        m_hasGivenSome = true;
        *data = 'a';
        return 1;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    bool m_hasGivenSome = false;
};

} // namespace

TEST(Hashing, known_answers_match_as_bytes_as_hex_and_from_a_device)
{
    for (const auto &[algorithm, message, digest] : vectors) {
        const QByteArray bytes = QByteArray::fromHex(digest);
        EXPECT_EQ(bytes.size(), digestLength(algorithm));
        EXPECT_EQ(hashed(message, algorithm), bytes);
        EXPECT_EQ(hashedHexString(message, algorithm), QString::fromLatin1(digest));
        QBuffer device;
        device.setData(message);
        ASSERT_TRUE(device.open(QIODevice::ReadOnly));
        EXPECT_EQ(hashed(device, algorithm), bytes);
    }
}

TEST(Hashing, a_device_longer_than_one_piece_gives_the_digest_of_the_whole)
{
    // FIPS 180-4's long example: a million times "a".
    QBuffer device;
    device.setData(QByteArray(1000000, 'a'));
    ASSERT_TRUE(device.open(QIODevice::ReadOnly));
    EXPECT_EQ(hashed(device, sha1)->toHex(), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST(Hashing, a_device_that_fails_gives_no_digest)
{
    FailingDevice device;
    EXPECT_EQ(hashed(device, sha256), std::nullopt);
    EXPECT_EQ(device.errorString(), u"Input/output error"_s);
}

TEST(Hashing, md5_works_where_the_process_asks_for_fips_algorithms)
{
    const auto md5UnderFips = [] {
        EVP_set_default_properties(nullptr, "fips=yes");
        const bool isRefusedByDefault = EVP_MD_fetch(nullptr, "MD5", nullptr) == nullptr;
        const bool isRight = hashed("abc", md5).toHex() == "900150983cd24fb0d6963f7d28e17f72";
        std::_Exit(isRefusedByDefault && isRight ? 42 : 1);
    };
    EXPECT_EXIT(md5UnderFips(), ::testing::ExitedWithCode(42), "");
}

TEST(Random, has_the_length_asked_for_and_does_not_repeat)
{
    EXPECT_TRUE(secureRandomData(0).isEmpty());
    QSet<QByteArray> seen;
    for (int i = 0; i < 100; ++i) {
        const QByteArray bytes = secureRandomData(16);
        ASSERT_EQ(bytes.size(), 16);
        seen.insert(bytes);
    }
    EXPECT_EQ(seen.size(), 100);
}

TEST(Random, fills_every_byte_of_a_long_buffer)
{
    const QByteArray bytes = secureRandomData(1 << 20);
    for (int value = 0; value < 256; ++value)
        ASSERT_NEAR(double(bytes.count(char(value))), 4096.0, 640.0) << value; // ten sigma
}

} // namespace Pellarvine
