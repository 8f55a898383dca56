// SPDX-License-Identifier: MIT
#pragma once

#include "SceneController.h"

#include <QLineEdit>

/// The first screen. It asks for the passphrase, twice for a new notebook.
class UnlockController : public SceneController
{
    Q_OBJECT
    Q_PROPERTY(QString passphrase MEMBER m_passphrase NOTIFY edited)
    Q_PROPERTY(QString repetition MEMBER m_repetition NOTIFY edited)
    Q_PROPERTY(bool isReady READ isReady NOTIFY edited)
    Q_PROPERTY(bool isNew MEMBER m_isNew CONSTANT)
    Q_PROPERTY(QString explanation READ explanation CONSTANT)
    Q_PROPERTY(QLineEdit *passphraseField MEMBER m_passphraseField)

public:
    using SceneController::SceneController;

    bool isReady() const; ///< whether enough has been typed
    QString explanation() const;
    Q_INVOKABLE void unlock();

    void loadView() override;
    void viewWillAppear() override;

Q_SIGNALS:
    void edited();
    void unlocked(); ///< triggers the segue to the list

private:
    QString m_passphrase;
    QString m_repetition;
    bool m_isNew = false;
    QLineEdit *m_passphraseField = nullptr;
};
