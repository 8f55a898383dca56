// SPDX-License-Identifier: MIT
// Navigation from the callbacks that navigation itself calls.
#include "TemporaryFolder.h"

#include <pellarvine/Pellarvine/NavigationController.h>
#include <pellarvine/Pellarvine/PushSegue.h>
#include <pellarvine/Pellarvine/ReplaceSegue.h>
#include <pellarvine/Pellarvine/UnwindSegue.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSStoryboard.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QScopeGuard>
#include <gmock/gmock.h>

#include <functional>
#include <utility>
#include <vector>

using NS::ViewController;
using namespace Pellarvine;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace Qt::StringLiterals;

namespace {

enum Callback {
    didLoad,
    willAppear,
    didAppear,
    willDisappear,
    didDisappear,
    callbackCount,
};

// Performs an action in one of its callbacks, the first time that it is called.
class Screen : public ViewController
{
    Q_OBJECT

public:
    using ViewController::ViewController;
    void viewDidLoad() override { run(didLoad); }
    void viewWillAppear() override { run(willAppear); }
    void viewDidAppear() override { run(didAppear); }
    void viewWillDisappear() override { run(willDisappear); }
    void viewDidDisappear() override { run(didDisappear); }
    bool canUnwind(NS::StoryboardSegue *) override { return mayLeave; }

    std::function<void(Screen *)> actions[callbackCount];
    bool mayLeave = true;

    static inline std::function<void(Screen *)> loaded; // called by the next screen

private:
    void run(Callback callback)
    {
        if (callback == didLoad && loaded)
            std::exchange(loaded, {})(this);
        if (const auto action = std::exchange(actions[callback], {}))
            action(this);
    }
};

class NavigationCallback : public ::testing::Test
{
protected:
    NavigationCallback()
    {
        navigation.setContentView(navigation.view());
        navigation.view()->resize(320, 240);
        PushSegue({}, &navigation, root).perform();
        navigation.view()->show();
        QCoreApplication::processEvents();
    }

    // Checks that the visible view matches the stack, and that push and back still work.
    void expectAgreement()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        const QList<ViewController *> stack = navigation.navigationStack();
        QList<ViewController *> shown;
        for (QObject *const child : navigation.contentView()->children()) {
            if (auto *const view = qobject_cast<QWidget *>(child))
                shown.append(NS::viewController(view));
        }
        // A controller that was pushed twice is in the stack twice.
        QList<ViewController *> screens;
        for (ViewController *const controller : stack) {
            screens.removeOne(controller);
            screens.append(controller);
        }
        ASSERT_EQ(screens, shown);
        ASSERT_FALSE(stack.isEmpty());
        EXPECT_EQ(navigation.childViewControllers().size(), screens.size());
        EXPECT_EQ(navigation.canGoBack(), screens.size() > 1);
        for (ViewController *const controller : std::as_const(screens)) {
            EXPECT_EQ(controller->parentViewController(), &navigation);
            EXPECT_EQ(controller->view()->size(), navigation.contentView()->size());
            EXPECT_EQ(controller->view()->isEnabled(), controller == stack.last());
        }
        PushSegue({}, navigation.topViewController(), new Screen).perform();
        EXPECT_EQ(navigation.depth(), stack.size() + 1);
        EXPECT_TRUE(navigation.goBack());
        EXPECT_EQ(navigation.navigationStack(), stack);
    }

    NavigationController navigation;
    Screen *const root = new Screen;
};

} // namespace

TEST_F(NavigationCallback, the_stack_and_the_screen_agree_whatever_a_callback_does)
{
    // A controller that a leaving controller would have pushed has no owner. The test deletes it.
    std::vector<QPointer<Screen>> screens;
    const auto deleteOrphans = qScopeGuard([&] {
        for (const QPointer<Screen> &screen : screens) {
            if (screen && !screen->parent() && !navigation.navigationStack().contains(screen))
                delete screen;
        }
    });
    const auto made = [&] {
        return screens.emplace_back(new Screen).get();
    };
    const std::pair<std::function<void(Screen *)>, const char *> actions[] = {
        { [&](Screen *self) { PushSegue({}, self, made()).perform(); }, "push" },
        { [&](Screen *) { PushSegue({}, &navigation, made()).perform(); }, "push above all" },
        { [&](Screen *self) { ReplaceSegue({}, self, made()).perform(); }, "replace" },
        { [&](Screen *) { ReplaceSegue({}, &navigation, made()).perform(); }, "replace all" },
        { [&](Screen *) { navigation.goBack(); }, "go back" },
        { [&](Screen *) { navigation.goBack() && navigation.goBack(); }, "go back twice" },
        { [&](Screen *self) { PushSegue({}, &navigation, self).perform(); }, "come again" },
        { [&](Screen *self) {
             UnwindSegue({}, self, navigation.navigationStack().constFirst()).perform();
         },
          "unwind" },
    };
    for (const auto &[run, name] : actions) {
        for (int callback = didLoad; callback < callbackCount; ++callback) {
            for (const bool isReplace : { false, true }) {
                SCOPED_TRACE(::testing::Message() << name << " in callback " << callback
                                                  << (isReplace ? ", replaced" : ""));
                Screen *const screen = made();
                screen->actions[callback] = run;
                ViewController *const below = navigation.topViewController();
                if (isReplace)
                    ReplaceSegue({}, below, screen).perform();
                else
                    PushSegue({}, below, screen).perform();
                expectAgreement();
                if (HasFatalFailure())
                    return;
                if (!navigation.navigationStack().contains(screen))
                    continue;
                if (isReplace)
                    ReplaceSegue({}, &navigation, made()).perform();
                else if (navigation.topViewController() == screen)
                    navigation.goBack();
                expectAgreement();
                if (HasFatalFailure())
                    return;
            }
        }
    }
}

TEST_F(NavigationCallback, what_a_callback_pushes_lies_above_and_what_it_takes_back_is_gone)
{
    auto *const login = new Screen;
    auto *const alert = new Screen;
    login->actions[willAppear] = [&](Screen *self) {
        PushSegue({}, self, alert).perform();
    };
    PushSegue({}, root, login).perform();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(root, login, alert));
    expectAgreement();

    auto *const replacing = new Screen;
    auto *const above = new Screen;
    replacing->actions[willAppear] = [&](Screen *self) {
        PushSegue({}, self, above).perform();
    };
    ReplaceSegue({}, login, replacing).perform();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(replacing, above));
    expectAgreement();

    ::testing::internal::CaptureStdout();
    const QPointer<Screen> expired = new Screen;
    expired->actions[willAppear] = [&](Screen *) {
        EXPECT_TRUE(navigation.goBack());
    };
    PushSegue({}, above, expired).perform();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(replacing, above));
    expectAgreement();
    EXPECT_FALSE(expired);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), IsEmpty());
}

TEST_F(NavigationCallback, a_segue_from_a_controller_that_comes_or_leaves_is_a_warning)
{
    for (const Callback callback : { didLoad, willDisappear, didDisappear }) {
        const QPointer<Screen> refused = new Screen;
        auto *const screen = new Screen;
        screen->actions[callback] = [&](Screen *self) {
            ReplaceSegue(u"next"_s, self, refused).perform();
            UnwindSegue(u"next"_s, self, root).perform();
            EXPECT_FALSE(refused->parentViewController());
        };
        ::testing::internal::CaptureStdout();
        PushSegue({}, root, screen).perform();
        navigation.goBack();
        EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                    HasSubstr("The segue \"next\" of Screen does nothing"));
        EXPECT_THAT(navigation.navigationStack(), ElementsAre(root));
        expectAgreement();
        delete refused;
    }
}

TEST_F(NavigationCallback, an_embedded_scene_may_begin_a_segue_before_it_is_placed)
{
    NS::registerClass<Screen>();
    const TemporaryFolder folder;
    folder.file(u"Frame.ui"_s, R"(<ui version="4.0"><widget class="QWidget" name="frame">
        <layout class="QVBoxLayout"><item><widget class="QWidget" name="content"/></item></layout>
        </widget></ui>)");
    const QString main = folder.file(u"Main.storyboard"_s, R"(<storyboard initialScene="frame">
        <scene identifier="frame" class="NavigationController" interface="Frame.ui">
          <outlet property="contentView" object="content"/>
        </scene>
        <scene identifier="first" class="Screen"/>
        <scene identifier="second" class="Screen"/>
        <embed source="frame" destination="first" container="content"/>
        <segue identifier="open" class="PushSegue" source="first" destination="second"/>
        </storyboard>)");
    const auto storyboard = NS::Storyboard::storyboardWithContentsOfFile(main);
    for (const Callback callback : { didLoad, willAppear }) {
        Screen::loaded = [&](Screen *first) {
            const auto open = [](Screen *self) {
                self->performSegue(u"open"_s);
            };
            if (callback == didLoad)
                open(first);
            else
                first->actions[callback] = open;
        };
        ::testing::internal::CaptureStdout();
        const std::unique_ptr<QObject> scene(storyboard->instantiateInitialController());
        auto *const frame = qobject_cast<NavigationController *>(scene.get());
        frame->view()->show();
        QCoreApplication::processEvents();
        const std::string warnings = ::testing::internal::GetCapturedStdout();
        EXPECT_EQ(frame->depth(), callback == didLoad ? 1 : 2);
        EXPECT_EQ(frame->canGoBack(), callback != didLoad);
        EXPECT_EQ(warnings.empty(), callback != didLoad) << warnings;
    }
}

TEST_F(NavigationCallback, going_back_says_whether_it_did_and_takes_the_key_that_was_refused)
{
    EXPECT_FALSE(navigation.goBack());
    auto *const unsaved = new Screen;
    PushSegue({}, root, unsaved).perform();
    unsaved->mayLeave = false;
    EXPECT_FALSE(navigation.goBack());
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(root, unsaved));
    // Esc must be accepted, or it would close a dialog around the controller.
    navigation.setBackInputEnabled(true);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    escape.ignore();
    EXPECT_TRUE(QApplication::sendEvent(navigation.view(), &escape));
    unsaved->mayLeave = true;
    EXPECT_TRUE(navigation.goBack());
    expectAgreement();
}

#include "NavigationCallbackTest.moc"
