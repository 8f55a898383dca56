// SPDX-License-Identifier: MIT
#pragma once

#include "SceneController.h"

#include <pellarvine/Pellarvine/MarkupLabel.h>

/// One note: its text, and beside it the text with its markup applied.
class NoteController : public SceneController
{
    Q_OBJECT
    Q_PROPERTY(Note *note MEMBER note CONSTANT)
    Q_PROPERTY(Pellarvine::MarkupLabel *preview MEMBER m_preview)

public:
    using SceneController::SceneController;

    void viewDidLoad() override;
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override;

    Note *note = nullptr; ///< set once, before the view is loaded

private:
    Pellarvine::MarkupLabel *m_preview = nullptr;
};
