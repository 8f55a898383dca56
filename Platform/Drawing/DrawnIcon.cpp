// SPDX-License-Identifier: MIT
#include "Drawing/DrawnIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <utility>

namespace Pellarvine::detail {

namespace {

constexpr double side = 16;

class Engine : public QIconEngine
{
public:
    using Draw = std::function<void(QPainter &, const QColor &)>;

    explicit Engine(Draw draw)
        : m_draw(std::move(draw))
    { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / side, rect.height() / side);
        m_draw(*painter, QGuiApplication::palette().color(group, QPalette::ButtonText));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new Engine(m_draw); }

private:
    Draw m_draw;
};

} // namespace

QIcon drawnIcon(std::function<void(QPainter &painter, const QColor &ink)> draw)
{
    return QIcon(new Engine(std::move(draw)));
}

} // namespace Pellarvine::detail
