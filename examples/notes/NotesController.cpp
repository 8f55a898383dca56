// SPDX-License-Identifier: MIT
#include "NotesController.h"

#include "ListController.h"
#include "NoteController.h"
#include "UnlockController.h"

#include <pellarvine/Pellarvine/Application.h>
#include <pellarvine/Pellarvine/PassphraseDialog.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSStoryboard.h>

#include <QCloseEvent>
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
    dialog.setExplanation(tr("From now on, nothing else opens %1.").arg(m_notebook->name()));
    if (dialog.exec() == QDialog::Accepted
        && !m_notebook->changePassphrase(dialog.takePassphrase()))
        QMessageBox::warning(view(), tr("Notes"), m_notebook->problem());
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
    if (auto *const application = qobject_cast<Pellarvine::Application *>(qApp)) {
        QAction *const quit = m_menuButton->actions().constLast();
        m_menuButton->insertAction(quit, application->aboutAction());
    }
}

void NotesController::prepareForSegue(NS::StoryboardSegue *segue, QObject *)
{
    qobject_cast<SceneController *>(segue->destinationController())->notebook = m_notebook;
}

// The window stays until everything is saved.
bool NotesController::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close || isSaved())
        return NavigationController::eventFilter(watched, event);
    event->ignore();
    return true;
}

// Or the user gives up what is not.
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
