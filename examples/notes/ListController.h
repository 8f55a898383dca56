// SPDX-License-Identifier: MIT
#pragma once

#include "SceneController.h"

#include <QLineEdit>
#include <QListWidget>

/// The list of the notes that contain the searched text.
class ListController : public SceneController
{
    Q_OBJECT
    Q_PROPERTY(QString search MEMBER m_search NOTIFY searchChanged)
    Q_PROPERTY(bool hasCurrent READ hasCurrent NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(QLineEdit *searchField MEMBER m_searchField)
    Q_PROPERTY(QListWidget *list MEMBER m_list)

public:
    using SceneController::SceneController;

    bool hasCurrent() const;
    QString hint() const; ///< the reason for an empty list
    Q_INVOKABLE void addNote();
    Q_INVOKABLE void removeNote();

    void viewDidLoad() override;
    void viewWillAppear() override;
    bool shouldPerformSegue(const QString &identifier, QObject *sender) override;
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override;
    void prepareForUnwind(NS::StoryboardSegue *segue) override;

    Note *current = nullptr; ///< the selected note

Q_SIGNALS:
    void searchChanged();
    void changed();
    void noteAdded(); ///< triggers the segue that opens it

private:
    void fill();

    QString m_search;
    QLineEdit *m_searchField = nullptr;
    QListWidget *m_list = nullptr;
};
