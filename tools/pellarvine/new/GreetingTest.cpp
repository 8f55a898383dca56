#include "Classes.h"
#include "GreetingController.h"

#include <pellarvine/Platform/NSStoryboard.h>

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

class GreetingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { pellarvineRegisterClasses(); }

    void the_window_shows_the_greeting()
    {
        const std::unique_ptr<QObject> scene(
                NS::Storyboard::storyboardWithName(u"Main"_s)->instantiateInitialController());
        QWidget *const window = qobject_cast<NS::ViewController *>(scene.get())->view();
        window->show();
        QVERIFY(window->findChild<QMenu *>(u"helpMenu"_s));
        QVERIFY(window->findChild<QLabel *>(u"greetingLabel"_s)->isVisible());
    }

    void the_greeting_contains_the_typed_name()
    {
        const auto storyboard = NS::Storyboard::storyboardWithName(u"Main"_s);
        const std::unique_ptr<QObject> scene(
                storyboard->instantiateControllerWithIdentifier(u"greeting"_s));
        auto *const controller = qobject_cast<GreetingController *>(scene.get());
        QVERIFY(controller);
        const auto *const label = controller->view()->findChild<QLabel *>(u"greetingLabel"_s);
        QCOMPARE(label->text(), u"Hello!"_s);
        QTest::keyClicks(controller->view()->findChild<QLineEdit *>(u"nameField"_s), u"Ada"_s);
        QCOMPARE(label->text(), u"Hello, Ada!"_s);
    }
};

QTEST_MAIN(GreetingTest)
#include "GreetingTest.moc"
