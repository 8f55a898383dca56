// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/KeyValueObserving.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QString>
#include <QVariant>

#include <functional>

namespace Pellarvine {

/// Calls a function with every new value of one key path of one object, for as long as the observer
/// lives:
///
///     m_zoom.emplace(canvas, u"document.zoom"_s, [this](const QVariant &zoom) {
///         m_label->setText(locale().toString(zoom.toDouble()));
///     }); // m_zoom: std::optional<Pellarvine::Observer>
///
/// The call comes on the thread that changes the property, before its setter returns. Null comes as
/// the null object (NS::isNullObject). An object given by a shared pointer is kept alive; one given
/// plainly may die first, and the observer then stays silent. The function may destroy its observer
/// and may change what it observes: that change calls it again, within the call. Make and destroy
/// an observer where nothing changes the property meanwhile.
class PELLARVINE_EXPORT Observer final : private NS::KeyValueObserver
{
public:
    /// Takes the new value; an invalid one is no value.
    using Callback = std::function<void(const QVariant &)>;

    Observer() = delete; ///< there is nothing to observe

    /// With `fireInitial`, the callback is called once with the current value before the
    /// constructor returns. Throws `NS::KeyValueException` for a key path that the object lacks or
    /// does not report on, `std::invalid_argument` for an empty callback, and what the callback
    /// throws in that first call. What it throws later is printed as a warning.
    [[nodiscard]] Observer(NS::ObjectReference object, const QString &keyPath, bool fireInitial,
                           Callback callback);

    /// The same with `fireInitial` true.
    [[nodiscard]] Observer(NS::ObjectReference object, const QString &keyPath, Callback callback);

    ~Observer() override;

    /// Called by the key-value layer. Calls the callback with the change's new value, or no value
    /// if it has none; no change at all stops the process.
    void observeValue(const QString &keyPath, QObject *object,
                      const NS::KeyValueChange *change) override;

private:
    struct Private;
    Private *d; // outlives the observer while the callback runs
};

} // namespace Pellarvine
