// SPDX-License-Identifier: MIT
#include "Pellarvine/MarkupLabel.h"

#include "Base/Assign.h"
#include "Drawing/NSColor.h"
#include "Shared/InlineParsers.h"
#include "Shared/MarkupParser.h"
#include "View/NSView.h"

#include <QEvent>

namespace Pellarvine {

struct MarkupLabel::Private
{
    NS::AttributedString styled(const QColor &color) const;

    QList<std::shared_ptr<const Parser>> parsers = detail::inlineParsers();

    // As of the last write.
    QString markup;
    QStringList arguments;
    QList<std::shared_ptr<const Parser>> rules;
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
    parser.setParsers(rules);
    return parser.styled(markup, arguments);
}

MarkupLabel::MarkupLabel(QWidget *parent)
    : HeightForWidthTextField(parent)
    , d(std::make_unique<Private>())
{
    connect(this, &TextField::stringValueChanged, this, &MarkupLabel::markupStringValueChanged);
    connect(this, &TextField::attributedStringValueChanged, this,
            [this](const NS::AttributedString &text) {
                const bool isOther = text != d->text && detail::assign(d->markup, QString());
                if (isOther)
                    Q_EMIT markupChanged({});
            });
}

MarkupLabel::~MarkupLabel() = default;

QString MarkupLabel::markup() const
{
    return d->markup;
}

void MarkupLabel::setMarkup(const QString &markup)
{
    if (markup != d->markup)
        setMarkupStringValue(markup);
}

void MarkupLabel::setMarkup(const QString &format, const QStringList &arguments)
{
    style(format, arguments);
}

const QList<std::shared_ptr<const Parser>> &MarkupLabel::parsers() const
{
    return d->parsers;
}

void MarkupLabel::setParsers(const QList<std::shared_ptr<const Parser>> &parsers)
{
    d->parsers = parsers;
}

QString MarkupLabel::markupStringValue() const
{
    return stringValue();
}

void MarkupLabel::setMarkupStringValue(const QString &markup)
{
    style(markup, {});
}

void MarkupLabel::style(const QString &markup, const QStringList &arguments)
{
    const bool isOther = detail::assign(d->markup, markup);
    d->arguments = arguments;
    d->rules = d->parsers;
    d->font = font();
    d->alignment = alignment();
    d->hasPaletteColor = !textColor().isValid();
    d->text = d->styled(d->hasPaletteColor ? palette().color(QPalette::WindowText) : textColor());
    setAttributedStringValue(d->text);
    NS::setNeedsLayout(this);
    if (isOther)
        Q_EMIT markupChanged(markup);
}

void MarkupLabel::awakeFromNib()
{
    if (d->markup.isEmpty())
        style(stringValue(), {});
    else
        style(d->markup, d->arguments);
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
