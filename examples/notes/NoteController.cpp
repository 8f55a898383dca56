// SPDX-License-Identifier: MIT
#include "NoteController.h"

#include "ListController.h"

void NoteController::prepareForSegue(NS::StoryboardSegue *segue, QObject *sender)
{
    SceneController::prepareForSegue(segue, sender);
    if (auto *const list = qobject_cast<ListController *>(segue->destinationController()))
        list->current = note;
}
