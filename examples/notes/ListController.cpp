// SPDX-License-Identifier: MIT
#include "ListController.h"

#include "NoteController.h"

#include <pellarvine/Shared/MarkupParser.h>

#include <QMessageBox>
#include <QToolButton>

#include <utility>

bool ListController::hasCurrent() const
{
    return current;
}

QString ListController::hint() const
{
    if (notebook->notes().isEmpty())
        return tr("There are no notes yet.");
    return m_list && m_list->count() == 0 ? tr("No note contains this text.") : QString();
}

void ListController::addNote()
{
    current = notebook->addNote();
    Q_EMIT noteAdded();
}

void ListController::removeNote()
{
    const QString title = m_list->currentItem()->text();
    const auto answer = QMessageBox::question(view(), tr("Delete Note"),
                                              tr("Delete “%1”? This cannot be undone.").arg(title),
                                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    notebook->removeNote(std::exchange(current, nullptr));
    fill();
}

void ListController::viewDidLoad()
{
    // Screen readers need a name for the button that clears the field. Qt gives it none.
    if (auto *const button = m_searchField->findChild<QToolButton *>())
        button->setAccessibleName(tr("Clear"));
    connect(this, &ListController::searchChanged, this, &ListController::fill);
    connect(m_list, &QListWidget::currentItemChanged, this, [this](QListWidgetItem *item) {
        current = item ? item->data(Qt::UserRole).value<Note *>() : nullptr;
        Q_EMIT changed();
    });
    fill();
}

void ListController::viewWillAppear()
{
    m_list->setFocus();
}

bool ListController::shouldPerformSegue(const QString &, QObject *)
{
    return current;
}

void ListController::prepareForSegue(NS::StoryboardSegue *segue, QObject *sender)
{
    SceneController::prepareForSegue(segue, sender);
    if (auto *const next = qobject_cast<NoteController *>(segue->destinationController()))
        next->note = current;
}

// The title of the open note may have changed.
void ListController::prepareForUnwind(NS::StoryboardSegue *)
{
    fill();
}

void ListController::fill()
{
    const Pellarvine::MarkupParser parser;
    const Note *const selected = std::exchange(current, nullptr);
    m_list->clear();
    const QList<Note *> notes = notebook->notes();
    for (Note *const note : notes) {
        if (!note->text().contains(m_search, Qt::CaseInsensitive))
            continue;
        const QString title = parser.stripped(note->title());
        auto *const item = new QListWidgetItem(title.isEmpty() ? tr("Empty note") : title, m_list);
        item->setData(Qt::UserRole, QVariant::fromValue(note));
        if (note == selected)
            m_list->setCurrentItem(item);
    }
    if (!m_list->currentItem())
        m_list->setCurrentRow(0);
    Q_EMIT changed();
}
