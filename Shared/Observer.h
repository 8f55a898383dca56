// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/KeyValueObserving.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QString>
#include <QVariant>

#include <functional>

namespace Pellarvine {

/// Calls a function with each new value of a key path of an object, as long as the observer exists:
///
///     m_zoom.emplace(canvas, u"document.zoom"_s, [this](const QVariant &zoom) {
///         m_label->setText(locale().toString(zoom.toDouble()));
///     }); // m_zoom: std::optional<Pellarvine::Observer>
///
/// Null is passed as the null object (NS::isNullObject). The function may destroy its observer. It
/// may also change the observed property; it is then called recursively.
///
/// An object that is given by a shared pointer is kept alive. Another one may be destroyed first;
/// then there are no more calls.
///
/// The function is called on the thread that changes the property, before the setter returns.
/// Making and destroying an observer is not synchronized: no other thread may change the property
/// meanwhile.
class PELLARVINE_EXPORT Observer final : private NS::KeyValueObserver
{
public:
    /// Called with the new value, which is the null object for null.
    using Callback = std::function<void(const QVariant &)>;

    Observer() = delete; ///< not possible: an observer needs an object

    /// With `fireInitial`, calls the callback with the current value before it returns. Throws
    /// `NS::KeyValueException` if the object lacks the key path or does not report its changes, and
    /// `std::invalid_argument` for an empty callback. Passes on an exception of the callback in
    /// that first call. A later one is caught and printed as a warning.
    [[nodiscard]] Observer(NS::ObjectReference object, const QString &keyPath, bool fireInitial,
                           Callback callback);

    /// The same with `fireInitial` true.
    [[nodiscard]] Observer(NS::ObjectReference object, const QString &keyPath, Callback callback);

    ~Observer() override;

    /// Called by the key-value layer. Calls the callback with the change's new value. A null
    /// `change` aborts the process.
    void observeValue(const QString &keyPath, QObject *object,
                      const NS::KeyValueChange *change) override;

private:
    struct Private;
    Private *d; // outlives the observer while the callback runs
};

} // namespace Pellarvine
