// SPDX-License-Identifier: MIT
// The panes of a mail program, separated by the lines of border views, and coloured labels.
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/BorderView.h>
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Pellarvine/SolidView.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Pellarvine::BorderView;
using Pellarvine::FullWidthSegmentedControl;
using Pellarvine::SolidView;

namespace {

constexpr int labelSide = 2 * Theme::unit;

QString tr(const char *text)
{
    return QCoreApplication::translate("BordersPage", text);
}

QLabel *makeLabel(const QString &text, Theme::Role role, bool isDimmed = false)
{
    auto *const label = new QLabel(text);
    label->setFont(Theme::font(role));
    if (isDimmed)
        label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

class BordersPage : public Page
{
public:
    explicit BordersPage(QWidget *parent);

protected:
    void changeEvent(QEvent *event) override;

private:
    QWidget *makeReader();
    BorderView *makeFolders();
    BorderView *makeMail();
    QWidget *makeKnobs();
    void applyPalette(bool usesPalette);
    void placeSides();

    BorderView *m_header = new BorderView;
    BorderView *m_folders = new BorderView;
    BorderView *m_mail = new BorderView;
    BorderView *m_status = new BorderView;
    QGridLayout *m_edges = new QGridLayout;
    QCheckBox *m_left = nullptr;
    QCheckBox *m_right = nullptr;
    QList<SolidView *> m_labels;
    QSlider *m_radius = new QSlider(Qt::Horizontal);
    FullWidthSegmentedControl *m_lines = new FullWidthSegmentedControl;
};

BordersPage::BordersPage(QWidget *parent)
    : Page(::tr("Borders"),
           ::tr("The panes of a mail program. Each is a view with lines along some of its edges. "
                "The labels of the folders are views with one colour."),
           parent)
{
    auto *const row = new QHBoxLayout;
    row->setSpacing(2 * Theme::unit);
    row->addWidget(makeReader(), 1);
    row->addWidget(makeKnobs());
    content()->addLayout(row, 1);
    placeSides();
}

// Borders have fixed sides. Swaps them in a right-to-left layout.
void BordersPage::placeSides()
{
    m_folders->setHasRightBorder(!isRightToLeft());
    m_folders->setHasLeftBorder(isRightToLeft());
    m_edges->addWidget(m_left, 1, isRightToLeft() ? 2 : 0);
    m_edges->addWidget(m_right, 1, isRightToLeft() ? 0 : 2);
}

void BordersPage::changeEvent(QEvent *event)
{
    Page::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        placeSides();
}

QWidget *BordersPage::makeReader()
{
    m_header->setHasBottomBorder(true);
    auto *const header = new QHBoxLayout(m_header);
    header->setContentsMargins(2 * Theme::unit, 0, 2 * Theme::unit, 0);
    header->addWidget(makeLabel(::tr("Garden club"), Theme::strong));
    header->addStretch();
    header->addWidget(makeLabel(::tr("3 unread"), Theme::body, true));
    m_header->setFixedHeight(5 * Theme::unit);

    m_status->setHasTopBorder(true);
    auto *const status = new QHBoxLayout(m_status);
    status->setContentsMargins(2 * Theme::unit, 0, 2 * Theme::unit, 0);
    status->addWidget(makeLabel(::tr("Updated a minute ago"), Theme::body, true));
    m_status->setFixedHeight(4 * Theme::unit);

    auto *const reader = new BorderView;
    reader->setUsesPaletteColors(true);
    reader->setHasLeftBorder(true);
    reader->setHasRightBorder(true);
    reader->setHasTopBorder(true);
    reader->setHasBottomBorder(true);
    auto *const grid = new QGridLayout(reader);
    grid->setContentsMargins(1, 1, 1, 1); // beside the lines
    grid->setSpacing(0);
    grid->addWidget(m_header, 0, 0, 1, 2);
    grid->addWidget(makeFolders(), 1, 0);
    grid->addWidget(makeMail(), 1, 1);
    grid->addWidget(m_status, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    return reader;
}

BorderView *BordersPage::makeFolders()
{
    m_folders->setFixedWidth(22 * Theme::unit);
    auto *const column = new QVBoxLayout(m_folders);
    column->setContentsMargins(2 * Theme::unit, 2 * Theme::unit, 2 * Theme::unit, 2 * Theme::unit);
    column->setSpacing(Theme::unit);
    const std::pair<QRgb, QString> folders[] = {
        { 0xff2f6fde, ::tr("Seed exchange") }, { 0xff2e8b57, ::tr("Beds and plans") },
        { 0xffd9822b, ::tr("Harvest") },       { 0xffb3261e, ::tr("Pests") },
        { 0xff7b5ea7, ::tr("Minutes") },
    };
    for (const auto &[color, name] : folders) {
        auto *const label = new SolidView;
        label->setBackgroundColor(QColor::fromRgb(color));
        label->setFixedSize(labelSide, labelSide);
        m_labels.append(label);
        auto *const row = new QHBoxLayout;
        row->setSpacing(Theme::unit);
        row->addWidget(label);
        row->addWidget(makeLabel(name, Theme::body), 1);
        column->addLayout(row);
    }
    column->addStretch();
    return m_folders;
}

BorderView *BordersPage::makeMail()
{
    auto *const text = makeLabel(
            ::tr("Dear all,\n\nThe yellow courgettes came through the cold week without a mark, so "
                 "I am keeping "
                 "seed from the two at the wall. Whoever would like some: leave an envelope in the "
                 "shed before Sunday.\n\n"
                 "The beans at the path are another matter. Something eats them at night and "
                 "leaves "
                 "the beetroot beside them alone, so it is not the snails. If anybody has a lamp "
                 "with a sensor to lend, I would be glad to know who my guest is.\n\nInge"),
            Theme::body);
    text->setWordWrap(true);
    auto *const column = new QVBoxLayout(m_mail);
    column->setContentsMargins(3 * Theme::unit, 2 * Theme::unit, 3 * Theme::unit, 2 * Theme::unit);
    column->setSpacing(Theme::unit);
    column->addWidget(makeLabel(::tr("Seed from the wall bed"), Theme::strong));
    column->addWidget(makeLabel(::tr("Inge Albrecht, 9:40"), Theme::body, true));
    column->addSpacing(Theme::unit);
    column->addWidget(text);
    column->addStretch();
    return m_mail;
}

QWidget *BordersPage::makeKnobs()
{
    QFrame *const card = makeCard(::tr("Lines of the mail’s pane"));
    card->setFixedWidth(31 * Theme::unit);
    auto *const column = static_cast<QBoxLayout *>(card->layout());
    const auto makeEdge = [this](const QString &name, void (BorderView::*set)(bool)) {
        auto *const box = new QCheckBox(name);
        connect(box, &QCheckBox::toggled, m_mail, set);
        return box;
    };
    m_edges->addWidget(makeEdge(::tr("&Top"), &BorderView::setHasTopBorder), 0, 1);
    m_left = makeEdge(::tr("&Left"), &BorderView::setHasLeftBorder);
    m_right = makeEdge(::tr("&Right"), &BorderView::setHasRightBorder);
    m_edges->addWidget(m_left, 1, 0);
    m_edges->addWidget(m_right, 1, 2);
    m_edges->addWidget(makeEdge(::tr("&Bottom"), &BorderView::setHasBottomBorder), 2, 1);
    column->addLayout(m_edges);
    column->addSpacing(Theme::unit);

    column->addWidget(makeLabel(::tr("Their colour"), Theme::strong));
    m_lines->setLabels({ ::tr("Fine"), ::tr("Strong"), ::tr("Accent") });
    m_lines->setSelectedSegment(0);
    m_lines->setAccessibleName(::tr("Colour of the lines"));
    connect(m_lines, &NS::SegmentedControl::selectedSegmentChanged, this, [this](int segment) {
        const QColor colors[] = { QColor(0, 0, 0, 64), Qt::black,
                                  palette().color(QPalette::Highlight) };
        for (BorderView *const view : { m_header, m_folders, m_mail, m_status })
            view->setBorderColor(colors[segment]);
    });
    column->addWidget(m_lines);
    auto *const palette = new QCheckBox(::tr("The &palette’s colours instead"));
    palette->setChecked(true);
    connect(palette, &QCheckBox::toggled, this, &BordersPage::applyPalette);
    applyPalette(true);
    column->addWidget(palette);
    column->addSpacing(Theme::unit);

    auto *const radiusName = makeLabel(::tr("Corners of the folders’ labels"), Theme::strong);
    radiusName->setBuddy(m_radius);
    column->addWidget(radiusName);
    m_radius->setRange(0, labelSide / 2);
    m_radius->setAccessibleName(radiusName->text());
    connect(m_radius, &QSlider::valueChanged, this, [this](int radius) {
        for (SolidView *const label : std::as_const(m_labels))
            label->setRadius(radius);
    });
    m_radius->setValue(4);
    column->addWidget(m_radius);
    column->addStretch();
    return card;
}

// The default colours are for dark text on white.
void BordersPage::applyPalette(bool usesPalette)
{
    m_lines->setEnabled(!usesPalette);
    QPalette onWhite;
    onWhite.setColor(QPalette::WindowText, QColor(0x1d, 0x21, 0x29));
    onWhite.setColor(QPalette::PlaceholderText, QColor(0x5f, 0x67, 0x75));
    for (BorderView *const view : { m_header, m_folders, m_mail, m_status }) {
        view->setUsesPaletteColors(usesPalette);
        for (QLabel *const label : view->findChildren<QLabel *>())
            label->setPalette(usesPalette ? QPalette() : onWhite);
    }
}

} // namespace

Page *makeBordersPage(QWidget *parent)
{
    return new BordersPage(parent);
}
