// SPDX-License-Identifier: MIT
#include "Pellarvine/MarkupLabel.h"

#include "Drawing/NSColor.h"
#include "Shared/MarkupParser.h"
#include "View/NSView.h"

#include <QEvent>

namespace Pellarvine {

struct MarkupLabel::Private
{
    NS::AttributedString styled(const QColor &color) const;

    // As of the last write.
    QString markup;
    QFont font;
    Qt::Alignment alignment;
    bool hasPaletteColor = false;
    NS::AttributedString text; // what the label shows unless another text was set
};

NS::AttributedString MarkupLabel::Private::styled(const QColor &color) const
{
    MarkupParser parser(font);
    NS::ParagraphStyle style = parser.paragraphStyle();
    style.alignment = alignment & (Qt::AlignHorizontal_Mask | Qt::AlignAbsolute);
    parser.setParagraphStyle(style);
    parser.setColor(NS::Color(color));
    return parser.parse(markup);
}

MarkupLabel::MarkupLabel(QWidget *parent)
    : HeightForWidthTextField(parent)
    , d(std::make_unique<Private>())
{
    connect(this, &TextField::stringValueChanged, this, &MarkupLabel::markupStringValueChanged);
}

MarkupLabel::~MarkupLabel() = default;

QString MarkupLabel::markupStringValue() const
{
    return stringValue();
}

void MarkupLabel::setMarkupStringValue(const QString &markup)
{
    d->markup = markup;
    d->font = font();
    d->alignment = alignment();
    d->hasPaletteColor = !textColor().isValid();
    d->text = d->styled(d->hasPaletteColor ? palette().color(QPalette::WindowText) : textColor());
    setAttributedStringValue(d->text);
    NS::setNeedsLayout(this);
}

void MarkupLabel::awakeFromNib()
{
    setMarkupStringValue(stringValue());
}

void MarkupLabel::changeEvent(QEvent *event)
{
    HeightForWidthTextField::changeEvent(event);
    const bool mayDiffer =
            event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange;
    const bool isOwn = d->hasPaletteColor && !textColor().isValid();
    if (!mayDiffer || !isOwn || attributedStringValue() != d->text)
        return;
    d->text = d->styled(palette().color(QPalette::WindowText));
    setAttributedStringValue(d->text);
}

} // namespace Pellarvine
