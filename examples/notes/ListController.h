// SPDX-License-Identifier: MIT
#pragma once

#include "SceneController.h"

#include <QListWidget>

/// The list of the notes that have in them what is searched for.
class ListController : public SceneController
{
    Q_OBJECT
    Q_PROPERTY(QString search MEMBER m_search NOTIFY searchChanged)
    Q_PROPERTY(bool hasCurrent READ hasCurrent NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(QListWidget *list MEMBER m_list)

public:
    using SceneController::SceneController;

    bool hasCurrent() const;
    QString hint() const; ///< why the list is empty; empty if it is not
    Q_INVOKABLE void addNote();
    Q_INVOKABLE void removeNote();

    void viewDidLoad() override;
    void viewWillAppear() override;
    bool shouldPerformSegue(const QString &identifier, QObject *sender) override;
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override;
    void prepareForUnwind(NS::StoryboardSegue *segue) override;

    Note *current = nullptr; ///< the note that is selected

Q_SIGNALS:
    void searchChanged();
    void changed();
    void noteAdded(); ///< the storyboard opens it

private:
    void fill();

    QString m_search;
    QListWidget *m_list = nullptr;
};
