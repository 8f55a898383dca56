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

/// Takes entries, one by one, and checks them; then connects, all or nothing.
class NibConnector
{
public:
    /// `fileName` is for messages, and may be empty.
    NibConnector(QObject *owner, QHash<QString, QObject *> objects, QString fileName);

    /// Takes the entries in one value of that property. Throws NibError.
    void add(QObject *object, const QString &property, const NibText &value);

    /// From now on takes entries that begin at an owner that is not there: they are compared with
    /// its class, unless that is null, and not connected.
    void checkOwnerEntries(const QMetaObject *ownerClass);

    /// Connects. Throws NibError, with every outlet and binding that was made undone.
    void connect();

    /// Empties the outlets that connect() set.
    void undo();

private:
    struct Path
    {
        QObject *root = nullptr;
        QString keyPath;
    };
    struct Entry
    {
        QObject *object;
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

    // All of these throw NibFault.
    void take(const Entry &entry, const NibOutlet &outlet);
    void take(const Entry &entry, const NibBinding &binding);
    void take(const Entry &entry, const NibAction &action);
    void take(const Entry &entry, const NibConstraint &constraint);
    Path path(const Entry &entry, const NibPath &path) const;
    QWidget *item(const Entry &entry, const QString &name) const;
    void setOutlet(const Outlet &outlet);
    void bindValue(const ValueBinding &binding);
    static void bindList(const ValueBinding &binding);

    // Makes a NibError of a NibFault in `step`.
    template <typename Step>
    void run(const Entry &entry, Step step) const;

    QObject *m_owner;
    bool m_checksOwnerEntries = false;
    const QMetaObject *m_ownerClass = nullptr;
    QHash<QString, QObject *> m_objects;
    QString m_fileName;
    QList<Outlet> m_outlets;
    QList<ValueBinding> m_bindings;
    QList<Action> m_actions;
    QList<std::shared_ptr<NS::LayoutConstraint>> m_constraints;
    QList<std::function<void()>> m_undo;
};

/// The signal and the slot of those names, with the arguments that go together: in parentheses, or
/// else the most that they share. Throws NibFault.
std::pair<QMetaMethod, QMetaMethod> signalAndSlot(const QMetaObject *sender, const QString &signal,
                                                  const QMetaObject *receiver, const QString &slot);

} // namespace Pellarvine::detail
