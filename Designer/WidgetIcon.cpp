// SPDX-License-Identifier: MIT
#include "WidgetIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace {

constexpr double side = 22.0; // of the square that the drawings use as coordinates

struct Inks
{
    QColor line;
    QColor faint;
    QColor accent;
};

void drawFrame(QPainter &painter, const Inks &inks)
{
    painter.setPen(QPen(inks.line, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(2.5, 4.5, 17, 13));
}

void drawLines(QPainter &painter, const Inks &inks, std::initializer_list<double> lengths)
{
    painter.setPen(QPen(inks.line, 1));
    double y = 7.5;
    for (const double length : lengths) {
        painter.drawLine(QPointF(4, y), QPointF(4 + length, y));
        y += 4;
    }
}

void drawSegments(QPainter &painter, const Inks &inks, double left, double right)
{
    painter.setPen(QPen(inks.line, 1));
    const QRectF whole(left + 0.5, 7.5, right - left - 1, 7);
    const double width = whole.width() / 3;
    painter.fillRect(QRectF(whole.left(), whole.top(), width, whole.height()), inks.accent);
    painter.drawRoundedRect(whole, 2, 2);
    for (const int divider : { 1, 2 }) {
        const double x = whole.left() + divider * width;
        painter.drawLine(QPointF(x, whole.top()), QPointF(x, whole.bottom()));
    }
}

void drawPicture(QPainter &painter, const Inks &inks)
{
    drawFrame(painter, inks);
    painter.setPen(Qt::NoPen);
    painter.setBrush(inks.accent);
    painter.drawEllipse(QRectF(5, 7, 4, 4));
    painter.setBrush(inks.line);
    painter.drawPolygon(QPolygonF({ QPointF(4, 16), QPointF(11, 9), QPointF(14, 12),
                                    QPointF(16, 10), QPointF(18, 12), QPointF(18, 16) }));
}

void draw(QPainter &painter, Glyph glyph, const Inks &inks)
{
    switch (glyph) {
    case Glyph::border:
        painter.fillRect(QRectF(2, 4, 18, 14), inks.faint);
        painter.setPen(QPen(inks.accent, 2));
        painter.drawLine(QPointF(3, 5), QPointF(3, 17));
        painter.drawLine(QPointF(3, 17), QPointF(19, 17));
        break;
    case Glyph::solid:
        painter.setPen(Qt::NoPen);
        painter.setBrush(inks.accent);
        painter.drawRoundedRect(QRectF(2, 4, 18, 14), 4, 4);
        break;
    case Glyph::toolBar:
        drawFrame(painter, inks);
        painter.fillRect(QRectF(3, 5, 16, 5), inks.faint);
        painter.fillRect(QRectF(3, 10, 16, 1), inks.accent);
        break;
    case Glyph::inspectorSection:
        drawFrame(painter, inks);
        painter.fillRect(QRectF(3, 9, 16, 1), inks.accent);
        painter.fillRect(QRectF(3, 13, 16, 1), inks.accent);
        break;
    case Glyph::tableCell:
        drawFrame(painter, inks);
        painter.fillRect(QRectF(3, 9, 16, 4), inks.accent);
        break;
    case Glyph::segments:
        drawSegments(painter, inks, 5, 17);
        break;
    case Glyph::fullWidthSegments:
        drawSegments(painter, inks, 1, 21);
        break;
    case Glyph::textField:
        drawFrame(painter, inks);
        painter.fillRect(QRectF(5, 7, 1, 8), inks.accent);
        break;
    case Glyph::wrappedText:
        drawLines(painter, inks, { 14, 14, 8 });
        break;
    case Glyph::markup:
        drawLines(painter, inks, { 14, 0, 8 });
        painter.setPen(QPen(inks.accent, 2.5));
        painter.drawLine(QPointF(5, 11.5), QPointF(13, 11.5));
        break;
    case Glyph::image:
        drawPicture(painter, inks);
        break;
    case Glyph::replaceableImage:
        drawPicture(painter, inks);
        painter.setPen(QPen(inks.accent, 2));
        painter.drawLine(QPointF(18, 14), QPointF(18, 20));
        painter.drawLine(QPointF(15, 17), QPointF(21, 17));
        break;
    case Glyph::color:
        painter.setPen(QPen(inks.line, 1));
        painter.setBrush(inks.accent);
        painter.drawRoundedRect(QRectF(3.5, 6.5, 15, 9), 2, 2);
        break;
    case Glyph::button:
        painter.setPen(QPen(inks.line, 1));
        painter.setBrush(inks.faint);
        painter.drawRoundedRect(QRectF(2.5, 6.5, 17, 9), 3, 3);
        break;
    case Glyph::window:
        painter.setPen(QPen(inks.line, 1));
        painter.setBrush(inks.faint);
        painter.drawRoundedRect(QRectF(2.5, 3.5, 17, 15), 2, 2);
        painter.fillRect(QRectF(3, 9, 16, 1), inks.line);
        painter.setPen(Qt::NoPen);
        painter.setBrush(inks.accent);
        for (const double x : { 4.5, 8.0, 11.5 })
            painter.drawEllipse(QRectF(x, 5, 2.5, 2.5));
        break;
    }
}

class GlyphEngine : public QIconEngine
{
public:
    explicit GlyphEngine(Glyph glyph)
        : m_glyph(glyph)
    { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        Inks inks { palette.color(group, QPalette::WindowText), palette.color(group, QPalette::Mid),
                    palette.color(group, QPalette::Highlight) };
        inks.faint.setAlphaF(0.4F);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / side, rect.height() / side);
        draw(*painter, m_glyph, inks);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    // The widget box shows no icon without a size.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        return { QSize(int(side), int(side)) };
    }

    QIconEngine *clone() const override { return new GlyphEngine(m_glyph); }
    bool isNull() override { return false; }

private:
    Glyph m_glyph;
};

} // namespace

QIcon widgetIcon(Glyph glyph)
{
    return QIcon(new GlyphEngine(glyph));
}
