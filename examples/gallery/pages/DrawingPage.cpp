// SPDX-License-Identifier: MIT
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Platform/NSBezierPath.h>
#include <pellarvine/Platform/NSGraphicsContext.h>
#include <pellarvine/Platform/NSImage.h>
#include <pellarvine/Platform/NSShadow.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QSlider>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace Pellarvine;

namespace {

using Named = Palette<NS::Color>;

// The chart of a week. The origin is at the lower left and y goes upwards, which suits bars.
void drawChart(const QSizeF &size)
{
    QPainter &painter = *NS::GraphicsContext::current();
    constexpr double values[] = { 0.35, 0.5, 0.42, 0.7, 0.62, 0.9, 0.78 };
    const double step = size.width() / std::size(values);
    painter.setPen(Qt::NoPen);
    for (std::size_t i = 0; i < std::size(values); ++i) {
        const auto color =
                interpolate(Named::peterRiver(), Named::turquoise(), values[i]).toQColor();
        painter.setBrush(color);
        const QRectF bar(double(i) * step + 2, 0, step - 4, values[i] * size.height());
        painter.drawRoundedRect(bar, 3, 3);
    }
}

class ImageView : public PictureWidget
{
public:
    explicit ImageView(const QSizeF &size)
        : m_image(size, [&] { drawChart(size); })
    {
        setFixedHeight(int(size.height()));
        setMinimumWidth(int(size.width()));
        setAccessibleName(tr("Chart of a week"));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const NS::GraphicsContext context(painter);
        const double left = (width() - m_image.size().width()) / 2;
        m_image.draw(QRectF(QPointF(left, 0), m_image.size()));
    }

private:
    NS::Image m_image;
};

// A sheet of paper with a shadow.
class ShadowView : public PictureWidget
{
public:
    ShadowView()
    {
        setAccessibleName(tr("Sheet of paper with a shadow"));
        setMinimumHeight(16 * Theme::unit);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }

    void setShadow(const NS::Shadow &shadow)
    {
        m_shadow = shadow;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QRectF paper(0, 0, 17 * Theme::unit, 11 * Theme::unit);
        paper.moveCenter(QRectF(rect()).center());
        QPainterPath path;
        path.addRoundedRect(paper, 8, 8);
        m_shadow.draw(painter, path);
        painter.fillPath(path, Named::sunflower().toQColor());
        painter.setPen(Named::midnightBlue().toQColor());
        const QRectF text = paper.adjusted(12, 10, -12, -10);
        painter.setFont(Theme::font(Theme::strong));
        painter.drawText(text, Qt::AlignLeading | Qt::AlignTop, tr("Call the bank"));
        painter.setFont(Theme::font(Theme::body));
        painter.drawText(text, Qt::AlignLeading | Qt::AlignBottom | Qt::TextWordWrap,
                         tr("before noon, about the new account"));
    }

private:
    NS::Shadow m_shadow { NS::Color(), {}, 0 };
};

// A quadratic curve, and the cubic curve that a Bézier path makes of it. The control point can be
// dragged, and moved with the arrow keys.
class CurveView : public PictureWidget
{
public:
    CurveView()
    {
        setMinimumHeight(20 * Theme::unit);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::OpenHandCursor);
        setAccessibleName(tr("Control point of the curve"));
        setAccessibleDescription(tr("The arrow keys move it"));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        CG::Path source;
        source.moveToPoint(at({ 0, 0 }));
        source.addQuadCurveToPoint(at(m_control), at({ 1, 0 }));
        const NS::BezierPath converted(source);
        const auto &points = converted.elements().constLast().points;

        const QColor dim = palette().color(QPalette::PlaceholderText);
        const QColor accent = palette().color(QPalette::Highlight);
        painter.setPen(QPen(dim, 1, Qt::DotLine));
        painter.drawPolyline(QPolygonF { at({ 0, 0 }), at(m_control), at({ 1, 0 }) });
        painter.setPen(QPen(dim, 2, Qt::DashLine));
        painter.drawPath(source.toQPainterPath());
        painter.setPen(QPen(accent, 3, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(converted.toQPainterPath());

        painter.setPen(QPen(accent, 1));
        painter.drawLine(points[0], at({ 0, 0 }));
        painter.drawLine(points[1], at({ 1, 0 }));
        painter.setBrush(accent);
        painter.drawEllipse(points[0], 4, 4);
        painter.setPen(QPen(hasFocus() ? accent : dim, 2));
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawEllipse(at(m_control), 6, 6);
    }

    void mousePressEvent(QMouseEvent *event) override { drag(event); }
    void mouseMoveEvent(QMouseEvent *event) override { drag(event); }

    void keyPressEvent(QKeyEvent *event) override
    {
        constexpr double step = 0.02;
        switch (event->key()) {
        case Qt::Key_Left:
            return moveControl({ -step, 0 });
        case Qt::Key_Right:
            return moveControl({ step, 0 });
        case Qt::Key_Up:
            return moveControl({ 0, step });
        case Qt::Key_Down:
            return moveControl({ 0, -step });
        default:
            QWidget::keyPressEvent(event);
        }
    }

private:
    // Converts a point in 0…1, with y upwards, to the widget's coordinates.
    QPointF at(const QPointF &point) const
    {
        return { area().left() + point.x() * area().width(),
                 area().bottom() - point.y() * area().height() };
    }

    QRectF area() const { return QRectF(rect()).adjusted(12, 12, -12, -12); }

    void drag(QMouseEvent *event)
    {
        const QPointF point = event->position();
        m_control = { (point.x() - area().left()) / area().width(),
                      (area().bottom() - point.y()) / area().height() };
        moveControl({});
    }

    void moveControl(const QPointF &distance)
    {
        m_control += distance;
        m_control = { std::clamp(m_control.x(), 0.0, 1.0), std::clamp(m_control.y(), 0.0, 1.0) };
        update();
    }

    QPointF m_control { 0.5, 1 };
};

QLabel *makeNote(const QString &text)
{
    auto *const note = new QLabel(text);
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);
    return note;
}

class DrawingPage : public Page
{
public:
    explicit DrawingPage(QWidget *parent)
        : Page(tr("Drawing"),
               tr("A picture that a function draws, a shadow in one call, and paths that can be "
                  "converted to another form and back."),
               parent)
        , m_shadowView(new ShadowView)
        , m_blur(makeSlider(0, 40, 14))
        , m_drop(makeSlider(-20, 20, 5))
        , m_opacity(makeSlider(0, 100, 45))
    {
        auto *const row = new QHBoxLayout;
        row->setSpacing(2 * Theme::unit);
        row->addWidget(makeShadow(), 1);
        row->addWidget(makeImage(), 1);
        content()->addLayout(row, 1);
        content()->addWidget(makeCurve(), 1);
        showShadow();
    }

private:
    QSlider *makeSlider(int least, int most, int value)
    {
        auto *const slider = new QSlider(Qt::Horizontal);
        slider->setRange(least, most);
        slider->setValue(value);
        connect(slider, &QSlider::valueChanged, this, &DrawingPage::showShadow);
        return slider;
    }

    QFrame *makeShadow()
    {
        auto *const card = makeCard(tr("Shadow"));
        auto *const form = new QFormLayout;
        form->addRow(tr("&Blur"), m_blur);
        form->addRow(tr("&Drop"), m_drop);
        form->addRow(tr("&Opacity"), m_opacity);
        card->layout()->addWidget(m_shadowView);
        static_cast<QBoxLayout *>(card->layout())->addLayout(form);
        return card;
    }

    static QFrame *makeImage()
    {
        auto *const card = makeCard(tr("Image from a block"));
        auto *const layout = static_cast<QBoxLayout *>(card->layout());
        layout->addStretch();
        layout->addWidget(new ImageView({ 27 * Theme::unit, 12 * Theme::unit }));
        layout->addStretch();
        layout->addWidget(makeNote(tr("Drawn once into a bitmap of one pixel per point. The origin "
                                      "is at the lower left.")));
        return card;
    }

    static QFrame *makeCurve()
    {
        auto *const card = makeCard(tr("A quadratic curve, converted to a cubic one"));
        auto *const row = new QHBoxLayout;
        row->setSpacing(2 * Theme::unit);
        row->addWidget(new CurveView, 2);
        row->addWidget(makeNote(tr("The dashed curve is quadratic, the solid one is the cubic "
                                   "curve that a Bézier path makes of it. Its two control points "
                                   "are equal, so it bends less towards its end. Drag the ring.")),
                       1);
        static_cast<QBoxLayout *>(card->layout())->addLayout(row, 1);
        return card;
    }

    void showShadow()
    {
        m_shadowView->setShadow(
                NS::Shadow(NS::Color({ .red = 0, .alpha = m_opacity->value() / 100.0 }),
                           QSizeF(0, -m_drop->value()), m_blur->value()));
    }

    ShadowView *m_shadowView;
    QSlider *m_blur;
    QSlider *m_drop;
    QSlider *m_opacity;
};

} // namespace

Page *makeDrawingPage(QWidget *parent)
{
    return new DrawingPage(parent);
}
