// SPDX-License-Identifier: MIT
#include "Controls/TextLines.h"

#include "Controls/TextElision.h"
#include "Text/NSAttributedString+Text.h"
#include "Text/NSMutableAttributedString.h"

#include <QStyle>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

namespace {

// The same characters as in QTextCursor::insertText().
bool endsParagraph(QChar unit)
{
    return unit == u'\n' || unit == u'\r' || unit == QChar::ParagraphSeparator
           || unit == QChar(0xfdd0) || unit == QChar(0xfdd1);
}

// Neighbours that look the same become one range, whose glyphs are shaped together.
QList<QTextLayout::FormatRange> formatsOf(const NS::AttributedString &text)
{
    QList<QTextLayout::FormatRange> result;
    for (const QTextLayout::FormatRange &range : NS::layoutFormats(text)) {
        if (!result.isEmpty() && result.constLast().format == range.format)
            result.last().length += range.length;
        else
            result.append(range);
    }
    if (result.size() == 1 && result.constFirst().format.isEmpty())
        result.clear();
    return result;
}

double lineWidth(const NS::AttributedString &line, const QFont &font)
{
    QTextLayout layout(line.string(), font);
    layout.setFormats(NS::layoutFormats(line));
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.lineAt(0).naturalTextWidth();
}

} // namespace

TextLines::TextLines(const NS::AttributedString &text, const TextFieldFormat &format)
    : m_text(text)
    , m_format(format)
{
    const QString &string = text.string();
    QTextBlockFormat block; // goes on behind line ends that are no line feeds
    QFont font = format.font; // of a paragraph without text
    bool isNewStyle = true;
    for (qsizetype start = 0; start <= string.size();) {
        qsizetype end = start;
        while (end < string.size() && !endsParagraph(string.at(end)))
            ++end;
        if (isNewStyle && start < string.size()) {
            const QVariant style = text.attribute(NS::ParagraphStyleAttributeName, start);
            block = style.canConvert<NS::ParagraphStyle>()
                            ? NS::blockFormat(style.value<NS::ParagraphStyle>())
                            : QTextBlockFormat();
        }
        append(start, end, block, font);
        if (end == string.size())
            break;
        const bool isPair = string.at(end) == u'\r' && string.mid(end + 1, 1) == u"\n";
        const qsizetype last = isPair ? end + 1 : end;
        isNewStyle = string.at(last) == u'\n';
        font = NS::charFormat(text.attributes(last)).font().resolve(format.font);
        start = last + 1;
    }
}

void TextLines::append(qsizetype start, qsizetype end, const QTextBlockFormat &format,
                       const QFont &font)
{
    const bool isWhole = start == 0 && end == m_text.length();
    const NS::AttributedString part =
            isWhole ? m_text : m_text.attributedSubstring(start, end - start);
    auto layout =
            std::make_unique<QTextLayout>(part.string(), part.isEmpty() ? font : m_format.font);
    layout->setCacheEnabled(true);
    if (const auto formats = formatsOf(part); !formats.isEmpty())
        layout->setFormats(formats);

    Qt::LayoutDirection direction = format.layoutDirection();
    if (direction == Qt::LayoutDirectionAuto)
        direction = part.string().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    Qt::Alignment alignment = horizontalAlignment(m_format.alignment, m_format.direction);
    if (format.hasProperty(QTextFormat::BlockAlignment)) {
        alignment = format.alignment();
        if (format.layoutDirection() == Qt::LayoutDirectionAuto && !(alignment & Qt::AlignAbsolute))
            alignment = horizontalAlignment(alignment, m_format.direction);
    }
    QTextOption option(QStyle::visualAlignment(direction, alignment));
    option.setTextDirection(direction);
    layout->setTextOption(option);
    m_paragraphs.push_back({ start, format, std::move(layout), false });
}

void TextLines::layOut(int width)
{
    if (std::exchange(m_room, width) == width)
        return;
    m_width = 0.0;
    double top = 0.0;
    const Paragraph *previous = nullptr;
    for (Paragraph &paragraph : m_paragraphs) {
        if (previous)
            top += std::max(paragraph.format.topMargin(), previous->format.bottomMargin());
        top = layOut(paragraph, top);
        previous = &paragraph;
    }
    m_height = top;
}

// Returns where the next paragraph begins. Takes the same steps as QTextDocument's layout.
double TextLines::layOut(Paragraph &paragraph, double top)
{
    QTextLayout &layout = *paragraph.layout;
    QTextOption option = layout.textOption();
    const bool breaksByText = m_room < 0 || paragraph.format.nonBreakableLines();
    option.setWrapMode(breaksByText     ? QTextOption::ManualWrap
                       : m_format.wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                        : QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.setPosition({ 0.0, top });

    // The layout is not ended, so that it need not shape the glyphs again for the next width. Only
    // what justifies a line, or shows a hyphen at its end, changes them.
    const bool changesGlyphs =
            (option.alignment() & Qt::AlignJustify) || layout.text().contains(QChar::SoftHyphen);
    if (std::exchange(paragraph.isShaped, true) && !changesGlyphs) {
        layout.clearLayout();
    } else {
        if (layout.lineCount() > 0)
            layout.endLayout();
        layout.beginLayout();
    }

    const bool runsToLeft = option.textDirection() == Qt::RightToLeft;
    double indent = paragraph.format.textIndent();
    double y = top;
    double bottom = top;
    while (true) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLeadingIncluded(true);
        const double left = paragraph.format.leftMargin() + (runsToLeft ? 0.0 : indent);
        const double right =
                std::max(m_room, 0) - paragraph.format.rightMargin() - (runsToLeft ? indent : 0.0);
        indent = 0.0;
        line.setLineWidth(right - left);
        if (line.naturalTextWidth() > right - left)
            line.setLineWidth(line.naturalTextWidth());
        line.setPosition({ left, y - top });
        const double inked = std::ceil(line.ascent() + line.descent() + line.leading());
        bottom = y + paragraph.format.lineHeight(line.height(), 1.0);
        y += paragraph.format.lineHeight(inked, 1.0);
        m_width =
                std::max(m_width, left + line.naturalTextWidth() + paragraph.format.rightMargin());
    }
    return std::max(y, bottom);
}

double TextLines::heightOfLines() const
{
    int left = m_format.wraps ? m_format.maximumNumberOfLines : 0;
    if (left == 0)
        return m_height;
    for (const Paragraph &paragraph : m_paragraphs) {
        const QTextLayout &layout = *paragraph.layout;
        if (layout.lineCount() >= left) {
            return std::min(m_height,
                            layout.position().y() + layout.lineAt(left - 1).rect().bottom());
        }
        left -= layout.lineCount();
    }
    return m_height;
}

double TextLines::firstAscent() const
{
    return m_paragraphs.front().layout->lineAt(0).ascent();
}

double TextLines::firstHeight() const
{
    return m_paragraphs.front().layout->lineAt(0).height();
}

double TextLines::lastDescent() const
{
    const QTextLayout &layout = *m_paragraphs.back().layout;
    return layout.lineAt(layout.lineCount() - 1).descent();
}

bool TextLines::isSingle() const
{
    return m_paragraphs.size() == 1 && m_paragraphs.front().layout->lineCount() == 1;
}

void TextLines::draw(QPainter &painter) const
{
    for (const Paragraph &paragraph : m_paragraphs)
        paragraph.layout->draw(&painter, {});
}

int TextLines::fittingLines(double height) const
{
    int count = 0;
    for (const Paragraph &paragraph : m_paragraphs) {
        const QTextLayout &layout = *paragraph.layout;
        for (int i = 0; i < layout.lineCount(); ++i) {
            const QTextLine line = layout.lineAt(i);
            const double bottom = layout.position().y() + line.y() + line.ascent() + line.descent();
            const bool fits = bottom <= height && count != m_format.maximumNumberOfLines;
            if (count > 0 && !fits)
                return count;
            ++count;
        }
    }
    return count;
}

NS::AttributedString TextLines::fittingText(double height) const
{
    const auto fits = [this](const NS::AttributedString &line) {
        return lineWidth(line, m_format.font) <= m_room;
    };
    if (!m_format.wraps)
        return m_width <= m_room ? m_text : elidedLines(m_text, m_format.elideMode, fits);
    if (m_format.maximumNumberOfLines == 0 && m_height <= height)
        return m_text;
    int left = fittingLines(height);
    for (const Paragraph &paragraph : m_paragraphs) {
        const QTextLayout &layout = *paragraph.layout;
        if (layout.lineCount() < left) {
            left -= layout.lineCount();
            continue;
        }
        const bool isLast = &paragraph == &m_paragraphs.back() && left == layout.lineCount();
        if (isLast)
            return m_text;
        const qsizetype start = paragraph.start + layout.lineAt(left - 1).textStart();
        const qsizetype end = paragraph.start + layout.text().size();
        NS::MutableAttributedString result(m_text.attributedSubstring(0, start));
        result.append(
                elidedLine(m_text.attributedSubstring(start, end - start), Qt::ElideRight, fits));
        return NS::AttributedString(result);
    }
    return m_text;
}

} // namespace Pellarvine::detail
