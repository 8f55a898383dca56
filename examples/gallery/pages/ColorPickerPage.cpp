// SPDX-License-Identifier: MIT
// The sign of a shop. Each part has a button for its colour, and a binding, so it follows while the
// colour is picked in the popover.
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/ColorPickerButton.h>
#include <pellarvine/Platform/NSPopover.h>
#include <pellarvine/Shared/Binding.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using Pellarvine::Binding;
using Pellarvine::ColorPickerButton;

namespace {

using Named = Pellarvine::Palette<NS::Color>;

QString hex(const QColor &color)
{
    const NS::Color exact(color);
    return color.alpha() < 255 ? Pellarvine::hexStringWithAlpha(exact)
                               : Pellarvine::hexStringWithoutAlpha(exact);
}

// The model of the sign.
class Sign : public PictureWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor wall MEMBER m_wall NOTIFY changed)
    Q_PROPERTY(QColor board MEMBER m_board NOTIFY changed)
    Q_PROPERTY(QColor lettering MEMBER m_lettering NOTIFY changed)

public:
    Sign()
    {
        setMinimumSize(40 * Theme::unit, 36 * Theme::unit);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        setAccessibleName(tr("Sign of the Harbour Café"));
        connect(this, &Sign::changed, this, qOverload<>(&QWidget::update));
    }

Q_SIGNALS:
    void changed();

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath wall;
        wall.addRoundedRect(rect(), 8, 8);
        painter.setClipPath(wall);
        painter.fillPath(wall, m_wall);
        drawBricks(painter);

        // The bracket, the board, and its text.
        QRectF board(0, 0, 30 * Theme::unit, 18 * Theme::unit);
        board.moveCenter(QRectF(rect()).center() + QPointF(0, Theme::unit));
        const double beam = board.top() - 3 * Theme::unit;
        painter.setPen(QPen(QColor(0x2a, 0x2d, 0x33), 6, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(board.left() - 2 * Theme::unit, beam),
                         QPointF(board.right() + 2 * Theme::unit, beam));
        painter.setPen(QPen(QColor(0x2a, 0x2d, 0x33), 3));
        for (const double x : { board.left() + 4 * Theme::unit, board.right() - 4 * Theme::unit })
            painter.drawLine(QPointF(x, beam), QPointF(x, board.top()));
        painter.setPen(QPen(m_lettering, 3));
        painter.setBrush(m_board);
        painter.drawRoundedRect(board, 16, 16);
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(board.adjusted(8, 8, -8, -8), 10, 10);
        QFont font = Theme::font(Theme::heading);
        painter.setFont(font);
        painter.drawText(board.adjusted(0, 3 * Theme::unit, 0, 0), Qt::AlignHCenter | Qt::AlignTop,
                         tr("Harbour Café"));
        painter.setFont(Theme::font(Theme::body));
        painter.drawText(board.adjusted(0, 0, 0, -3 * Theme::unit),
                         Qt::AlignHCenter | Qt::AlignBottom, tr("Coffee · Cakes · Sandwiches"));
        drawCup(painter, board.center() + QPointF(0, Theme::unit));
    }

private:
    void drawBricks(QPainter &painter)
    {
        painter.setPen(QPen(QColor(0, 0, 0, 22), 2));
        for (int row = 0; row * 24 < height(); ++row) {
            painter.drawLine(0, row * 24, width(), row * 24);
            for (int x = row % 2 * 32; x < width(); x += 64)
                painter.drawLine(x, row * 24, x, row * 24 + 24);
        }
    }
    void drawCup(QPainter &painter, const QPointF &center)
    {
        painter.save();
        painter.translate(center);
        painter.setPen(QPen(m_lettering, 3, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(Qt::NoBrush);
        painter.drawArc(QRectF(6, -10, 14, 14), -100 * 16, 200 * 16);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_lettering);
        QPainterPath cup(QPointF(-14, -14));
        cup.lineTo(12, -14);
        cup.cubicTo(12, 10, 4, 10, -1, 10);
        cup.cubicTo(-6, 10, -14, 10, -14, -14);
        painter.drawPath(cup);
        painter.drawRoundedRect(QRectF(-20, 13, 38, 3), 1.5, 1.5);
        painter.restore();
    }

    QColor m_wall;
    QColor m_board;
    QColor m_lettering;
};

class ColorPickerPage : public Page
{
    Q_OBJECT

public:
    explicit ColorPickerPage(QWidget *parent)
        : Page(tr("Colour picker"),
               tr("Press a button and drag on the wheel: the sign follows the pointer. Colours can "
                  "also be dropped on a button, dragged to another one, copied and pasted."),
               parent)
    {
        auto *const row = new QHBoxLayout;
        row->setSpacing(2 * Theme::unit);
        row->addWidget(makeControls());
        row->addWidget(m_sign, 1);
        content()->addLayout(row, 1);
    }

    // The popover stays in the window, so that it is in the picture.
    void showExample() override
    {
        ColorPickerButton *const button = m_buttons.constFirst();
        NS::ColorPanel::sharedColorPanel()->setRecentColors(
                { QColor(0x1a, 0xbc, 0x9c), QColor(0xf1, 0xc4, 0x0f), QColor(Qt::white) });
        button->click();
        auto *const popover = button->findChild<NS::Popover *>();
        popover->setStaysInWindow(true);
        popover->showRelativeToRect(popover->positioningRect(), popover->positioningView(),
                                    NS::RectEdge::maxX);
    }

private:
    QFrame *makeControls()
    {
        auto *const card = makeCard(tr("Colours of the sign"));
        auto *const grid = new QGridLayout;
        grid->setHorizontalSpacing(2 * Theme::unit);
        grid->setVerticalSpacing(Theme::unit);
        QColor shade = Named::wetAsphalt().toQColor();
        shade.setAlphaF(0.85F);
        addColor(grid, tr("&Board"), u"board"_s, shade);
        addColor(grid, tr("&Lettering"), u"lettering"_s, Named::sunflower().toQColor());
        addColor(grid, tr("&Wall"), u"wall"_s, Named::pomergranate().toQColor());
        auto *const isEnabled = new QCheckBox(tr("Colours may be &changed"));
        isEnabled->setChecked(true);
        connect(isEnabled, &QCheckBox::toggled, this, [this](bool isOn) {
            for (ColorPickerButton *const button : std::as_const(m_buttons))
                button->setEnabled(isOn);
        });
        auto *const panel = new QPushButton(tr("Show &panel"));
        connect(panel, &QPushButton::clicked, this, [this] { showPanel(); });
        auto *const note =
                new QLabel(tr("The popover and the panel share their content, which is in the one "
                              "that was opened last. The panel changes the wall."));
        note->setWordWrap(true);
        note->setForegroundRole(QPalette::PlaceholderText);
        card->setFixedWidth(34 * Theme::unit);
        auto *const layout = static_cast<QVBoxLayout *>(card->layout());
        layout->addLayout(grid);
        layout->addWidget(isEnabled);
        layout->addSpacing(2 * Theme::unit);
        layout->addWidget(panel, 0, Qt::AlignLeading);
        layout->addWidget(note);
        layout->addStretch();
        return card;
    }

    void addColor(QGridLayout *grid, const QString &name, const QString &property,
                  const QColor &color)
    {
        auto *const button = new ColorPickerButton;
        button->setColor(color);
        button->setDefaultColor(color);
        auto *const label = new QLabel(name);
        label->setBuddy(button);
        button->setAccessibleName(QString(name).remove(u'&'));
        auto *const text = new QLabel(hex(color));
        text->setFont(Theme::font(Theme::monospace));
        text->setForegroundRole(QPalette::PlaceholderText);
        connect(button, &ColorPickerButton::colorChanged, text,
                [text](const QColor &changed) { text->setText(hex(changed)); });
        const int row = grid->rowCount();
        // The button comes first, so that the popover does not cover the board.
        grid->addWidget(button, row, 0);
        grid->addWidget(label, row, 1);
        grid->addWidget(text, row, 2);
        grid->setColumnStretch(1, 1);
        m_bindings.push_back(std::make_unique<Binding>(button, u"color"_s, m_sign, property));
        m_buttons.append(button);
    }

    void showPanel()
    {
        auto *const panel = NS::ColorPanel::sharedColorPanel();
        panel->setColor(m_buttons.constLast()->color());
        connect(panel, &NS::ColorPanel::colorChanged, this, &ColorPickerPage::followPanel,
                Qt::UniqueConnection);
        panel->orderFront();
    }
    void followPanel(const QColor &color)
    {
        if (NS::ColorPanel::sharedColorPanel()->isVisible())
            m_buttons.constLast()->setColor(color);
    }

    Sign *m_sign = new Sign;
    QList<ColorPickerButton *> m_buttons;
    std::vector<std::unique_ptr<Binding>> m_bindings;
};

} // namespace

Page *makeColorPickerPage(QWidget *parent)
{
    return new ColorPickerPage(parent);
}

#include "ColorPickerPage.moc"
