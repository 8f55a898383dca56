// SPDX-License-Identifier: MIT
// Not API: connects the objects of an interface file as their entries say.
#pragma once

#include "Layout/NSLayoutConstraint.h"
#include "Scenes/NibEntry.h"
#include "Scenes/NibFile.h"

#include <QHash>
#include <QList>
#include <QMetaMethod>
#include <QPointer>

#include <functional>
#include <memory>
#include <utility>

namespace Pellarvine::detail {

class NibTexts;

/// Checks entries one by one, and then connects all or none.
class NibConnector
{
public:
    /// `fileName` is for messages, and may be empty. Bound properties are removed from `texts`,
    /// which may be null.
    NibConnector(QObject *owner, QHash<QString, QObject *> objects, QString fileName,
                 NibTexts *texts);

    /// Checks the entries in one value of that property. Throws NibError.
    void add(QObject *object, const QString &property, const NibText &value);

    /// From now on there is no owner: entries that begin with it are checked against its class,
    /// unless that is null, and not connected. Constraints that contradict others are errors then,
    /// not only warnings.
    void checkOwnerEntries(const QMetaObject *ownerClass);

    /// Connects the entries. After a NibError, all outlets and bindings are undone.
    void connect();

    /// Empties the outlets that connect() set.
    void undo();

private:
    struct Path
    {
        QPointer<QObject> root;
        QString keyPath;
    };
    // The setters of outlets may delete objects. Their entries end then.
    struct Entry
    {
        QPointer<QObject> object;
        NibText text;
    };
    struct Outlet : Entry
    {
        Path path;
    };
    struct ValueBinding : Entry
    {
        QString key;
        Path path;
        NibBindingOptions options;
    };
    struct Action : Entry
    {
        QMetaMethod signal;
        QPointer<QObject> receiver;
        QMetaMethod slot;
    };

    struct Constraint : Entry
    {
        std::shared_ptr<NS::LayoutConstraint> made;
    };

    // All of these throw NibFault.
    void take(const Entry &entry, const NibOutlet &outlet);
    void take(const Entry &entry, const NibBinding &binding);
    void take(const Entry &entry, const NibAction &action);
    void take(const Entry &entry, const NibConstraint &constraint);
    Path path(const Entry &entry, const NibPath &path) const;
    QWidget *item(const Entry &entry, const QString &name) const;
    void activateConstraints() const;
    void setOutlet(const Outlet &outlet);
    void bindValue(const ValueBinding &binding);
    static void bindList(const ValueBinding &binding);

    // Converts a NibFault of `step` to a NibError.
    template <typename Step>
    void run(const Entry &entry, Step step) const;

    QObject *m_owner;
    bool m_checksOwnerEntries = false;
    const QMetaObject *m_ownerClass = nullptr;
    QHash<QString, QObject *> m_objects;
    QString m_fileName;
    NibTexts *m_texts;
    QList<Outlet> m_outlets;
    QList<ValueBinding> m_bindings;
    QList<Action> m_actions;
    QList<Constraint> m_constraints;
    QList<std::function<void()>> m_undo;
};

/// The signal and the slot of those names. Their arguments are those in parentheses, or as many as
/// both have. Throws NibFault.
std::pair<QMetaMethod, QMetaMethod> signalAndSlot(const QMetaObject *sender, const QString &signal,
                                                  const QMetaObject *receiver, const QString &slot);

} // namespace Pellarvine::detail
