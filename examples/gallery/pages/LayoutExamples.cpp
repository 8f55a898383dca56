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

// Three views in a row or a column, with the chosen settings.
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
    void stackAgain();

    QWidget *m_stage = new QWidget;
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
    auto *const title = new QLabel(::tr("A stack"));
    title->setFont(Theme::font(Theme::strong));
    auto *const sender = new QLabel(u"Ada Lovelace"_s);
    sender->setFont(Theme::font(Theme::heading));
    auto *const date = new QLabel(::tr("today, 9:41"));
    m_views = { new Initial, sender, date };
    for (QWidget *const view : std::as_const(m_views))
        NS::addSubview(m_stage, view);
    m_stage->setMinimumHeight(15 * Theme::unit);

    m_axis->setLabels({ ::tr("Row"), ::tr("Column") });
    m_axis->setSelectedSegment(0);
    m_axis->setAccessibleName(::tr("Direction"));
    m_alignment->setAccessibleName(::tr("Alignment"));
    m_spacing->setRange(0, 2 * Theme::unit);
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

void StackCard::stackAgain()
{
    const Way way = ways(axis()).value(m_alignment->selectedSegment());
    const int spacing = m_spacing->value();
    NS::LayoutConstraint::deactivateConstraints(m_constraints);
    m_constraints = NS::stack(m_views, axis(), spacing, way.attribute);
    // The stack begins at the edge of the stage. Across, it is aligned as its views are.
    const bool isRow = axis() == Qt::Horizontal;
    for (const LayoutAttribute attribute :
         { isRow ? LayoutAttribute::leading : LayoutAttribute::top,
           isRow ? LayoutAttribute::centerY : way.attribute }) {
        m_constraints +=
                NS::LayoutConstraint::make(m_views.first(), attribute, NS::LayoutRelation::equal,
                                           m_stage, attribute, 1.0, 0.0);
    }
    NS::LayoutConstraint::activateConstraints(m_constraints);
    m_call->setText(u"stack(views, Qt::%1, %2, %3)"_s.arg(
            axis() == Qt::Horizontal ? "Horizontal"_L1 : "Vertical"_L1, QString::number(spacing),
            QLatin1StringView(way.code)));
}

// Paints the frame of a guide, which has no picture of its own.
class GuideStage : public QWidget
{
public:
    GuideStage()
        : m_group(new NS::LayoutGuide(this))
    {
        connect(m_group, &NS::LayoutGuide::frameChanged, this, [this] { update(); });
    }
    NS::LayoutGuide *group() const { return m_group; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.0, Qt::DashLine));
        painter.drawRoundedRect(QRectF(m_group->frame()).adjusted(0.5, 0.5, -0.5, -0.5), 4.0, 4.0);
    }

private:
    NS::LayoutGuide *m_group;
};

// A picture and a name that are centred as one.
QFrame *makeGuideCard()
{
    QFrame *const card = makeCard(tr("A guide"));
    auto *const stage = new GuideStage;
    stage->setMinimumHeight(9 * Theme::unit);
    auto *const picture = new Initial;
    auto *const name = new QLabel;
    name->setFont(Theme::font(Theme::heading));
    NS::addSubview(stage, picture);
    NS::addSubview(stage, name);
    NS::LayoutGuide *const group = stage->group();
    const double margin = Theme::unit;
    using namespace NS;
    LayoutConstraint::activateConstraints({
            leadingAnchor(group).constraintEqualToAnchor(leadingAnchor(picture), -margin),
            trailingAnchor(group).constraintEqualToAnchor(trailingAnchor(name), margin),
            topAnchor(group).constraintEqualToAnchor(topAnchor(picture), -margin),
            bottomAnchor(group).constraintEqualToAnchor(bottomAnchor(picture), margin),
            centerXAnchor(group).constraintEqualToAnchor(centerXAnchor(stage)),
            centerYAnchor(group).constraintEqualToAnchor(centerYAnchor(stage)),
            leadingAnchor(group).constraintGreaterThanOrEqualToAnchor(leadingAnchor(stage)),
            leadingAnchor(name).constraintEqualToAnchor(trailingAnchor(picture), margin),
            centerYAnchor(name).constraintEqualToAnchor(centerYAnchor(picture)),
    });

    auto *const field = new QLineEdit;
    field->setMaxLength(20);
    auto *const fieldName = new QLabel(tr("&Name"));
    fieldName->setBuddy(field);
    auto *const knobs = new QHBoxLayout;
    knobs->setSpacing(2 * Theme::unit);
    knobs->addWidget(fieldName);
    knobs->addWidget(field, 1);
    QObject::connect(field, &QLineEdit::textChanged, name, &QLabel::setText);
    field->setText(u"Ada Lovelace"_s);

    auto *const layout = static_cast<QVBoxLayout *>(card->layout());
    layout->addWidget(makeCode(u"group  leading = picture.leading - 8\n"
                               "       trailing = name.trailing + 8\n"
                               "       centerX = stage.centerX"_s));
    layout->addWidget(stage, 1);
    layout->addLayout(knobs);
    return card;
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
    auto *const columns = new QHBoxLayout(examples);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(2 * Theme::unit);
    const auto addColumn = [columns](QWidget *top, QWidget *bottom) {
        auto *const column = new QVBoxLayout;
        column->setSpacing(2 * Theme::unit);
        column->addWidget(top);
        column->addWidget(bottom, 1);
        columns->addLayout(column, 1);
    };
    addColumn(makeFormCard(), makeGuideCard());
    addColumn(makeFileCard(), new StackCard);
    return examples;
}
