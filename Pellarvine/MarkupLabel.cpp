// SPDX-License-Identifier: MIT
#include "Pellarvine/MarkupLabel.h"

#include "Base/Assign.h"
#include "Drawing/NSColor.h"
#include "Shared/InlineParsers.h"
#include "Shared/MarkupParser.h"
#include "View/NSView.h"

#include <QEvent>
#include <QPointer>

#include <utility>

namespace Pellarvine {

struct MarkupLabel::Private
{
    void takeFormat(const MarkupLabel &label);
    NS::AttributedString styled(const QPalette &palette) const;

    QList<std::shared_ptr<const Parser>> parsers = detail::inlineParsers();

    // The values of the last call that set the markup.
    QString markup;
    QStringList arguments;
    QList<std::shared_ptr<const Parser>> rules;
    bool followsFormat = false; // rather than keeping that of the moment
    NS::AttributedString text; // what the label shows unless another text was set

    // The format of `text`.
    QFont font;
    Qt::Alignment alignment;
    QColor color; // invalid for the palette's
};

void MarkupLabel::Private::takeFormat(const MarkupLabel &label)
{
    font = label.font();
    alignment = label.alignment();
    color = label.textColor();
}

NS::AttributedString MarkupLabel::Private::styled(const QPalette &palette) const
{
    MarkupParser parser(font);
    NS::ParagraphStyle style = parser.paragraphStyle();
    style.alignment = alignment & (Qt::AlignHorizontal_Mask | Qt::AlignAbsolute);
    parser.setParagraphStyle(style);
    parser.setColor(NS::Color(color.isValid() ? color : palette.color(QPalette::WindowText)));
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
    connect(this, &TextField::alignmentChanged, this, &MarkupLabel::restyle);
    connect(this, &TextField::textColorChanged, this, &MarkupLabel::restyle);
}

MarkupLabel::~MarkupLabel() = default;

QString MarkupLabel::markup() const
{
    return d->markup;
}

void MarkupLabel::setMarkup(const QString &markup)
{
    const bool followed = std::exchange(d->followsFormat, true);
    if (markup != d->markup)
        style(markup, {});
    else if (!followed)
        restyle();
}

void MarkupLabel::setMarkup(const QString &format, const QStringList &arguments)
{
    d->followsFormat = true;
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
    d->followsFormat = false;
    style(markup, {});
}

void MarkupLabel::style(const QString &markup, const QStringList &arguments)
{
    const bool isOther = detail::assign(d->markup, markup);
    d->arguments = arguments;
    d->rules = d->parsers;
    d->takeFormat(*this);
    d->text = d->styled(palette());
    // A slot may delete the label, or set other markup, which is then reported first.
    const QPointer<MarkupLabel> self(this);
    setAttributedStringValue(d->text);
    if (!self)
        return;
    NS::setNeedsLayout(this);
    if (isOther && d->markup == markup)
        Q_EMIT markupChanged(markup);
}

// For another format or palette.
void MarkupLabel::restyle()
{
    const bool followsPalette = !d->color.isValid() && !textColor().isValid();
    if (attributedStringValue() != d->text || !(d->followsFormat || followsPalette))
        return;
    if (d->followsFormat)
        d->takeFormat(*this);
    d->text = d->styled(palette());
    setAttributedStringValue(d->text);
}

void MarkupLabel::awakeFromNib()
{
    if (d->markup.isEmpty())
        setMarkupStringValue(stringValue());
    else
        style(d->markup, d->arguments);
}

void MarkupLabel::changeEvent(QEvent *event)
{
    HeightForWidthTextField::changeEvent(event);
    const auto type = event->type();
    if (type == QEvent::PaletteChange || type == QEvent::EnabledChange
        || type == QEvent::FontChange)
        restyle();
}

} // namespace Pellarvine
