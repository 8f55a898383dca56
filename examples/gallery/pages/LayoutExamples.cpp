// SPDX-License-Identifier: MIT
#include "LayoutExamples.h"

#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Platform/NSLayoutAnchor.h>
#include <pellarvine/Platform/NSLayoutForm.h>
#include <pellarvine/Platform/NSLayoutGuide.h>
#include <pellarvine/Platform/NSLayoutSpacing.h>
#include <pellarvine/Platform/NSLayoutStack.h>
#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSView.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using NS::LayoutAttribute;
using Pellarvine::FullWidthSegmentedControl;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LayoutExamples", text);
}

QLabel *makeCode(const QString &text)
{
    auto *const code = new QLabel(text);
    QFont font = Theme::font(Theme::monospace);
    font.setPointSizeF(font.pointSizeF() * 0.9);
    code->setFont(font);
    code->setForegroundRole(QPalette::PlaceholderText);
    // Code is left to right in every layout.
    code->setLayoutDirection(Qt::LeftToRight);
    code->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return code;
}

QWidget *makeAccountForm()
{
    auto *const panel = new QWidget;
    auto *const name = new QLineEdit(u"Ada Lovelace"_s);
    auto *const server = new QLineEdit(u"mail.example.org"_s);
    auto *const port = new QSpinBox;
    port->setRange(1, 65535);
    port->setValue(993);
    auto *const encryption = new QComboBox;
    encryption->addItems({ u"TLS"_s, u"STARTTLS"_s, tr("None") });
    auto *const remember = new QCheckBox(tr("&Remember the password"));
    const QList<NS::FormRow> rows = {
        { new QLabel(tr("Your &name:")), name },
        { new QLabel(tr("&Server:")), server },
        { new QLabel(tr("&Port:")), port },
        { new QLabel(tr("&Encryption:")), encryption },
        { nullptr, remember },
    };
    NS::LayoutConstraint::activateConstraints(NS::form(panel, rows));
    return panel;
}

QFrame *makeFormCard()
{
    QFrame *const card = makeCard(tr("A form"));
    auto *const layout = static_cast<QVBoxLayout *>(card->layout());
    layout->addWidget(makeCode(u"const QList<FormRow> rows = {\n"
                               "    { new QLabel(tr(\"Your &name:\")), name },\n"
                               "    { new QLabel(tr(\"&Server:\")), server },\n"
                               "    { new QLabel(tr(\"&Port:\")), port },\n"
                               "    { new QLabel(tr(\"&Encryption:\")), encryption },\n"
                               "    { nullptr, remember },\n"
                               "};\n"
                               "activateConstraints(form(panel, rows));"_s));
    layout->addSpacing(Theme::unit);
    layout->addWidget(makeAccountForm(), 1);
    return card;
}

// A circle with initials, in place of a photograph.
class Initial : public PictureWidget
{
public:
    Initial()
    {
        setAccessibleName(::tr("Picture of Ada Lovelace"));
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    QSize sizeHint() const override { return { 5 * Theme::unit, 5 * Theme::unit }; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0x6d, 0x58, 0x7c));
        painter.drawEllipse(rect());
        painter.setPen(Qt::white);
        painter.setFont(Theme::font(Theme::strong));
        painter.drawText(rect(), Qt::AlignCenter, u"A"_s);
    }
};

// Paints the frame of a guide, which is invisible itself.
class GuideStage : public QWidget
{
public:
    GuideStage()
        : m_guide(new NS::LayoutGuide(this))
    {
        connect(m_guide, &NS::LayoutGuide::frameChanged, this, [this] { update(); });
    }
    NS::LayoutGuide *guide() const { return m_guide; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr int distance = Theme::unit / 4;
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.0, Qt::DashLine));
        painter.drawRect(
                m_guide->frame().adjusted(-distance, -distance, distance - 1, distance - 1));
    }

private:
    NS::LayoutGuide *m_guide;
};

// Three views in a row or a column, with the chosen settings. A guide frames and centres them.
class StackCard : public QFrame
{
public:
    StackCard();

private:
    struct Way
    {
        const char *title;
        const char *code;
        LayoutAttribute attribute;
    };
    static QList<Way> ways(Qt::Orientation axis);

    Qt::Orientation axis() const;
    void offerWays();
    void frameByGuide();
    void stackAgain();

    GuideStage *m_stage = new GuideStage;
    FullWidthSegmentedControl *m_axis = new FullWidthSegmentedControl;
    FullWidthSegmentedControl *m_alignment = new FullWidthSegmentedControl;
    QSlider *m_spacing = new QSlider(Qt::Horizontal);
    QLabel *m_call = makeCode({});
    QList<QWidget *> m_views;
    QList<std::shared_ptr<NS::LayoutConstraint>> m_constraints;
};

StackCard::StackCard()
{
    setObjectName(u"card"_s);
    auto *const title = new QLabel(::tr("A stack in a guide"));
    title->setFont(Theme::font(Theme::strong));
    auto *const sender = new QLabel(u"Ada Lovelace"_s);
    sender->setFont(Theme::font(Theme::heading));
    auto *const date = new QLabel(::tr("today, 9:41"));
    m_views = { new Initial, sender, date };
    for (QWidget *const view : std::as_const(m_views))
        NS::addSubview(m_stage, view);
    m_stage->setMinimumHeight(14 * Theme::unit);

    m_axis->setLabels({ ::tr("Row"), ::tr("Column") });
    m_axis->setSelectedSegment(0);
    m_axis->setAccessibleName(::tr("Direction"));
    m_alignment->setAccessibleName(::tr("Alignment"));
    m_spacing->setRange(0, 3 * Theme::unit / 2);
    m_spacing->setValue(qRound(NS::systemSpacing(sender, date, Qt::Horizontal)));
    auto *const spacingName = new QLabel(::tr("S&pacing"));
    spacingName->setBuddy(m_spacing);

    auto *const knobs = new QGridLayout;
    knobs->setHorizontalSpacing(2 * Theme::unit);
    knobs->addWidget(m_axis, 0, 0);
    knobs->addWidget(spacingName, 0, 1);
    knobs->addWidget(m_spacing, 0, 2);
    knobs->addWidget(m_alignment, 1, 0, 1, 3);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * Theme::unit, 2 * Theme::unit, 2 * Theme::unit, 2 * Theme::unit);
    layout->setSpacing(Theme::unit);
    layout->addWidget(title);
    layout->addWidget(m_call);
    layout->addWidget(m_stage, 1);
    layout->addLayout(knobs);

    connect(m_axis, &NS::SegmentedControl::selectedSegmentChanged, this, [this] {
        offerWays();
        stackAgain();
    });
    connect(m_alignment, &NS::SegmentedControl::selectedSegmentChanged, this,
            [this] { stackAgain(); });
    connect(m_spacing, &QSlider::valueChanged, this, [this] { stackAgain(); });
    offerWays();
    frameByGuide();
    stackAgain();
}

QList<StackCard::Way> StackCard::ways(Qt::Orientation axis)
{
    using enum LayoutAttribute;
    if (axis == Qt::Horizontal) {
        return { { QT_TRANSLATE_NOOP("LayoutExamples", "Top"), "top", top },
                 { QT_TRANSLATE_NOOP("LayoutExamples", "Centre"), "centerY", centerY },
                 { QT_TRANSLATE_NOOP("LayoutExamples", "Baseline"), "firstBaseline",
                   firstBaseline } };
    }
    return { { QT_TRANSLATE_NOOP("LayoutExamples", "Leading"), "leading", leading },
             { QT_TRANSLATE_NOOP("LayoutExamples", "Centre"), "centerX", centerX },
             { QT_TRANSLATE_NOOP("LayoutExamples", "Trailing"), "trailing", trailing } };
}

Qt::Orientation StackCard::axis() const
{
    return m_axis->selectedSegment() == 0 ? Qt::Horizontal : Qt::Vertical;
}

void StackCard::offerWays()
{
    QStringList titles;
    for (const Way &way : ways(axis()))
        titles.append(::tr(way.title));
    m_alignment->setLabels(titles);
    m_alignment->setSelectedSegment(1);
}

// The smallest rectangle around the views, in the middle of the stage: a guide is as small as its
// constraints allow.
void StackCard::frameByGuide()
{
    using namespace NS;
    LayoutGuide *const guide = m_stage->guide();
    LayoutConstraint::activateConstraints({
            centerXAnchor(guide).constraintEqualToAnchor(centerXAnchor(m_stage)),
            centerYAnchor(guide).constraintEqualToAnchor(centerYAnchor(m_stage)),
    });
    for (QWidget *const view : std::as_const(m_views)) {
        LayoutConstraint::activateConstraints({
                leftAnchor(guide).constraintLessThanOrEqualToAnchor(leftAnchor(view)),
                rightAnchor(guide).constraintGreaterThanOrEqualToAnchor(rightAnchor(view)),
                topAnchor(guide).constraintLessThanOrEqualToAnchor(topAnchor(view)),
                bottomAnchor(guide).constraintGreaterThanOrEqualToAnchor(bottomAnchor(view)),
        });
    }
}

void StackCard::stackAgain()
{
    const Way way = ways(axis()).value(m_alignment->selectedSegment());
    const int spacing = m_spacing->value();
    NS::LayoutConstraint::deactivateConstraints(m_constraints);
    m_constraints = NS::stack(m_views, axis(), spacing, way.attribute);
    NS::LayoutConstraint::activateConstraints(m_constraints);
    m_call->setText(u"stack(views, Qt::%1, %2, %3)"_s.arg(
            axis() == Qt::Horizontal ? "Horizontal"_L1 : "Vertical"_L1, QString::number(spacing),
            QLatin1StringView(way.code)));
}

QFrame *makeFileCard()
{
    QFrame *const card = makeCard(tr("An interface file"));
    QWidget *const view = NS::Nib(u"Volume"_s).instantiate(nullptr, card);
    auto *const layout = static_cast<QVBoxLayout *>(card->layout());
    layout->addWidget(makeCode(u"name   leading = superview.leading\n"
                               "       firstBaseline = value.firstBaseline\n"
                               "level  leading = name.trailing + 8\n"
                               "       centerY = value.centerY\n"
                               "value  leading = level.trailing + 8\n"
                               "       trailing = superview.trailing\n"
                               "       top = superview.top"_s));
    layout->addSpacing(Theme::unit);
    layout->addWidget(view, 1);
    return card;
}

} // namespace

QWidget *makeLayoutExamples()
{
    auto *const examples = new QWidget;
    auto *const grid = new QGridLayout(examples);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2 * Theme::unit);
    grid->addWidget(makeFormCard(), 0, 0, 2, 1);
    grid->addWidget(makeFileCard(), 0, 1);
    grid->addWidget(new StackCard, 1, 1);
    grid->setRowStretch(1, 1);
    for (int column = 0; column < 2; ++column)
        grid->setColumnStretch(column, 1);
    return examples;
}
