// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/ModalSegue.h>
#include <pellarvine/Pellarvine/NSViewController+Storyboard.h>
#include <pellarvine/Pellarvine/NavigationController.h>
#include <pellarvine/Pellarvine/NavigationItemViewController.h>
#include <pellarvine/Pellarvine/PushSegue.h>
#include <pellarvine/Pellarvine/ReplaceSegue.h>
#include <pellarvine/Pellarvine/UnwindSegue.h>
#include <pellarvine/Pellarvine/Window.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSView.h>
#include <pellarvine/Shared/Observer.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

using NS::ViewController;
using namespace Pellarvine;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace Qt::StringLiterals;

namespace {

QList<QWidget *> subviews(const QWidget *view)
{
    return view->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
}

// A navigation controller with a content view inside its own.
class Navigation : public NavigationController
{
public:
    Navigation()
    {
        view()->resize(320, 240);
        setContentView(new QWidget(view()));
        contentView()->resize(300, 200);
    }
};

// The classes that the storyboard names.

int liveControllers = 0;

template <typename Base>
class Counted : public Base
{
public:
    explicit Counted(QObject *parent = nullptr)
        : Base(parent)
    {
        ++liveControllers;
    }
    ~Counted() override { --liveControllers; }
};

class ListController : public Counted<Pellarvine::NavigationItemViewController>
{
    Q_OBJECT

public:
    using Counted::Counted;
    bool shouldPerformSegue(const QString &, QObject *sender) override
    {
        asked = sender;
        return mayGo;
    }
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *sender) override
    {
        prepared = segue->destinationController();
        preparedBy = sender;
        if (keeps)
            prepared->setParent(this);
    }

    void prepareForUnwind(NS::StoryboardSegue *segue) override
    {
        unwoundFrom = segue->sourceController();
    }

    bool mayGo = true;
    QObject *unwoundFrom = nullptr;
    bool keeps = false;
    QObject *asked = nullptr;
    QPointer<QObject> prepared;
    QObject *preparedBy = nullptr;
};

class LetterController : public Counted<Pellarvine::NavigationItemViewController>
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *subject MEMBER subject NOTIFY subjectChanged)

public:
    using Counted::Counted;
    bool canUnwind(NS::StoryboardSegue *) override { return isSaved; }

    QLineEdit *subject = nullptr;
    bool isSaved = true;

Q_SIGNALS:
    void subjectChanged();
    void finished();
};

// A controller that is no view controller.
class Counter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
};

class MailStoryboard : public ::testing::Test
{
public:
    static void SetUpTestSuite()
    {
        NS::registerClass<ListController>();
        NS::registerClass<LetterController>();
        NS::registerClass<Counter>();
    }
    void SetUp() override
    {
        const auto storyboard =
                NS::Storyboard::storyboardWithContentsOfFile(QStringLiteral(MAIL_STORYBOARD));
        mail.reset(static_cast<NavigationController *>(storyboard->instantiateInitialController()));
        mail->view()->show();
        mail->view()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(mail->view()));
        QCoreApplication::processEvents();
    }
    ViewController *top() const { return mail->navigationStack().constLast(); }
    void click(const QString &button)
    {
        QTest::mouseClick(top()->view()->findChild<QPushButton *>(button), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<NavigationController> mail;
};

} // namespace

TEST(Navigation,
     without_a_content_view_the_first_appearance_takes_the_own_view_and_looks_no_further)
{
    NavigationController navigation;
    auto *const child = new ViewController;
    navigation.addChildViewController(child);
    NS::addSubview(navigation.view(), child->view());
    EXPECT_EQ(navigation.contentView(), nullptr);
    navigation.viewWillAppear();
    EXPECT_EQ(navigation.contentView(), navigation.view());
    EXPECT_THAT(navigation.navigationStack(), IsEmpty());
    navigation.viewWillAppear();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(child));
}

TEST(Navigation, each_appearance_resets_the_stack_to_the_owner_of_the_first_subview)
{
    Navigation navigation;
    auto *const first = new ViewController;
    navigation.addChildViewController(first);
    NS::addSubview(navigation.contentView(), first->view());
    navigation.view()->show();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first));
    auto *const second = new ViewController;
    PushSegue({}, first, second).perform();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first, second));
    navigation.view()->hide();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first, second));
    navigation.view()->show();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first));
    EXPECT_EQ(second->view()->parentWidget(), navigation.contentView());
}

TEST(Navigation, an_appearance_that_finds_no_controller_leaves_the_stack)
{
    NavigationController navigation;
    QWidget elsewhere;
    navigation.setContentView(new QWidget(&elsewhere));
    ViewController kept;
    navigation.setNavigationStack({ &kept });
    navigation.viewWillAppear(); // the content view has no subview
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(&kept));
    new QWidget(navigation.contentView());
    navigation.viewWillAppear(); // the subview has no view controller
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(&kept));
    // The controller is looked up from the subview's parents on, not from the subview itself.
    ViewController owner;
    elsewhere.setParent(owner.view());
    navigation.viewWillAppear();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(&owner));
    elsewhere.setParent(nullptr);
}

TEST(Navigation, a_push_pins_the_view_on_top_and_appends_the_controller)
{
    Navigation navigation;
    auto *const first = new ViewController;
    PushSegue({}, &navigation, first).perform();
    auto *const second = new ViewController;
    auto *const nested = new ViewController;
    first->addChildViewController(nested);
    PushSegue({}, nested, second).perform(); // the source is two levels below
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first, second));
    EXPECT_THAT(navigation.childViewControllers(), ElementsAre(first, second));
    EXPECT_THAT(subviews(navigation.contentView()), ElementsAre(first->view(), second->view()));
    NS::layoutSubtreeIfNeeded(navigation.contentView());
    EXPECT_EQ(second->view()->geometry(), QRect(0, 0, 300, 200));
    EXPECT_FALSE(first->view()->isHidden());
    // A controller can be pushed again.
    PushSegue({}, first, second).perform();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first, second, second));
}

TEST(Navigation, a_replace_leaves_the_destination_alone)
{
    Navigation navigation;
    const QPointer<ViewController> first = new ViewController;
    ReplaceSegue({}, &navigation, first).perform(); // with an empty stack
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first.data()));
    const QPointer<ViewController> second = new ViewController;
    PushSegue({}, first, second).perform();
    QObject keeper;
    QObject::connect(&navigation, &NavigationController::navigationStackChanged, &keeper,
                     [&] { second->setParent(&keeper); });
    auto *const third = new ViewController;
    ReplaceSegue({}, second, third).perform();
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(third));
    EXPECT_THAT(navigation.childViewControllers(), ElementsAre(third));
    EXPECT_THAT(subviews(navigation.contentView()), ElementsAre(third->view()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(first); // it had no other owner, and was deleted
    ASSERT_TRUE(second);
    EXPECT_EQ(second->view()->parentWidget(), nullptr);
    // The caller has kept the second controller, and it can be shown again.
    ReplaceSegue({}, third, second).perform();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(second.data()));
    // A controller that replaces itself is not deleted.
    ReplaceSegue({}, second, second).perform();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(second);
    EXPECT_THAT(subviews(navigation.contentView()), ElementsAre(second->view()));
}

TEST(Navigation, a_modal_segue_and_a_destination_that_is_no_view_controller_change_nothing)
{
    Navigation navigation;
    auto *const first = new ViewController;
    PushSegue({}, &navigation, first).perform();
    const QSignalSpy changes(&navigation, &NavigationController::navigationStackChanged);
    ViewController other;
    QObject object;
    ModalSegue({}, first, &other).perform();
    PushSegue({}, first, &object).perform();
    ReplaceSegue({}, first, &object).perform();
    ReplaceSegue({}, first, nullptr).perform();
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(first));
    EXPECT_EQ(other.parentViewController(), nullptr);
    EXPECT_FALSE(other.isViewLoaded());
    EXPECT_THAT(subviews(navigation.contentView()), ElementsAre(first->view()));
}

TEST(Navigation, a_missing_navigation_controller_or_content_view_stops_the_process)
{
    ViewController lonely;
    ViewController destination;
    QObject object;
    EXPECT_DEATH(PushSegue({}, &lonely, &destination).perform(),
                 "Could not find navigation controller");
    EXPECT_DEATH(ReplaceSegue({}, &object, &destination).perform(),
                 "Could not find navigation controller");
    // This is checked before the destination.
    EXPECT_DEATH(PushSegue({}, &lonely, &object).perform(), "Could not find navigation controller");
    NavigationController bare;
    EXPECT_DEATH(PushSegue({}, &bare, &destination).perform(), "has no content view");
    EXPECT_DEATH(ReplaceSegue({}, &bare, &destination).perform(), "has no content view");
}

TEST(Navigation, stack_and_content_view_can_be_observed_and_lose_what_is_destroyed)
{
    Navigation navigation;
    QList<qsizetype> sizes;
    const Pellarvine::Observer observer(
            &navigation, u"navigationStack"_s, false, [&](const QVariant &stack) {
                sizes.append(stack.value<QList<ViewController *>>().size());
            });
    auto *const first = new ViewController;
    PushSegue({}, &navigation, first).perform();
    auto *const second = new ViewController;
    PushSegue({}, &navigation, second).perform();
    navigation.setNavigationStack(navigation.navigationStack());
    delete first;
    EXPECT_THAT(navigation.navigationStack(), ElementsAre(second));
    EXPECT_THAT(sizes, ElementsAre(1, 2, 1));

    const QSignalSpy views(&navigation, &NavigationController::contentViewChanged);
    navigation.setContentView(navigation.contentView());
    delete navigation.contentView();
    EXPECT_EQ(views.size(), 1);
    EXPECT_EQ(navigation.contentView(), nullptr);
}

TEST(Navigation, a_view_may_be_its_own_content_and_end_with_everything_in_it)
{
    const QPointer<NavigationController> navigation = new NavigationController;
    navigation->view()->show();
    const QPointer<ViewController> pushed = new ViewController;
    PushSegue({}, navigation, pushed).perform();
    QCoreApplication::processEvents();
    EXPECT_THAT(subviews(navigation->view()), ElementsAre(pushed->view()));
    delete navigation;
    EXPECT_FALSE(pushed);
}

TEST_F(MailStoryboard, clicks_walk_from_scene_to_scene)
{
    ASSERT_EQ(mail->navigationStack().size(), 1);
    const QPointer<ViewController> list = top();
    EXPECT_EQ(list->title(), u"Letters"_s);
    click(u"openButton"_s);
    ASSERT_EQ(mail->navigationStack().size(), 2);
    auto *const letter = qobject_cast<LetterController *>(top());
    ASSERT_TRUE(letter);
    EXPECT_EQ(letter->subject->text(), u"Dear reader"_s);
    EXPECT_EQ(letter->view()->geometry(), mail->contentView()->rect());
    letter->performSegue(u"deeper"_s);
    EXPECT_EQ(mail->navigationStack().size(), 3);
    click(u"doneButton"_s);
    ASSERT_EQ(mail->navigationStack().size(), 1);
    EXPECT_FALSE(list);
    EXPECT_EQ(top()->title(), u"Letters"_s);
    EXPECT_EQ(liveControllers, 1);
    // A signal of the controller itself triggers a segue.
    click(u"openButton"_s);
    Q_EMIT qobject_cast<LetterController *>(top())->finished();
    EXPECT_EQ(top()->title(), u"Settings"_s);
}

TEST_F(MailStoryboard, the_source_is_asked_and_prepares_the_destination_of_a_click)
{
    auto *const list = qobject_cast<ListController *>(top());
    auto *const open = list->view()->findChild<QPushButton *>(u"openButton"_s);
    list->mayGo = false;
    click(u"openButton"_s);
    EXPECT_EQ(list->asked, open);
    EXPECT_EQ(mail->navigationStack().size(), 1);
    EXPECT_EQ(liveControllers, 1);
    list->performSegue(u"open"_s, list); // shouldPerformSegue() is not asked
    EXPECT_EQ(list->prepared, top());
    EXPECT_EQ(list->preparedBy, list);
    EXPECT_EQ(mail->navigationStack().size(), 2);
}

TEST_F(MailStoryboard, a_destination_that_nobody_takes_is_deleted)
{
    auto *const list = qobject_cast<ListController *>(top());
    click(u"settingsButton"_s);
    EXPECT_FALSE(list->prepared);
    click(u"counterButton"_s); // pushes an object that is no view controller
    EXPECT_FALSE(list->prepared);
    list->keeps = true;
    click(u"settingsButton"_s);
    EXPECT_TRUE(list->prepared);
    EXPECT_EQ(mail->navigationStack().size(), 1);
}

TEST_F(MailStoryboard, a_destination_that_cannot_be_loaded_is_a_warning_and_changes_nothing)
{
    ::testing::internal::CaptureStdout();
    click(u"tornButton"_s);
    const std::string output = ::testing::internal::GetCapturedStdout();
    EXPECT_THAT(output, ::testing::StartsWith("Warning: "));
    EXPECT_THAT(output, HasSubstr("Torn.ui"));
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1);
    EXPECT_EQ(mail->navigationStack().size(), 1);
    EXPECT_EQ(mail->childViewControllers().size(), 1);
    EXPECT_EQ(subviews(mail->contentView()).size(), 1);
}

TEST_F(MailStoryboard, a_plain_segue_opens_a_window_that_ends_its_controller)
{
    top()->performSegue(u"window"_s);
    const QPointer<ViewController> settings = top()->findChild<ViewController *>();
    ASSERT_TRUE(settings);
    EXPECT_TRUE(settings->view()->isWindow());
    EXPECT_TRUE(settings->view()->isVisible());
    EXPECT_EQ(settings->view()->windowTitle(), u"Settings"_s);
    EXPECT_EQ(mail->navigationStack().size(), 1);
    settings->view()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(settings);
}

TEST(PlainSegue, a_window_of_its_own_keeps_its_frame_and_its_title)
{
    class WindowController : public ViewController
    {
    public:
        void loadView() override
        {
            auto *const window = new Pellarvine::Window;
            window->setWindowTitle(u"Inspector"_s);
            setView(window);
        }
    };
    ViewController source;
    auto *const destination = new WindowController;
    NS::StoryboardSegue({}, &source, destination).perform();
    EXPECT_TRUE(destination->view()->windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(destination->view()->windowType(), Qt::Dialog);
    EXPECT_EQ(destination->view()->windowTitle(), u"Inspector"_s);
}

TEST_F(MailStoryboard, a_scene_can_be_pinned_into_any_view_and_is_nobodys_child)
{
    QWidget box;
    box.resize(200, 100);
    const std::unique_ptr<ViewController> settings(
            NS::instantiateViewControllerWithIdentifier(top(), u"settings"_s, &box));
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->parentViewController(), nullptr);
    EXPECT_EQ(settings->parent(), nullptr);
    NS::layoutSubtreeIfNeeded(&box);
    EXPECT_EQ(settings->view()->parentWidget(), &box);
    EXPECT_EQ(settings->view()->geometry(), QRect(0, 0, 200, 100));
    EXPECT_EQ(NS::instantiateViewControllerWithIdentifier(top(), u"counter"_s, &box), nullptr);
    EXPECT_THROW(NS::instantiateViewControllerWithIdentifier(top(), u"absent"_s, &box),
                 NS::UnknownIdentifierError);
    const ViewController plain;
    EXPECT_EQ(NS::instantiateViewControllerWithIdentifier(&plain, u"settings"_s, &box), nullptr);
}

TEST_F(MailStoryboard, the_focus_goes_to_a_pushed_view_and_stays_inside_after_a_replace)
{
    click(u"openButton"_s);
    auto *const letter = qobject_cast<LetterController *>(top());
    EXPECT_EQ(QApplication::focusWidget(), letter->subject);
    click(u"doneButton"_s);
    EXPECT_EQ(QApplication::focusWidget(), top()->view()->findChild<QWidget *>(u"openButton"_s));
}

TEST_F(MailStoryboard, the_keyboard_does_not_reach_covered_views)
{
    const QPointer<ViewController> list = top();
    auto *const disabled = new ViewController;
    disabled->view()->setEnabled(false);
    PushSegue({}, list, disabled).perform();
    list->performSegue(u"open"_s);
    QObject keeper;
    QObject::connect(mail.get(), &NavigationController::navigationStackChanged, &keeper, [&] {
        list->setParent(&keeper);
        disabled->setParent(&keeper);
    });
    auto *const letter = top()->view();
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(letter->isAncestorOf(QApplication::focusWidget()));
    }
    QTest::keyClick(letter, Qt::Key_O, Qt::AltModifier); // Open, in the list
    EXPECT_EQ(mail->navigationStack().size(), 3);
    click(u"doneButton"_s);
    EXPECT_TRUE(list->view()->isEnabled());
    EXPECT_FALSE(disabled->view()->isEnabled()); // still disabled, as before
}

TEST_F(MailStoryboard, a_replace_from_outside_leaves_the_focus_there)
{
    auto *const sidebar = new QLineEdit(mail->view());
    sidebar->show();
    sidebar->setFocus();
    auto *const storyboard = top()->storyboard().get();
    auto *const kept = static_cast<ViewController *>(
            storyboard->instantiateControllerWithIdentifier(u"letter"_s));
    ReplaceSegue({}, mail.get(), kept).perform();
    EXPECT_EQ(QApplication::focusWidget(), sidebar);
}

TEST_F(MailStoryboard, a_view_that_comes_back_gives_the_focus_to_the_widget_that_had_it)
{
    auto *const list = top();
    auto *const settings = list->view()->findChild<QWidget *>(u"settingsButton"_s);
    settings->setFocus();
    QObject keeper;
    QObject::connect(mail.get(), &NavigationController::navigationStackChanged, &keeper,
                     [&] { list->setParent(&keeper); });
    auto *const letter = new ViewController;
    ReplaceSegue({}, list, letter).perform();
    EXPECT_EQ(QApplication::focusWidget(), letter->view());
    ReplaceSegue({}, letter, list).perform();
    EXPECT_EQ(QApplication::focusWidget(), settings);
}

TEST_F(MailStoryboard, a_controller_may_choose_where_the_focus_goes)
{
    class Form : public ViewController
    {
    public:
        void loadView() override
        {
            setView(new QWidget);
            new QLineEdit(view());
            second = new QLineEdit(view());
        }
        void viewWillAppear() override { second->setFocus(); }
        QLineEdit *second = nullptr;
    };
    auto *const pushed = new Form;
    PushSegue({}, top(), pushed).perform();
    EXPECT_EQ(QApplication::focusWidget(), pushed->second);
    auto *const replacing = new Form;
    ReplaceSegue({}, pushed, replacing).perform();
    EXPECT_EQ(QApplication::focusWidget(), replacing->second);
}

TEST_F(MailStoryboard, a_pushed_view_has_its_title_as_its_name_for_screen_readers)
{
    click(u"openButton"_s);
    const auto name = [](ViewController *controller) {
        return QAccessible::queryAccessibleInterface(controller->view())->text(QAccessible::Name);
    };
    EXPECT_EQ(name(top()), u"Letter"_s);
    auto *const named = new ViewController;
    named->setTitle(u"Draft"_s);
    named->view()->setAccessibleName(u"Draft of a letter"_s);
    PushSegue({}, top(), named).perform();
    EXPECT_EQ(name(named), u"Draft of a letter"_s);
}

namespace {

// Pushes a login screen when it first appears.
class Pushing : public ViewController
{
public:
    explicit Pushing(ViewController *pushed)
        : m_pushed(pushed)
    { }
    void viewWillAppear() override
    {
        if (ViewController *const pushed = std::exchange(m_pushed, nullptr))
            PushSegue({}, this, pushed).perform();
    }

private:
    ViewController *m_pushed;
};

// A screen with a field that takes the focus.
ViewController *screenWithField()
{
    auto *const screen = new ViewController;
    (new QLineEdit(screen->view()))->setObjectName(u"field"_s);
    return screen;
}

QWidget *field(ViewController *screen)
{
    return screen->view()->findChild<QLineEdit *>();
}

} // namespace

TEST_F(MailStoryboard, the_uppermost_view_is_enabled_and_all_below_it_are_covered)
{
    ViewController *const list = top();
    auto *const login = screenWithField();
    auto *const pushing = new Pushing(login);
    PushSegue({}, list, pushing).perform();
    EXPECT_THAT(mail->navigationStack(), ElementsAre(list, pushing, login));
    EXPECT_TRUE(login->view()->isEnabled());
    EXPECT_FALSE(pushing->view()->isEnabled());
    EXPECT_FALSE(list->view()->isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), field(login));

    // Pushing a controller that is in the stack raises its view.
    PushSegue({}, login, list).perform();
    EXPECT_EQ(subviews(mail->contentView()).constLast(), list->view());
    EXPECT_TRUE(list->view()->isEnabled());
    EXPECT_FALSE(login->view()->isEnabled());
    EXPECT_FALSE(pushing->view()->isEnabled());

    // Pushed views stay when the stack is reset.
    login->view()->raise();
    mail->view()->hide();
    mail->view()->show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(login->view()->isEnabled());
    EXPECT_FALSE(list->view()->isEnabled());

    login->view()->hide();
    QCoreApplication::processEvents();
    EXPECT_TRUE(list->view()->isEnabled());
    login->view()->show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(login->view()->isEnabled());
    EXPECT_FALSE(list->view()->isEnabled());
    auto *const replacing = new ViewController;
    ReplaceSegue({}, list, replacing).perform();
    EXPECT_TRUE(replacing->view()->isEnabled());
    EXPECT_FALSE(login->view()->isEnabled());
}

TEST_F(MailStoryboard, the_focus_follows_the_uppermost_view)
{
    NavigationController fresh;
    fresh.view()->show();
    fresh.view()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(fresh.view()));
    auto *const first = screenWithField();
    first->setTitle(u"First"_s);
    PushSegue({}, &fresh, first).perform();
    EXPECT_EQ(QApplication::focusWidget(), field(first));
    EXPECT_EQ(first->view()->accessibleName(), u"First"_s);

    auto *const second = new QLineEdit(first->view());
    second->show();
    second->setFocus();
    const auto push = [&] {
        auto *const pushed = screenWithField();
        PushSegue({}, first, pushed).perform();
        EXPECT_EQ(QApplication::focusWidget(), field(pushed));
        return pushed;
    };
    delete push();
    EXPECT_EQ(QApplication::focusWidget(), second);

    ViewController *pushed = push();
    const std::unique_ptr<ViewController> takenFirst(pushed);
    pushed->removeFromParentViewController();
    pushed->view()->setParent(nullptr);
    fresh.setNavigationStack({ first });
    EXPECT_EQ(QApplication::focusWidget(), second);

    pushed = push();
    const std::unique_ptr<ViewController> takenLast(pushed);
    fresh.setNavigationStack({ first });
    pushed->removeFromParentViewController();
    pushed->view()->setParent(nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), second);
    EXPECT_TRUE(first->view()->isEnabled());
}

TEST(Navigation, segues_survive_whatever_the_program_deletes_meanwhile)
{
    for (const bool isReplace : { false, true }) {
        // Deletes one of the four objects as soon as the child controllers change.
        for (int victim = 0; victim < 4; ++victim) {
            auto *const navigation = new Navigation;
            const QPointer<ViewController> first = new ViewController;
            PushSegue({}, navigation, first).perform();
            const QPointer<ViewController> second = new ViewController;
            PushSegue({}, navigation, second).perform();
            const QPointer<ViewController> third = new ViewController;
            const QPointer<QObject> victims[] = { first.data(), second.data(), third.data(),
                                                  navigation };
            QObject::connect(navigation, &ViewController::childViewControllersChanged,
                             [taken = victims[victim]]() mutable {
                                 delete std::exchange(taken, nullptr).data();
                             });
            if (isReplace)
                ReplaceSegue({}, navigation, third).perform();
            else
                PushSegue({}, navigation, third).perform();
            EXPECT_FALSE(victims[victim]);
            if (victims[3]) {
                EXPECT_FALSE(navigation->navigationStack().contains(nullptr));
                EXPECT_EQ(navigation->navigationStack().contains(third), !!third);
            }
            for (const QPointer<QObject> &rest : { victims[3], victims[2], victims[1], victims[0] })
                delete rest.data();
        }
    }
}

TEST(Navigation, a_controller_that_would_contain_itself_is_refused)
{
    ViewController outer;
    auto *const navigation = new Navigation;
    outer.addChildViewController(navigation);
    ViewController around;
    navigation->view()->setParent(around.view());
    auto *const first = new ViewController;
    PushSegue({}, navigation, first).perform();
    for (ViewController *const refused :
         { static_cast<ViewController *>(navigation), &outer, &around }) {
        ::testing::internal::CaptureStdout();
        PushSegue({}, navigation, refused).perform();
        ReplaceSegue({}, first, refused).perform();
        EXPECT_THAT(::testing::internal::GetCapturedStdout(), HasSubstr("cannot show itself"));
    }
    EXPECT_THAT(navigation->navigationStack(), ElementsAre(first));
    EXPECT_THAT(navigation->childViewControllers(), ElementsAre(first));
}

TEST_F(MailStoryboard, an_unwind_returns_to_a_lower_screen_unless_one_above_refuses)
{
    auto *const list = static_cast<ListController *>(top());
    auto *const open = list->view()->findChild<QPushButton *>(u"openButton"_s);
    open->setFocus();
    click(u"openButton"_s);
    auto *const letter = static_cast<LetterController *>(top());
    letter->performSegue(u"deeper"_s);
    auto *const deeper = static_cast<LetterController *>(top());
    letter->isSaved = false;
    deeper->performSegue(u"back"_s);
    EXPECT_THAT(mail->navigationStack(), ElementsAre(list, letter, deeper));
    EXPECT_FALSE(list->unwoundFrom);
    EXPECT_THROW(deeper->performSegue(u"lost"_s), NS::UnknownIdentifierError);

    letter->isSaved = true;
    deeper->performSegue(u"back"_s);
    EXPECT_THAT(mail->navigationStack(), ElementsAre(list));
    EXPECT_EQ(list->unwoundFrom, deeper);
    EXPECT_THAT(subviews(mail->contentView()), ElementsAre(list->view()));
    EXPECT_TRUE(list->view()->isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), open);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(liveControllers, 1);
    UnwindSegue({}, list, list).perform(); // already on top
    ViewController other;
    UnwindSegue({}, list, &other).perform(); // not in the stack
    EXPECT_THAT(mail->navigationStack(), ElementsAre(list));
}

TEST_F(MailStoryboard, top_depth_and_the_way_back_can_be_observed)
{
    ViewController *const list = top();
    QList<int> depths;
    QList<bool> ways;
    const Pellarvine::Observer depth(mail.get(), u"depth"_s, true,
                                     [&](const QVariant &value) { depths.append(value.toInt()); });
    const Pellarvine::Observer way(mail.get(), u"canGoBack"_s, true,
                                   [&](const QVariant &value) { ways.append(value.toBool()); });
    QList<ViewController *> covered;
    QList<ViewController *> uncovered;
    QObject::connect(mail.get(), &NavigationController::viewCovered, mail.get(),
                     [&](ViewController *controller) { covered.append(controller); });
    QObject::connect(mail.get(), &NavigationController::viewUncovered, mail.get(),
                     [&](ViewController *controller) { uncovered.append(controller); });
    QAction *const back = mail->backAction();
    EXPECT_FALSE(back->isEnabled());
    EXPECT_FALSE(mail->goBack());
    EXPECT_EQ(mail->topViewController(), list);
    click(u"openButton"_s);
    EXPECT_TRUE(back->isEnabled());
    EXPECT_NE(mail->topViewController(), list);
    EXPECT_THAT(covered, ElementsAre(list));
    EXPECT_THAT(uncovered, IsEmpty());
    back->trigger();
    EXPECT_FALSE(back->isEnabled());
    EXPECT_EQ(mail->topViewController(), list);
    EXPECT_THAT(depths, ElementsAre(1, 2, 1));
    EXPECT_THAT(ways, ElementsAre(false, true, false));
    EXPECT_THAT(uncovered, ElementsAre(list));
    EXPECT_EQ(NavigationController().topViewController(), nullptr);

    // A controller that was pushed before the stack was reset is still on top, and can go back.
    click(u"openButton"_s);
    mail->view()->hide();
    mail->view()->show();
    EXPECT_EQ(mail->depth(), 1);
    EXPECT_TRUE(mail->canGoBack());
    EXPECT_TRUE(mail->goBack());
    EXPECT_THAT(subviews(mail->contentView()), ElementsAre(list->view()));
}

TEST_F(MailStoryboard, keyboard_and_mouse_go_back_if_that_is_enabled)
{
    const auto press = [&](int way) {
        auto *const items = top()->view()->findChild<QListWidget *>();
        items->setFocus();
        if (way == 0)
            QTest::keyClick(items, Qt::Key_Left, Qt::AltModifier); // a list usually takes this key
        else if (way == 1)
            QTest::keyClick(items, Qt::Key_Escape);
        else
            QTest::mouseClick(items->viewport(), Qt::BackButton);
        return mail->depth();
    };
    const auto push = [&] {
        auto *const pushed = new ViewController;
        auto *const items = new QListWidget(pushed->view());
        auto *const item = new QListWidgetItem(u"Item"_s, items);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        PushSegue({}, mail.get(), pushed).perform();
        return items;
    };
    push();
    for (const int way : { 0, 1, 2 })
        EXPECT_EQ(press(way), 2);
    mail->setBackInputEnabled(true);
    for (const int way : { 0, 1, 2 }) {
        EXPECT_EQ(press(way), 1) << way;
        push();
    }
    // Esc first ends editing in the list.
    auto *const items = top()->view()->findChild<QListWidget *>();
    items->setFocus();
    items->editItem(items->item(0));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(mail->depth(), 2);
    QTest::keyClick(items, Qt::Key_Escape);
    EXPECT_EQ(mail->depth(), 1);

    // The navigation controller takes the key before a shortcut of its window.
    QAction outer;
    outer.setShortcut(QKeySequence::Back);
    mail->view()->addAction(&outer);
    const QSignalSpy outerBacks(&outer, &QAction::triggered);
    push();
    EXPECT_EQ(press(0), 1);
    EXPECT_THAT(outerBacks, IsEmpty());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(outerBacks.size(), 1);

    // Of two nested navigation controllers, the inner one goes back as long as it can.
    auto *const inner = new NavigationController;
    inner->setBackInputEnabled(true);
    PushSegue({}, mail.get(), inner).perform();
    PushSegue({}, inner, screenWithField()).perform();
    auto *const deeper = screenWithField();
    PushSegue({}, inner, deeper).perform();
    QTest::keyClick(field(deeper), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(inner->depth(), 1);
    EXPECT_EQ(mail->depth(), 2);
    QTest::keyClick(field(inner->topViewController()), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(mail->depth(), 1);
}

TEST_F(MailStoryboard, going_forth_and_back_leaks_nothing)
{
    const auto objects = [this] {
        return mail->findChildren<QObject *>().size()
               + mail->view()->findChildren<QObject *>().size();
    };
    const auto before = objects();
    for (int i = 0; i < 20; ++i) {
        click(u"openButton"_s);
        click(u"doneButton"_s);
        click(u"settingsButton"_s);
    }
    EXPECT_EQ(liveControllers, 1);
    EXPECT_EQ(objects(), before);
    mail.reset();
    EXPECT_EQ(liveControllers, 0);
}

#include "NavigationTest.moc"
