// SPDX-License-Identifier: MIT
#include "TemporaryFolder.h"

#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSStoryboard.h>
#include <pellarvine/Platform/NSStoryboardSegue.h>
#include <pellarvine/Platform/NSViewController.h>

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <gmock/gmock.h>

using ::testing::HasSubstr;
using ::testing::StartsWith;
using namespace Qt::StringLiterals;

namespace {

constexpr auto form = R"(<ui version="4.0">
 <class>Form</class>
 <widget class="QWidget" name="form">
  <widget class="QLineEdit" name="field"/>
  <widget class="QWidget" name="box"/>
 </widget>
</ui>
)";

class Form : public NS::ViewController
{
    Q_OBJECT
    Q_PROPERTY(QLineEdit *field MEMBER field NOTIFY fieldChanged)

public:
    explicit Form(QObject *parent = nullptr)
        : NS::ViewController(parent)
    {
        ++count;
    }
    ~Form() override { --count; }

    void viewDidLoad() override { hadField = field; }
    bool shouldPerformSegue(const QString &, QObject *) override
    {
        ++timesAsked;
        if (endsWhenAsked)
            delete this;
        return true;
    }
    void prepareForSegue(NS::StoryboardSegue *segue, QObject *) override
    {
        prepared.append(segue->identifier());
    }

    inline static int count = 0;
    QLineEdit *field = nullptr;
    bool hadField = false;
    bool endsWhenAsked = false;
    QStringList prepared;
    inline static int timesAsked = 0;

Q_SIGNALS:
    void fieldChanged();
};

// A controller that deletes its view.
class Blind : public NS::ViewController
{
    Q_OBJECT

public:
    using NS::ViewController::ViewController;
    void viewDidLoad() override { delete view(); }
};

// A widget whose own parts have names as well.
class Postcard : public QWidget
{
    Q_OBJECT

public:
    explicit Postcard(QWidget *parent = nullptr)
        : QWidget(parent)
    {
        (new QLabel(this))->setObjectName(u"field"_s);
    }
};

class NSStoryboard : public ::testing::Test
{
public:
    static void SetUpTestSuite()
    {
        NS::registerClass<Form>();
        NS::registerClass<Postcard>();
        NS::registerClass<QObject>();
    }

    // A storyboard with those elements in it, beside an interface file Form.ui.
    QString storyboard(const QByteArray &elements, const QByteArray &attributes = {})
    {
        folder.file(u"Form.ui"_s, form);
        return folder.file(u"Test.storyboard"_s,
                           "<storyboard" + attributes + ">\n" + elements + "\n</storyboard>\n");
    }

    // The message of the error, without the file's name in front.
    std::string problem(const std::function<void()> &action)
    {
        try {
            action();
        } catch (const NS::StoryboardError &error) {
            const std::string where = qPrintable(folder.filePath(u"Test.storyboard"_s));
            EXPECT_THAT(error.what(), StartsWith(where));
            return std::string(error.what()).substr(where.size());
        }
        return {};
    }

    // The same for a file.
    std::string problemIn(const QString &path)
    {
        return problem([&] { NS::Storyboard::storyboardWithContentsOfFile(path); });
    }

    bool fitsSchema(const QString &path)
    {
        QProcess xmllint;
        xmllint.start(u"xmllint"_s, { u"--noout"_s, u"--relaxng"_s, u"" SCHEMA ""_s, path });
        EXPECT_TRUE(xmllint.waitForFinished());
        return xmllint.exitCode() == 0;
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(NSStoryboard, what_is_wrong_in_a_file_is_told_with_its_line_and_column)
{
    const QByteArray a = "<scene identifier='a' class='Form'/>\n";
    const QByteArray b = "<scene identifier='b' class='Form'/>\n";
    const QByteArray c = "<scene identifier='c' class='Form'/>\n";
    const QByteArray embed = "<embed container='box' ";
    const QByteArray segue = "<segue class='StoryboardSegue' source='a' destination='a' ";
    const std::tuple<QByteArray, const char *, bool> rows[] = {
        { "<scene", ":3:2: ", false },
        { "\xff", ":1:1: It is not text in UTF-8.", false },
        { " text", ":2:2: there is text between the elements", false },
        { "<scene identifier='a' class='Form'/>\r\n\r\n  text",
          ":4:3: there is text between the elements", false },
        { "  <scenery/>", ":2:3: <scenery> does not belong in <storyboard>", false },
        { "<scene identifier='a' class='Form'><segue/></scene>",
          ":2:36: <segue> does not belong in <scene>", false },
        { "<scene identifier='a'/>", ":2:1: <scene> lacks the attribute \"class\"", false },
        { "<scene identifier='' class='Form'/>", ":2:1: the attribute \"identifier\" is empty",
          false },
        { "<scene identifier='a' class='Form' color='red'/>",
          ":2:1: <scene> has no attribute \"color\" (identifier, class, interface)", false },
        { a + a, ":3:1: there is a scene \"a\" already", true },
        { a + b + embed + "source='a' destination='b'/>\n" + embed + "source='a' destination='b'/>",
          ":5:1: there is a scene in \"box\" of the scene \"a\" already", true },
        { "<scene identifier='a' class='Forn'/>", ":2:1: there is no class \"Forn\" (", true },
        { "<scene identifier='a' class='Form' interface='Lost.ui'/>",
          ":2:1: there is no interface file \"Lost.ui\"", true },
        { "<scene identifier='a' class='QObject' interface='Form.ui'/>",
          ":2:1: \"QObject\" is no view controller and takes no interface", true },
        { a + "<segue class='StoryboardSegue' source='a' destination='b' identifier='s'/>",
          ":3:1: there is no scene \"b\" (a)", true },
        { a + "<segue class='Jump' source='a' destination='a' identifier='s'/>",
          ":3:1: there is no segue class \"Jump\" (NS::StoryboardSegue", true },
        { a + segue + "/>", ":3:1: <segue> has neither an identifier nor a signal to begin at",
          false },
        { a + segue + "identifier='s' object='x'/>", ":3:1: <segue> has an object but no signal",
          false },
        { a + segue + "identifier='s'/>\n" + segue + "identifier='s'/>",
          ":4:1: the scene \"a\" has a segue \"s\" already", true },
        { "<scene identifier='a' class='QObject'/>\n" + segue + "identifier='s'/>",
          ":3:1: the scene \"a\" is a \"QObject\", which is no view controller", true },
        { a + b + embed + "source='a' destination='b'/>\n" + embed + "source='b' destination='a'/>",
          ":5:1: the scene \"a\" is embedded in itself", true },
        { a + b + c + embed + "source='a' destination='b'/>\n" + embed
                  + "source='b' destination='c'/>\n" + embed + "source='c' destination='b'/>",
          ":7:1: the scene \"b\" is embedded in itself", true },
    };
    for (const auto &[elements, expected, isInSchema] : rows) {
        const QString path = storyboard(elements);
        EXPECT_THAT(problemIn(path), StartsWith(expected)) << elements.constData();
        EXPECT_EQ(fitsSchema(path), isInSchema) << elements.constData();
    }
    // The message lists the registered classes, those of other tests too.
    EXPECT_THAT(problemIn(storyboard("<scene identifier='a' class='Forn'/>")),
                testing::AllOf(testing::ContainsRegex("[(, ]Form[,)]"),
                               testing::Not(HasSubstr("NS::TextField"))));
    EXPECT_THAT(problemIn(storyboard({}, " initialScene='a'")),
                StartsWith(":1:1: there is no scene \"a\""));
    EXPECT_THAT(problemIn(folder.file(u"Test.storyboard"_s, "<board/>")),
                StartsWith(":1:1: the outermost element is not <storyboard>"));
    QFile::remove(storyboard({}));
    try {
        NS::Storyboard::storyboardWithName(u"Absent"_s);
        ADD_FAILURE() << "there is no such file";
    } catch (const NS::StoryboardError &error) {
        EXPECT_EQ(error.fileName(), u":/Absent.storyboard"_s) << "where most programs have it";
    }
}

TEST_F(NSStoryboard, a_file_that_would_grow_as_it_is_read_or_shown_is_refused)
{
    const auto read = [&](const QByteArray &contents) {
        return problemIn(folder.file(u"Test.storyboard"_s, contents));
    };
    const QByteArray long_(4000, 'a');
    EXPECT_THAT(read("\n <!DOCTYPE storyboard [<!ENTITY e '" + long_ + "'>]>\n<storyboard>"
                     + QByteArray("&e;").repeated(1000) + "</storyboard>"),
                StartsWith(":2:2: a document type declaration with contents is not allowed"));
    EXPECT_THAT(read("<!DOCTYPE storyboard [<!ENTITY e SYSTEM 'file:///etc/hostname'>]>"
                     "<storyboard/>"),
                StartsWith(":1:1: a document type declaration with contents"));
    EXPECT_EQ(read("<!DOCTYPE storyboard SYSTEM 'storyboard.dtd'><storyboard/>"), "");

    QByteArray scenes;
    for (int i = 0; i < 26; ++i) {
        const QByteArray name = 's' + QByteArray::number(i);
        scenes += "<scene identifier='" + name + "' class='Form' interface='Form.ui'/>\n";
        for (int twice = 0; i > 0 && twice < 2; ++twice)
            scenes += "<embed source='s" + QByteArray::number(i - 1) + "' destination='" + name
                      + "' container='" + (twice ? "box" : "field") + "'/>";
    }
    EXPECT_THAT(problemIn(storyboard(scenes)),
                HasSubstr("more than 1000 scenes lie within the scene \"s"));
}

TEST_F(NSStoryboard, outlets_triggers_and_containers_are_checked_when_the_view_is_loaded)
{
    const QByteArray segue = "<segue class='StoryboardSegue' source='a' destination='a' ";
    const std::tuple<QByteArray, QByteArray, const char *> rows[] = {
        { "<outlet property='field' object='feld'/>",
          {},
          ":3:1: the scene \"a\" has no object \"feld\"" },
        { "<outlet property='feld' object='field'/>", {}, ":3:1: Form has no key \"feld\"" },
        { "<outlet property='field' object='box'/>", {}, ":3:1: " },
        { {},
          segue + "object='feld' signal='x'/>",
          ":4:1: the scene \"a\" has no object \"feld\"" },
        { {}, segue + "object='field' signal='x'/>", ":4:1: QLineEdit has no signal \"x\"" },
        { {}, segue + "signal='clicked'/>", ":4:1: Form has no signal \"clicked\"" },
        { {},
          "<embed source='a' destination='b' container='field2'/>",
          ":4:1: the scene \"a\" has no widget \"field2\"" },
        { {},
          "<embed source='a' destination='b' container='box'/>\n"
          "<embed source='a' destination='c' container='field'/>",
          ":7:36: the scene \"c\" has no object \"x\"" },
    };
    for (const auto &[outlet, rest, expected] : rows) {
        const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(storyboard(
                "<scene identifier='a' class='Form' interface='Form.ui'>\n" + outlet + "</scene>\n"
                + rest
                + "\n<scene identifier='b' class='Form'/>"
                  "\n<scene identifier='c' class='Form'><outlet property='field' object='x'/>"
                  "</scene>"));
        {
            const std::unique_ptr<QObject> made(
                    loaded->instantiateControllerWithIdentifier(u"a"_s));
            auto *const controller = qobject_cast<Form *>(made.get());
            EXPECT_THAT(problem([&] { controller->view(); }), StartsWith(expected));
            EXPECT_FALSE(controller->isViewLoaded());
            EXPECT_EQ(Form::count, 1) << expected;
        }
        EXPECT_EQ(Form::count, 0) << expected;
    }
}

TEST_F(NSStoryboard, outlets_and_embedded_scenes_are_there_when_the_view_has_been_loaded)
{
    auto storyboard = NS::Storyboard::storyboardWithContentsOfFile(this->storyboard(
            "<scene identifier='a' class='Form' interface='Form.ui'>"
            "<outlet property='field' object='field'/></scene>"
            "<scene identifier='b' class='Form'/>"
            "<embed identifier='inner' source='a' destination='b' container='box'/>",
            " initialScene='a'"));
    const std::unique_ptr<QObject> made(storyboard->instantiateInitialController());
    const std::weak_ptr<NS::Storyboard> watched = storyboard;
    storyboard.reset();
    EXPECT_FALSE(watched.expired()); // its controllers share it

    auto *const controller = qobject_cast<Form *>(made.get());
    ASSERT_TRUE(controller);
    EXPECT_FALSE(controller->isViewLoaded());
    auto *const box = controller->view()->findChild<QWidget *>(u"box"_s);
    EXPECT_TRUE(controller->hadField);
    EXPECT_EQ(controller->field->objectName(), u"field"_s);
    EXPECT_EQ(controller->prepared, QStringList(u"inner"_s));
    ASSERT_EQ(controller->childViewControllers().size(), 1);
    EXPECT_EQ(controller->childViewControllers()[0]->view()->parentWidget(), box);
}

TEST_F(NSStoryboard, names_are_those_of_the_form_and_not_of_parts_of_its_widgets)
{
    folder.file(u"Cards.ui"_s,
                "<ui version='4.0'><widget class='QWidget' name='cards'>"
                "<widget class='Postcard' name='card'/><widget class='QGroupBox' name='group'>"
                "<widget class='QLineEdit' name='field'/></widget></widget></ui>");
    const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(
            storyboard("<scene identifier='a' class='Form' interface='Cards.ui'>"
                       "<outlet property='field' object='field'/></scene>"
                       "<segue class='StoryboardSegue' source='a' destination='a' object='field' "
                       "signal='returnPressed'/>",
                       " initialScene='a'"));
    const std::unique_ptr<QObject> made(loaded->instantiateInitialController());
    auto *const controller = static_cast<Form *>(made.get());
    EXPECT_EQ(problem([&] { loaded->check(); }), "");
    EXPECT_EQ(problem([&] { controller->view(); }), "");
    EXPECT_TRUE(controller->field);
}

TEST_F(NSStoryboard, escape_in_an_embedded_dialog_is_left_to_the_window)
{
    folder.file(u"Dialog.ui"_s, "<ui version='4.0'><widget class='QDialog' name='dialog'/></ui>");
    const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(
            storyboard("<scene identifier='a' class='Form' interface='Form.ui'/>"
                       "<scene identifier='b' class='Form' interface='Dialog.ui'/>"
                       "<embed source='a' destination='b' container='box'/>",
                       " initialScene='a'"));
    const std::unique_ptr<QObject> made(loaded->instantiateInitialController());
    QDialog window;
    static_cast<Form *>(made.get())->view()->setParent(&window);
    window.show();
    auto *const dialog = window.findChild<QDialog *>();
    ASSERT_TRUE(dialog);
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isHidden());
    EXPECT_TRUE(window.isHidden());
}

TEST_F(NSStoryboard, tab_reaches_embedded_scenes_where_their_containers_are)
{
    folder.file(u"Columns.ui"_s,
                "<ui version='4.0'><widget class='QWidget' name='columns'>"
                "<widget class='QLineEdit' name='first'/><widget class='QWidget' name='left'/>"
                "<widget class='QLineEdit' name='between'/><widget class='QWidget' name='right'/>"
                "<widget class='QLineEdit' name='last'/></widget></ui>");
    folder.file(u"Controls.ui"_s,
                "<ui version='4.0'><widget class='QWidget' name='controls'>"
                "<widget class='QSpinBox' name='number'/>"
                "<widget class='QComboBox' name='choice'><property name='editable'><bool>true"
                "</bool></property></widget></widget></ui>");
    const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(
            storyboard("<scene identifier='a' class='Form' interface='Columns.ui'/>"
                       "<scene identifier='b' class='Form' interface='Controls.ui'/>"
                       "<embed source='a' destination='b' container='right'/>"
                       "<embed source='a' destination='b' container='left'/>",
                       " initialScene='a'"));
    const std::unique_ptr<QObject> made(loaded->instantiateInitialController());
    QWidget *const view = static_cast<Form *>(made.get())->view();
    view->show();
    QStringList names;
    auto *const first = view->findChild<QWidget *>(u"first"_s);
    first->setFocus();
    for (int i = 0; i < 20 && (i == 0 || view->focusWidget() != first); ++i) {
        QWidget *const reached = view->focusWidget();
        const QWidget *const form = reached->parentWidget();
        names.append(form == view
                             ? reached->objectName()
                             : form->parentWidget()->objectName() + u' ' + reached->objectName());
        QTest::keyClick(reached, Qt::Key_Tab);
    }
    EXPECT_EQ(names, QStringList({ u"first"_s, u"left number"_s, u"left choice"_s, u"between"_s,
                                   u"right number"_s, u"right choice"_s, u"last"_s }))
            << qPrintable(names.join(u", "_s));
}

TEST_F(NSStoryboard, a_trigger_ends_with_its_controller_and_with_its_controllers_view)
{
    const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(
            storyboard("<scene identifier='a' class='Form' interface='Form.ui'>"
                       "<outlet property='field' object='field'/></scene>"
                       "<segue class='StoryboardSegue' source='a' destination='a' object='field' "
                       "signal='returnPressed'/>",
                       " initialScene='a'"));
    const auto make = [&] {
        return static_cast<Form *>(loaded->instantiateInitialController());
    };
    QWidget keeper;
    const std::unique_ptr<Form> other(make());
    other->view()->setParent(&keeper);
    Form::timesAsked = 0;
    Q_EMIT other->field->returnPressed();
    EXPECT_EQ(Form::timesAsked, 1);
    other->setView(new QWidget);
    Q_EMIT other->field->returnPressed();

    auto *const ended = make();
    QLineEdit *field = (static_cast<void>(ended->view()), ended->field);
    ended->view()->setParent(&keeper);
    ended->setView(nullptr); // so that the view outlives its controller
    delete ended;
    Q_EMIT field->returnPressed();
    EXPECT_EQ(Form::timesAsked, 1);

    auto *const ending = make();
    field = (static_cast<void>(ending->view()), ending->field);
    ending->endsWhenAsked = true;
    ending->view()->setParent(&keeper);
    // The controller is deleted during a signal of its view, and deletes the view.
    QMetaObject::invokeMethod(field, &QLineEdit::returnPressed, Qt::DirectConnection);
    EXPECT_EQ(Form::timesAsked, 2);
    EXPECT_EQ(Form::count, 2); // the first one, and the one that the signal has made
}

TEST_F(NSStoryboard, a_scene_without_its_view_is_neither_embedded_nor_shown)
{
    NS::registerClass<Blind>();
    const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(storyboard(
            "<scene identifier='a' class='Form' interface='Form.ui'/>"
            "<scene identifier='b' class='Blind'/>"
            "<embed source='a' destination='b' container='box'/>"
            "<segue identifier='go' class='StoryboardSegue' source='a' destination='b'/>",
            " initialScene='a'"));
    const std::unique_ptr<QObject> made(loaded->instantiateInitialController());
    auto *const controller = static_cast<Form *>(made.get());
    EXPECT_TRUE(controller->view()->findChild<QWidget *>(u"box"_s)->children().isEmpty());
    EXPECT_EQ(controller->childViewControllers().size(), 1);
    controller->performSegue(u"go"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(controller->findChildren<Blind *>().size(), 1);
}

TEST_F(NSStoryboard, a_segue_leads_from_a_controller_whose_view_is_deleted)
{
    const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(storyboard(
            "<scene identifier='a' class='Form'/>"
            "<segue identifier='go' class='StoryboardSegue' source='a' destination='a'/>",
            " initialScene='a'"));
    const std::unique_ptr<QObject> made(loaded->instantiateInitialController());
    auto *const source = static_cast<Form *>(made.get());
    delete source->view();
    source->performSegue(u"go"_s);
    auto *const destination = source->findChild<Form *>();
    ASSERT_TRUE(destination);
    EXPECT_TRUE(destination->view()->isVisible());
    destination->setTitle(u"Diary"_s);
    EXPECT_EQ(destination->view()->windowTitle(), u"Diary"_s);
    destination->view()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Form::count, 1);
}

TEST_F(NSStoryboard, an_unknown_identifier_is_thrown_with_those_that_are_known)
{
    const auto loaded = NS::Storyboard::storyboardWithContentsOfFile(storyboard(
            "<scene identifier='a' class='Form'/><scene identifier='b' class='Form'/>"
            "<segue identifier='go' class='StoryboardSegue' source='a' destination='b'/>"));
    EXPECT_EQ(loaded->identifiers(), QStringList({ u"a"_s, u"b"_s }));
    EXPECT_EQ(loaded->instantiateInitialController(), nullptr);
    try {
        loaded->instantiateControllerWithIdentifier(u"c"_s);
        ADD_FAILURE();
    } catch (const NS::UnknownIdentifierError &error) {
        EXPECT_EQ(error.identifier(), u"c"_s);
        EXPECT_EQ(error.knownIdentifiers(), loaded->identifiers());
        EXPECT_THAT(error.what(), HasSubstr("Test.storyboard has no scene \"c\" (a, b)"));
    }
    const std::unique_ptr<QObject> made(loaded->instantiateControllerWithIdentifier(u"a"_s));
    EXPECT_THAT([&] { static_cast<Form *>(made.get())->performSegue(u"stay"_s); },
                testing::ThrowsMessage<NS::UnknownIdentifierError>(
                        HasSubstr("has no segue \"stay\" (go)")));
    Form plain;
    EXPECT_THROW(plain.performSegue(u"go"_s), NS::UnknownIdentifierError);
}

#include "NSStoryboardTest.moc"
