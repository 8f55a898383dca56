// SPDX-License-Identifier: MIT
// Release notes, which wrap when the splitter moves, and a report that a tester writes.
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/MarkupLabel.h>
#include <pellarvine/Platform/NSMutableAttributedString.h>
#include <pellarvine/Platform/NSTextField.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSpinBox>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Pellarvine::MarkupLabel;

namespace {

class LabelsPage : public Page
{
public:
    explicit LabelsPage(QWidget *parent);
    void showExample() override;

private:
    QWidget *makeNotes();
    QWidget *makeReport();
    QWidget *makeControls();

    QList<MarkupLabel *> m_notes;
    QSplitter *m_splitter = new QSplitter;
    NS::TextField *m_details = nullptr;
};

LabelsPage::LabelsPage(QWidget *parent)
    : Page(tr("Labels"),
           tr("Drag the bar between the release notes and the report. Each text wraps at the new "
              "width and gets the height that it needs."),
           parent)
{
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(2 * Theme::unit);
    if (isRightToLeft())
        m_splitter->setContentsMargins(0, 0, 1, 0); // Qt mirrors it one pixel too far
    m_splitter->addWidget(makeNotes());
    m_splitter->addWidget(makeReport());
    m_splitter->setSizes({ 360, 360 });
    content()->addWidget(m_splitter, 1);
    content()->addWidget(makeControls());
}

// One markup label for each paragraph.
QWidget *LabelsPage::makeNotes()
{
    QFrame *const card = makeCard(tr("What is new in 2.4"));
    auto *const column = new QWidget;
    auto *const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Theme::unit);
    const QStringList paragraphs {
        tr("**Exports keep every layer.** A file that was written by 2.3 opens as it did; save it "
           "once to bring it up to date."),
        tr("{#1e8449|New:} hold `Shift` while you drag a corner to keep the //ratio// of its "
           "sides."),
        tr("{#b9770e|Changed:} ~~F9~~ `Ctrl+E` starts an export, on every platform."),
        tr("A path such as `/home/mira/Pictures/Harbour/2026-11-24_evening_panorama_final.tiff` "
           "wraps where it has to."),
    };
    for (const QString &markup : paragraphs) {
        auto *const label = new MarkupLabel;
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        label->setMarkup(markup);
        layout->addWidget(label);
        m_notes.append(label);
    }
    layout->addStretch();
    auto *const scroller = new QScrollArea;
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->setWidget(column);
    scroller->viewport()->setAutoFillBackground(false);
    column->setAutoFillBackground(false); // the background of the card is visible
    card->layout()->addWidget(scroller);
    card->setMinimumWidth(20 * Theme::unit);
    return card;
}

QWidget *LabelsPage::makeReport()
{
    QFrame *const card = makeCard(tr("Report a problem"));
    card->setMinimumWidth(28 * Theme::unit);
    auto *const form = new QGridLayout;
    form->setHorizontalSpacing(2 * Theme::unit);
    form->setVerticalSpacing(Theme::unit);
    form->setColumnStretch(1, 1);
    const auto add = [&](const QString &name, NS::TextField *field) {
        auto *const label = new QLabel(name);
        label->setBuddy(field);
        const int row = form->rowCount();
        if (field->isEditable() && field->wraps()) {
            // Beside the first line of the text.
            label->setContentsMargins(
                    0, (field->sizeHint().height() - label->sizeHint().height()) / 2, 0, 0);
            form->addWidget(label, row, 0, Qt::AlignTop);
        } else {
            form->addWidget(label, row, 0);
        }
        form->addWidget(field, row, 1);
    };

    auto *const summary = new NS::TextField;
    summary->setWraps(false);
    summary->setEditable(true);
    summary->setBezeled(true);
    summary->setDrawsBackground(true);
    summary->setPlaceholderString(tr("One line that says it"));
    add(tr("&Summary"), summary);

    m_details = new NS::TextField;
    m_details->setEditable(true);
    m_details->setBezeled(true);
    m_details->setDrawsBackground(true);
    m_details->setPlaceholderString(tr("What you did, and what happened"));
    add(tr("&Details"), m_details);

    auto *const build = new NS::TextField;
    build->setStringValue(u"2.4.1 (8f3c2ab)"_s);
    build->setFont(Theme::font(Theme::monospace));
    build->setSelectable(true);
    build->setToolTip(tr("Select to copy"));
    add(tr("Build"), build);

    auto *const file = new NS::TextField;
    file->setStringValue(u"/home/mira/Pictures/Harbour/2026-11-24_evening_panorama_final.tiff"_s);
    file->setWraps(false);
    file->setElideMode(Qt::ElideMiddle);
    add(tr("File"), file);

    auto *const privacy = new NS::TextField;
    NS::MutableAttributedString text(tr("Nothing is sent without your consent. "));
    text.append(NS::AttributedString(
            tr("What a report contains"),
            { { NS::LinkAttributeName, QUrl(u"https://example.org/reports"_s) } }));
    privacy->setAttributedStringValue(text);
    privacy->setOpensLinks(false);
    connect(privacy, &NS::TextField::linkActivated, privacy,
            [privacy](const QUrl &link) { privacy->setToolTip(link.toString()); });

    auto *const layout = static_cast<QVBoxLayout *>(card->layout());
    layout->addLayout(form);
    layout->addWidget(privacy);
    layout->addStretch();
    return card;
}

QWidget *LabelsPage::makeControls()
{
    QFrame *const card = makeCard({});
    auto *const row = new QHBoxLayout;
    row->setSpacing(2 * Theme::unit);
    auto *const alignment = new QComboBox;
    alignment->addItem(tr("Leading"), int(Qt::AlignLeft));
    alignment->addItem(tr("Centred"), int(Qt::AlignHCenter));
    alignment->addItem(tr("Trailing"), int(Qt::AlignRight));
    auto *const lines = new QSpinBox;
    lines->setRange(0, 9);
    lines->setSpecialValueText(tr("All"));
    auto *const selectable = new QCheckBox(tr("Se&lectable"));
    const auto addNamed = [&](const QString &name, QWidget *widget) {
        auto *const label = new QLabel(name);
        label->setBuddy(widget);
        row->addWidget(label);
        row->addWidget(widget);
    };
    addNamed(tr("Notes &aligned"), alignment);
    addNamed(tr("&Lines of each"), lines);
    row->addWidget(selectable);
    row->addStretch();
    static_cast<QVBoxLayout *>(card->layout())->addLayout(row);

    connect(alignment, &QComboBox::currentIndexChanged, this, [this, alignment] {
        for (MarkupLabel *const label : std::as_const(m_notes))
            label->setAlignment(Qt::Alignment(alignment->currentData().toInt()) | Qt::AlignTop);
    });
    connect(lines, &QSpinBox::valueChanged, this, [this](int count) {
        for (MarkupLabel *const label : std::as_const(m_notes))
            label->setMaximumNumberOfLines(count);
    });
    connect(selectable, &QCheckBox::toggled, this, [this](bool isSelectable) {
        for (MarkupLabel *const label : std::as_const(m_notes))
            label->setSelectable(isSelectable);
    });
    return card;
}

void LabelsPage::showExample()
{
    m_splitter->setSizes({ 280, 440 });
    m_details->setStringValue(tr("Opened the panorama, dragged the lower corner, let go outside of "
                                 "the window.\nThe corner stayed where it was."));
    m_details->setFocus();
}

} // namespace

Page *makeLabelsPage(QWidget *parent)
{
    return new LabelsPage(parent);
}
