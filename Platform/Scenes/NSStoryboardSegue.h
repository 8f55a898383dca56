// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace NS {

class ViewController;

/// A transition from one controller to another. A storyboard makes one when its trigger fires; a
/// program may make one itself. A subclass overrides perform(), which shows the destination:
///
///     class FadeSegue : public NS::StoryboardSegue
///     {
///         Q_OBJECT
///     public:
///         using StoryboardSegue::StoryboardSegue;
///         void perform() override;
///     };
///
/// Storyboards can name the class once it is registered:
///
///     NS::StoryboardSegue::registerClass<FadeSegue>();
///
/// Neither controller is owned. Main thread only.
class PELLARVINE_EXPORT StoryboardSegue : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString identifier READ identifier CONSTANT)
    Q_PROPERTY(QObject *sourceController READ sourceController CONSTANT)
    Q_PROPERTY(QObject *destinationController READ destinationController CONSTANT)

public:
    /// The controllers can be any QObject, or null.
    StoryboardSegue(const QString &identifier, QObject *source, QObject *destination);
    ~StoryboardSegue() override;

    /// Empty if it has none.
    const QString &identifier() const;
    /// @{
    /// Null if the segue was made without it, and after the controller is destroyed.
    QObject *sourceController() const;
    QObject *destinationController() const;
    /// @}

    /// Shows the view of a view controller in a window of its own above the source's window. The
    /// window follows the controller's title unless that is empty, and keeps its own frame. The
    /// destination becomes a QObject child of the source, and is deleted when the window is closed.
    /// Does nothing if the destination is not a view controller.
    virtual void perform();

    // The classes that storyboards can name

    /// Makes a segue of one class. Does not return null.
    using Factory = std::function<std::unique_ptr<StoryboardSegue>(
            const QString &identifier, QObject *source, QObject *destination)>;

    /// Finds an existing controller as the destination of a segue, or returns null.
    using Finder = std::function<QObject *(ViewController *source, const QString &scene)>;

    /// Registers the class for storyboards under its full name, "Widgets::FadeSegue", and without
    /// the namespace. If several classes have one name, the last one counts.
    ///
    /// Storyboards make the destination, unless the class has a static function `QObject
    /// *existingDestination(NS::ViewController *source, const QString &scene)`.
    template <typename Segue>
    static void registerClass(const char *name = Segue::staticMetaObject.className())
    {
        static_assert(std::is_base_of_v<StoryboardSegue, Segue>);
        static_assert(QtPrivate::HasQ_OBJECT_Macro<Segue>::Value,
                      "without Q_OBJECT, the class has the name of its base class");
        Finder finder;
        if constexpr (requires(ViewController * source, const QString &scene) {
                          Segue::existingDestination(source, scene);
                      })
            finder = &Segue::existingDestination;
        registerFactory(
                QString::fromUtf8(name),
                [](const QString &identifier, QObject *source, QObject *destination) {
                    return std::make_unique<Segue>(identifier, source, destination);
                },
                std::move(finder));
    }
    /// The same for a class whose segues are made by `factory`.
    static void registerFactory(const QString &name, Factory factory);
    /// The same for a class whose destination may exist already.
    static void registerFactory(const QString &name, Factory factory, Finder finder);
    /// The factory of a registered class; the library's own are always registered. Empty for
    /// another name.
    static Factory factory(const QString &name);
    /// The finder of a registered class. Empty for another name, and if the destination is always
    /// made.
    static Finder finder(const QString &name);
    /// The full names of all registered classes, sorted.
    static QStringList registeredClasses();

private:
    QString m_identifier;
    QPointer<QObject> m_source;
    QPointer<QObject> m_destination;
};

} // namespace NS
