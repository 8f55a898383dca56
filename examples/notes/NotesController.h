// SPDX-License-Identifier: MIT
#pragma once

#include "Notebook.h"

#include <pellarvine/Pellarvine/NavigationController.h>
#include <pellarvine/Shared/Settings.h>

#include <QFont>
#include <QToolButton>

namespace NS {
class Window;
}

/// The window: its title bar, and the screens in it.
class NotesController : public Pellarvine::NavigationController
{
    Q_OBJECT
    Q_PROPERTY(Notebook *notebook MEMBER m_notebook CONSTANT)
    Q_PROPERTY(QToolButton *menuButton MEMBER m_menuButton)

public:
    using NavigationController::NavigationController;
    /// Made from the storyboard. The notebook must outlive it.
    static std::unique_ptr<NotesController> make(Notebook *notebook);

    Q_INVOKABLE void lock();
    Q_INVOKABLE void changePassphrase();
    Q_INVOKABLE void chooseFont();
    Q_INVOKABLE void quit();

    void viewDidLoad() override;
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void locked(); ///< triggers the segue to the first screen

private:
    NS::Window *window();
    bool isSaved();

    Notebook *m_notebook = nullptr;
    Pellarvine::Settings m_settings { QStringLiteral("window"),
                                      { { QStringLiteral("state"), QByteArray() },
                                        { QStringLiteral("font"), QFont() } } };
    QToolButton *m_menuButton = nullptr;
};
