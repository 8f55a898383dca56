// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>

#include <functional>
#include <memory>

namespace Pellarvine {

/// Carries the changes of its bindings once for each turn of the event loop, so that no target sees
/// a state in between:
///
///     Pellarvine::BindingGroup group;
///     NS::bind(label, u"text"_s, { { person, u"first"_s }, { person, u"last"_s } }, &fullName,
///              &group);
///     person->setFirst(u"Ada"_s);
///     person->setLast(u"Lovelace"_s); // fullName() is called once, when the event loop runs
///
/// A binding that is not in a group carries each change at once. Bindings that change while the
/// group carries changes do so at once, too. Main thread only.
class PELLARVINE_EXPORT BindingGroup : public QObject
{
    Q_OBJECT

public:
    /// Without bindings.
    explicit BindingGroup(QObject *parent = nullptr);
    /// Carries what is pending. The group's bindings then carry each change at once.
    ~BindingGroup() override;

    /// Whether a change waits to be carried.
    bool isPending() const;

    /// @cond internal
    // For bindings. `carry` is called by the next flush(), once for all calls with that key; the
    // last call's counts. False if changes are to be carried at once.
    bool defer(const void *key, std::function<void()> carry);
    void forget(const void *key);
    /// @endcond

public Q_SLOTS:
    /// Carries all pending changes now, in the order in which the bindings first changed.
    void flush();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
