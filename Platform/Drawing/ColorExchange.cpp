// SPDX-License-Identifier: MIT
#include "Drawing/ColorExchange.h"

#include "Drawing/NSColor.h"
#include "Drawing/NSColorList.h"
#include "Drawing/PixelAlignment.h"

#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QRegularExpression>
#include <QVariant>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

constexpr int squareSide = 4;
constexpr int dragSide = 24;

} // namespace

QString hexText(const QColor &color, bool withAlpha)
{
    QString text;
    const NS::Color exact(color);
    QMetaType::convert(QMetaType::fromType<NS::Color>(), &exact, QMetaType::fromType<QString>(),
                       &text);
    return withAlpha ? text : text.first(std::min<qsizetype>(text.size(), 7));
}

std::optional<QColor> colorFromHex(const QString &text)
{
    // The conversion also accepts text that only begins with a number.
    static const QRegularExpression number(
            u"\\A#?(?:[0-9A-Fa-f]{3,4}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})\\z"_s);
    const QString trimmed = text.trimmed();
    if (!number.match(trimmed).hasMatch())
        return std::nullopt;
    NS::Color color;
    if (!QMetaType::convert(QMetaType::fromType<QString>(), &trimmed,
                            QMetaType::fromType<NS::Color>(), &color))
        return std::nullopt;
    return color.toQColor();
}

QString colorDescription(const QColor &color)
{
    QString digits = hexText(color, color.alpha() < 255);
    for (const NS::ColorList &list : NS::ColorList::availableColorLists()) {
        for (const auto &[name, listed] : list.entries) {
            if (hexText(listed.toQColor(), true) == hexText(color, true))
                return name + u", "_s + digits;
        }
    }
    return digits;
}

QMimeData *mimeDataForColor(const QColor &color)
{
    auto data = std::make_unique<QMimeData>();
    data->setColorData(color);
    data->setText(hexText(color, color.alpha() < 255));
    return data.release();
}

std::optional<QColor> colorInMimeData(const QMimeData *data)
{
    if (!data)
        return std::nullopt;
    if (data->hasColor()) {
        const auto color = data->colorData().value<QColor>();
        if (color.isValid())
            return color.toRgb();
    }
    return colorFromHex(data->text());
}

QPixmap dragPixmap(const QColor &color, double devicePixelRatio)
{
    QPixmap pixmap(QSize(dragSide, dragSide) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    const Outline line =
            outlineInside(QRectF(0, 0, dragSide, dragSide), 1, painter.deviceTransform());
    path.addRoundedRect(line.middle, 4, 4);
    fillWithColor(painter, path, color);
    painter.strokePath(path, QPen(QColor(0, 0, 0, 90), line.thickness));
    return pixmap;
}

void fillWithColor(QPainter &painter, const QPainterPath &path, const QColor &color)
{
    if (color.alphaF() < 1)
        fillWithCheckerboard(painter, path);
    painter.fillPath(path, color);
}

void fillWithCheckerboard(QPainter &painter, const QPainterPath &path)
{
    // Has the shape of the fill and is not clipped by it, so its edge is smooth.
    const double ratio = std::max(1.0, painter.deviceTransform().m11());
    QImage tile(QSize(2 * squareSide, 2 * squareSide) * ratio, QImage::Format_RGB32);
    tile.fill(Qt::white);
    QPainter squares(&tile);
    squares.scale(ratio, ratio);
    squares.fillRect(0, 0, squareSide, squareSide, QColor(0xc4, 0xc4, 0xc4));
    squares.fillRect(squareSide, squareSide, squareSide, squareSide, QColor(0xc4, 0xc4, 0xc4));
    squares.end();
    QBrush brush(tile);
    const QPointF corner = path.boundingRect().topLeft();
    brush.setTransform(
            QTransform::fromTranslate(corner.x(), corner.y()).scale(1 / ratio, 1 / ratio));
    painter.fillPath(path, brush);
}

} // namespace Pellarvine::detail
