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

/// One binding, of one property of a control.
class ControlBinding
{
public:
    ControlBinding() = default;
    ControlBinding(const ControlBinding &) = delete;
    ControlBinding &operator=(const ControlBinding &) = delete;
    virtual ~ControlBinding() = default;

    /// Makes the first pass and begins to observe. Throws what that can throw.
    virtual void start() = 0;

    /// No more passes. A pass that runs keeps the binding alive until it returns.
    virtual void end() = 0;

    /// See infoForBinding().
    virtual QVariantMap info() const = 0;

    /// Another property of the control has been written, which may have made room for a value that
    /// the control could not show.
    virtual void siblingShown() { }

    /// Whether the control edits nothing, since an object on the way to its property is null.
    virtual bool lacksSelection() const { return false; }

    /// See commitEditing().
    virtual bool commit() { return true; }

    /// Shows the model's value in place of what the user made of it.
    virtual void discard() { }
};

/// A child of the control.
class PELLARVINE_PRIVATE_EXPORT ControlBindings : public QObject
{
public:
    /// Null if the control has no bindings.
    static ControlBindings *of(const QObject *control);
    /// Makes them if need be.
    static ControlBindings &made(QObject *control);

    ~ControlBindings() override;

    /// Starts the binding, after whatever had that name has ended. Throws what start() throws; the
    /// name is unbound then.
    void add(const QString &name, const std::shared_ptr<ControlBinding> &binding);
    void remove(const QString &name);
    ControlBinding *find(const QString &name) const;

    /// False if one of them could not commit. All are asked.
    bool commit();

    /// Calls `write`, which writes a property of the control on a model's behalf. What the control
    /// reports meanwhile is no edit. May destroy this object.
    void show(const ControlBinding *binding, const std::function<void()> &write);
    bool isShowing() const { return *m_showing > 0; }

    /// The `enabled` that a binding wants for the control; a control that lacks its selection gets
    /// it later. False if this is no widget: then it is up to the caller.
    bool keepEnabled(const QVariant &enabled);
    /// Disables a widget, one of whose bindings lacks a selection, or enables it again.
    void selectionChanged();

private:
    explicit ControlBindings(QObject *control);

    std::map<QString, std::shared_ptr<ControlBinding>> m_byName;
    std::shared_ptr<int> m_showing = std::make_shared<int>(0); // calls of show() that run
    bool m_isRefreshing = false; // the bindings that have room now, which make room for no other
    QVariant m_enabled; // what the control gets back; no value while nothing lacks a selection
};

} // namespace Pellarvine::detail
