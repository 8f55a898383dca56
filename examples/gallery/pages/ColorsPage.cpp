// SPDX-License-Identifier: MIT
#include "../FlatStyle.h"
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Shared/Contrast.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QSlider>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace Pellarvine;

namespace {

using Named = Palette<NS::Color>;

constexpr int radius = 6;
constexpr int feedbackTime = 1200; // milliseconds

QColor textOn(const NS::Color &color)
{
    return readableOn(color).toQColor();
}

NS::Color onScreen(const NS::Color &color)
{
    return NS::Color(color.toQColor());
}

// A focus ring inside the edge. A gap separates it from the colour.
void drawFocus(QPainter &painter, const QRectF &rect, const QPalette &palette)
{
    FlatStyle::drawBox(&painter, rect.adjusted(2, 2, -2, -2), radius - 2,
                       QPen(palette.color(QPalette::Base), 2), {});
    FlatStyle::drawBox(&painter, rect, radius, QPen(palette.color(QPalette::Highlight), 2), {});
}

// A colour with its name. With the pointer or the keyboard focus, it shows its hexadecimal text,
// and a click copies the text.
class Swatch : public QAbstractButton
{
public:
    explicit Swatch(const QString &name, const NS::Color &color = {}, QWidget *parent = nullptr)
        : QAbstractButton(parent)
    {
        setText(name);
        setColor(color);
        setAttribute(Qt::WA_Hover);
        setCursor(Qt::PointingHandCursor);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        m_feedback.setSingleShot(true);
        m_feedback.setInterval(feedbackTime);
        connect(&m_feedback, &QTimer::timeout, this, qOverload<>(&QWidget::update));
        connect(this, &QAbstractButton::clicked, this, &Swatch::copy);
    }

    const NS::Color &color() const { return m_color; }

    void setColor(const NS::Color &color)
    {
        m_color = color;
        m_hex = hexStringWithoutAlpha(onScreen(color));
        setAccessibleName(text() + u' ' + m_hex);
        setToolTip(tr("Copy %1. The number is the contrast of black or white text.").arg(m_hex));
        m_feedback.stop();
        update();
    }

    void copy()
    {
        QApplication::clipboard()->setText(m_hex);
        m_feedback.start();
        update();
    }

    QSize sizeHint() const override { return { 14 * Theme::unit, 6 * Theme::unit }; }
    QSize minimumSizeHint() const override { return { 10 * Theme::unit, 6 * Theme::unit }; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        FlatStyle::drawBox(&painter, rect(), radius, QColor(128, 128, 128, 60), m_color.toQColor());
        if (hasFocus())
            drawFocus(painter, rect(), palette());

        const bool isOffered = underMouse() || hasFocus();
        QFont small = font();
        small.setPointSizeF(font().pointSizeF() * 0.85);
        const QRectF inner = QRectF(rect()).adjusted(Theme::unit, 6, -Theme::unit, -6);
        painter.setPen(textOn(m_color));
        painter.setFont(Theme::font(Theme::strong));
        painter.drawText(inner, Qt::AlignLeft | Qt::AlignTop, text());
        painter.setFont(small);
        // Direction marks keep the "#" at the front in a right-to-left layout.
        const QString hex = u'\u2066' + m_hex + u'\u2069';
        const QString offer = m_feedback.isActive() ? tr("Copied")
                              : isOffered           ? tr("Copy %1").arg(hex)
                                                    : hex;
        painter.drawText(inner, Qt::AlignLeft | Qt::AlignBottom, offer);
        const double contrast = contrastRatio(readableOn(m_color), m_color);
        painter.drawText(inner, Qt::AlignRight | Qt::AlignTop,
                         locale().toString(contrast, 'f', 1) + u" : 1"_s);
    }

private:
    NS::Color m_color;
    QString m_hex;
    QTimer m_feedback;
};

// The colours between two colours, and a quarter of the way beyond both.
class Strip : public PictureWidget
{
public:
    Strip()
    {
        setFixedHeight(4 * Theme::unit);
        setAccessibleName(tr("Colours between the two"));
    }

    void setColors(const NS::Color &first, const NS::Color &second)
    {
        m_first = first;
        m_second = second;
        update();
    }

    void setPosition(double position)
    {
        m_position = position;
        update();
    }

    NS::Color color() const { return interpolate(m_first, m_second, m_position); }

    static constexpr double beyond = 0.25;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath path;
        path.addRoundedRect(rect(), radius, radius);
        painter.setClipPath(path);
        const auto columnOf = [&](double position) {
            const double fraction = (position + beyond) / (1 + 2 * beyond);
            return (isRightToLeft() ? 1 - fraction : fraction) * width();
        };
        constexpr int steps = 300;
        for (int step = 0; step < steps; ++step) {
            const double position = (step + 0.5) / steps * (1 + 2 * beyond) - beyond;
            const double half = 0.5 / steps * (1 + 2 * beyond);
            const double from = columnOf(position - half);
            const double to = columnOf(position + half);
            painter.fillRect(QRectF(QPointF(std::min(from, to) - 0.5, 0),
                                    QPointF(std::max(from, to) + 0.5, height())),
                             interpolate(m_first, m_second, position).toQColor());
        }
        // The places of the two colours.
        for (const double end : { 0.0, 1.0 }) {
            painter.setPen(QPen(textOn(interpolate(m_first, m_second, end)), 1, Qt::DotLine));
            const double x = std::round(columnOf(end)) + 0.5;
            painter.drawLine(QPointF(x, 0), QPointF(x, height()));
        }
        painter.setClipping(false);
        painter.setPen(QPen(palette().color(QPalette::Base), 5));
        const double x = std::round(columnOf(m_position)) + 0.5;
        painter.drawLine(QPointF(x, 0), QPointF(x, height()));
        painter.setPen(QPen(palette().color(QPalette::Text), 2));
        painter.drawLine(QPointF(x, 0), QPointF(x, height()));
    }

private:
    NS::Color m_first;
    NS::Color m_second;
    double m_position = 0.5;
};

// A button in a colour of the program, whose other states are darker and lighter.
class ColoredButton : public QAbstractButton
{
public:
    explicit ColoredButton(const QString &text)
    {
        setText(text);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    void setColor(const NS::Color &color)
    {
        m_color = color;
        update();
    }

    QSize sizeHint() const override { return { 12 * Theme::unit, 5 * Theme::unit }; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const NS::Color shown = isDown()       ? darker(m_color)
                                : underMouse() ? lighter(m_color)
                                               : m_color;
        FlatStyle::drawBox(&painter, rect(), radius, Qt::NoPen, shown.toQColor());
        if (hasFocus())
            drawFocus(painter, rect(), palette());
        painter.setPen(textOn(shown));
        painter.setFont(Theme::font(Theme::strong));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }

private:
    NS::Color m_color;
};

class ColorsPage : public Page
{
public:
    explicit ColorsPage(QWidget *parent)
        : Page(tr("Colours"),
               tr("Nineteen named colours, and colours that are computed from them. Click one to "
                  "copy it."),
               parent)
        , m_first(new QComboBox)
        , m_second(new QComboBox)
        , m_strip(new Strip)
        , m_position(new QSlider(Qt::Horizontal))
        , m_middle(new QLabel)
        , m_darker(new Swatch(tr("darker")))
        , m_chosen(new Swatch(tr("as it is")))
        , m_lighter(new Swatch(tr("lighter")))
        , m_button(new ColoredButton(tr("Send invoice")))
    {
        content()->addLayout(makePalette(), 1);
        auto *const row = new QHBoxLayout;
        row->setSpacing(2 * Theme::unit);
        row->addWidget(makeInterpolation(), 1);
        row->addWidget(makeBrightness(), 1);
        content()->addLayout(row);
        choose("peterRiver");
        m_second->setCurrentText(u"sunflower"_s);
    }

    void showExample() override
    {
        choose("emerald");
        m_swatches.value(u"emerald"_s)->setFocus();
    }

private:
    QGridLayout *makePalette()
    {
        constexpr int columns = 5;
        auto *const grid = new QGridLayout;
        grid->setSpacing(Theme::unit);
        int index = 0;
        for (const auto &[name, color] : Named::all()) {
            const auto text = QString::fromLatin1(name);
            auto *const swatch = new Swatch(text, color);
            connect(swatch, &QAbstractButton::clicked, this, [this, name = name] { choose(name); });
            m_swatches.insert(text, swatch);
            grid->addWidget(swatch, index / columns, index % columns);
            ++index;
        }
        return grid;
    }

    QFrame *makeInterpolation()
    {
        auto *const card = makeCard(tr("Between two colours"));
        for (QComboBox *const box : { m_first, m_second }) {
            for (const auto &[name, color] : Named::all()) {
                QPixmap sample(16, 16);
                sample.fill(color.toQColor());
                box->addItem(sample, QString::fromLatin1(name), QVariant::fromValue(color));
            }
            connect(box, &QComboBox::currentIndexChanged, this, &ColorsPage::showColors);
        }
        m_first->setAccessibleName(tr("First colour"));
        m_second->setAccessibleName(tr("Second colour"));
        auto *const boxes = new QHBoxLayout;
        boxes->addWidget(m_first, 1);
        boxes->addWidget(new QLabel(tr("to")));
        boxes->addWidget(m_second, 1);
        m_position->setRange(-int(100 * Strip::beyond), 100 + int(100 * Strip::beyond));
        m_position->setValue(50);
        m_position->setAccessibleName(tr("Position"));
        connect(m_position, &QSlider::valueChanged, this, &ColorsPage::showColors);
        auto *const layout = static_cast<QBoxLayout *>(card->layout());
        layout->addLayout(boxes);
        layout->addStretch();
        layout->addWidget(m_strip);
        layout->addWidget(m_position);
        layout->addWidget(m_middle);
        return card;
    }

    QFrame *makeBrightness()
    {
        auto *const card = makeCard(tr("Darker and lighter"));
        auto *const swatches = new QHBoxLayout;
        swatches->setSpacing(Theme::unit);
        for (Swatch *const swatch : { m_darker, m_chosen, m_lighter })
            swatches->addWidget(swatch);
        auto *const text =
                new QLabel(tr("Multiply the brightness by 0.8 and 1.25; each is the inverse of the "
                              "other. Point at the button and press it:"));
        text->setWordWrap(true);
        text->setForegroundRole(QPalette::PlaceholderText);
        auto *const layout = static_cast<QBoxLayout *>(card->layout());
        layout->addLayout(swatches, 1);
        layout->addWidget(text);
        layout->addWidget(m_button);
        return card;
    }

    void choose(const char *name) { m_first->setCurrentText(QString::fromLatin1(name)); }

    void showColors()
    {
        const auto first = m_first->currentData().value<NS::Color>();
        const double position = m_position->value() / 100.0;
        m_strip->setColors(first, m_second->currentData().value<NS::Color>());
        m_strip->setPosition(position);
        m_middle->setText(tr("Position %1: %2")
                                  .arg(locale().toString(position, 'f', 2),
                                       hexStringWithoutAlpha(onScreen(m_strip->color()))));
        m_darker->setColor(darker(first));
        m_chosen->setColor(first);
        m_lighter->setColor(lighter(first));
        m_button->setColor(first);
    }

    QHash<QString, Swatch *> m_swatches;
    QComboBox *m_first;
    QComboBox *m_second;
    Strip *m_strip;
    QSlider *m_position;
    QLabel *m_middle;
    Swatch *m_darker;
    Swatch *m_chosen;
    Swatch *m_lighter;
    ColoredButton *m_button;
};

} // namespace

Page *makeColorsPage(QWidget *parent)
{
    return new ColorsPage(parent);
}
