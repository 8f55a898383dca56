// SPDX-License-Identifier: MIT
// Not API: connects the objects of an interface file as their entries say.
#pragma once

#include "Layout/NSLayoutConstraint.h"
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
    /// Makes an error at a place in the file.
    using ErrorMaker = std::function<NS::NibError(NS::NibError::Reason, const NibText &place,
                                                  const QString &object, const QString &name,
                                                  const QString &message)>;

    NibConnector(QObject *owner, QHash<QString, QObject *> objects, ErrorMaker error);

    /// Whether a dynamic property of that name holds entries.
    static bool holdsEntries(const QString &property);

    /// Takes the entries in one string of that property, each on a line of its own. Throws NibError.
    void add(QObject *object, const QString &property, const NibText &entries);

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
        NibText place; ///< its text is the whole entry
    };
    struct Outlet : Entry
    {
        Path path;
    };
    struct ValueBinding : Entry
    {
        QString key;
        Path path;
    };
    struct Action : Entry
    {
        QMetaMethod signal;
        QPointer<QObject> receiver;
        QMetaMethod slot;
    };

    void addOutlet(const Entry &entry);
    void addBinding(const Entry &entry);
    void addAction(const Entry &entry);
    void addConstraint(const Entry &entry);

    Path path(const Entry &entry, const QString &text) const;
    QWidget *item(const Entry &entry, const QString &name) const;
    void setOutlet(const Outlet &outlet);
    void bindValue(const ValueBinding &binding);

    [[noreturn]] void fail(const Entry &entry, NS::NibError::Reason reason, const QString &name,
                           const QString &message) const;

    QObject *m_owner;
    QHash<QString, QObject *> m_objects;
    ErrorMaker m_error;
    QList<Outlet> m_outlets;
    QList<ValueBinding> m_bindings;
    QList<Action> m_actions;
    QList<std::shared_ptr<NS::LayoutConstraint>> m_constraints;
    QList<std::function<void()>> m_undo;
};

/// Why there is no such connection.
struct MissingMethod
{
    QString name; ///< the signal or the slot
    QString message;
};

/// The signal and the slot of those names, with the arguments that go together: in parentheses, or
/// else the most that they share. Throws MissingMethod.
std::pair<QMetaMethod, QMetaMethod> signalAndSlot(const QObject *sender, const QString &signal,
                                                  const QObject *receiver, const QString &slot);

/// Calls the object's own awakeFromNib(), if it declares one. What that throws is passed on.
void awaken(QObject *object);

} // namespace Pellarvine::detail
