// SPDX-License-Identifier: MIT
#include "Shared/PassphraseWords.h"

#include "Base/Failure.h"
#include "Shared/Data+Random.h"

#include <QFile>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

constexpr int wordCount = 7776; // five throws of a die
constexpr qsizetype longestWord = 8;

struct Words
{
    QStringList list;
    QSet<QStringView> set; // of the texts in `list`

    Words()
    {
        QFile file(u":/pellarvine/data/passphrase-words.txt"_s);
        if (file.open(QIODevice::ReadOnly))
            list = QString::fromLatin1(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        if (list.size() != wordCount)
            detail::fatalError("Error: the list of words for passphrases is damaged");
        set = QSet<QStringView>(list.cbegin(), list.cend());
    }
};

const Words &words()
{
    static const Words words;
    return words;
}

// A uniformly distributed number below wordCount.
int randomIndex()
{
    constexpr int fairBound = 65536 / wordCount * wordCount;
    for (;;) {
        const Data bytes = secureRandomData(2);
        const int number = quint8(bytes[0]) << 8 | quint8(bytes[1]);
        if (number < fairBound)
            return number % wordCount;
    }
}

// Parts of the passwords that leak most often, in lower case.
constexpr QStringView common[] = {
    u"password", u"passwort", u"admin",  u"letmein", u"welcome", u"iloveyou", u"monkey",
    u"dragon",   u"login",    u"abc",    u"master",  u"hello",   u"secret",   u"football",
    u"baseball", u"sunshine", u"shadow", u"michael", u"pass",    u"test",     u"love",
};
constexpr double commonBits = 7; // one of about 100

constexpr QStringView keyRows[] = { u"1234567890", u"qwertyuiop", u"qwertzuiop", u"azertyuiop",
                                    u"asdfghjkl",  u"zxcvbnm",    u"yxcvbnm" };

// Whether `first` predicts `second`: the same character, or a neighbour on the keyboard or in the
// alphabet.
bool isExpectedAfter(QChar first, QChar second)
{
    if (std::abs(int(first.unicode()) - int(second.unicode())) <= 1)
        return true;
    return std::any_of(std::begin(keyRows), std::end(keyRows), [&](QStringView row) {
        const qsizetype index = row.indexOf(first);
        const qsizetype other = row.indexOf(second);
        return index >= 0 && other >= 0 && std::abs(index - other) == 1;
    });
}

double bitsOfCharacter(QChar character)
{
    if (character.isDigit())
        return std::log2(10);
    if (character.isSpace() || character == u'-')
        return 0; // separators of words
    if (character.isLetter())
        return character.unicode() < 128 ? std::log2(26) : std::log2(64);
    return std::log2(32);
}

// Replaces digits and signs by the letters that they stand for.
QString withoutDisguise(QStringView text)
{
    QString letters = text.toString();
    for (QChar &unit : letters) {
        const qsizetype index = QStringView(u"013457@$!").indexOf(unit);
        if (index >= 0)
            unit = QStringView(u"oieastasi")[index];
    }
    return letters;
}

bool isYear(QStringView text)
{
    return (text.startsWith(u"19") || text.startsWith(u"20")) && text[2].isDigit()
           && text[3].isDigit();
}

} // namespace

QString generatedPassphrase(int count)
{
    QString passphrase = words().list[randomIndex()];
    for (int index = 1; index < count; ++index)
        passphrase += u'-' + words().list[randomIndex()];
    return passphrase;
}

double estimatedPassphraseEntropy(QStringView passphrase)
{
    const QString lower = passphrase.toString().toLower();
    // Lower case can change the length ("İ"). Such a text is kept.
    const QStringView text = lower.size() == passphrase.size() ? QStringView(lower) : passphrase;
    const QString letters = withoutDisguise(text);
    const qsizetype length = text.size();
    // cheapest[n]: the least number of bits that makes the first n characters.
    std::vector<double> cheapest(std::size_t(length) + 1, 0);
    for (qsizetype end = 1; end <= length; ++end) {
        const QChar last = passphrase[end - 1];
        const bool isExpected = end > 1 && isExpectedAfter(text[end - 2], text[end - 1]);
        const double random = bitsOfCharacter(last) + (last.isUpper() ? 1 : 0);
        double best =
                cheapest[std::size_t(end) - 1] + (isExpected ? std::min(1.0, random) : random);
        const auto consider = [&](qsizetype start, double bits) {
            const bool hasCapital =
                    std::any_of(passphrase.begin() + start, passphrase.begin() + end,
                                [](QChar unit) { return unit.isUpper(); });
            best = std::min(best, cheapest[std::size_t(start)] + bits + (hasCapital ? 1 : 0));
        };
        for (qsizetype size = 3; size <= std::min(end, longestWord); ++size) {
            const QStringView part = text.sliced(end - size, size);
            const QStringView word = QStringView(letters).sliced(end - size, size);
            const double disguise = word == part ? 0 : 1;
            if (std::find(std::begin(common), std::end(common), word) != std::end(common))
                consider(end - size, commonBits + disguise);
            else if (words().set.contains(word))
                consider(end - size, std::log2(wordCount) + disguise);
            else if (size == 4 && isYear(part))
                consider(end - size, commonBits);
        }
        cheapest[std::size_t(end)] = best;
    }
    return cheapest.back();
}

} // namespace Pellarvine
