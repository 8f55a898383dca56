// SPDX-License-Identifier: MIT
#pragma once

#include "Notebook.h"

#include <pellarvine/Pellarvine/NavigationItemViewController.h>
#include <pellarvine/Platform/NSStoryboardSegue.h>

/// A screen. It is given the notebook and the settings, and gives them to the screen that follows.
class SceneController : public Pellarvine::NavigationItemViewController
{
    Q_OBJECT
    Q_PROPERTY(Notebook *notebook MEMBER notebook CONSTANT)
    Q_PROPERTY(QObject *settings MEMBER settings CONSTANT)

public:
    using NavigationItemViewController::NavigationItemViewController;

    void prepareForSegue(NS::StoryboardSegue *segue, QObject *) override
    {
        auto *const next = qobject_cast<SceneController *>(segue->destinationController());
        next->notebook = notebook;
        next->settings = settings;
    }

    // Set before the view is loaded, and not again.
    Notebook *notebook = nullptr;
    QObject *settings = nullptr;
};
