// SPDX-License-Identifier: MIT
#include "NoteController.h"

#include "ListController.h"

void NoteController::viewDidLoad()
{
    // Not a binding: the label's value is the text without its markup.
    connect(note, &Note::textChanged, m_preview, &Pellarvine::MarkupLabel::setMarkupStringValue);
    m_preview->setMarkupStringValue(note->text());
}

void NoteController::prepareForSegue(NS::StoryboardSegue *segue, QObject *sender)
{
    SceneController::prepareForSegue(segue, sender);
    if (auto *const list = qobject_cast<ListController *>(segue->destinationController()))
        list->current = note;
}
