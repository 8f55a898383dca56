// SPDX-License-Identifier: MIT
#include "Controls/TextFieldLayout.h"

#include "Text/NSAttributedString+Text.h"
#include "Text/NSMutableAttributedString.h"

#include <QStyle>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

NS::AttributedString withDecoratedLinks(const NS::AttributedString &text, const QColor &color)
{
    if (!hasLinks(text))
        return text;
    NS::MutableAttributedString result(text);
    for (const auto &run : text.runs()) {
        if (!run.attributes.value(NS::LinkAttributeName).toUrl().isValid())
            continue;
        NS::Attributes looks { { NS::ForegroundColorAttributeName, color },
                               { NS::UnderlineStyleAttributeName, 1 } };
        looks.insert(run.attributes);
        result.setAttributes(looks, run.location, run.length);
    }
    return NS::AttributedString(result);
}

} // namespace

Qt::Alignment horizontalAlignment(Qt::Alignment alignment, Qt::LayoutDirection direction)
{
    return QStyle::visualAlignment(direction, alignment & Qt::AlignHorizontal_Mask)
           | Qt::AlignAbsolute;
}

bool hasLinks(const NS::AttributedString &text)
{
    return std::any_of(text.runs().begin(), text.runs().end(), [](const auto &run) {
        return run.attributes.value(NS::LinkAttributeName).toUrl().isValid();
    });
}

QList<TextLink> linksOf(const QTextDocument &document)
{
    QList<TextLink> links;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.charFormat().isAnchor())
                continue;
            const TextLink link { .start = fragment.position(),
                                  .end = fragment.position() + fragment.length(),
                                  .text = fragment.text(),
                                  .url = QUrl(fragment.charFormat().anchorHref()) };
            const bool goesOn = !links.isEmpty() && links.constLast().end == link.start
                                && links.constLast().url == link.url;
            if (goesOn) {
                links.last().end = link.end;
                links.last().text += link.text;
            } else {
                links.append(link);
            }
        }
    }
    return links;
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
    QTextOption option(horizontalAlignment(format.alignment, format.direction));
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
        paragraph.setAlignment(horizontalAlignment(paragraph.alignment(), format.direction));
        QTextCursor(block).setBlockFormat(paragraph);
    }
    document.clearUndoRedoStacks();
}

} // namespace Pellarvine::detail
