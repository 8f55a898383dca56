// SPDX-License-Identifier: MIT
// Not API: the bindings of one control.
#pragma once

#include "Base/Global.h"

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <map>
#include <memory>

namespace Pellarvine::detail {

/// A binding of one property of a control.
class ControlBinding
{
public:
    /// The limit of nested passes. Without it, two sides that change each value that they get would
    /// write to each other without end.
    static constexpr int deepestExchange = 16;

    ControlBinding() = default;
    ControlBinding(const ControlBinding &) = delete;
    ControlBinding &operator=(const ControlBinding &) = delete;
    virtual ~ControlBinding() = default;

    /// Writes the first value and begins to observe the model. Throws KeyValueException, and what
    /// the program's functions throw.
    virtual void start() = 0;

    /// Stops the binding. A pass that is running keeps the object alive until it returns.
    virtual void end() = 0;

    /// Called after end() if the control lives on: removes what marks the control's value.
    virtual void unmark() { }

    /// For NS::infoForBinding().
    virtual QVariantMap info() const = 0;

    /// Called after another binding has written to the control. A new range, for example, may let
    /// the control show a value that it could not hold before.
    virtual void siblingShown() { }

    /// Called when the locale of a widget has changed, after ControlBindings::watchLocale().
    virtual void localeChanged() { }

    /// Whether the control is to be disabled because an object on the model's path is null.
    virtual bool lacksSelection() const { return false; }

    /// For NS::commitEditing(): writes the edit. False if it is refused.
    virtual bool commit() { return true; }

    /// Shows the model's value again in place of the user's edit.
    virtual void discard() { }
};

/// The bindings of a control. The object is a child of the control.
class PELLARVINE_PRIVATE_EXPORT ControlBindings : public QObject
{
public:
    /// The bindings of a control, or null if it has none.
    static ControlBindings *of(const QObject *control);
    /// The same; makes the object if the control has none.
    static ControlBindings &made(QObject *control);

    ~ControlBindings() override;

    /// Ends an earlier binding of that name and starts `binding`. Throws what start() throws; then
    /// the name has no binding.
    void add(const QString &name, const std::shared_ptr<ControlBinding> &binding);
    void remove(const QString &name);
    ControlBinding *find(const QString &name) const;

    /// Commits all bindings. False if one of them refuses.
    bool commit();

    /// Calls `write`, which writes the model's value to the control, and then siblingShown() of the
    /// other bindings. Changes that the control reports meanwhile are not edits of the user. The
    /// call may destroy this object.
    void show(const ControlBinding *binding, const std::function<void()> &write);
    bool isShowing() const { return *m_showing > 0; }

    /// Calls localeChanged() of the bindings from now on.
    void watchLocale();
    bool eventFilter(QObject *control, QEvent *event) override;

    /// Called with the value of a binding of `enabled`. If the control is disabled because a
    /// binding lacks its selection, remembers the value for later and returns true. Otherwise the
    /// caller writes it.
    bool keepEnabled(const QVariant &enabled);
    /// Disables the widget if one of its bindings lacks a selection, otherwise restores `enabled`.
    void selectionChanged();

private:
    explicit ControlBindings(QObject *control);

    std::map<QString, std::shared_ptr<ControlBinding>> m_byName;
    std::shared_ptr<int> m_showing = std::make_shared<int>(0); // running calls of show()
    bool m_isRefreshing = false; // siblingShown() is being called, and must not call itself
    bool m_watchesLocale = false;
    QVariant m_enabled; // restored later; invalid unless a binding lacks a selection
};

} // namespace Pellarvine::detail
