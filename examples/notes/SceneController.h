// SPDX-License-Identifier: MIT
#pragma once

#include "Notebook.h"

#include <pellarvine/Pellarvine/NavigationItemViewController.h>
#include <pellarvine/Platform/NSStoryboardSegue.h>

/// A screen. It gets the notebook and the settings, and passes them to the next screen.
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

    // Set once, before the view is loaded.
    Notebook *notebook = nullptr;
    QObject *settings = nullptr;
};
