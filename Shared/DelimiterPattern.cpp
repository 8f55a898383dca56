// SPDX-License-Identifier: MIT
#include "Shared/DelimiterPattern.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

constexpr qsizetype longestDelimiter = 32;

// The characters that "." does not match.
bool isLineTerminator(char16_t unit)
{
    return (unit >= u'\n' && unit <= u'\r') || unit == 0x0085 || unit == 0x2028 || unit == 0x2029;
}

bool isAsciiPunctuation(QChar character)
{
    const char16_t unit = character.unicode();
    return unit > u' ' && unit < 0x7F && !character.isLetterOrNumber();
}

// Removes "{n}" from the front of `regex` and returns n: 1 if there is none, 0 if another construct
// with a brace is there.
qsizetype takeRepetition(QStringView &regex)
{
    if (!regex.startsWith(u'{'))
        return 1;
    const qsizetype brace = regex.indexOf(u'}');
    const QStringView digits = regex.mid(1, brace - 1);
    const bool isCount = brace > 1 && digits.size() <= 2
                         && std::all_of(digits.begin(), digits.end(),
                                        [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
    regex = regex.sliced(brace + 1);
    return isCount ? digits.toInt() : 0;
}

// Removes a group of fixed text from the front of `regex` and returns the text; empty if there is
// no such group.
QString takeDelimiter(QStringView &regex)
{
    if (!regex.startsWith(u'('))
        return {};
    regex = regex.sliced(1);
    QString delimiter;
    while (!regex.isEmpty() && !regex.startsWith(u')')) {
        const bool isQuoted = regex.startsWith(u'\\');
        if (isQuoted)
            regex = regex.sliced(1);
        if (regex.isEmpty())
            return {};
        const QChar character = regex.front();
        const bool isOrdinary =
                isQuoted ? isAsciiPunctuation(character) : !u"^$.|?*+()[]{}"_s.contains(character);
        if (!isOrdinary || character.isSurrogate() || isLineTerminator(character.unicode()))
            return {};
        regex = regex.sliced(1);
        const qsizetype count = takeRepetition(regex);
        if (count < 1 || delimiter.size() + count > longestDelimiter)
            return {};
        delimiter.append(QString(count, character));
    }
    if (regex.isEmpty())
        return {};
    regex = regex.sliced(1);
    return delimiter;
}

bool takeContent(QStringView &regex)
{
    constexpr auto content = "(.+?)"_L1;
    if (!regex.startsWith(content))
        return false;
    regex = regex.sliced(content.size());
    return true;
}

// For short delimiters, for which a function call costs more than the comparison.
bool standsAt(QStringView text, qsizetype place, QStringView delimiter)
{
    if (text.size() - place < delimiter.size())
        return false;
    for (qsizetype i = 0; i < delimiter.size(); ++i) {
        if (text[place + i] != delimiter[i])
            return false;
    }
    return true;
}

// A content that begins at `start` has at least one character and ends at the first delimiter
// behind that. Returns the place of the delimiter. If the line has none, returns -1 and sets
// `lineEnd` to the end of the line.
qsizetype endOfContent(QStringView text, qsizetype start, QStringView delimiter, qsizetype &lineEnd)
{
    const char16_t first = delimiter.front().unicode();
    for (qsizetype i = start; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        // A delimiter never begins with the second unit of a character.
        if (unit == first && i > start && standsAt(text, i, delimiter))
            return i;
        if (isLineTerminator(unit)) {
            lineEnd = i;
            return -1;
        }
    }
    lineEnd = text.size();
    return -1;
}

} // namespace

std::optional<DelimiterPattern> DelimiterPattern::recognized(QStringView regex)
{
    DelimiterPattern pattern;
    pattern.m_opener = takeDelimiter(regex);
    if (pattern.m_opener.isEmpty() || !takeContent(regex))
        return {};
    pattern.m_closer = takeDelimiter(regex);
    if (takeContent(regex)) {
        pattern.m_separator = pattern.m_closer;
        pattern.m_closer = takeDelimiter(regex);
        if (pattern.m_separator.isEmpty())
            return {};
    }
    if (pattern.m_closer.isEmpty() || !regex.isEmpty())
        return {};
    return pattern;
}

// The lazy "+?" continues behind the first delimiter only if the rest of the pattern fails. That
// fails only if the rest of the line has no delimiter. Then it fails for every later start in the
// line too, so the search continues behind the line.
bool DelimiterPattern::find(QStringView text, qsizetype from, PatternMatch &match) const
{
    while (true) {
        const qsizetype start = text.indexOf(m_opener.front(), from);
        if (start < 0)
            return false;
        if (!standsAt(text, start, m_opener)) {
            from = start + 1;
            continue;
        }
        const qsizetype argument = start + m_opener.size();
        qsizetype separator = argument;
        qsizetype content = argument;
        if (!m_separator.isEmpty()) {
            separator = endOfContent(text, argument, m_separator, from);
            if (separator < 0)
                continue;
            content = separator + m_separator.size();
        }
        const qsizetype closer = endOfContent(text, content, m_closer, from);
        if (closer < 0)
            continue;
        match.clear();
        match.push_back({ start, closer + m_closer.size() - start });
        match.push_back({ start, m_opener.size() });
        if (!m_separator.isEmpty()) {
            match.push_back({ argument, separator - argument });
            match.push_back({ separator, m_separator.size() });
        }
        match.push_back({ content, closer - content });
        match.push_back({ closer, m_closer.size() });
        return true;
    }
}

} // namespace Pellarvine::detail
