// SPDX-License-Identifier: MIT
#include "Controls/NSButtonCell.h"

#include "Controls/NSButton.h"
#include "Drawing/NSGraphicsContext.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace NS {

ButtonCell::ButtonCell(QObject *parent)
    : QObject(parent)
{ }

ButtonCell::~ButtonCell() = default;

QWidget *ButtonCell::controlView() const
{
    return m_button;
}

void ButtonCell::drawInterior(const QRectF &frame, QWidget *)
{
    QPainter *const painter = GraphicsContext::current();
    if (!painter || !m_button)
        return;
    QStyleOptionButton option;
    m_button->initStyleOption(&option);
    option.rect =
            m_button->style()->subElementRect(QStyle::SE_PushButtonContents, &option, m_button);
    option.rect.translate(frame.topLeft().toPoint());
    m_button->style()->drawControl(QStyle::CE_PushButtonLabel, &option, painter, m_button);
}

} // namespace NS
