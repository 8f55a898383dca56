// SPDX-License-Identifier: MIT
// Project Wycheproof's vectors: texts of every length, and padding and tags that must be refused.
#include "Shared/CryptorEngine.h"
#include "Shared/HMAC.h"
#include "Shared/TagComparison.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <map>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

QByteArray bytes(const QJsonObject &object, const QString &name)
{
    return QByteArray::fromHex(object[name].toString().toLatin1());
}

// Calls `check` with each vector and its group. Returns the number of vectors of each "result".
template <typename Check>
std::map<QString, int> forEachVector(const char *fileName, Check check)
{
    QFile file(QString::fromUtf8(WYCHEPROOF_FOLDER) + u'/' + QString::fromUtf8(fileName));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.errorString().toStdString();
    std::map<QString, int> counts;
    const QJsonArray groups =
            QJsonDocument::fromJson(file.readAll()).object()["testGroups"_L1].toArray();
    for (const auto group : groups) {
        const QJsonArray tests = group.toObject()["tests"_L1].toArray();
        for (const auto test : tests) {
            const QJsonObject vector = test.toObject();
            SCOPED_TRACE(vector["tcId"_L1].toInt());
            ++counts[vector["result"_L1].toString()];
            check(group.toObject(), vector);
        }
    }
    return counts;
}

} // namespace

TEST(Wycheproof, aes_cbc_with_padding)
{
    const auto counts = forEachVector(
            "aes_cbc_pkcs5_test.json", [](const QJsonObject &, const QJsonObject &vector) {
                const QByteArray key = bytes(vector, u"key"_s);
                const QByteArray iv = bytes(vector, u"iv"_s);
                const QByteArray text = bytes(vector, u"msg"_s);
                const QByteArray sealed = bytes(vector, u"ct"_s);
                CryptorEngine opener(CryptorOperation::decrypt, key, iv);
                QByteArray opened = opener.feed(sealed);
                const std::optional<Data> last = opener.finalizeIfWellFormed();
                if (vector["result"_L1] != "valid"_L1) {
                    EXPECT_FALSE(last);
                    return;
                }
                ASSERT_TRUE(last);
                EXPECT_EQ(opened + *last, text);
                CryptorEngine sealer(CryptorOperation::encrypt, key, iv);
                const QByteArray first = sealer.feed(text);
                EXPECT_EQ(first + sealer.finalize(), sealed);
            });
    EXPECT_EQ(counts, (std::map<QString, int> { { u"invalid"_s, 144 }, { u"valid"_s, 72 } }));
}

TEST(Wycheproof, hmac_sha256)
{
    const auto counts = forEachVector(
            "hmac_sha256_test.json", [](const QJsonObject &group, const QJsonObject &vector) {
                HMAC hmac(bytes(vector, u"key"_s));
                hmac.feed(bytes(vector, u"msg"_s));
                const QByteArray tag = hmac.finalize().first(group["tagSize"_L1].toInt() / 8);
                EXPECT_EQ(isEqualComparingAllBytes(tag, bytes(vector, u"tag"_s)),
                          vector["result"_L1] == "valid"_L1);
            });
    EXPECT_EQ(counts, (std::map<QString, int> { { u"invalid"_s, 108 }, { u"valid"_s, 66 } }));
}

} // namespace Pellarvine::detail
