// SPDX-License-Identifier: MIT
#pragma once

#include "SceneController.h"

/// One note: its text, and beside it the text with its markup applied.
class NoteController : public SceneController
{
    Q_OBJECT
    Q_PROPERTY(Note *note MEMBER note CONSTANT)

public:
    using SceneController::SceneController;

    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override;

    Note *note = nullptr; ///< set once, before the view is loaded
};
