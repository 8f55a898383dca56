// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

QT_FORWARD_DECLARE_CLASS(QObject)
QT_FORWARD_DECLARE_CLASS(QString)
QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The chain along which a command looks for somebody who understands it: from a widget outwards,
/// through the controllers, to the window, its controller and the application.
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

/// Who is asked after `responder`; null at the end of the chain and for objects outside it.
///
/// - After a widget: its controller, if it is that controller's view. Else, after a window its
///   window controller or, without one, the application; after any other widget its parent.
/// - After a view controller: what comes after its view. Nobody before its view is loaded.
/// - After a window controller: the application, which is the last.
PELLARVINE_EXPORT QObject *nextResponder(const QObject *responder);

/// Tells the chain which object controls a window; null ends that. The object stays its owner's.
PELLARVINE_EXPORT void setWindowController(QWidget *window, QObject *controller);
/// Null if there is none.
PELLARVINE_EXPORT QObject *windowController(const QWidget *window);

/// Calls the Q_INVOKABLE method or slot `action` of `target`: with `sender`, if it takes one
/// argument that is a pointer to such an object; else without arguments. False if there is no such
/// method. What the method throws goes to the caller.
///
/// With a null target the chain is asked, and the first who has the method is called. It begins at
/// the widget that has the keyboard focus; in a program without one, in the active window; without
/// that, at `sender`. The application is asked last.
PELLARVINE_EXPORT bool sendAction(const QString &action, QObject *target, QObject *sender);

} // namespace NS
