// SPDX-License-Identifier: MIT
#include "Controls/TextFieldContents.h"

#include "Text/NSMutableAttributedString.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QPainter>
#include <QPalette>
#include <QTextBlock>
#include <QTextLayout>

#include <cmath>
#include <utility>

namespace Pellarvine::detail {

TextFieldContents::TextFieldContents()
{
    m_document.setDocumentMargin(0);
    connect(&m_document, &QTextDocument::contentsChange, this, &TextFieldContents::contentsChange);
    connect(&m_document, &QTextDocument::contentsChanged, this,
            &TextFieldContents::contentsChanged);
}

void TextFieldContents::setText(const NS::AttributedString &text)
{
    m_text = text;
    refill();
}

void TextFieldContents::refill()
{
    changeLooks([this] { fillDocument(m_document, m_text, m_format); });
    forgetLayout();
}

void TextFieldContents::setFormat(const TextFieldFormat &format)
{
    m_format = format;
    changeLooks([this] { applyFormat(m_document, m_format); });
    forgetLayout();
}

void TextFieldContents::setLinkColor(const QColor &color)
{
    m_format.linkColor = color;
}

QSize TextFieldContents::size(int width) const
{
    const auto known = m_sizes.constFind(width);
    if (known != m_sizes.constEnd())
        return *known;
    const QSizeF size = sizeOfText(m_document, width, m_format);
    const QSize rounded(int(std::ceil(size.width())), int(std::ceil(size.height())));
    m_sizes.insert(width, rounded);
    return rounded;
}

double TextFieldContents::firstAscent() const
{
    const QTextLayout *const layout = m_document.firstBlock().layout();
    size(-1);
    return layout->lineCount() > 0 ? layout->lineAt(0).ascent()
                                   : QFontMetricsF(m_format.font).ascent();
}

double TextFieldContents::lastDescent() const
{
    const QTextLayout *const layout = m_document.lastBlock().layout();
    size(-1);
    return layout->lineCount() > 0 ? layout->lineAt(layout->lineCount() - 1).descent()
                                   : QFontMetricsF(m_format.font).descent();
}

bool TextFieldContents::isElided(int width)
{
    return &shown(width) != &m_document;
}

void TextFieldContents::draw(QPainter &painter, const QRect &place, const QPalette &palette)
{
    QTextDocument &document = shown(place.width());
    document.setTextWidth(place.width());
    const double room = place.height() - heightOfLines(document, m_format);
    double top = place.top();
    if (room > 0 && !(m_format.alignment & Qt::AlignTop))
        top += (m_format.alignment & Qt::AlignBottom) ? room : std::floor(room / 2);
    painter.translate(place.left(), top);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette;
    document.documentLayout()->draw(&painter, context);
}

void TextFieldContents::forgetLayout()
{
    m_sizes.clear();
    m_elided.reset();
    m_elidedWidth = -1;
}

void TextFieldContents::contentsChange(int position, int removed, int added)
{
    if (m_isApplying)
        return;
    const QString now = plainText(m_document);
    if (now == m_text.string())
        return;
    NS::MutableAttributedString changed(m_text);
    changed.replaceCharacters(position, removed, now.mid(position, added));
    // Qt's counts sometimes include the end of the document.
    m_text = changed.string() == now ? NS::AttributedString(changed) : NS::AttributedString(now);
    m_hasChanged = true;
}

void TextFieldContents::contentsChanged()
{
    if (m_isApplying || !std::exchange(m_hasChanged, false))
        return;
    forgetLayout();
    Q_EMIT edited();
}

QTextDocument &TextFieldContents::shown(int width)
{
    const bool canElide = m_format.elideMode != Qt::ElideNone && width > 0;
    if (canElide && width != m_elidedWidth) {
        m_elidedWidth = width;
        m_elided.reset();
        const bool hasRoom = !m_format.wraps && size(-1).width() <= width;
        const NS::AttributedString fitting =
                hasRoom ? m_text : fittingText(m_text, m_document, width, m_format);
        if (fitting.string() != m_text.string()) {
            m_elided = std::make_unique<QTextDocument>();
            m_elided->setDocumentMargin(0);
            applyFormat(*m_elided, m_format);
            fillDocument(*m_elided, fitting, m_format);
        }
    }
    return m_elided && canElide ? *m_elided : m_document;
}

} // namespace Pellarvine::detail
