// SPDX-License-Identifier: MIT
#include "TemporaryFolder.h"

#include <pellarvine/Platform/NSViewController.h>

#include <QCoreApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWidget>
#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <stdexcept>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace Qt::StringLiterals;

namespace {

using Log = std::vector<std::string>;

// Logs the calls of its callbacks, and whether its view was visible then.
class Told : public NS::ViewController
{
public:
    Told(const char *name, Log *log, QObject *parent = nullptr)
        : NS::ViewController(parent)
        , m_name(name)
        , m_log(log)
    { }

    void viewDidLoad() override { note("didLoad"); }
    void viewWillAppear() override { note("willAppear"); }
    void viewDidAppear() override { note("didAppear"); }
    void viewWillDisappear() override { note("willDisappear"); }
    void viewDidDisappear() override { note("didDisappear"); }

    std::map<std::string, std::function<void()>> actions; // by the callback that performs them

private:
    void note(const std::string &what)
    {
        m_log->push_back(m_name + what);
        const auto action = actions[what]; // a copy, which may delete this
        if (action)
            action();
    }

    std::string m_name;
    Log *m_log;
};

Log taken(Log &log)
{
    QCoreApplication::processEvents();
    return std::exchange(log, {});
}

struct Way
{
    std::function<void(QWidget &window, QWidget *box, NS::ViewController &controller)> appear;
    std::function<void(QWidget &window, QWidget *box, NS::ViewController &controller)> disappear;
    const char *name;
};

} // namespace

TEST(ViewController, its_view_appears_and_disappears_in_pairs_however_that_comes_about)
{
    const Way ways[] = {
        { [](auto &, auto *, auto &c) { c.view()->show(); },
          [](auto &, auto *, auto &c) { c.view()->hide(); }, "by itself" },
        { [](auto &, auto *box, auto &) { box->show(); },
          [](auto &, auto *box, auto &) { box->hide(); }, "with what it lies in" },
        { [](auto &window, auto *, auto &) { window.show(); },
          [](auto &window, auto *, auto &) { window.close(); }, "with its window" },
        { [](auto &, auto *box, auto &c) { box->layout()->addWidget(c.view()); },
          [](auto &, auto *, auto &c) { c.view()->setParent(nullptr); },
          "by being added and removed" },
        { [](auto &, auto *box, auto &c) {
             auto *const seen = new QWidget(box);
             seen->show();
             c.setView(seen);
         },
          [](auto &, auto *, auto &c) { c.setView(nullptr); }, "by becoming the view" },
    };
    for (const Way &way : ways) {
        Log log;
        QWidget window;
        auto *const box = new QWidget(&window);
        new QVBoxLayout(box);
        Told controller("", &log);
        box->layout()->addWidget(controller.view());
        window.show();
        EXPECT_THAT(taken(log), ElementsAre("didLoad", "willAppear", "didAppear")) << way.name;
        for (int round = 0; round < 2; ++round) {
            way.disappear(window, box, controller);
            EXPECT_THAT(log, ElementsAre("willDisappear", "didDisappear")) << way.name;
            log.clear();
            way.appear(window, box, controller);
            QCoreApplication::processEvents(); // a layout shows a new widget from the event loop
            EXPECT_THAT(taken(log), ElementsAre("willAppear", "didAppear")) << way.name;
        }
    }
}

TEST(ViewController, containers_hear_of_it_before_what_lies_in_them)
{
    Log log;
    Told outer("outer ", &log);
    auto *const inner = new Told("inner ", &log);
    outer.addChildViewController(inner);
    auto *const between = new QWidget(outer.view());
    inner->view()->setParent(between);
    taken(log);
    outer.view()->show();
    EXPECT_THAT(taken(log), ElementsAre("outer willAppear", "inner willAppear", "outer didAppear",
                                        "inner didAppear"));
    outer.view()->hide();
    EXPECT_THAT(taken(log), ElementsAre("outer willDisappear", "inner willDisappear",
                                        "outer didDisappear", "inner didDisappear"));
    inner->view()->hide();
    outer.view()->show();
    EXPECT_THAT(taken(log), ElementsAre("outer willAppear", "outer didAppear"));
}

TEST(ViewController, a_view_that_is_hidden_at_once_has_appeared_all_the_same)
{
    Log log;
    Told controller("", &log);
    controller.view();
    taken(log);
    controller.view()->show();
    controller.view()->hide();
    controller.view()->show();
    EXPECT_THAT(log, ElementsAre("willAppear", "didAppear", "willDisappear", "didDisappear",
                                 "willAppear"));
    log.clear();
    EXPECT_THAT(taken(log), ElementsAre("didAppear"));
}

TEST(ViewController, callbacks_may_delete_the_controller_and_throw)
{
    for (const bool isReplaced : { false, true }) {
        for (const char *const callback :
             { "didLoad", "willAppear", "didAppear", "willDisappear", "didDisappear" }) {
            Log log;
            auto *const made = new Told("", &log);
            const QPointer<Told> controller = made;
            made->actions[callback] = [&] {
                delete controller;
            };
            const QPointer<QWidget> view = made->view();
            const QPointer<QWidget> other = new QWidget;
            if (view)
                view->show();
            taken(log);
            if (controller && isReplaced)
                controller->setView(other);
            else if (controller)
                view->hide();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_FALSE(controller) << callback;
            EXPECT_FALSE(view) << callback;
            if (isReplaced && std::string(callback).ends_with("Disappear")) {
                EXPECT_FALSE(other) << callback;
            }
            delete other;
        }
    }

    Log log;
    Told thrower("", &log);
    thrower.actions["didAppear"] = [] {
        throw std::runtime_error("no such mailbox");
    };
    ::testing::internal::CaptureStdout();
    thrower.view()->show();
    taken(log);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Warning: no such mailbox\n");
}

TEST(ViewController, containers_may_hide_remove_and_delete_what_lies_in_them)
{
    const std::pair<const char *, std::function<void(Told * inner)>> rows[] = {
        { "hidden",
          [](Told *inner) {
              inner->view()->hide();
          } },
        { "removed",
          [](Told *inner) {
              inner->view()->setParent(nullptr);
          } },
        { "replaced",
          [](Told *inner) {
              inner->setView(new QWidget);
          } },
        { "deleted",
          [](Told *inner) {
              delete inner;
          } },
    };
    for (const auto &[name, act] : rows) {
        Log log;
        Told outer("", &log);
        QPointer<Told> inner;
        const auto add = [&] {
            inner = new Told("inner ", &log, &outer);
            inner->view()->setParent(outer.view());
            log.clear();
        };
        outer.view();
        add();
        outer.actions["willAppear"] =
                [&, &act = act] { // Clang 14 captures no structured binding otherwise
                    act(inner);
                };
        outer.view()->show();
        EXPECT_THAT(taken(log), ElementsAre("willAppear", "didAppear")) << name;
        outer.view()->hide();
        delete inner;
        outer.actions.clear();

        add();
        outer.view()->show();
        taken(log);
        outer.actions["willDisappear"] = [&, &act = act] {
            act(inner);
        };
        outer.view()->hide();
        Log expected { "willDisappear", "inner willDisappear", "inner didDisappear",
                       "didDisappear" };
        if (!inner)
            expected = { "willDisappear", "didDisappear" };
        EXPECT_EQ(taken(log), expected) << name;
    }
}

TEST(ViewController, a_view_that_is_set_in_a_callback_gives_way_to_the_one_that_was_being_set)
{
    Log log;
    Told controller("", &log);
    controller.view()->show();
    const QPointer<QWidget> first = new QWidget;
    QWidget *const second = new QWidget;
    controller.actions["didDisappear"] = [&] {
        controller.setView(first);
    };
    controller.setView(second);
    EXPECT_EQ(controller.view(), second);
    EXPECT_FALSE(first);
}

TEST(ViewController, everything_is_destroyed_once_whoever_ends_first)
{
    struct Row
    {
        const char *first;
        std::function<void(QWidget *window, NS::ViewController *parent)> destroy;
        bool parentIsLeft;
        bool childIsLeft;
        bool viewIsLeft;
    };
    const auto child = [](NS::ViewController *parent) {
        return parent->childViewControllers().constFirst();
    };
    const Row rows[] = {
        { "parent", [](auto *, auto *parent) { delete parent; }, false, false, false },
        { "child", [&](auto *, auto *parent) { delete child(parent); }, true, false, false },
        { "view", [&](auto *, auto *parent) { delete child(parent)->view(); }, true, true, false },
        { "window", [](auto *window, auto *) { delete window; }, true, true, false },
    };
    for (const Row &row : rows) {
        for (const bool isShown : { false, true }) {
            const QPointer<QWidget> window = new QWidget;
            const QPointer<NS::ViewController> parent = new NS::ViewController;
            const QPointer<NS::ViewController> inner = new NS::ViewController;
            parent->view()->setParent(window);
            parent->addChildViewController(inner);
            // cppcheck-suppress nullPointerRedundantCheck // becomes null later, as it is destroyed
            const QPointer<QWidget> view = inner->view();
            view->setParent(parent->view());
            window->setVisible(isShown);
            QCoreApplication::processEvents();
            row.destroy(window, parent);
            QCoreApplication::processEvents();
            EXPECT_EQ(!parent.isNull(), row.parentIsLeft) << row.first;
            EXPECT_EQ(!inner.isNull(), row.childIsLeft) << row.first;
            EXPECT_EQ(!view.isNull(), row.viewIsLeft) << row.first;
            if (inner) {
                EXPECT_EQ(inner->view(), nullptr) << row.first;
            }
            if (parent) {
                EXPECT_EQ(parent->childViewControllers().size(), row.childIsLeft) << row.first;
            }
            delete parent;
            delete window;
        }
    }
}

TEST(ViewController, a_view_that_owns_its_controller_is_not_owned_by_it)
{
    for (const bool endsWithView : { false, true }) {
        const QPointer<NS::ViewController> controller = new NS::ViewController;
        const QPointer<QWidget> view = controller->view();
        controller->setParent(new QWidget(view));
        if (endsWithView)
            delete view;
        else
            delete controller;
        EXPECT_FALSE(controller);
        EXPECT_EQ(view.isNull(), endsWithView);
        EXPECT_EQ(NS::viewController(view), nullptr);
        delete view;
    }
}

TEST(ViewController, a_view_is_reported_once_when_it_is_loaded)
{
    std::vector<bool> loaded;
    {
        NS::ViewController controller;
        QObject::connect(&controller, &NS::ViewController::viewChanged, &controller,
                         [&](const QWidget *view) {
                             loaded.push_back(controller.isViewLoaded());
                             EXPECT_EQ(controller.view(), view);
                         });
        controller.view();
        EXPECT_THAT(loaded, ElementsAre(true));
        controller.setView(nullptr);
        controller.setView(new QWidget);
        delete controller.view();
        EXPECT_THAT(loaded, ElementsAre(true, true, true, true));
        controller.setView(new QWidget);
        loaded.clear();
    }
    EXPECT_THAT(loaded, IsEmpty()) << "the destructor emits no signal";
}

TEST(ViewController, a_child_has_one_parent_and_nobody_once_it_is_removed)
{
    NS::ViewController one;
    NS::ViewController other;
    auto *const child = new NS::ViewController(&one);
    const QSignalSpy changes(&one, &NS::ViewController::childViewControllersChanged);
    one.addChildViewController(child);
    other.addChildViewController(child);
    EXPECT_THAT(one.childViewControllers(), IsEmpty());
    EXPECT_THAT(other.childViewControllers(), ElementsAre(child));
    EXPECT_EQ(child->parentViewController(), &other);
    EXPECT_EQ(child->parent(), &other);
    EXPECT_EQ(changes.size(), 2);
    child->removeFromParentViewController();
    child->removeFromParentViewController();
    EXPECT_EQ(child->parentViewController(), nullptr);
    EXPECT_EQ(child->parent(), nullptr);
    delete child;
}

TEST(ViewController, a_view_leads_to_its_controller_for_as_long_as_it_is_its_view)
{
    NS::ViewController controller;
    QWidget box;
    QWidget *const first = controller.view();
    first->setParent(&box);
    EXPECT_EQ(NS::viewController(first), &controller);
    auto *const second = new QWidget(&box);
    controller.setView(second);
    EXPECT_EQ(NS::viewController(first), nullptr);
    EXPECT_EQ(NS::viewController(second), &controller);
    EXPECT_EQ(NS::viewController(&box), nullptr);
    EXPECT_EQ(NS::viewController(nullptr), nullptr);
}

TEST(ViewController, its_title_is_that_of_the_form_until_it_is_set)
{
    const TemporaryFolder folder;
    NS::ViewController controller(folder.file(
            u"Form.ui"_s,
            "<ui version='4.0'><widget class='QWidget' name='form'><property name='windowTitle'>"
            "<string>Notes</string></property></widget></ui>"));
    QWidget *const form = controller.view();
    EXPECT_EQ(controller.title(), u"Notes"_s);
    form->setWindowTitle(u"Notizen"_s); // as a change of language does, and a binding
    EXPECT_EQ(controller.title(), u"Notizen"_s);
    controller.setTitle(u"Diary"_s);
    for (const QString &other : { u"Diary"_s, u"Notes"_s }) {
        form->setWindowTitle(other);
        EXPECT_EQ(controller.title(), u"Diary"_s);
    }
}

TEST(ViewController, a_view_that_cannot_be_loaded_is_tried_again)
{
    class Moody : public NS::ViewController
    {
    public:
        void loadView() override
        {
            setView(new QWidget);
            if (++attempts == 1)
                throw std::runtime_error("not yet");
        }
        int attempts = 0;
    };
    Moody controller;
    EXPECT_THROW(controller.view(), std::runtime_error);
    EXPECT_FALSE(controller.isViewLoaded());
    EXPECT_NE(controller.view(), nullptr);
    EXPECT_TRUE(controller.isViewLoaded());
    controller.view();
    EXPECT_EQ(controller.attempts, 2);
}

TEST(ViewController, a_loader_that_sets_no_view_stops_the_process)
{
    class Empty : public NS::ViewController
    {
        void loadView() override { }
    };
    Empty controller;
    EXPECT_DEATH(controller.view(), "A view controller's loadView\\(\\) set no view");
}
