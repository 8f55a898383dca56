// SPDX-License-Identifier: MIT
#include <pellarvine/Shared/PassphraseWords.h>

#include <QRegularExpression>
#include <QSet>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace Pellarvine {

TEST(PassphraseWords, are_drawn_from_the_whole_list)
{
    QSet<QString> seen;
    for (int times = 0; times < 4000; ++times) {
        const QStringList words = generatedPassphrase().split(u'-');
        ASSERT_EQ(words.size(), 6);
        for (const QString &word : words)
            seen.insert(word);
    }
    // Of 24000 fair draws, about 356 of the 7776 words are left out.
    EXPECT_THAT(seen.size(), testing::AllOf(testing::Gt(7250), testing::Le(7776)));
    EXPECT_TRUE(QRegularExpression(u"^[a-z]{4,8}$"_s).match(generatedPassphrase(1)).hasMatch());
    EXPECT_TRUE(QRegularExpression(u"^[a-z]{4,8}$"_s).match(generatedPassphrase(0)).hasMatch());
}

TEST(PassphraseWords, the_estimate_knows_how_people_make_passphrases)
{
    struct Row
    {
        QStringView passphrase;
        double least;
        double most;
    };
    for (const Row &row : {
                 Row { u"", 0, 0 }, Row { u"     ", 0, 0 }, Row { u"password", 6, 8 },
                 Row { u"Passw0rd", 8, 20 }, Row { u"password1999", 13, 15 },
                 Row { u"aaaaaaaaaaaaaaaa", 10, 21 }, Row { u"qwertyuiop", 10, 15 },
                 Row { u"1234567890", 8, 15 }, Row { u"abcdefgh", 8, 15 },
                 Row { u"kitchen", 12, 13.5 }, Row { u"Kitchen", 13.5, 14.5 },
                 Row { u"kitchen-saddle-ovation-drum", 51, 52 },
                 Row { u"kitchensaddleovationdrum", 51, 52 }, Row { u"gK7$wq2&xV9z", 50, 65 },
                 Row { u"\u0130stanbul", 30, 50 }, // its lower case is longer
         }) {
        const double bits = estimatedPassphraseEntropy(row.passphrase);
        EXPECT_GE(bits, row.least) << row.passphrase.toLocal8Bit().constData();
        EXPECT_LE(bits, row.most) << row.passphrase.toLocal8Bit().constData();
    }
    EXPECT_GT(estimatedPassphraseEntropy(generatedPassphrase(7)), 70);
}

} // namespace Pellarvine
