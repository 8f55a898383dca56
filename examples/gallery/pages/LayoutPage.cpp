// SPDX-License-Identifier: MIT
// A photograph in a box for each function that pins views. All boxes are resized together. The
// other tab shows further uses of constraints.
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"
#include "LayoutExamples.h"

#include <pellarvine/Pellarvine/NSView+AutoLayout.h>
#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSLayoutOverlay.h>
#include <pellarvine/Platform/NSSegmentedControl.h>
#include <pellarvine/Platform/NSView+Layer.h>
#include <pellarvine/Platform/NSView.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QSlider>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallestBox(48, 40);
constexpr QSize largestBox(192, 144);
constexpr QSize photoSize(128, 80);

QString tr(const char *text)
{
    return QCoreApplication::translate("LayoutPage", text);
}

// A drawing of an evening in the hills, which fills its size.
class Photo : public PictureWidget
{
public:
    Photo() { setAccessibleName(::tr("Photograph: evening in the hills")); }
    QSize sizeHint() const override { return photoSize; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(width() / 128.0, height() / 80.0);
        QLinearGradient sky(0, 0, 0, 80);
        sky.setColorAt(0.0, QColor(0x35, 0x4a, 0x7d));
        sky.setColorAt(0.55, QColor(0xe8, 0x8f, 0x6c));
        sky.setColorAt(0.75, QColor(0xf6, 0xcf, 0x8e));
        painter.fillRect(QRectF(0, 0, 128, 80), sky);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xff, 0xf1, 0xc9));
        painter.drawEllipse(QPointF(88, 46), 8, 8);
        const auto drawHills = [&](double left, double peak, double right, const QColor &color) {
            QPainterPath path(QPointF(0, 80));
            path.lineTo(0, left);
            path.cubicTo(32, peak, 72, peak, 128, right);
            path.lineTo(128, 80);
            painter.fillPath(path, color);
        };
        drawHills(44, 30, 60, QColor(0x6d, 0x58, 0x7c));
        drawHills(62, 48, 58, QColor(0x45, 0x43, 0x66));
        drawHills(70, 74, 64, QColor(0x24, 0x2b, 0x45));
    }
};

// The corner that resizes a box, with the mouse or the arrow keys.
class Corner : public PictureWidget
{
public:
    explicit Corner(std::function<void(QSize)> grow)
        : m_grow(std::move(grow))
    {
        setFixedSize(2 * Theme::unit, 2 * Theme::unit);
        setFocusPolicy(Qt::StrongFocus);
        setAccessibleName(::tr("Corner of the box"));
        setAccessibleDescription(::tr("Arrow keys resize the boxes"));
        setToolTip(::tr("Drag, or press arrow keys"));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (isRightToLeft()) {
            painter.translate(width(), 0);
            painter.scale(-1, 1);
        }
        QPainterPath triangle(QPointF(16, 2));
        triangle.lineTo(16, 16);
        triangle.lineTo(2, 16);
        triangle.closeSubpath();
        const bool isLit = hasFocus() || underMouse();
        painter.fillPath(triangle, palette().color(isLit ? QPalette::Highlight : QPalette::Mid));
    }
    void enterEvent(QEnterEvent *) override { update(); }
    void leaveEvent(QEvent *) override { update(); }
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::LayoutDirectionChange)
            update();
        setCursor(isRightToLeft() ? Qt::SizeBDiagCursor : Qt::SizeFDiagCursor);
    }
    void mousePressEvent(QMouseEvent *event) override
    {
        m_last = event->globalPosition().toPoint();
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        const QPoint moved = event->globalPosition().toPoint() - m_last;
        m_last += moved;
        m_grow({ isRightToLeft() ? -moved.x() : moved.x(), moved.y() });
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        const int outwards = isRightToLeft() ? -Theme::unit : Theme::unit;
        switch (event->key()) {
        case Qt::Key_Left:
            return m_grow({ -outwards, 0 });
        case Qt::Key_Right:
            return m_grow({ outwards, 0 });
        case Qt::Key_Up:
            return m_grow({ 0, -Theme::unit });
        case Qt::Key_Down:
            return m_grow({ 0, Theme::unit });
        default:
            QWidget::keyPressEvent(event);
        }
    }

private:
    std::function<void(QSize)> m_grow;
    QPoint m_last;
};

// A box with the photograph. The call that places it is above.
class Sample : public QFrame
{
public:
    using Place = std::function<void(QWidget *box, QWidget *photo, int border)>;

    Sample(const QString &title, const QString &call, Place place,
           const std::function<void(QSize)> &grow)
        : m_call(call)
        , m_place(std::move(place))
        , m_box(new QWidget)
        , m_corner(new Corner(grow))
        , m_name(new QLabel)
        , m_frame(new QLabel)
    {
        setObjectName(u"card"_s);
        auto *const heading = new QLabel(title);
        heading->setFont(Theme::font(Theme::strong));
        auto *const stage = new QWidget;
        stage->setMinimumSize(largestBox);
        QFont code = Theme::font(Theme::monospace);
        code.setPointSizeF(code.pointSizeF() * 0.9);
        for (QLabel *const label : { m_name, m_frame }) {
            label->setFont(code);
            label->setForegroundRole(QPalette::PlaceholderText);
        }
        auto *const layout = new QVBoxLayout(this);
        layout->setContentsMargins(2 * Theme::unit, Theme::unit, 2 * Theme::unit, Theme::unit);
        layout->setSpacing(Theme::unit / 2);
        layout->addWidget(heading);
        layout->addWidget(m_name);
        layout->addSpacing(Theme::unit / 2);
        layout->addWidget(stage, 1);
        layout->addWidget(m_frame);

        NS::addSubview(stage, m_box);
        NS::setWantsLayer(m_box, true);
        NS::layer(m_box)->setCornerRadius(Theme::unit);
        m_width = NS::widthAnchor(m_box).constraintEqualToConstant(0);
        m_height = NS::heightAnchor(m_box).constraintEqualToConstant(0);
        NS::LayoutConstraint::activateConstraints({
                NS::leadingAnchor(m_box).constraintEqualToAnchor(NS::leadingAnchor(stage)),
                NS::topAnchor(m_box).constraintEqualToAnchor(NS::topAnchor(stage)),
                m_width,
                m_height,
        });
        NS::addSubview(m_box, m_corner);
        NS::LayoutConstraint::activateConstraints({
                NS::trailingAnchor(m_corner).constraintEqualToAnchor(NS::trailingAnchor(m_box)),
                NS::bottomAnchor(m_corner).constraintEqualToAnchor(NS::bottomAnchor(m_box)),
        });
        applyPalette();
    }

    void resizeBox(QSize size)
    {
        m_width->setConstant(size.width());
        m_height->setConstant(size.height());
        showFrame();
    }

    // The functions only add constraints, so a new border needs a new photograph.
    void setBorder(int border)
    {
        delete m_photo;
        m_photo = new Photo;
        m_place(m_box, m_photo, border);
        m_corner->raise();
        m_name->setText(m_call.contains(u"%1"_s) ? m_call.arg(border) : m_call);
        showFrame();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        QFrame::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            applyPalette();
    }

private:
    void applyPalette()
    {
        NS::layer(m_box)->setBackgroundColor(palette().color(QPalette::AlternateBase));
    }

    void showFrame()
    {
        if (!m_photo)
            return;
        NS::layoutSubtreeIfNeeded(this);
        const QRectF frame = NS::frame(m_photo);
        m_frame->setText(::tr("%1 × %2 at (%3, %4)")
                                 .arg(frame.width())
                                 .arg(frame.height())
                                 .arg(frame.x())
                                 .arg(frame.y()));
    }

    QString m_call;
    Place m_place;
    QWidget *m_box;
    Corner *m_corner;
    Photo *m_photo = nullptr;
    QLabel *m_name;
    QLabel *m_frame;
    std::shared_ptr<NS::LayoutConstraint> m_width;
    std::shared_ptr<NS::LayoutConstraint> m_height;
};

class LayoutPage : public Page
{
public:
    explicit LayoutPage(QWidget *parent);
    void showExample() override;

private:
    void grow(QSize by);
    void setBorder(int border);
    QWidget *makePins();
    QFrame *makeControls();

    NS::SegmentedControl *m_section = new NS::SegmentedControl;
    QCheckBox *m_showsLayout =
            new QCheckBox(::tr("Show &frames, guides, baselines and violations"));
    QList<Sample *> m_samples;
    QSize m_size { 160, 112 };
    QSlider *m_border = new QSlider(Qt::Horizontal);
    QLabel *m_value = new QLabel;
};

LayoutPage::LayoutPage(QWidget *parent)
    : Page(::tr("Layout"),
           ::tr("Constraints place widgets by their edges, centres, sizes and baselines. Helpers "
                "pin a widget in another one, or make rows, columns and forms."),
           parent)
{
    auto *const sections = new QStackedWidget;
    sections->addWidget(makePins());
    sections->addWidget(makeLayoutExamples());
    m_section->setLabels({ ::tr("Pinning"), ::tr("Forms, stacks and guides") });
    m_section->setSelectedSegment(0);
    m_section->setAccessibleName(::tr("What the page shows"));
    auto *const knobs = new QHBoxLayout;
    knobs->addWidget(m_section);
    knobs->addStretch();
    knobs->addWidget(m_showsLayout);
    content()->addLayout(knobs);
    content()->addWidget(sections, 1);
    connect(m_section, &NS::SegmentedControl::selectedSegmentChanged, sections,
            &QStackedWidget::setCurrentIndex);
    connect(m_showsLayout, &QCheckBox::toggled, this,
            [this](bool shows) { NS::setShowsLayout(this, shows); });
}

QWidget *LayoutPage::makePins()
{
    const auto growAll = [this](QSize by) {
        grow(by);
    };
    m_samples = {
        new Sample(
                ::tr("Fill"), u"addAndPin(box, photo)"_s,
                [](QWidget *box, QWidget *photo, int) { NS::addAndPin(box, photo); }, growAll),
        new Sample(
                ::tr("Fill, with a border"), u"addAndPin(box, photo, %1)"_s,
                [](QWidget *box, QWidget *photo, int border) { NS::addAndPin(box, photo, border); },
                growAll),
        new Sample(
                ::tr("Centre"), u"addAndCenter(box, photo)"_s,
                [](QWidget *box, QWidget *photo, int) { NS::addAndCenter(box, photo); }, growAll),
        new Sample(
                ::tr("Centre, inside"), u"addCenteredAnd…(box, photo)"_s,
                [](QWidget *box, QWidget *photo, int) {
                    NS::addCenteredAndConstrainedToBounds(box, photo);
                },
                growAll),
        new Sample(
                ::tr("Centre, within a border"), u"addCenteredAnd…(box, photo, %1)"_s,
                [](QWidget *box, QWidget *photo, int border) {
                    NS::addCenteredAndConstrainedToBounds(box, photo, border);
                },
                growAll),
    };
    auto *const pins = new QWidget;
    auto *const grid = new QGridLayout(pins);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2 * Theme::unit);
    for (int i = 0; i < m_samples.size(); ++i)
        grid->addWidget(m_samples[i], i / 3, i % 3);
    grid->addWidget(makeControls(), 1, 2);
    for (int column = 0; column < 3; ++column)
        grid->setColumnStretch(column, 1);
    grid->setRowStretch(2, 1);
    connect(m_border, &QSlider::valueChanged, this, [this](int border) { setBorder(border); });
    grow({ 0, 0 });
    setBorder(m_border->value());
    return pins;
}

QFrame *LayoutPage::makeControls()
{
    m_border->setRange(-2 * Theme::unit, 3 * Theme::unit);
    m_border->setValue(Theme::unit);
    m_border->setAccessibleName(::tr("Border"));
    auto *const name = new QLabel(::tr("&Border"));
    name->setBuddy(m_border);
    m_value->setFont(Theme::font(Theme::monospace));
    auto *const note =
            new QLabel(::tr("Drag the corner of a box to resize all boxes. When it fills the box, "
                            "the border is a margin inside. When it is centred, the photograph can "
                            "extend beyond the edges by the border; below 0, it stays inside."));
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);

    // Made with anchors: the labels share a base line, and the note is as high as its text.
    QFrame *const card = makeCard({});
    auto *const panel = new QWidget;
    static_cast<QVBoxLayout *>(card->layout())->addWidget(panel, 1);
    for (QWidget *const widget : { static_cast<QWidget *>(name), static_cast<QWidget *>(m_value),
                                   static_cast<QWidget *>(m_border), static_cast<QWidget *>(note) })
        NS::addSubview(panel, widget);
    using namespace NS;
    LayoutConstraint::activateConstraints({
            topAnchor(name).constraintEqualToAnchor(topAnchor(panel)),
            leadingAnchor(name).constraintEqualToAnchor(leadingAnchor(panel)),
            trailingAnchor(m_value).constraintEqualToAnchor(trailingAnchor(panel)),
            firstBaselineAnchor(m_value).constraintEqualToAnchor(firstBaselineAnchor(name)),
            topAnchor(m_border).constraintEqualToAnchor(bottomAnchor(name), Theme::unit),
            leadingAnchor(m_border).constraintEqualToAnchor(leadingAnchor(panel)),
            trailingAnchor(m_border).constraintEqualToAnchor(trailingAnchor(panel)),
            topAnchor(note).constraintEqualToAnchor(bottomAnchor(m_border), 2 * Theme::unit),
            leadingAnchor(note).constraintEqualToAnchor(leadingAnchor(panel)),
            trailingAnchor(note).constraintEqualToAnchor(trailingAnchor(panel)),
            bottomAnchor(note).constraintLessThanOrEqualToAnchor(bottomAnchor(panel)),
    });
    return card;
}

void LayoutPage::showExample()
{
    m_size = { 152, 72 }; // lower than the photograph, so that the boxes differ
    grow({ 0, 0 });
    m_border->setValue(Theme::unit);
    m_section->setSelectedSegment(1);
    m_showsLayout->setChecked(true);
}

void LayoutPage::grow(QSize by)
{
    m_size = (m_size + by).expandedTo(smallestBox).boundedTo(largestBox);
    for (Sample *const sample : std::as_const(m_samples))
        sample->resizeBox(m_size);
}

void LayoutPage::setBorder(int border)
{
    m_value->setText(QString::number(border));
    for (Sample *const sample : std::as_const(m_samples))
        sample->setBorder(border);
}

} // namespace

Page *makeLayoutPage(QWidget *parent)
{
    return new LayoutPage(parent);
}
