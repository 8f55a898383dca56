// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/HexField.h"

#include "Drawing/ColorExchange.h"
#include "Drawing/DrawnIcon.h"

#include <QAction>
#include <QFocusEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

namespace Pellarvine::detail {

namespace {

void drawWarning(QPainter &painter, const QColor &ink)
{
    painter.setBrush(QColor(0xe8, 0xa3, 0x17));
    painter.setPen(QPen(ink, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolygon(QPolygonF({ { 8, 2 }, { 14.5, 13.5 }, { 1.5, 13.5 } }));
    painter.setPen(QPen(Qt::black, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(8, 6), QPointF(8, 9.5));
    painter.drawPoint(QPointF(8, 11.75));
}

} // namespace

HexField::HexField(QWidget *parent)
    : QLineEdit(parent)
    , m_warning(addAction(drawnIcon(&drawWarning), TrailingPosition))
{
    m_warning->setVisible(false);
    setAccessibleName(tr("Hexadecimal colour"));
    QFont font; // which leaves the size to the surroundings
    font.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    setFont(font);
    constexpr int margin = 4;
    setTextMargins(margin, 0, margin, 0);
}

void HexField::setColor(const QColor &color, bool withAlpha)
{
    m_shown = hexText(color, withAlpha);
    restore();
}

bool HexField::event(QEvent *event)
{
    // Before it belongs to what contains the field, which it would close.
    if (event->type() == QEvent::ShortcutOverride && isModified()
        && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel)) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void HexField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        enter();
}

void HexField::hideEvent(QHideEvent *event)
{
    QLineEdit::hideEvent(event);
    if (!event->spontaneous())
        restore();
}

void HexField::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel) && isModified())
        return restore();
    QLineEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        enter();
}

void HexField::enter()
{
    if (!isModified())
        return;
    const auto color = colorFromHex(text());
    if (!color)
        return mark(tr("Enter 3, 4, 6 or 8 digits from 0 to 9 and A to F, such as #1ABC9C."));
    restore();
    Q_EMIT entered(*color);
}

void HexField::restore()
{
    setText(m_shown); // which counts as not modified
    mark({});
}

void HexField::mark(const QString &explanation)
{
    if (explanation.isEmpty() && !toolTip().isEmpty() && QToolTip::text() == toolTip())
        QToolTip::hideText();
    m_warning->setVisible(!explanation.isEmpty());
    m_warning->setText(explanation); // the name of its button
    m_warning->setToolTip(explanation);
    setToolTip(explanation);
    setAccessibleDescription(explanation); // which screen readers are told
    if (!explanation.isEmpty() && isVisible())
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), explanation, this);
}

} // namespace Pellarvine::detail
