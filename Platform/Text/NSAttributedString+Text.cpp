// SPDX-License-Identifier: MIT
#include "Text/NSAttributedString+Text.h"

#include <QColor>
#include <QFont>
#include <QHash>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

std::optional<QColor> color(const Attributes &attributes, const QString &key)
{
    const QVariant value = attributes.value(key);
    if (!value.canConvert<QColor>())
        return {};
    const QColor color = value.value<QColor>();
    return color.isValid() ? std::optional(color) : std::nullopt;
}

std::optional<QFont> font(const Attributes &attributes)
{
    const QVariant value = attributes.value(FontAttributeName);
    return value.canConvert<QFont>() ? std::optional(value.value<QFont>()) : std::nullopt;
}

double kern(const Attributes &attributes)
{
    const double kern = attributes.value(KernAttributeName).toDouble();
    // Qt uses 26.6 fixed-point numbers. Far smaller steps already leave every screen.
    constexpr double farthest = 1 << 16;
    return std::isfinite(kern) ? std::clamp(kern, -farthest, farthest) : 0.0;
}

bool isUnderlined(const Attributes &attributes)
{
    return attributes.value(UnderlineStyleAttributeName).toInt() != 0;
}

bool isStruckThrough(const Attributes &attributes)
{
    return attributes.value(StrikethroughStyleAttributeName).toInt() != 0;
}

QString cssColor(const QColor &color)
{
    if (color.alpha() == 255)
        return color.name();
    return u"rgba(%1,%2,%3,%4)"_s.arg(color.red())
            .arg(color.green())
            .arg(color.blue())
            .arg(color.alphaF(), 0, 'f', 3);
}

// Names of generic families in CSS, in fontconfig and in Qt. Quoted, CSS would take them for names
// of fonts.
QString cssFamily(const QString &family)
{
    static const QHash<QString, QString> generic {
        { u"serif"_s, u"serif"_s },           { u"sans"_s, u"sans-serif"_s },
        { u"sans serif"_s, u"sans-serif"_s }, { u"sans-serif"_s, u"sans-serif"_s },
        { u"mono"_s, u"monospace"_s },        { u"monospace"_s, u"monospace"_s },
        { u"cursive"_s, u"cursive"_s },       { u"fantasy"_s, u"fantasy"_s },
        { u"system-ui"_s, u"system-ui"_s },
    };
    const auto found = generic.constFind(family.toLower());
    if (found != generic.constEnd())
        return *found;
    QString name = family;
    name.remove(u'\\').remove(u'\'').remove(u'"');
    return u'\'' + name + u'\'';
}

QString cssFont(const QFont &font)
{
    const bool isInPoints = font.pointSizeF() > 0.0;
    const double size = isInPoints ? font.pointSizeF() : font.pixelSize();
    QString css = u"font-family:%1;font-size:%2%3;font-weight:%4"_s.arg(
            cssFamily(font.family()), QString::number(size), isInPoints ? u"pt"_s : u"px"_s,
            QString::number(font.weight()));
    if (font.style() != QFont::StyleNormal)
        css += u";font-style:italic"_s;
    return css;
}

QString css(const Attributes &attributes)
{
    QStringList parts;
    if (const auto value = font(attributes))
        parts.append(cssFont(*value));
    if (const auto value = color(attributes, ForegroundColorAttributeName))
        parts.append(u"color:"_s + cssColor(*value));
    if (const auto value = color(attributes, BackgroundColorAttributeName))
        parts.append(u"background-color:"_s + cssColor(*value));
    QStringList lines;
    if (isUnderlined(attributes))
        lines.append(u"underline"_s);
    if (isStruckThrough(attributes))
        lines.append(u"line-through"_s);
    if (!lines.isEmpty())
        parts.append(u"text-decoration:"_s + lines.join(u' '));
    if (const double value = kern(attributes); value != 0.0)
        parts.append(u"letter-spacing:%1px"_s.arg(value));
    return parts.join(u';');
}

QString escaped(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool isPair =
                unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair)
            result += text.sliced(i++, 2);
        else if (unit.isSurrogate() || unit.isNull())
            result += QChar::ReplacementCharacter;
        else
            result += unit;
    }
    return result.toHtmlEscaped();
}

} // namespace

QTextCharFormat charFormat(const Attributes &attributes)
{
    QTextCharFormat format;
    if (const auto value = font(attributes))
        format.setFont(*value);
    if (const auto value = color(attributes, ForegroundColorAttributeName))
        format.setForeground(*value);
    if (const auto value = color(attributes, BackgroundColorAttributeName))
        format.setBackground(*value);
    if (isUnderlined(attributes))
        format.setFontUnderline(true);
    if (isStruckThrough(attributes))
        format.setFontStrikeOut(true);
    if (const double value = kern(attributes); value != 0.0) {
        format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        format.setFontLetterSpacing(value);
    }
    if (const QUrl link = attributes.value(LinkAttributeName).toUrl(); link.isValid()) {
        format.setAnchor(true);
        format.setAnchorHref(link.toString());
    }
    return format;
}

QTextBlockFormat blockFormat(const ParagraphStyle &style)
{
    QTextBlockFormat format;
    format.setAlignment(style.alignment);
    format.setNonBreakableLines(style.wrapMode == QTextOption::NoWrap);
    if (style.baseWritingDirection != Qt::LayoutDirectionAuto)
        format.setLayoutDirection(style.baseWritingDirection);
    const bool isFromRight = style.baseWritingDirection == Qt::RightToLeft;
    isFromRight ? format.setRightMargin(style.headIndent) : format.setLeftMargin(style.headIndent);
    format.setTextIndent(style.firstLineHeadIndent - style.headIndent);
    format.setTopMargin(style.paragraphSpacingBefore);
    format.setBottomMargin(style.paragraphSpacing);
    if (style.lineSpacing != 0.0)
        format.setLineHeight(style.lineSpacing, QTextBlockFormat::LineDistanceHeight);
    return format;
}

QTextOption textOption(const ParagraphStyle &style)
{
    QTextOption option(style.alignment);
    option.setWrapMode(style.wrapMode);
    option.setTextDirection(style.baseWritingDirection);
    return option;
}

QList<QTextLayout::FormatRange> layoutFormats(const AttributedString &text)
{
    // QTextLayout counts in int.
    constexpr qsizetype farthest = std::numeric_limits<int>::max();
    QList<QTextLayout::FormatRange> formats;
    formats.reserve(text.runs().size());
    for (const auto &run : text.runs()) {
        if (run.end() > farthest)
            break;
        QTextLayout::FormatRange range;
        range.start = int(run.location);
        range.length = int(run.length);
        range.format = charFormat(run.attributes);
        formats.append(range);
    }
    return formats;
}

void setDocumentText(QTextDocument &document, const AttributedString &text)
{
    const bool wasUndoEnabled = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    document.clear();
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    const auto startBlock = [&](const Attributes &attributes) {
        const QVariant style = attributes.value(ParagraphStyleAttributeName);
        const bool hasStyle = style.canConvert<ParagraphStyle>();
        cursor.setBlockFormat(hasStyle ? blockFormat(style.value<ParagraphStyle>())
                                       : QTextBlockFormat());
    };
    bool isAtStart = true;
    for (const auto &run : text.runs()) {
        const QTextCharFormat format = charFormat(run.attributes);
        QStringView rest = QStringView(text.string()).sliced(run.location, run.length);
        while (!rest.isEmpty()) {
            if (isAtStart)
                startBlock(run.attributes);
            const qsizetype lineLength = rest.indexOf(u'\n') + 1;
            isAtStart = lineLength > 0;
            const QStringView line = isAtStart ? rest.first(lineLength) : rest;
            cursor.insertText(line.toString(), format);
            rest = rest.sliced(line.size());
        }
    }
    cursor.endEditBlock();
    document.setUndoRedoEnabled(wasUndoEnabled);
}

QString html(const AttributedString &text)
{
    QString result;
    for (const auto &run : text.runs()) {
        const QString content =
                escaped(QStringView(text.string()).sliced(run.location, run.length));
        const QString style = css(run.attributes);
        const QUrl link = run.attributes.value(LinkAttributeName).toUrl();
        QString properties;
        if (link.isValid())
            properties += u" href=\""_s + link.toString(QUrl::FullyEncoded).toHtmlEscaped() + u'"';
        if (!style.isEmpty())
            properties += u" style=\""_s + style.toHtmlEscaped() + u'"';
        const QString tag = link.isValid() ? u"a"_s : u"span"_s;
        if (properties.isEmpty())
            result += content;
        else
            result += u'<' + tag + properties + u'>' + content + u"</"_s + tag + u'>';
    }
    return result;
}

} // namespace NS
