// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>

#include <functional>
#include <memory>

namespace Pellarvine {

/// Collects changes and carries each binding of the group once, when the event loop runs next. The
/// targets see no state in between:
///
///     Pellarvine::BindingGroup group;
///     NS::bind(label, u"text"_s, { { person, u"first"_s }, { person, u"last"_s } }, &fullName,
///              &group);
///     person->setFirst(u"Ada"_s);
///     person->setLast(u"Lovelace"_s); // fullName() is called once, when the event loop runs
///
/// A binding that is not in a group carries each change at once. While the group carries changes,
/// its bindings carry new changes at once, too. An exception that a binding throws then is caught
/// and printed as a warning. Main thread only.
class PELLARVINE_EXPORT BindingGroup : public QObject
{
    Q_OBJECT

public:
    /// A group without bindings. `parent` owns it.
    explicit BindingGroup(QObject *parent = nullptr);
    /// Carries all pending changes. After that, its bindings carry each change at once.
    ~BindingGroup() override;

    /// Whether a change is waiting.
    bool isPending() const;

    /// @cond internal
    // Called by bindings. The next flush() calls `carry`; of several calls with one key, it calls
    // the last one's. Returns false during a flush: the caller then carries the change itself.
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
