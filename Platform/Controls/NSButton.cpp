// SPDX-License-Identifier: MIT
#include "Controls/NSButton.h"

#include "Drawing/NSGraphicsContext.h"

#include <QPointer>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace NS {

struct Button::Private
{
    QPointer<ButtonCell> cell;
};

Button::Button(QWidget *parent)
    : QPushButton(parent)
    , d(std::make_unique<Private>())
{
    setCell(new ButtonCell);
}

Button::Button(const QString &text, QWidget *parent)
    : Button(parent)
{
    setText(text);
}

Button::~Button() = default;

ButtonCell *Button::cell() const
{
    return d->cell;
}

void Button::setCell(ButtonCell *cell)
{
    if (cell == d->cell)
        return;
    delete d->cell;
    if (Button *const previous = cell->m_button)
        previous->d->cell = nullptr;
    cell->setParent(this);
    cell->m_button = this;
    d->cell = cell;
    update();
    Q_EMIT cellChanged(cell);
}

void Button::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    // Below the interior, whose colours some styles' focus frames would tint.
    if (option.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
    if (d->cell) {
        const GraphicsContext context(painter);
        d->cell->drawInterior(rect(), this);
    }
}

} // namespace NS
