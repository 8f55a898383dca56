// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ScreenColorPicker.h"

#include "Drawing/ColorExchange.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QScreen>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

constexpr int shownPixels = 11; // across the loupe: odd, so that one is in the middle
constexpr int zoom = 10; // units a pixel
constexpr int loupeSide = shownPixels * zoom;
constexpr int labelHeight = 24; // units

} // namespace

bool ScreenColorPicker::isAvailable()
{
    return QGuiApplication::platformName() == u"xcb"
           && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void ScreenColorPicker::pick(QWidget *opener, const std::function<void(const QColor &)> &picked)
{
    const QScreen *const primary = QGuiApplication::primaryScreen();
    const QRect desktop = primary->virtualGeometry();
    const double ratio = qGuiApp->devicePixelRatio();
    QImage picture(desktop.size() * ratio, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.scale(ratio, ratio);
    painter.translate(-desktop.topLeft());
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (QScreen *const screen : screens)
        painter.drawPixmap(screen->geometry(), screen->grabWindow(0));
    painter.end();

    auto *const picker = new ScreenColorPicker(picture, opener);
    picker->setAttribute(Qt::WA_DeleteOnClose);
    picker->setGeometry(desktop);
    connect(picker, &ScreenColorPicker::finished, opener, [picker, picked](const QColor &color) {
        picker->close();
        if (color.isValid())
            picked(color);
    });
    picker->show();
    picker->setFocus();
}

// A popup, since what opened it may live in one, and only the topmost popup gets mouse and keys.
ScreenColorPicker::ScreenColorPicker(const QImage &picture, QWidget *parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint)
    , m_picture(picture)
{
    setCursor(Qt::BlankCursor);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Pick a colour from the screen"));
}

QPoint ScreenColorPicker::pixel() const
{
    const double ratio = double(m_picture.width()) / std::max(1, width());
    return { std::clamp(int(m_point.x() * ratio), 0, m_picture.width() - 1),
             std::clamp(int(m_point.y() * ratio), 0, m_picture.height() - 1) };
}

QColor ScreenColorPicker::color() const
{
    return QColor::fromRgb(m_picture.pixel(pixel()));
}

void ScreenColorPicker::moveTo(const QPoint &point)
{
    m_point = { std::clamp(point.x(), 0, width() - 1), std::clamp(point.y(), 0, height() - 1) };
    update();
}

void ScreenColorPicker::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    moveTo(mapFromGlobal(QCursor::pos()));
}

void ScreenColorPicker::mouseMoveEvent(QMouseEvent *event)
{
    moveTo(event->position().toPoint());
}

void ScreenColorPicker::mousePressEvent(QMouseEvent *event)
{
    m_isPressed = event->button() == Qt::LeftButton;
    if (!m_isPressed)
        Q_EMIT finished({});
}

// At the release, so that it does not go to what lies below.
void ScreenColorPicker::mouseReleaseEvent(QMouseEvent *event)
{
    moveTo(event->position().toPoint());
    if (m_isPressed && event->button() == Qt::LeftButton)
        Q_EMIT finished(color());
}

void ScreenColorPicker::keyPressEvent(QKeyEvent *event)
{
    const int step = event->modifiers() & Qt::ShiftModifier ? 10 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTo(m_point - QPoint(step, 0));
    case Qt::Key_Right:
        return moveTo(m_point + QPoint(step, 0));
    case Qt::Key_Up:
        return moveTo(m_point - QPoint(0, step));
    case Qt::Key_Down:
        return moveTo(m_point + QPoint(0, step));
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        Q_EMIT finished(color());
        return;
    case Qt::Key_Escape:
        Q_EMIT finished({});
        return;
    default:
        event->accept();
    }
}

void ScreenColorPicker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawImage(rect(), m_picture);

    // Around the pointer; at the lower edge the text goes above.
    const QPointF middle = QPointF(m_point) + QPointF(0.5, 0.5);
    const QRectF loupe(middle.x() - loupeSide / 2.0, middle.y() - loupeSide / 2.0, loupeSide,
                       loupeSide);
    QPainterPath lens;
    lens.addEllipse(loupe);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    painter.setClipPath(lens);
    painter.fillRect(loupe, Qt::black);
    const QPoint from = pixel() - QPoint(shownPixels / 2, shownPixels / 2);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(loupe, m_picture.copy(QRect(from, QSize(shownPixels, shownPixels))));
    painter.restore();
    painter.setPen(QPen(QColor(0, 0, 0, 160), 4));
    painter.drawEllipse(loupe);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawEllipse(loupe);
    QRectF sample(0, 0, zoom, zoom);
    sample.moveCenter(middle);
    painter.setPen(QPen(Qt::black, 3));
    painter.drawRect(sample);
    painter.setPen(QPen(Qt::white, 1));
    painter.drawRect(sample);

    const QString text = hexText(color(), false);
    const double textWidth = painter.fontMetrics().horizontalAdvance(text) + 16;
    QRectF label(middle.x() - textWidth / 2, loupe.bottom() + 6, textWidth, labelHeight);
    if (label.bottom() > height())
        label.moveBottom(loupe.top() - 6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 200));
    painter.drawRoundedRect(label, 6, 6);
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, text);
}

} // namespace Pellarvine::detail
