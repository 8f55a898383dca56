// SPDX-License-Identifier: MIT
#include "Pellarvine/MarkupLabel.h"

#include "Drawing/NSColor.h"
#include "Shared/MarkupParser.h"
#include "Text/NSMutableAttributedString.h"
#include "View/NSView.h"

#include <QEvent>

#include <utility>

namespace Pellarvine {

MarkupLabel::MarkupLabel(QWidget *parent)
    : HeightForWidthTextField(parent)
{
    connect(this, &TextField::stringValueChanged, this, &MarkupLabel::markupStringValueChanged);
}

QString MarkupLabel::markupStringValue() const
{
    return stringValue();
}

void MarkupLabel::setMarkupStringValue(const QString &markup)
{
    MarkupParser parser(font());
    NS::ParagraphStyle style = parser.paragraphStyle();
    style.alignment = alignment() & (Qt::AlignHorizontal_Mask | Qt::AlignAbsolute);
    parser.setParagraphStyle(style);
    m_paletteColor = textColor().isValid() ? QColor() : palette().color(QPalette::WindowText);
    parser.setColor(NS::Color(m_paletteColor.isValid() ? m_paletteColor : textColor()));
    setAttributedStringValue(parser.parse(markup));
    NS::setNeedsLayout(this);
}

void MarkupLabel::awakeFromNib()
{
    setMarkupStringValue(stringValue());
}

// The markup is gone by now, but what it left in the palette's former colour can be told.
void MarkupLabel::changeEvent(QEvent *event)
{
    HeightForWidthTextField::changeEvent(event);
    const bool mayDiffer =
            event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange;
    const QColor now = palette().color(QPalette::WindowText);
    if (!mayDiffer || !m_paletteColor.isValid() || now == m_paletteColor)
        return;
    const NS::Color former(std::exchange(m_paletteColor, now));
    const NS::AttributedString before = attributedStringValue();
    NS::MutableAttributedString text(before);
    for (const auto &run : before.runs()) {
        const QVariant color = run.attributes.value(NS::ForegroundColorAttributeName);
        if (color.value<NS::Color>() == former) {
            text.addAttributes(
                    { { NS::ForegroundColorAttributeName, QVariant::fromValue(NS::Color(now)) } },
                    run.location, run.length);
        }
    }
    setAttributedStringValue(text);
}

} // namespace Pellarvine
