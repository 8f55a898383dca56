// SPDX-License-Identifier: MIT
#include "Scenes/NSResponder.h"

#include "Base/MethodLookup.h"
#include "Scenes/NSViewController.h"

#include <QApplication>
#include <QMetaMethod>
#include <QPointer>
#include <QSet>
#include <QVariant>
#include <QWidget>

namespace NS {

namespace {

constexpr auto windowControllerProperty = "_pellarvine_windowController";
constexpr auto controlsWindowProperty = "_pellarvine_controlsWindow";

QObject *responderAfterView(const QWidget *view)
{
    if (!view->isWindow())
        return view->parentWidget();
    QObject *const controller = windowController(view);
    return controller ? controller : qApp;
}

// Null if the chain has no beginning: no window is active and there is no sender.
QObject *firstResponder(QObject *sender)
{
    if (QWidget *const focus = QApplication::focusWidget())
        return focus;
    if (QWidget *const window = QApplication::activeWindow())
        return window;
    return sender;
}

bool takes(const QMetaMethod &method, const QObject *sender)
{
    if (method.parameterCount() == 0)
        return true;
    if (method.parameterCount() > 1)
        return false;
    const QMetaObject *const type = method.parameterMetaType(0).metaObject();
    return type && method.parameterMetaType(0).flags().testFlag(QMetaType::PointerToQObject)
           && (!sender || sender->metaObject()->inherits(type));
}

// Prefers the overload with the sender as its argument.
QMetaMethod actionMethod(const QObject *target, const QByteArray &action, const QObject *sender)
{
    QMetaMethod found;
    const QList<QMetaMethod> overloads = detail::methodsNamed(target, action);
    for (const QMetaMethod &method : overloads) {
        if (method.methodType() == QMetaMethod::Signal || !takes(method, sender))
            continue;
        // The last equal method is that of the most derived class.
        if (!found.isValid() || method.parameterCount() >= found.parameterCount())
            found = method;
    }
    return found;
}

bool perform(const QByteArray &action, QObject *target, QObject *sender)
{
    const QMetaMethod method = actionMethod(target, action, sender);
    if (!method.isValid())
        return false;
    if (method.parameterCount() == 0)
        return method.invoke(target, Qt::DirectConnection);
    const QByteArray type = method.parameterTypeName(0);
    return method.invoke(target, Qt::DirectConnection,
                         QGenericArgument(type.constData(), static_cast<const void *>(&sender)));
}

} // namespace

QObject *nextResponder(const QObject *responder)
{
    if (!responder || responder == qApp)
        return nullptr;
    if (const auto *const widget = qobject_cast<const QWidget *>(responder)) {
        ViewController *const controller = viewController(widget);
        return controller ? controller : responderAfterView(widget);
    }
    if (const auto *const controller = qobject_cast<const ViewController *>(responder)) {
        // Asking does not load the view.
        const bool hasView = controller->isViewLoaded();
        const QWidget *const view =
                hasView ? const_cast<ViewController *>(controller)->view() : nullptr;
        return view ? responderAfterView(view) : nullptr;
    }
    return responder->property(controlsWindowProperty).toBool() ? qApp : nullptr;
}

void setWindowController(QWidget *window, QObject *controller)
{
    window->setProperty(windowControllerProperty,
                        controller ? QVariant::fromValue(QPointer<QObject>(controller))
                                   : QVariant());
    if (controller)
        controller->setProperty(controlsWindowProperty, true);
}

QObject *windowController(const QWidget *window)
{
    return window->property(windowControllerProperty).value<QPointer<QObject>>();
}

bool sendAction(const QString &action, QObject *target, QObject *sender)
{
    const QByteArray name = action.toUtf8();
    if (target)
        return perform(name, target, sender);
    // A window whose controller is in the window leads back to itself.
    QSet<QObject *> asked;
    QObject *responder = firstResponder(sender);
    while (responder && responder != qApp && !asked.contains(responder)) {
        if (perform(name, responder, sender))
            return true;
        asked.insert(responder);
        responder = nextResponder(responder);
    }
    return perform(name, qApp, sender);
}

} // namespace NS
