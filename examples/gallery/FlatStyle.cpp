// SPDX-License-Identifier: MIT
#include "FlatStyle.h"

#include "Theme.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QFrame>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double radius = 4;
constexpr double panelRadius = 8;
constexpr int knobSide = 16;
constexpr double grooveHeight = 4;

QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto mix = [share](int from, int to) {
        return int(std::lround(from + (to - from) * share));
    };
    return { mix(first.red(), second.red()), mix(first.green(), second.green()),
             mix(first.blue(), second.blue()) };
}

// The opacity of disabled controls.
QColor shownIn(const QStyleOption *option, QColor color)
{
    if (!(option->state & QStyle::State_Enabled))
        color.setAlphaF(color.alphaF() * 0.5F);
    return color;
}

QColor edgeOf(const QStyleOption *option)
{
    return shownIn(option, FlatStyle::edge(option->palette));
}

bool hasFocus(const QStyleOption *option)
{
    return (option->state & QStyle::State_HasFocus) && (option->state & QStyle::State_Enabled);
}

// The box of a control, with an edge that is stronger with the keyboard focus.
void drawControlBox(QPainter *painter, const QRectF &rect, const QStyleOption *option,
                    const QColor &fill, double corner = radius)
{
    const QPen line = hasFocus(option) ? QPen(option->palette.color(QPalette::Highlight), 2)
                                       : QPen(edgeOf(option), 1);
    FlatStyle::drawBox(painter, rect, corner, line, fill);
}

void drawFocus(QPainter *painter, const QStyleOption *option)
{
    const auto *const ring = qstyleoption_cast<const QStyleOptionFocusRect *>(option);
    const QColor highlight = option->palette.color(QPalette::Highlight);
    const bool isOnHighlight = ring && ring->backgroundColor == highlight;
    const int inset = isOnHighlight ? 2 : 0;
    FlatStyle::drawBox(painter, option->rect.adjusted(inset, inset, -inset, -inset), radius,
                       isOnHighlight ? option->palette.color(QPalette::HighlightedText) : highlight,
                       {});
}

// Draws a panel whose object name is "card", "well" or "highlightedWell". False for other frames.
bool drawPanel(QPainter *painter, const QStyleOption *option, const QString &name)
{
    const QPalette &palette = option->palette;
    QPen line(palette.color(QPalette::Mid), 1);
    if (name == "well"_L1) {
        line = QPen(FlatStyle::edge(palette), 2);
        line.setDashPattern({ 3, 2 });
    } else if (name == "highlightedWell"_L1) {
        line = QPen(palette.color(QPalette::Highlight), 2);
    } else if (name != "card"_L1) {
        return false;
    }
    FlatStyle::drawBox(painter, option->rect, panelRadius, line, palette.base());
    return true;
}

QColor faceOf(const QStyleOption *option)
{
    const QPalette &palette = option->palette;
    const QColor face = palette.color(QPalette::Button);
    const QColor ink = palette.color(QPalette::ButtonText);
    if (option->state & QStyle::State_Sunken)
        return mixed(face, ink, 0.14);
    if (option->state & QStyle::State_On)
        return mixed(face, palette.color(QPalette::Highlight), 0.3);
    const auto pointed = QStyle::State_MouseOver | QStyle::State_Enabled;
    return (option->state & pointed) == pointed ? mixed(face, ink, 0.06) : face;
}

// The mark of a box that is checked, or partly so.
void drawMark(QPainter *painter, const QRectF &box, const QStyleOption *option)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(option->palette.color(QPalette::HighlightedText), 2, Qt::SolidLine,
                         Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](double x, double y) {
        return QPointF(box.x() + x * box.width(), box.y() + y * box.height());
    };
    if (option->state & QStyle::State_On)
        painter->drawPolyline(QPolygonF { at(0.25, 0.52), at(0.43, 0.7), at(0.75, 0.3) });
    else
        painter->drawLine(at(0.27, 0.5), at(0.73, 0.5));
    painter->restore();
}

void drawCheckBox(QPainter *painter, const QStyleOption *option, double corner)
{
    const bool isMarked = option->state & (QStyle::State_On | QStyle::State_NoChange);
    const QRectF box = option->rect;
    const QPalette &palette = option->palette;
    if (isMarked) {
        FlatStyle::drawBox(painter, box, corner, Qt::NoPen,
                           shownIn(option, palette.color(QPalette::Highlight)));
        return drawMark(painter, box, option);
    }
    QStyleOption plain = *option;
    plain.state &= ~QStyle::State_HasFocus; // its frame would surround the text
    drawControlBox(painter, box, &plain, palette.color(QPalette::Base), corner);
}

void drawRadioButton(QPainter *painter, const QStyleOption *option)
{
    QStyleOption plain = *option;
    plain.state &= ~QStyle::State_HasFocus;
    const QRectF box = option->rect;
    drawControlBox(painter, box, &plain, option->palette.color(QPalette::Base), box.width() / 2);
    if (!(option->state & QStyle::State_On))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(shownIn(option, option->palette.color(QPalette::Highlight)));
    painter->drawEllipse(box.center(), box.width() / 4, box.height() / 4);
    painter->restore();
}

} // namespace

FlatStyle::FlatStyle()
    : QProxyStyle(u"Fusion"_s)
{ }

QColor FlatStyle::edge(const QPalette &palette)
{
    return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.55);
}

void FlatStyle::drawBox(QPainter *painter, const QRectF &rect, double corner, QPen line,
                        const QBrush &fill)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QTransform toDevice = painter->deviceTransform();
    QRectF box = rect;
    // Does not align a circle to pixels, so that it stays round.
    if (2 * corner < std::min(rect.width(), rect.height())) {
        const QRectF pixels = toDevice.mapRect(rect);
        box = toDevice.inverted().mapRect(
                QRectF(QPointF(std::round(pixels.left()), std::round(pixels.top())),
                       QPointF(std::round(pixels.right()), std::round(pixels.bottom()))));
        line.setWidthF(std::max(1.0, std::floor(line.widthF() * toDevice.m11())) / toDevice.m11());
    }
    const double inset = line.style() == Qt::NoPen ? 0 : line.widthF() / 2;
    painter->setPen(line);
    painter->setBrush(fill);
    painter->drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), corner, corner);
    painter->restore();
}

void FlatStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (auto *const frame = qobject_cast<QFrame *>(widget);
        frame && (frame->objectName() == "card"_L1 || frame->objectName() == "well"_L1))
        frame->setFrameShape(QFrame::StyledPanel);
    // If the application has a style sheet, Qt 6.4 does not ask sizeFromContents() for the size of
    // spin boxes, and Qt 6.8 makes them higher than the answer.
    if (qobject_cast<QAbstractSpinBox *>(widget))
        widget->setMinimumHeight(4 * Theme::unit);
}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                           const QWidget *widget) const
{
    switch (metric) {
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return knobSide + 2; // with the smooth edge
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                  const QWidget *widget) const
{
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
    case CT_PushButton:
        result.rwidth() += Theme::unit;
        [[fallthrough]];
    case CT_ComboBox:
    case CT_LineEdit:
        result.setHeight(std::max(result.height(), 4 * Theme::unit));
        break;
    default:
        break;
    }
    return result;
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                              QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        return drawControlBox(painter, option->rect, option, faceOf(option));
    case PE_PanelButtonTool:
        if (option->state & (State_On | State_Sunken | State_MouseOver)) {
            drawBox(painter, option->rect, radius, Qt::NoPen, faceOf(option));
        }
        return;
    // At fractional scales, the background that Qt fills inside leaves a gap of one pixel.
    case PE_FrameLineEdit:
        return drawControlBox(painter, option->rect, option, option->palette.color(QPalette::Base));
    case PE_Frame:
        if (widget && drawPanel(painter, option, widget->objectName()))
            return;
        return drawControlBox(painter, option->rect, option,
                              qobject_cast<const QAbstractScrollArea *>(widget)
                                      ? option->palette.color(QPalette::Base)
                                      : Qt::transparent,
                              0);
    case PE_FrameFocusRect:
        if (!qobject_cast<const QPushButton *>(widget)) // a push button shows it by its edge
            drawFocus(painter, option);
        return;
    case PE_IndicatorCheckBox:
        return drawCheckBox(painter, option, 3);
    case PE_IndicatorRadioButton:
        return drawRadioButton(painter, option);
    case PE_PanelItemViewItem:
        if (option->state & State_Selected)
            return painter->fillRect(option->rect, option->palette.color(QPalette::Highlight));
        [[fallthrough]];
    default:
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void FlatStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    switch (element) {
    case CE_PushButtonBevel: // without the shade of a default button
        return proxy()->drawPrimitive(PE_PanelButtonCommand, option, painter, widget);
    case CE_HeaderSection: {
        QRect line = option->rect;
        line.setTop(line.bottom());
        painter->fillRect(option->rect, option->palette.color(QPalette::Base));
        return painter->fillRect(line, option->palette.color(QPalette::Mid));
    }
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const
{
    const auto place = [&](SubControl part) {
        return QRectF(proxy()->subControlRect(control, option, part, widget));
    };
    const auto drawArrow = [&](PrimitiveElement element, SubControl part, bool isEnabled) {
        QStyleOption arrow = *static_cast<const QStyleOption *>(option);
        const QRectF rect = place(part);
        const double side = std::min({ 9.0, rect.width(), rect.height() });
        QRectF square(0, 0, side, side);
        square.moveCenter(rect.center());
        arrow.rect = square.toRect();
        if (!isEnabled)
            arrow.state &= ~State_Enabled;
        proxy()->drawPrimitive(element, &arrow, painter, widget);
    };
    const bool isHorizontal = option->state & State_Horizontal;
    const bool isMirrored = option->direction == Qt::RightToLeft;
    switch (control) {
    case CC_ComboBox:
        drawControlBox(painter, option->rect, option, faceOf(option));
        return drawArrow(PE_IndicatorArrowDown, SC_ComboBoxArrow, true);
    case CC_SpinBox: {
        const auto *const box = qstyleoption_cast<const QStyleOptionSpinBox *>(option);
        drawControlBox(painter, option->rect, option, option->palette.color(QPalette::Base));
        if (!box || box->buttonSymbols == QAbstractSpinBox::NoButtons)
            return;
        drawArrow(PE_IndicatorArrowUp, SC_SpinBoxUp,
                  box->stepEnabled & QAbstractSpinBox::StepUpEnabled);
        return drawArrow(PE_IndicatorArrowDown, SC_SpinBoxDown,
                         box->stepEnabled & QAbstractSpinBox::StepDownEnabled);
    }
    case CC_ScrollBar: {
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        const QRectF handle = place(SC_ScrollBarSlider).adjusted(3, 3, -3, -3);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(edgeOf(option));
        const double corner = std::min(handle.width(), handle.height()) / 2;
        painter->drawRoundedRect(handle, corner, corner);
        painter->restore();
        drawArrow(isHorizontal ? PE_IndicatorArrowLeft : PE_IndicatorArrowUp,
                  isHorizontal && isMirrored ? SC_ScrollBarAddLine : SC_ScrollBarSubLine, true);
        return drawArrow(isHorizontal ? PE_IndicatorArrowRight : PE_IndicatorArrowDown,
                         isHorizontal && isMirrored ? SC_ScrollBarSubLine : SC_ScrollBarAddLine,
                         true);
    }
    case CC_Slider: {
        const auto *const slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
        if (!slider || slider->orientation != Qt::Horizontal)
            break;
        const QRectF groove = place(SC_SliderGroove);
        const QPointF middle = place(SC_SliderHandle).center();
        QRectF track(groove.left(), middle.y() - grooveHeight / 2, groove.width(), grooveHeight);
        const QPalette &palette = option->palette;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(edgeOf(option));
        painter->drawRoundedRect(track, grooveHeight / 2, grooveHeight / 2);
        if (slider->upsideDown)
            track.setLeft(middle.x());
        else
            track.setRight(middle.x());
        painter->setBrush(shownIn(option, palette.color(QPalette::Highlight)));
        painter->drawRoundedRect(track, grooveHeight / 2, grooveHeight / 2);
        painter->restore();
        QRectF knob(0, 0, knobSide, knobSide);
        knob.moveCenter(middle);
        return drawControlBox(painter, knob, option, palette.color(QPalette::Base), knobSide / 2.0);
    }
    default:
        break;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}
