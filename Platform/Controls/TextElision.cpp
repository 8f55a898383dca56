// SPDX-License-Identifier: MIT
#include "Controls/TextElision.h"

#include "Text/NSMutableAttributedString.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

// The line with an ellipsis in place of all but its first `head` and its last `tail` units.
NS::AttributedString withoutMiddle(const NS::AttributedString &line, qsizetype head, qsizetype tail)
{
    NS::MutableAttributedString result(line);
    const NS::Attributes attributes = line.attributes(std::max<qsizetype>(0, head - 1));
    result.replaceCharacters(head, line.length() - head - tail,
                             NS::AttributedString(QString(QChar(0x2026)), attributes));
    return NS::AttributedString(result);
}

// The elided line with no more than `count` units of the text.
NS::AttributedString keeping(const NS::AttributedString &line, Qt::TextElideMode mode,
                             qsizetype count)
{
    if (line.isEmpty())
        return withoutMiddle(line, 0, 0);
    const QString &string = line.string();
    const qsizetype length = line.length();
    const qsizetype head = mode == Qt::ElideLeft     ? 0
                           : mode == Qt::ElideMiddle ? (count + 1) / 2
                                                     : count;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, string);
    const auto boundary = [&](qsizetype place, bool isForward) {
        finder.setPosition(place);
        if (finder.isAtBoundary())
            return place;
        return isForward ? finder.toNextBoundary() : finder.toPreviousBoundary();
    };
    qsizetype headEnd = boundary(head, false);
    qsizetype tailStart = boundary(length - (count - head), true);
    while (headEnd > 0 && string.at(headEnd - 1).isSpace())
        --headEnd;
    while (tailStart < length && string.at(tailStart).isSpace())
        ++tailStart;
    return withoutMiddle(line, headEnd, length - tailStart);
}

} // namespace

NS::AttributedString elidedLine(const NS::AttributedString &line, Qt::TextElideMode mode,
                                const LineFits &fits)
{
    qsizetype low = 0;
    for (qsizetype high = line.length(); low < high;) {
        const qsizetype middle = (low + high + 1) / 2;
        if (fits(keeping(line, mode, middle)))
            low = middle;
        else
            high = middle - 1;
    }
    return keeping(line, mode, low);
}

NS::AttributedString elidedLines(const NS::AttributedString &text, Qt::TextElideMode mode,
                                 const LineFits &fits)
{
    const QString &string = text.string();
    NS::MutableAttributedString result;
    for (qsizetype start = 0; start <= string.size();) {
        const qsizetype lineEnd = string.indexOf(u'\n', start);
        const qsizetype end = lineEnd < 0 ? string.size() : lineEnd;
        const NS::AttributedString line = text.attributedSubstring(start, end - start);
        result.append(fits(line) ? line : elidedLine(line, mode, fits));
        if (lineEnd >= 0)
            result.append(text.attributedSubstring(lineEnd, 1));
        start = end + 1;
    }
    return NS::AttributedString(result);
}

} // namespace Pellarvine::detail
