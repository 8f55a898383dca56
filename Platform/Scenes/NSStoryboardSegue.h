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
    /// Controllers of any kind; null is none.
    StoryboardSegue(const QString &identifier, QObject *source, QObject *destination);
    ~StoryboardSegue() override;

    /// Empty if it has none.
    const QString &identifier() const;
    /// @{
    /// Null if it was made without one, and once the controller is destroyed.
    QObject *sourceController() const;
    QObject *destinationController() const;
    /// @}

    /// Shows a view controller's view in a window of its own, which lies above the source's window.
    /// It has the controller's title, unless that is empty, and keeps a frame of its own. Source
    /// and destination end with each other: the destination becomes a QObject child of the source,
    /// and is deleted when the window is closed. Does nothing for a destination of another kind.
    virtual void perform();

    // The classes that storyboards can name

    /// Makes a segue of one class; never gives null.
    using Factory = std::function<std::unique_ptr<StoryboardSegue>(
            const QString &identifier, QObject *source, QObject *destination)>;

    /// Finds the controller that a segue leads to where there is one already; null if not.
    using Finder = std::function<QObject *(ViewController *source, const QString &scene)>;

    /// From now on storyboards know the class by its name, "Widgets::FadeSegue", and without the
    /// namespace. Of classes with one name the one registered last counts.
    ///
    /// Storyboards make the destination, unless the class has a static function
    /// `QObject *existingDestination(NS::ViewController *source, const QString &scene)`.
    template <typename Segue>
    static void registerClass(const char *name = Segue::staticMetaObject.className())
    {
        static_assert(std::is_base_of_v<StoryboardSegue, Segue>);
        static_assert(QtPrivate::HasQ_OBJECT_Macro<Segue>::Value,
                      "without Q_OBJECT the class has the name of the one it extends");
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
    /// The same for a class whose segues are made in some other way.
    static void registerFactory(const QString &name, Factory factory);
    /// The same for one that leads to a controller that there is already.
    static void registerFactory(const QString &name, Factory factory, Finder finder);
    /// Empty for a name that is not registered. The library's own always are.
    static Factory factory(const QString &name);
    /// Empty for a name that is not registered, and if the destination is to be made.
    static Finder finder(const QString &name);
    /// The full names of all, sorted.
    static QStringList registeredClasses();

private:
    QString m_identifier;
    QPointer<QObject> m_source;
    QPointer<QObject> m_destination;
};

} // namespace NS
