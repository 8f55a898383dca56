// SPDX-License-Identifier: MIT
// A calendar and a text editor with segmented controls: one choice of several, switches, commands,
// and a row that fills its panel.
#include "../Icons.h"
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Platform/NSSegmentedControl.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QDate>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QSlider>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using NS::SegmentedControl;
using Pellarvine::FullWidthSegmentedControl;
using Tracking = SegmentedControl::SwitchTracking;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("SegmentsPage", text);
}

enum Scope {
    day,
    week,
    month,
    year,
};
enum Step {
    previous,
    today,
    next,
};
enum TextStyle {
    bold,
    italic,
    underlined,
};

QLabel *makeNote(const QString &text)
{
    auto *const note = new QLabel(text);
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);
    return note;
}

QBoxLayout *layoutOf(QFrame *card)
{
    return static_cast<QBoxLayout *>(card->layout());
}

class SegmentsPage : public Page
{
public:
    explicit SegmentsPage(QWidget *parent);
    void showExample() override;

private:
    QFrame *makeCalendar();
    QFrame *makeEditor();
    QFrame *makeWidths();
    QFrame *makeKnobs();
    void step(int direction);
    void showDates();
    void showStyle();
    void showWidths();

    QDate m_date { 2026, 11, 24 };
    SegmentedControl *m_scope = new SegmentedControl;
    SegmentedControl *m_step = new SegmentedControl;
    SegmentedControl *m_style = new SegmentedControl;
    FullWidthSegmentedControl *m_alignment = new FullWidthSegmentedControl;
    FullWidthSegmentedControl *m_paper = new FullWidthSegmentedControl;
    QLabel *m_dates = new QLabel;
    QLabel *m_text = new QLabel;
    QLabel *m_widths = new QLabel;
    QSlider *m_width = new QSlider(Qt::Horizontal);
};

SegmentsPage::SegmentsPage(QWidget *parent)
    : Page(::tr("Segments"),
           ::tr("Several buttons in one control, which is a single Tab stop. The arrow keys, Home "
                "and End move the focus, and Space presses the segment."),
           parent)
{
    auto *const grid = new QGridLayout;
    grid->setSpacing(2 * Theme::unit);
    grid->addWidget(makeCalendar(), 0, 0);
    grid->addWidget(makeEditor(), 0, 1);
    grid->addWidget(makeWidths(), 1, 0);
    grid->addWidget(makeKnobs(), 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    content()->addLayout(grid);
    content()->addStretch();
}

QFrame *SegmentsPage::makeCalendar()
{
    m_scope->setLabels({ ::tr("&Day"), ::tr("&Week"), ::tr("&Month"), ::tr("&Year") });
    m_scope->setSelectedSegment(week);
    m_scope->setAccessibleName(::tr("Scope"));
    m_step->setTrackingMode(Tracking::momentary);
    m_step->setLabels({ {}, ::tr("Today"), {} });
    m_step->setImage(Icons::previous(), previous);
    m_step->setImage(Icons::next(), next);
    m_step->setToolTip(::tr("Earlier"), previous);
    m_step->setToolTip(::tr("Later"), next);
    m_step->setAccessibleName(::tr("Go to"));
    connect(m_scope, &SegmentedControl::selectionChanged, this, &SegmentsPage::showDates);
    connect(m_step, &SegmentedControl::triggered, this, [this](int segment) {
        if (segment == today)
            m_date = QDate(2026, 11, 24);
        else
            step(segment == next ? 1 : -1);
        showDates();
    });
    QFont font = Theme::font(Theme::heading);
    font.setPointSizeF(font.pointSizeF() * 0.75);
    m_dates->setFont(font);

    QFrame *const card = makeCard(::tr("Calendar: one of several, and commands"));
    auto *const row = new QHBoxLayout;
    row->addWidget(m_scope);
    row->addStretch();
    row->addWidget(m_step);
    layoutOf(card)->addLayout(row);
    layoutOf(card)->addSpacing(Theme::unit);
    layoutOf(card)->addWidget(m_dates);
    layoutOf(card)->addWidget(makeNote(::tr("The first always has one selected segment. The second "
                                            "has none: each click moves the dates.")));
    layoutOf(card)->addStretch();
    showDates();
    return card;
}

QFrame *SegmentsPage::makeEditor()
{
    m_style->setTrackingMode(Tracking::selectAny);
    m_style->setSegmentCount(3);
    m_style->setImage(Icons::letter(u'B', true, false, false), bold);
    m_style->setImage(Icons::letter(u'I', false, true, false), italic);
    m_style->setImage(Icons::letter(u'U', false, false, true), underlined);
    m_style->setToolTip(::tr("Bold"), bold);
    m_style->setToolTip(::tr("Italic"), italic);
    m_style->setToolTip(::tr("Underlined"), underlined);
    m_style->setAccessibleName(::tr("Style"));
    m_alignment->setSegmentCount(4);
    const Qt::Alignment alignments[] = { Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight,
                                         Qt::AlignJustify };
    const QString names[] = { ::tr("Left"), ::tr("Centred"), ::tr("Right"), ::tr("Justified") };
    for (int i = 0; i < 4; ++i) {
        m_alignment->setImage(Icons::textLines(alignments[i]), i);
        m_alignment->setToolTip(names[i], i);
        m_alignment->setTag(int(alignments[i]), i);
    }
    m_alignment->setSelectedSegment(0);
    m_alignment->setAccessibleName(::tr("Alignment"));
    for (SegmentedControl *const control :
         { m_style, static_cast<SegmentedControl *>(m_alignment) })
        connect(control, &SegmentedControl::selectionChanged, this, &SegmentsPage::showStyle);
    m_text->setText(::tr("The heron stands in the shallows until the water has forgotten it, and "
                         "only then does it move."));
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignTop);
    m_text->setMinimumHeight(7 * Theme::unit);

    QFrame *const card = makeCard(::tr("Text: any of several, and a full row"));
    auto *const row = new QHBoxLayout;
    row->setSpacing(2 * Theme::unit);
    row->addWidget(m_style);
    row->addWidget(m_alignment, 1);
    layoutOf(card)->addLayout(row);
    layoutOf(card)->addSpacing(Theme::unit);
    layoutOf(card)->addWidget(m_text);
    layoutOf(card)->addStretch();
    showStyle();
    return card;
}

QFrame *SegmentsPage::makeWidths()
{
    m_paper->setLabels({ ::tr("Letter"), ::tr("Legal"), ::tr("A5"), ::tr("A4") });
    m_paper->setSelectedSegment(3);
    m_paper->setAccessibleName(::tr("Paper"));
    m_width->setRange(20 * Theme::unit, 44 * Theme::unit);
    m_width->setValue(300);
    m_width->setAccessibleName(::tr("Width of the control"));
    auto *const name = new QLabel(::tr("W&idth"));
    name->setBuddy(m_width);
    m_widths->setFont(Theme::font(Theme::monospace));
    m_widths->setForegroundRole(QPalette::PlaceholderText);
    connect(m_width, &QSlider::valueChanged, this, &SegmentsPage::showWidths);

    QFrame *const card = makeCard(::tr("Filling any width"));
    layoutOf(card)->addWidget(m_paper, 0, Qt::AlignLeft);
    layoutOf(card)->addWidget(m_widths, 0, Qt::AlignLeft);
    auto *const row = new QHBoxLayout;
    row->setSpacing(Theme::unit);
    row->addWidget(name);
    row->addWidget(m_width, 1);
    layoutOf(card)->addLayout(row);
    layoutOf(card)->addStretch();
    showWidths();
    return card;
}

QFrame *SegmentsPage::makeKnobs()
{
    QFrame *const card = makeCard(::tr("States"));
    const auto addCheck = [&](const QString &text, bool isOn, auto apply) {
        auto *const box = new QCheckBox(text);
        box->setChecked(isOn);
        connect(box, &QCheckBox::toggled, this, apply);
        layoutOf(card)->addWidget(box);
    };
    addCheck(::tr("All controls enabled"), true, [this](bool isOn) {
        for (QWidget *const control :
             std::initializer_list<QWidget *> { m_scope, m_step, m_style, m_alignment, m_paper })
            control->setEnabled(isOn);
    });
    addCheck(::tr("Segment “Year” enabled"), false,
             [this](bool isOn) { m_scope->setEnabled(isOn, year); });
    m_scope->setEnabled(false, year);
    addCheck(::tr("Segment “Week” twelve grid units wide"), false,
             [this](bool isOn) { m_scope->setWidth(isOn ? 12 * Theme::unit : 0, week); });
    layoutOf(card)->addWidget(makeNote(
            ::tr("Keys and clicks ignore disabled segments. A width of 0 fits the contents.")));
    layoutOf(card)->addStretch();
    return card;
}

void SegmentsPage::step(int direction)
{
    switch (m_scope->selectedSegment()) {
    case day:
        m_date = m_date.addDays(direction);
        break;
    case week:
        m_date = m_date.addDays(7 * direction);
        break;
    case month:
        m_date = m_date.addMonths(direction);
        break;
    default:
        m_date = m_date.addYears(direction);
        break;
    }
}

void SegmentsPage::showDates()
{
    const QLocale locale(QLocale::English, QLocale::UnitedKingdom);
    const auto text = [&](const QDate &date, const QString &format) {
        return locale.toString(date, format);
    };
    switch (m_scope->selectedSegment()) {
    case day:
        m_dates->setText(text(m_date, u"dddd, d MMMM yyyy"_s));
        break;
    case week: {
        const QDate monday = m_date.addDays(1 - m_date.dayOfWeek());
        m_dates->setText(text(monday, u"d MMMM"_s) + u" – "_s
                         + text(monday.addDays(6), u"d MMMM yyyy"_s));
        break;
    }
    case month:
        m_dates->setText(text(m_date, u"MMMM yyyy"_s));
        break;
    default:
        m_dates->setText(text(m_date, u"yyyy"_s));
        break;
    }
}

void SegmentsPage::showStyle()
{
    QFont font = Theme::font(Theme::body);
    font.setBold(m_style->isSelectedForSegment(bold));
    font.setItalic(m_style->isSelectedForSegment(italic));
    font.setUnderline(m_style->isSelectedForSegment(underlined));
    m_text->setFont(font);
    const int alignment = m_alignment->tagForSegment(m_alignment->selectedSegment());
    m_text->setAlignment(Qt::Alignment(alignment) | Qt::AlignAbsolute | Qt::AlignTop);
}

void SegmentsPage::showWidths()
{
    m_paper->setFixedWidth(m_width->value());
    QStringList widths;
    for (int i = 0; i < m_paper->segmentCount(); ++i)
        widths.append(QString::number(m_paper->widthForSegment(i)));
    m_widths->setText(::tr("%1 = lines + %2").arg(m_width->value()).arg(widths.join(u" + "_s)));
}

void SegmentsPage::showExample()
{
    m_style->setSelected(true, bold);
    m_style->setSelected(true, italic);
    m_alignment->setSelectedSegment(1);
    m_scope->setFocus(Qt::TabFocusReason);
}

} // namespace

Page *makeSegmentsPage(QWidget *parent)
{
    return new SegmentsPage(parent);
}
