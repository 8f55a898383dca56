// SPDX-License-Identifier: MIT
#include "Controls/TextFieldLayout.h"

#include "Controls/TextElision.h"
#include "Text/NSAttributedString+Text.h"
#include "Text/NSMutableAttributedString.h"

#include <QAbstractTextDocumentLayout>
#include <QSignalBlocker>
#include <QStyle>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

NS::AttributedString withDecoratedLinks(const NS::AttributedString &text, const QColor &color)
{
    if (!hasLinks(text))
        return text;
    NS::MutableAttributedString result(text);
    for (const auto &run : text.runs()) {
        if (!run.attributes.contains(NS::LinkAttributeName))
            continue;
        NS::Attributes looks { { NS::ForegroundColorAttributeName, color },
                               { NS::UnderlineStyleAttributeName, 1 } };
        looks.insert(run.attributes);
        result.setAttributes(looks, run.location, run.length);
    }
    return NS::AttributedString(result);
}

// The side that text begins at is the widget's, whatever the script, so that fields below each
// other line up.
Qt::Alignment absolute(Qt::Alignment horizontal, Qt::LayoutDirection direction)
{
    return QStyle::visualAlignment(direction, horizontal & Qt::AlignHorizontal_Mask)
           | Qt::AlignAbsolute;
}

double lineWidth(const NS::AttributedString &line, const TextFieldFormat &format)
{
    QTextLayout layout(line.string(), format.font);
    layout.setFormats(NS::layoutFormats(withDecoratedLinks(line, format.linkColor)));
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.lineAt(0).naturalTextWidth();
}

} // namespace

bool hasLinks(const NS::AttributedString &text)
{
    return std::any_of(text.runs().begin(), text.runs().end(), [](const auto &run) {
        return run.attributes.contains(NS::LinkAttributeName);
    });
}

QString plainText(const QTextDocument &document)
{
    // toPlainText() would also turn non-breaking spaces into plain ones.
    QString text = document.toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

void applyFormat(QTextDocument &document, const TextFieldFormat &format)
{
    document.setDefaultFont(format.font);
    QTextOption option(absolute(format.alignment, format.direction));
    option.setTextDirection(Qt::LayoutDirectionAuto); // by the text; Qt starts with the program's
    option.setWrapMode(format.wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                    : QTextOption::NoWrap);
    document.setDefaultTextOption(option);
}

void fillDocument(QTextDocument &document, const NS::AttributedString &text,
                  const TextFieldFormat &format)
{
    NS::setDocumentText(document, withDecoratedLinks(text, format.linkColor));
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat paragraph = block.blockFormat();
        if (!paragraph.hasProperty(QTextFormat::BlockAlignment)
            || (paragraph.alignment() & Qt::AlignAbsolute)
            || paragraph.layoutDirection() != Qt::LayoutDirectionAuto)
            continue;
        paragraph.setAlignment(absolute(paragraph.alignment(), format.direction));
        QTextCursor(block).setBlockFormat(paragraph);
    }
    document.clearUndoRedoStacks();
}

double heightOfLines(const QTextDocument &document, const TextFieldFormat &format)
{
    const double whole = document.size().height();
    int left = format.wraps ? format.maximumNumberOfLines : 0;
    if (left == 0)
        return whole;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QRectF place = document.documentLayout()->blockBoundingRect(block);
        const QTextLayout *const layout = block.layout();
        if (layout->lineCount() < left) {
            left -= layout->lineCount();
            continue;
        }
        const QRectF line = layout->lineAt(left - 1).rect();
        return std::min(whole, place.top() + line.bottom());
    }
    return whole;
}

QSizeF sizeOfText(QTextDocument &document, int width, const TextFieldFormat &format)
{
    // An editor shows the document at another width meanwhile, and must not follow.
    const QSignalBlocker blocker(document.documentLayout());
    const QSizeF page = document.pageSize();
    document.setTextWidth(width);
    const QSizeF size(document.idealWidth(), heightOfLines(document, format));
    document.setPageSize(page);
    return size;
}

NS::AttributedString fittingText(const NS::AttributedString &text, QTextDocument &document,
                                 int width, const TextFieldFormat &format)
{
    const auto fits = [&](const NS::AttributedString &line) {
        return lineWidth(line, format) <= width;
    };
    if (!format.wraps)
        return elidedLines(text, format.elideMode, fits);
    if (format.maximumNumberOfLines == 0)
        return text;
    document.setTextWidth(width);
    document.size();
    int left = format.maximumNumberOfLines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextLayout *const layout = block.layout();
        if (layout->lineCount() < left) {
            left -= layout->lineCount();
            continue;
        }
        const QTextLine line = layout->lineAt(left - 1);
        const qsizetype start = block.position() + line.textStart();
        const qsizetype blockEnd = block.position() + block.length() - 1;
        const bool isLast = !block.next().isValid() && left == layout->lineCount();
        if (isLast)
            return text;
        NS::MutableAttributedString result(text.attributedSubstring(0, start));
        result.append(elidedLine(text.attributedSubstring(start, blockEnd - start), Qt::ElideRight,
                                 fits));
        return NS::AttributedString(result);
    }
    return text;
}

} // namespace Pellarvine::detail
