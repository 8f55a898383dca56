// SPDX-License-Identifier: MIT
#include "Scenes/NSStoryboardSegue.h"

#include "Scenes/NSViewController.h"

#include <QEvent>
#include <QStringList>
#include <QWidget>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

struct SegueClass
{
    QString name;
    StoryboardSegue::Factory make;
    StoryboardSegue::Finder find;
};

// In the order of registration. Filled while libraries are loaded, before their static variables
// are initialised.
std::vector<SegueClass> &classes()
{
    static std::vector<SegueClass> all;
    return all;
}

// Finds a class by its full name, or the last registered one whose name ends in it. Null if there
// is none.
const SegueClass *segueClass(const QString &name)
{
    const QString ending = u"::"_s + name;
    const SegueClass *found = nullptr;
    for (const SegueClass &known : classes()) {
        if (known.name == name)
            return &known;
        if (!name.isEmpty() && known.name.endsWith(ending))
            found = &known;
    }
    return found;
}

[[maybe_unused]] const bool isStoryboardSegueRegistered =
        (StoryboardSegue::registerClass<StoryboardSegue>(), true);

// The flags of a dialog, with the frame that the view has chosen if it has.
Qt::WindowFlags dialogFlags(const QWidget *view)
{
    const Qt::WindowFlags flags = view->windowFlags();
    const bool hasChosen = flags & (Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
    return hasChosen ? (flags & ~Qt::WindowType_Mask) | Qt::Dialog : Qt::Dialog;
}

// Deletes a controller when the window of its view is closed.
class ClosingWatch : public QObject
{
public:
    explicit ClosingWatch(ViewController *controller)
        : QObject(controller)
    {
        controller->view()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The window can still refuse to close; hiding is the final step.
        auto *const window = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::HideToParent && window->isWindow())
            parent()->deleteLater();
        return false;
    }
};

} // namespace

StoryboardSegue::StoryboardSegue(const QString &identifier, QObject *source, QObject *destination)
    : m_identifier(identifier)
    , m_source(source)
    , m_destination(destination)
{ }

StoryboardSegue::~StoryboardSegue() = default;

const QString &StoryboardSegue::identifier() const
{
    return m_identifier;
}

QObject *StoryboardSegue::sourceController() const
{
    return m_source;
}

QObject *StoryboardSegue::destinationController() const
{
    return m_destination;
}

void StoryboardSegue::perform()
{
    auto *const destination = qobject_cast<ViewController *>(m_destination);
    QWidget *const view = destination ? destination->view() : nullptr;
    if (!view)
        return;
    destination->setParent(m_source);
    auto *const source = qobject_cast<ViewController *>(m_source);
    const QWidget *const above = source ? source->view() : nullptr;
    view->setParent(above ? above->window() : nullptr, dialogFlags(view));
    const auto updateTitle = [view](const QString &title) {
        if (!title.isEmpty())
            view->setWindowTitle(title);
    };
    updateTitle(destination->title());
    connect(destination, &ViewController::titleChanged, view, updateTitle);
    new ClosingWatch(destination);
    view->show();
}

void StoryboardSegue::registerFactory(const QString &name, Factory factory)
{
    registerFactory(name, std::move(factory), {});
}

void StoryboardSegue::registerFactory(const QString &name, Factory factory, Finder finder)
{
    std::erase_if(classes(), [&](const SegueClass &known) { return known.name == name; });
    classes().push_back({ name, std::move(factory), std::move(finder) });
}

StoryboardSegue::Factory StoryboardSegue::factory(const QString &name)
{
    const SegueClass *const known = segueClass(name);
    return known ? known->make : Factory();
}

StoryboardSegue::Finder StoryboardSegue::finder(const QString &name)
{
    const SegueClass *const known = segueClass(name);
    return known ? known->find : Finder();
}

QStringList StoryboardSegue::registeredClasses()
{
    QStringList names;
    for (const SegueClass &known : classes())
        names.append(known.name);
    names.sort();
    return names;
}

} // namespace NS
