// SPDX-License-Identifier: MIT
#include "UnlockController.h"

bool UnlockController::isReady() const
{
    return !m_passphrase.isEmpty() && (!m_isNew || m_repetition == m_passphrase);
}

QString UnlockController::explanation() const
{
    return m_isNew ? tr("This is a new notebook. Choose a passphrase, and remember it: only the "
                        "passphrase opens the notebook.")
                   : tr("Type the passphrase of %1.").arg(notebook->name());
}

void UnlockController::unlock()
{
    if (!isReady())
        return;
    if (m_isNew ? notebook->create(m_passphrase) : notebook->open(m_passphrase)) {
        Q_EMIT unlocked();
        return;
    }
    m_passphraseField->setFocus();
    m_passphraseField->selectAll();
}

void UnlockController::loadView()
{
    m_isNew = !notebook->exists(); // a binding of the form reads it
    SceneController::loadView();
}

void UnlockController::viewWillAppear()
{
    m_passphraseField->setFocus();
}
