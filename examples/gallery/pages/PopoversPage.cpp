// SPDX-License-Identifier: MIT
// Popovers of a file manager: the error in a name, the result of a
// button, and a filter. A sample of each edge is beside them.
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/PopoverMessage.h>
#include <pellarvine/Platform/NSMutableAttributedString.h>
#include <pellarvine/Platform/NSPopover.h>
#include <pellarvine/Platform/NSTextField.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using NS::Popover;
using NS::RectEdge;
using Pellarvine::PopoverMessage;

namespace {

// The contents of a sample: the name of its edge.
class SampleController : public NS::ViewController
{
public:
    explicit SampleController(const QString &text)
        : m_text(text)
    { }

protected:
    void loadView() override
    {
        auto *const label = new QLabel(m_text);
        label->setContentsMargins(2 * Theme::unit, Theme::unit, 2 * Theme::unit, Theme::unit);
        setView(label);
    }

private:
    QString m_text;
};

class FilterController : public NS::ViewController
{
public:
    FilterController()
    {
        setTitle(tr("Filter"));
        m_labels.setBehavior(Popover::Behavior::transient);
        m_labels.setContentViewController(&m_labelsController);
    }

    void setStaysInWindow(bool stays) { m_labels.setStaysInWindow(stays); }
    void showLabels() { m_labels.showRelativeToRect({}, m_more, RectEdge::maxX); }

protected:
    void loadView() override
    {
        auto *const panel = new QWidget;
        auto *const form = new QGridLayout(panel);
        form->setContentsMargins(2 * Theme::unit, 2 * Theme::unit, 2 * Theme::unit,
                                 2 * Theme::unit);
        form->setSpacing(Theme::unit);
        auto *const name = new QLineEdit;
        name->setPlaceholderText(tr("Any"));
        auto *const nameLabel = new QLabel(tr("&Name"));
        nameLabel->setBuddy(name);
        form->addWidget(nameLabel, 0, 0);
        form->addWidget(name, 0, 1);
        auto *const kind = new QComboBox;
        kind->addItems({ tr("Everything"), tr("Folders"), tr("Pictures"), tr("Texts") });
        auto *const kindLabel = new QLabel(tr("&Kind"));
        kindLabel->setBuddy(kind);
        form->addWidget(kindLabel, 1, 0);
        form->addWidget(kind, 1, 1);
        m_more = new QPushButton(tr("&Labels…"));
        m_labels.setOpener(m_more);
        connect(m_more, &QPushButton::clicked, this, &FilterController::showLabels);
        form->addWidget(m_more, 2, 0, 1, 2);
        setView(panel);

        auto *const labels = new QListWidget;
        labels->setFrameShape(QFrame::NoFrame);
        labels->setAccessibleName(tr("Labels"));
        for (const QString &label : { tr("Urgent"), tr("Waiting"), tr("Private") }) {
            auto *const item = new QListWidgetItem(label, labels);
            item->setCheckState(Qt::Unchecked);
        }
        labels->setFixedSize(16 * Theme::unit, 10 * Theme::unit);
        auto *const frame = new QWidget;
        auto *const around = new QVBoxLayout(frame);
        around->setContentsMargins(Theme::unit, Theme::unit, Theme::unit, Theme::unit);
        around->addWidget(labels);
        m_labelsController.setView(frame);
    }

private:
    QPushButton *m_more = nullptr;
    NS::ViewController m_labelsController { this };
    Popover m_labels;
};

class PopoversPage : public Page
{
public:
    explicit PopoversPage(QWidget *parent);
    void showExample() override;

private:
    QFrame *makeFolder();
    QFrame *makeEdges();
    QFrame *makeControls();
    void checkName();

    QList<Popover *> m_popovers;
    QList<QPushButton *> m_edges;
    FilterController *m_filterController = nullptr;
    Popover *m_filter = nullptr;
    QLineEdit *m_name = nullptr;
    QToolButton *m_filterButton = nullptr;
    QCheckBox *m_stays = new QCheckBox(tr("Inside of the &window"));
};

PopoversPage::PopoversPage(QWidget *parent)
    : Page(tr("Popovers"),
           tr("A click or a key outside closes a transient popover, and has its usual effect too. "
              "Near the edge of the screen, a bubble moves along its view or to another side."),
           parent)
{
    auto *const row = new QHBoxLayout;
    row->setSpacing(2 * Theme::unit);
    row->addWidget(makeFolder(), 1);
    row->addWidget(makeEdges(), 1);
    content()->addLayout(row, 1);
    content()->addWidget(makeControls());
}

QFrame *PopoversPage::makeFolder()
{
    QFrame *const card = makeCard(tr("New folder"));
    m_name = new QLineEdit;
    m_name->setPlaceholderText(tr("Name of the folder"));
    m_name->setAccessibleName(tr("Name of the folder"));
    auto *const help = new QToolButton;
    help->setText(u"?"_s);
    help->setAccessibleName(tr("Which names can be used"));
    auto *const create = new QPushButton(tr("&Create"));
    m_filterButton = new QToolButton;
    m_filterButton->setText(tr("&Filter…"));

    auto *const nameRow = new QHBoxLayout;
    nameRow->setSpacing(Theme::unit);
    nameRow->addWidget(m_name, 1);
    nameRow->addWidget(help);
    auto *const buttonRow = new QHBoxLayout;
    buttonRow->setSpacing(Theme::unit);
    buttonRow->addWidget(m_filterButton);
    buttonRow->addStretch();
    buttonRow->addWidget(create);
    auto *const note = new NS::TextField;
    note->setStringValue(tr("Try the name “Pictures”, or one with a slash, and press Return."));
    note->setTextColor(palette().color(QPalette::PlaceholderText));
    auto *const layout = static_cast<QVBoxLayout *>(card->layout());
    layout->addStretch(2);
    layout->addLayout(nameRow);
    layout->addWidget(note);
    layout->addLayout(buttonRow);
    layout->addStretch(3);

    connect(m_name, &QLineEdit::returnPressed, this, &PopoversPage::checkName);
    connect(create, &QPushButton::clicked, this, [this, create] {
        const QString name = m_name->text();
        if (name.isEmpty())
            PopoverMessage::showMessage(tr("Type a name first."), m_name);
        else
            PopoverMessage::showMarkupMessage(tr("**Created** in `~/Documents`"), create);
    });
    connect(help, &QToolButton::clicked, this, [help] {
        NS::MutableAttributedString text(tr("Everything but "));
        text.append(NS::AttributedString(
                u"/"_s, { { NS::FontAttributeName, Theme::font(Theme::monospace) } }));
        text.append(NS::AttributedString(
                tr(", which separates folders. Upper and lower case differ.")));
        PopoverMessage::showAttributedMessage(text, help);
    });

    m_filterController = new FilterController;
    m_filter = new Popover(this);
    m_filter->setContentViewController(m_filterController);
    m_filter->setOpener(m_filterButton);
    m_popovers.append(m_filter);
    connect(m_filterButton, &QToolButton::clicked, this,
            [this] { m_filter->showRelativeToRect({}, m_filterButton, RectEdge::minY); });
    return card;
}

QFrame *PopoversPage::makeEdges()
{
    QFrame *const card = makeCard(tr("On every edge"));
    auto *const column = new QVBoxLayout;
    column->setSpacing(2 * Theme::unit);
    const struct
    {
        QString name;
        QString text;
        RectEdge edge;
    } samples[] = {
        { u"maxY"_s, tr("Above"), RectEdge::maxY },
        { u"minX"_s, tr("At the left"), RectEdge::minX },
        { u"maxX"_s, tr("At the right"), RectEdge::maxX },
        { u"minY"_s, tr("Below"), RectEdge::minY },
    };
    column->addStretch();
    for (const auto &sample : samples) {
        auto *const button = new QPushButton(sample.name);
        auto *const popover = new Popover(this);
        popover->setContentViewController(new SampleController(sample.text));
        popover->setOpener(button);
        connect(button, &QPushButton::clicked, popover, [popover, button, edge = sample.edge] {
            popover->showRelativeToRect({}, button, edge);
        });
        column->addWidget(button, 0, Qt::AlignHCenter);
        m_edges.append(button);
        m_popovers.append(popover);
    }
    column->addStretch();
    static_cast<QVBoxLayout *>(card->layout())->addLayout(column, 1);
    return card;
}

QFrame *PopoversPage::makeControls()
{
    QFrame *const card = makeCard({});
    auto *const row = new QHBoxLayout;
    row->setSpacing(2 * Theme::unit);
    auto *const behavior = new QComboBox;
    behavior->addItem(tr("Transient"), QVariant::fromValue(Popover::Behavior::transient));
    behavior->addItem(tr("Semitransient"), QVariant::fromValue(Popover::Behavior::semitransient));
    behavior->addItem(tr("Closed by the program or Esc"),
                      QVariant::fromValue(Popover::Behavior::applicationDefined));
    auto *const name = new QLabel(tr("&Behaviour"));
    name->setBuddy(behavior);
    row->addWidget(name);
    row->addWidget(behavior);
    row->addWidget(m_stays);
    row->addStretch();
    static_cast<QVBoxLayout *>(card->layout())->addLayout(row);

    const auto apply = [this, behavior] {
        for (Popover *const popover : std::as_const(m_popovers)) {
            popover->setBehavior(behavior->currentData().value<Popover::Behavior>());
            popover->setStaysInWindow(m_stays->isChecked());
        }
        m_filterController->setStaysInWindow(m_stays->isChecked());
    };
    connect(behavior, &QComboBox::currentIndexChanged, this, apply);
    connect(m_stays, &QCheckBox::toggled, this, apply);
    apply();
    return card;
}

void PopoversPage::checkName()
{
    const QString name = m_name->text();
    if (name.compare(tr("Pictures"), Qt::CaseInsensitive) == 0)
        PopoverMessage::showMessage(
                tr("A folder of this name exists. Choose another name, or open that folder."),
                m_name);
    else if (name.contains(u'/'))
        PopoverMessage::showMarkupMessage(tr("A name cannot contain **/**."), m_name);
}

void PopoversPage::showExample()
{
    m_stays->setChecked(true); // so that it is in the picture of the window
    for (Popover *const popover : std::as_const(m_popovers))
        popover->setBehavior(Popover::Behavior::applicationDefined);
    for (QPushButton *const button : std::as_const(m_edges))
        button->click();
    m_name->setText(tr("Pictures"));
    m_filterButton->click();
    m_filterController->showLabels();
}

} // namespace

Page *makePopoversPage(QWidget *parent)
{
    return new PopoversPage(parent);
}
