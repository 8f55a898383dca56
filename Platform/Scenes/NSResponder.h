// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

QT_FORWARD_DECLARE_CLASS(QObject)
QT_FORWARD_DECLARE_CLASS(QString)
QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The responder chain: a command goes from a widget outwards, through the controllers, to the
/// window, its controller and the application, until one of them has a method for it.
///
///     class NoteController : public NS::ViewController
///     {
///         Q_OBJECT
///     public:
///         Q_INVOKABLE void archive(QObject *sender);
///     };
///
/// An action archives the note that has the keyboard focus:
///
///     connect(archiveItem, &QAction::triggered, archiveItem,
///             [=] { NS::sendAction(u"archive"_s, nullptr, archiveItem); });
///
/// Main thread only.
namespace NS {

/// The next object in the chain after `responder`; null at the end of the chain and for objects
/// outside it.
///
/// - After a widget: its controller, if it is that controller's view. Else, after a window its
///   window controller or, without one, the application; after any other widget its parent.
/// - After a view controller: the object after its view; null before the view is loaded.
/// - After a window controller: the application, which is the last.
PELLARVINE_EXPORT QObject *nextResponder(const QObject *responder);

/// Sets the object that comes after `window` in the chain; null removes it. The chain does not own
/// it.
PELLARVINE_EXPORT void setWindowController(QWidget *window, QObject *controller);
/// The object that comes after `window` in the chain, or null.
PELLARVINE_EXPORT QObject *windowController(const QWidget *window);

/// Calls the Q_INVOKABLE method or slot `action` of `target`. If the method has one argument, a
/// pointer to a class of `sender`, it gets `sender`; otherwise it has no arguments. Returns false
/// if there is no such method. An exception of the method is passed on.
///
/// If `target` is null, the first object of the chain that has the method is called. The chain
/// begins at the widget with the keyboard focus, or else at the active window, or else at `sender`.
/// The application is the last.
PELLARVINE_EXPORT bool sendAction(const QString &action, QObject *target, QObject *sender);

} // namespace NS
