// SPDX-License-Identifier: MIT
#include "Controls/TextFieldContents.h"

#include "Controls/TextLines.h"
#include "Text/NSMutableAttributedString.h"

#include <QPainter>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

TextFieldContents::TextFieldContents() = default;

TextFieldContents::~TextFieldContents() = default;

void TextFieldContents::setText(const NS::AttributedString &text)
{
    m_text = text;
    refill();
}

void TextFieldContents::refill()
{
    if (m_document)
        changeLooks([this] { fillDocument(*m_document, m_text, m_format); });
    forgetLayout();
}

void TextFieldContents::setFormat(const TextFieldFormat &format)
{
    m_format = format;
    if (m_document)
        changeLooks([this] { applyFormat(*m_document, m_format); });
    forgetLayout();
}

void TextFieldContents::setLinkColor(const QColor &color)
{
    m_format.linkColor = color;
}

QTextDocument &TextFieldContents::document()
{
    if (m_document)
        return *m_document;
    m_document = std::make_unique<QTextDocument>();
    m_document->setDocumentMargin(0);
    applyFormat(*m_document, m_format);
    fillDocument(*m_document, m_text, m_format);
    m_document->documentLayout(); // makes it; without one, a document reports no changes
    connect(m_document.get(), &QTextDocument::contentsChange, this,
            &TextFieldContents::contentsChange);
    connect(m_document.get(), &QTextDocument::contentsChanged, this,
            &TextFieldContents::contentsChanged);
    return *m_document;
}

void TextFieldContents::dropDocument()
{
    if (!m_document)
        return;
    m_document->disconnect(this);
    m_document.release()->deleteLater(); // it may be just reporting an edit
}

QSize TextFieldContents::size(int width) const
{
    const auto known = std::find_if(m_sizes.begin(), m_sizes.end(), [width](const KnownSize &one) {
        return one.narrowest <= width && width <= one.widest;
    });
    if (known != m_sizes.end())
        return known->size;
    lines().layOut(width);
    const QSizeF size = lines().size();
    const QSize rounded(int(std::ceil(size.width())), int(std::ceil(size.height())));
    // The lines stay as they are while the longest of them fits.
    const int narrowest = width < 0 ? width : std::min(width, rounded.width() + 1);
    m_sizes.push_back({ narrowest, width, rounded });
    return rounded;
}

double TextFieldContents::firstAscent() const
{
    lines().layOut(-1);
    return lines().firstAscent();
}

double TextFieldContents::firstHeight() const
{
    if (m_firstHeight < 0.0) {
        lines().layOut(-1);
        m_firstHeight = lines().firstHeight();
    }
    return m_firstHeight;
}

double TextFieldContents::lastDescent() const
{
    lines().layOut(-1);
    return lines().lastDescent();
}

bool TextFieldContents::isElided(const QSize &room)
{
    return &shownLines(room) != m_lines.get();
}

void TextFieldContents::draw(QPainter &painter, const QRect &place)
{
    const TextLines &shown = shownLines(place.size());
    const double room = place.height() - shown.size().height();
    double top = place.top();
    // A single line that is too high loses as much at either edge; of several, the first is seen.
    const bool isAligned = room > 0 || shown.isSingle();
    if (isAligned && !(m_format.alignment & Qt::AlignTop))
        top += (m_format.alignment & Qt::AlignBottom) ? room : std::floor(room / 2);
    painter.translate(place.left(), top);
    shown.draw(painter);
}

void TextFieldContents::forgetLayout()
{
    m_lines.reset();
    m_sizes.clear();
    m_firstHeight = -1.0;
    m_elided.reset();
    m_elidedRoom = QSize();
}

void TextFieldContents::contentsChange(int position, int removed, int added)
{
    if (m_isApplying)
        return;
    const QString now = plainText(*m_document);
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

TextLines &TextFieldContents::lines() const
{
    if (!m_lines)
        m_lines = std::make_unique<TextLines>(m_text, m_format);
    return *m_lines;
}

TextLines &TextFieldContents::shownLines(const QSize &room)
{
    const bool canElide = m_format.elideMode != Qt::ElideNone && !room.isEmpty();
    if (canElide && room != m_elidedRoom) {
        m_elidedRoom = room;
        m_elided.reset();
        lines().layOut(room.width());
        const NS::AttributedString fitting = lines().fittingText(room.height());
        if (fitting.string() != m_text.string()) {
            m_elided = std::make_unique<TextLines>(fitting, m_format);
            m_elided->layOut(room.width());
        }
    }
    if (canElide && m_elided)
        return *m_elided;
    lines().layOut(room.width());
    return lines();
}

} // namespace Pellarvine::detail
