// SPDX-License-Identifier: MIT
#include "NotesController.h"

#include "ListController.h"
#include "NoteController.h"
#include "UnlockController.h"

#include <pellarvine/Pellarvine/Application.h>
#include <pellarvine/Pellarvine/PassphraseDialog.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QEvent>
#include <QFontDialog>
#include <QMessageBox>

using namespace Qt::StringLiterals;

std::unique_ptr<NotesController> NotesController::make(Notebook *notebook)
{
    NS::registerClass<NotesController>();
    NS::registerClass<UnlockController>();
    NS::registerClass<ListController>();
    NS::registerClass<NoteController>();
    const auto storyboard = NS::Storyboard::storyboardWithName(u"Notes"_s);
    std::unique_ptr<NotesController> made(
            qobject_cast<NotesController *>(storyboard->instantiateInitialController()));
    made->m_notebook = notebook;
    return made;
}

void NotesController::lock()
{
    if (!isSaved())
        return;
    Q_EMIT locked();
    m_notebook->close();
}

void NotesController::changePassphrase()
{
    using Pellarvine::PassphraseDialog;
    PassphraseDialog dialog(PassphraseDialog::Purpose::create, view());
    dialog.setExplanation(
            tr("From now on, only this passphrase opens %1.").arg(m_notebook->name()));
    if (dialog.exec() == QDialog::Accepted
        && !m_notebook->changePassphrase(dialog.takePassphrase()))
        QMessageBox::warning(view(), tr("Notes"), m_notebook->problem());
}

// The open note shows each font that the user tries.
void NotesController::chooseFont()
{
    QFontDialog dialog(view());
    NS::bind(&dialog, u"currentFont"_s, &m_settings, u"font"_s);
    if (dialog.exec() == QDialog::Accepted)
        m_settings.apply();
    else
        m_settings.reset();
}

void NotesController::quit()
{
    QApplication::closeAllWindows();
}

void NotesController::viewDidLoad()
{
    NavigationController::viewDidLoad();
    setBackInputEnabled(true);
    view()->installEventFilter(this);
    window()->restoreState(m_settings.property("state").toByteArray());
    if (auto *const application = qobject_cast<Pellarvine::Application *>(qApp)) {
        QAction *const quit = m_menuButton->actions().constLast();
        m_menuButton->insertAction(quit, application->aboutAction());
    }
}

void NotesController::prepareForSegue(NS::StoryboardSegue *segue, QObject *)
{
    auto *const next = qobject_cast<SceneController *>(segue->destinationController());
    next->notebook = m_notebook;
    next->settings = &m_settings;
}

// Closes the window after everything is saved, and stores its state.
bool NotesController::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close)
        return NavigationController::eventFilter(watched, event);
    if (!isSaved()) {
        event->ignore();
        return true;
    }
    m_settings.setProperty("state", window()->saveState());
    m_settings.apply();
    return NavigationController::eventFilter(watched, event);
}

NS::Window *NotesController::window()
{
    return qobject_cast<NS::Window *>(view());
}

// Saves, and asks the user if that fails. True if the window may close.
bool NotesController::isSaved()
{
    while (m_notebook->isEdited() && !m_notebook->save()) {
        const auto answer = QMessageBox::warning(view(), tr("Notes"), m_notebook->problem(),
                                                 QMessageBox::Retry | QMessageBox::Discard
                                                         | QMessageBox::Cancel,
                                                 QMessageBox::Retry);
        if (answer != QMessageBox::Retry)
            return answer == QMessageBox::Discard;
    }
    return true;
}
