// SPDX-License-Identifier: MIT
#include "FormsSticker.h"
#include "Person.h"
#include "ui_Account.h"

#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSView.h>
#include <pellarvine/Platform/NSViewController.h>
#include <pellarvine/Platform/NSWindowController.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStringConverter>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTranslator>
#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

class Owner : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QWidget *view MEMBER view)
    Q_PROPERTY(QLineEdit *nameField MEMBER nameField)
    Q_PROPERTY(QAction *renameAction MEMBER renameAction)
    Q_PROPERTY(Person *person READ person CONSTANT)
    Q_PROPERTY(QWidget *fixed READ fixed CONSTANT)

public:
    Person *person() const { return m_person; }
    QWidget *fixed() const { return nullptr; }

    Q_INVOKABLE void save(bool isChecked) { saves.append(isChecked); }
    Q_INVOKABLE void save() { saves.append(false); }
    Q_INVOKABLE void take(int) { }
    Q_INVOKABLE void take(const QString &) { }
    Q_INVOKABLE void awakeFromNib()
    {
        Forms::Sticker::calls.append(u"owner"_s);
        if (isStubborn)
            throw std::runtime_error("no");
        if (deletesView)
            delete view;
    }

    QPointer<QWidget> view;
    QPointer<QLineEdit> nameField;
    QPointer<QAction> renameAction;
    QList<bool> saves;
    bool isStubborn = false;
    bool deletesView = false;

private:
    Person *m_person = new Person(u"Ada"_s, this);
};

// A text that can be made from char and char16_t literals.
struct Text : QString
{
    Text(const QString &text)
        : QString(text)
    { }
    Text(const char *text)
        : QString(QString::fromUtf8(text))
    { }
};

// Markup with places for other texts: %1, %2 and so on.
class Markup
{
public:
    explicit Markup(const char *text)
        : m_text(text)
    { }
    template <typename... Parts>
    QString operator()(const Parts &...parts) const
    {
        return m_text.arg(Text(parts)...);
    }

private:
    Text m_text;
};

class Nib : public ::testing::Test
{
protected:
    void SetUp() override
    {
        NS::registerClass<Forms::Sticker>();
        Forms::Sticker::calls.clear();
    }

    // A form that contains `inside`, from line 2 on.
    static NS::Nib form(const Text &inside, const Text &behind = "")
    {
        const Markup markup("<ui version='4.0'><class>Form</class><widget class='QWidget' "
                            "name='Form'>\n%1</widget>%2</ui>");
        return NS::Nib(markup(inside, behind).toUtf8(), u"Form.ui"_s);
    }

    static QString property(const Text &name, const Text &value)
    {
        return u"<property name='%1' stdset='0'><string>%2</string></property>"_s.arg(
                name, value.toHtmlEscaped());
    }

    Owner owner;
};

// A widget with a form of its own, which its constructor loads.
class Card : public QWidget
{
    Q_OBJECT

public:
    explicit Card(QWidget *parent = nullptr)
        : QWidget(parent)
    {
        if (isBroken)
            throw std::runtime_error("broken");
        const QByteArray contents =
                "<ui version='4.0'><class>Card</class><widget class='QWidget' "
                "name='card'><widget class='QLabel' name='label'/></widget></ui>";
        NS::Nib(contents, u"Card.ui"_s).instantiate(nullptr, this);
    }

    inline static bool isBroken = false;
};

// An owner that puts a view of its own in the place of a widget.
class Stage : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QWidget *placeholder READ view WRITE replace)

public:
    QWidget *view() const { return m_view; }
    void replace(QWidget *placeholder)
    {
        if (!placeholder)
            return;
        m_view = new QLabel(placeholder->parentWidget());
        delete placeholder;
    }

private:
    QPointer<QWidget> m_view;
};

// The error that the action throws.
template <typename Action>
NS::NibError errorOf(Action action)
{
    try {
        action();
    } catch (const NS::NibError &error) {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return { NS::NibError::malformed, {}, 0, 0, {}, {}, {} };
}

} // namespace

TEST_F(Nib, a_form_comes_with_its_classes_outlets_bindings_and_actions)
{
    const std::unique_ptr<QWidget> root(NS::Nib(u"Account"_s).instantiate(&owner));
    EXPECT_EQ(owner.view, root.get());
    EXPECT_EQ(owner.nameField, root->findChild<QLineEdit *>(u"nameField"_s));
    EXPECT_EQ(owner.renameAction, root->findChild<QAction *>(u"renameAction"_s));

    auto *const label = root->findChild<QLabel *>(u"nameLabel"_s);
    EXPECT_EQ(label->buddy(), owner.nameField);
    EXPECT_EQ(label->text(), u"Ada"_s);
    EXPECT_FALSE(label->isEnabled());
    root->findChild<QAbstractButton *>(u"memberBox"_s)->setChecked(true);
    EXPECT_TRUE(label->isEnabled());
    owner.nameField->setText(u"Grace"_s);
    EXPECT_EQ(owner.person()->name, u"Grace"_s);
    EXPECT_EQ(label->text(), u"Grace"_s);
    EXPECT_EQ(root->windowTitle(), u"Grace"_s);

    auto *const button = root->findChild<QPushButton *>(u"saveButton"_s);
    button->click();
    owner.renameAction->trigger();
    EXPECT_THAT(owner.saves, ::testing::ElementsAre(true, false));
    EXPECT_TRUE(root->findChild<Forms::Sticker *>()->isHidden());
}

TEST_F(Nib, nothing_that_a_file_says_of_a_custom_widget_is_lost)
{
    const std::unique_ptr<QWidget> root(NS::Nib(u"Account"_s).instantiate(&owner));
    auto *const sticker = root->findChild<Forms::Sticker *>();
    ASSERT_TRUE(sticker);
    EXPECT_EQ(sticker->sides(), Forms::Sticker::left | Forms::Sticker::right);
    EXPECT_EQ(sticker->mode, Forms::Sticker::loud);
    EXPECT_EQ(sticker->gap, 3.0);
    EXPECT_EQ(sticker->tint, QColor(Qt::red));
    EXPECT_EQ(sticker->property("note"), u"spare"_s);
    EXPECT_EQ(sticker->pages, QStringList({ u"firstPage"_s, u"secondPage"_s }));
    EXPECT_EQ(sticker->field, owner.nameField);

    // The class also matches without its namespace.
    const Text page("<widget class='Sticker' name='a'><widget class='QLabel' name='b'/></widget>");
    const Markup custom("<customwidgets><customwidget><class>Sticker</class><extends>QFrame"
                        "</extends><container>1</container><addpagemethod>%1</addpagemethod>"
                        "</customwidget></customwidgets>");
    const std::unique_ptr<QWidget> other(form(page, custom("addPage")).instantiate());
    EXPECT_EQ(other->findChild<Forms::Sticker *>()->pages, QStringList(u"b"_s));
    EXPECT_EQ(errorOf([&] { form(page, custom("addPgae")).instantiate(); }).name(), u"addPgae"_s);
}

TEST_F(Nib, everything_is_awakened_once_with_its_outlets_set_and_children_first)
{
    const Markup markup("<widget class='Sticker' name='a'><widget class='Sticker' name='b'/>"
                        "<widget class='Sticker' name='c'/></widget><widget class='Sticker' "
                        "name='d'/><widget class='QLineEdit' name='e'>%1</widget>");
    const NS::Nib nib = form(markup(property("outlets", "a.field\nd.field")));
    const std::unique_ptr<QWidget> root(nib.instantiate(&owner));
    EXPECT_EQ(Forms::Sticker::calls.join(u' '), u"b c a d owner"_s);
    EXPECT_TRUE(root->findChild<Forms::Sticker *>(u"a"_s)->hadField);
    EXPECT_TRUE(root->findChild<Forms::Sticker *>(u"d"_s)->hadField);

    // awaken() of an outer tree does not call them again.
    NS::Nib::awaken(root.get(), &owner);
    EXPECT_EQ(Forms::Sticker::calls.join(u' '), u"b c a d owner owner"_s);
}

TEST_F(Nib, a_tree_that_setupUi_made_is_connected_and_awakened_likewise)
{
    QWidget root;
    Ui::Account ui;
    ui.setupUi(&root);
    NS::Nib::awaken(&root, &owner);
    EXPECT_EQ(owner.view, &root);
    EXPECT_EQ(owner.nameField, ui.nameField);
    EXPECT_EQ(ui.nameLabel->text(), u"Ada"_s);
    EXPECT_TRUE(ui.sticker->hadField);
    EXPECT_EQ(Forms::Sticker::calls.join(u' '), u"sticker owner"_s);
    ui.saveButton->click();
    NS::Nib::awaken(&root);
    EXPECT_EQ(ui.sticker->awakenings, 1);
    EXPECT_THAT(owner.saves, ::testing::ElementsAre(true));

    QWidget other;
    auto *const field = new QLineEdit(&other);
    field->setObjectName(u"field"_s);
    field->setProperty("outlets", u"owner.nobody"_s);
    const NS::NibError error = errorOf([&] { NS::Nib::awaken(&other, &owner); });
    EXPECT_STREQ(error.what(), "field: Owner has no key \"nobody\" (key path \"nobody\")");
}

TEST_F(Nib, a_file_is_found_by_name_and_the_hosts_before_the_librarys)
{
    const QString beside = QCoreApplication::applicationDirPath() + u"/NibTestBeside.ui"_s;
    ASSERT_TRUE(QFile::copy(u":/Account.ui"_s, beside));
    const std::pair<QString, QString> rows[] = {
        { u"Account"_s, u":/Account.ui"_s },
        { u"Account.ui"_s, u":/Account.ui"_s },
        { u"Nested"_s, u":/forms/deep/Nested.ui"_s },
        { u"deep/Nested"_s, u":/forms/deep/Nested.ui"_s },
        { u"forms/deep/Nested"_s, u":/forms/deep/Nested.ui"_s },
        { u":/pellarvine/Account.ui"_s, u":/pellarvine/Account.ui"_s },
        { u"LibraryOnly"_s, u":/pellarvine/LibraryOnly.ui"_s },
        { u"NibTestBeside"_s, beside },
        { beside, beside },
        { u"Missing"_s, {} },
        { u"forms"_s, {} },
        { {}, {} },
    };
    for (const auto &[name, path] : rows)
        EXPECT_EQ(NS::Nib::path(name), path) << qPrintable(name);
    EXPECT_EQ(NS::Nib(u"NibTestBeside"_s).fileName(), beside);
    QFile::setPermissions(beside, QFile::WriteOwner);
    QFile::remove(beside);

    const NS::NibError error = errorOf([] { NS::Nib(u"Missing"_s); });
    EXPECT_EQ(error.reason(), NS::NibError::fileNotFound);
    EXPECT_STREQ(error.what(), "Missing: there is no interface file of this name");
}

TEST_F(Nib, what_a_file_names_and_nobody_has_is_an_error_with_its_place_object_and_name)
{
    using Error = NS::NibError;
    using enum NS::NibError::Reason;
    const Markup field("<widget class='QLineEdit' name='field'>%1</widget>");
    const auto entry = [&](const Text &name, const Text &value) {
        return field(property(name, value));
    };
    const struct
    {
        Text inside;
        Error::Reason reason;
        const char *name;
        const char *message;
        int column;
    } rows[] = {
        { "<widget class='Bdge' name='field'/>", unknownClass, "Bdge", "there is no class \"Bdge\"",
          1 },
        { "<widget class='NS::ViewController' name='field'/>", unknownClass, "NS::ViewController",
          "is no widget", 1 },
        { "<layout class='QFlowLayout' name='field'/>", unknownClass, "QFlowLayout",
          "no layout class", 1 },
        { field("<property name='texture'><string>x</string></property>"), unknownProperty,
          "texture", "QLineEdit has no property \"texture\"", 40 },
        { field("<property name='maxLength'><string>x</string></property>"), unknownProperty,
          "maxLength", "cannot be \"x\"", 40 },
        { field("<property name='alignment'><set>Qt::AlignLeft|Qt::AlignDown</set></property>"),
          unknownProperty, "alignment", "cannot be", 40 },
        { field("<property name='displayText'><string>x</string></property>"), unknownProperty,
          "displayText", "cannot be", 40 },
        { "<widget class='QLabel' name='field'><property "
          "name='buddy'><cstring>x</cstring></property></widget>",
          unknownObject, "x", "buddy", 37 },
        { "<widget class='QLabel' name='field'><property "
          "name='pixmap'><pixmap>no.png</pixmap></property></widget>",
          unknownImage, "no.png", "no picture", 69 },
        { entry("outlets", "owner.nobody"), unknownKeyPath, "nobody", "Owner has no key \"nobody\"",
          84 },
        { entry("outlets", "owner.renameAction"), unknownKeyPath, "renameAction",
          "cannot take this value", 84 },
        { entry("outlets", "owner.fixed"), unknownKeyPath, "fixed", "cannot write", 84 },
        { entry("outlets", "owner.person.partner.name"), unknownKeyPath, "person.partner.name",
          "there is no object at \"person.partner\"", 84 },
        { entry("outlets", "  nobody.field"), unknownObject, "nobody", "no object \"nobody\"", 86 },
        { entry("outlets", "field"), malformed, "field", "has the form", 84 },
        { entry("bindings", "text = owner.person.nmae"), unknownKeyPath, "person.nmae",
          "Person has no key \"nmae\"", 85 },
        { entry("bindings", "txet = owner.person.name"), unknownKeyPath, "txet",
          "QLineEdit has no key \"txet\"", 85 },
        { entry("bindings", "text = owner.person.secret"), unknownKeyPath, "person.secret",
          "key \"secret\"", 85 },
        { entry("actions", "clicked -> owner.save"), unknownMethod, "clicked",
          "QLineEdit has no signal \"clicked\"", 84 },
        { entry("actions", "textChanged -> owner.sav"), unknownMethod, "sav",
          "Owner has no slot \"sav\"", 84 },
        { entry("actions", "textChanged -> owner.save(bool)"), unknownMethod, "save(bool)",
          "other arguments", 84 },
        { entry("actions", "returnPressed -> owner.person.partner.deleteLater"), unknownKeyPath,
          "person.partner", "no object at", 84 },
        { entry("constraints", "leading = nobody.leading"), unknownObject, "nobody",
          "no widget \"nobody\"", 88 },
    };
    for (const auto &row : rows) {
        const Error error = errorOf([&] { form(row.inside).instantiate(&owner); });
        EXPECT_EQ(error.reason(), row.reason) << error.what();
        EXPECT_EQ(error.object(), row.reason == unknownImage ? QString() : u"field"_s);
        EXPECT_EQ(error.name(), QString::fromUtf8(row.name)) << error.what();
        EXPECT_THAT(error.what(), ::testing::HasSubstr(row.message));
        EXPECT_EQ(error.line(), 2) << error.what();
        EXPECT_EQ(error.column(), row.column) << error.what();
        EXPECT_EQ(error.file(), u"Form.ui"_s);
    }
    EXPECT_THAT(errorOf([&] {
                    form(entry("bindings", "enabled = owner.person.isMember\n  text = owner.x"))
                            .instantiate(&owner);
                }).what(),
                ::testing::StartsWith("Form.ui:3:3: field: Owner has no key \"x\""));
    EXPECT_EQ(errorOf([&] { form(entry("outlets", "owner.view")).instantiate(); }).reason(),
              unknownObject);
}

TEST_F(Nib, no_misspelling_is_left_out_in_silence)
{
    using Error = NS::NibError;
    const Markup value(
            "<widget class='QSpinBox' name='box'><property name='%1'>%2</property></widget>");
    const Markup page("<widget class='QTabWidget' name='tabs'><widget class='QWidget' "
                      "name='page'><attribute name='%1'>%2</attribute></widget></widget>");
    const Markup item("<widget class='QListWidget' name='list'><item><property "
                      "name='%1'%3>%2</property></item></widget>");
    const Markup layout("<layout class='QFormLayout'><property name='%1'%3>%2</property></layout>");
    const Markup spacer("<layout class='QVBoxLayout'><item><spacer name='gap'><property "
                        "name='%1'%3>%2</property></spacer></item></layout>");
    const char *const dynamic = " stdset='0'";
    const char *const entry = "<string>owner.view</string>";
    const auto palette = [&](const char *role, const char *brush, const char *color) {
        const Markup markup("<palette><active><colorrole role='%1'><brush%2><color%3/></brush>"
                            "</colorrole></active></palette>");
        return value("palette", markup(role, brush, color));
    };
    const Markup button("<widget class='QPushButton' name='button'>%1</widget>");
    const Markup twice("<widget class='%1' name='area'><widget class='%2' name='a'/><widget "
                       "class='%2' name='b'/></widget>");
    const Markup inForm(
            "<layout class='QFormLayout'><item row='3' column='1'><widget class='QLabel' "
            "name='a'/></item><item %1><widget class='QLabel' name='b'/></item></layout>");
    const Markup table("<widget class='QTableWidget' name='table'><row/><column/><item "
                       "%1><property name='text'><string>a</string></property></item></widget>");
    const Markup laidOut("<layout class='QGridLayout' %1><item %2><widget class='QLabel' "
                         "name='label'/></item></layout>");
    struct Fault
    {
        Text inside;
        const char *object;
        const char *name;
        const char *message;
    };
    const Fault strangers[] = {
        { "<addaction name='nosuch'/>", "Form", "nosuch", "no action or menu \"nosuch\"" },
        { "<widget class='QLabel' name='label'/><addaction name='label'/>", "Form", "label",
          "no action or menu" },
        { "<zorder>nosuch</zorder>", "Form", "nosuch", "no widget" },
        { button("<attribute name='buttonGroup'><string>nosuch</string></attribute>"), "button",
          "nosuch", "no button group" },
        { item("outlets", entry, dynamic), "", "outlets", "an item" },
        { layout("outlets", entry, dynamic), "", "outlets", "QFormLayout has no object" },
        { spacer("outlets", entry, dynamic), "gap", "outlets", "a spacer" },
    };
    const Fault misfits[] = {
        { button("<attribute name='buttonGruop'><string>a</string></attribute>"), "button",
          "buttonGruop", "no attribute \"buttonGruop\"" },
        { page("ttle", "<string>a</string>"), "page", "ttle", "no attribute" },
        { page("title", "<number>1</number>"), "page", "title", "cannot be \"1\"" },
        { item("txet", "<string>a</string>", ""), "", "txet", "an item has no property \"txet\"" },
        { item("checkState", "<enum>Qt::Chequed</enum>", ""), "", "checkState", "Qt::Chequed" },
        { layout("topMragin", "<number>1</number>", ""), "", "topMragin",
          "QFormLayout has no property" },
        { layout("rowWrapPolicy", "<enum>QFormLayout::WrapNone</enum>", ""), "", "rowWrapPolicy",
          "WrapNone" },
        { spacer("sizeTyp", "<enum>Fixed</enum>", ""), "gap", "sizeTyp",
          "a spacer has no property" },
        { spacer("orientation", "<enum>Qt::Upwards</enum>", ""), "gap", "orientation",
          "Qt::Upwards" },
        { laidOut("", "row='x'"), "", "row", "no whole number" },
        { laidOut("", "row='0' column='0' alignment='Qt::AlignLeff'"), "", "Qt::AlignLeff",
          "alignment" },
        { laidOut("columnstretch='0,x'", "row='0' column='0'"), "", "columnstretch", "\"x\"" },
        { value("maximum", "<number>abc</number>"), "box", "maximum",
          "\"abc\" is no whole number" },
        { value("maximum", "<number>99999999999</number>"), "box", "maximum", "out of range" },
        { value("font", "<font><pointsize>-3</pointsize></font>"), "box", "font", "out of range" },
        { button(property("binding", "text = box.value")), "button", "binding",
          "is the name misspelt?" },
        { button(property("Action", "delete\nclicked -> box.hide")), "button", "Action",
          "has the entries of \"actions\"" },
        { value("enabled", "<bool>maybe</bool>"), "box", "enabled",
          "\"maybe\" is neither true nor false" },
        { value("suffix", "<rect><x>0</x><y>0</y><width>1</width><height>1</height></rect>"), "box",
          "suffix", "cannot be \"<rect>\"" },
        { value("geometry", "<rect><x>0</x><y>O</y></rect>"), "box", "geometry",
          "\"O\" is no whole number" },
        { value("sizePolicy", "<sizepolicy hsizetype='Fxied' vsizetype='Fixed'/>"), "box",
          "sizePolicy", "cannot be" },
        { value("cursor", "<cursorShape>Arow</cursorShape>"), "box", "cursor", "Arow" },
        { value("maximum", "<enum>Qt::AlignLeft</enum>"), "box", "maximum", "Qt::AlignLeft" },
        { palette("WindowTxet", "", ""), "box", "palette", "no role \"WindowTxet\"" },
        { palette("Window", " brushstyle='Solid'", ""), "box", "palette",
          "no brushstyle \"Solid\"" },
        { palette("Window", "", " alpha='300'"), "box", "palette", "\"300\" is no whole number" },
        { value("font", "<font><stylestrategy>PreferAlias</stylestrategy></font>"), "box", "font",
          "no stylestrategy \"PreferAlias\"" },
        { value("locale", "<locale language='Germn' country='Germany'/>"), "box", "locale",
          "no language \"Germn\"" },
        { value("locale", "<locale language='German' country='Germny'/>"), "box", "locale",
          "no country \"Germny\"" },
        { "<action name='go'><property name='shortcut'><string "
          "notr='true'>Strg+S</string></property></action>",
          "go", "shortcut", "cannot be \"Strg+S\"" },
        { "<action name='go'><property name='shortcut'><string>Ctrl+K, "
          "Ctrl+</string></property></action>",
          "go", "shortcut", "cannot be \"Ctrl+K, Ctrl+\"" },
        { value("suffix", ""), "box", "suffix", "no value" },
        { button("<property name='outlets' stdset='0'/>"), "button", "outlets", "no value" },
        { page("title", ""), "page", "title", "no value" },
        { value("suffix", "<string>a</string><string>b</string>"), "box", "suffix",
          "a second value" },
        { button("<property name='mood' stdset='0'><enum>Mood::glad</enum></property>"), "button",
          "mood", "no property \"mood\"" },
        { "<widget class='QDateEdit' name='box'><property "
          "name='date'><date><year>2024</year><month>2</month><day>31</day></date></property></"
          "widget>",
          "box", "date", "no date 2024-2-31" },
        { laidOut("", "row='-1' column='0'"), "", "row", "out of range" },
        { laidOut("", "row='0' column='99999999'"), "", "column", "out of range" },
        { laidOut("", "row='0' column='0' colspan='0'"), "", "colspan", "out of range" },
        { laidOut("rowstretch='-1'", "row='0' column='0'"), "", "rowstretch", "out of range" },
        { inForm("row='0' column='2'"), "", "column", "column 0, 1 or both" },
    };
    const Fault malformed[] = {
        { button(property("constraints", "width = 4 @ 0")), "button", "width = 4 @ 0",
          "not from 1 to 1000" },
        { button(property("constraints", "width = 4 @ 5000")), "button", "width = 4 @ 5000",
          "not from 1 to 1000" },
        { "<layout class='QVBoxLayout'>stray</layout>", "", "", "text between the elements" },
        { "<property name='enabled'>stray<bool>true</bool></property>", "", "",
          "text between the elements" },
        { "<layout class='QVBoxLayout' name='a'/><layout class='QVBoxLayout' name='b'/>", "b", "b",
          "has a layout already" },
        { "<layout class='QVBoxLayout'><item><widget class='QLabel' name='a'/><spacer "
          "name='b'/></item></layout>",
          "b", "b", "has an object already" },
        { twice("QScrollArea", "QLabel"), "b", "QLabel",
          "the QScrollArea \"area\" has a widget already" },
        { twice("QMainWindow", "QLabel"), "b", "QLabel", "has a central widget already" },
        { twice("QMainWindow", "QMenuBar"), "b", "QMenuBar", "has a menu bar already" },
        { "<widget class='QMenuBar' name='a'/><widget class='QMenuBar' name='b'/>", "b", "QMenuBar",
          "has a menu bar already" },
        { inForm("row='3' column='0' colspan='2'"), "", "", "an item in row 3, column 1 already" },
        { table("row='1' column='0'"), "table", "QTableWidget", "no cell in row 1, column 0" },
        { table("row='0'"), "table", "QTableWidget", "no cell in row 0, column -1" },
        { "<nosuch/>", "", "", "Form.ui:2:1: Unexpected element nosuch" },
        { value("font", "<font><sizee>3</sizee></font>"), "", "",
          "Form.ui:2:65: Unexpected element sizee" },
        { "<layout class='QVBoxLayout' xstretch='1'/>", "", "",
          "Form.ui:2:1: Unexpected attribute xstretch" },
        { "<Widget class='QLabel' name='label'/>", "", "", "no element <Widget>" },
    };
    const Fault images[] = {
        { page("icon", "<iconset>no.png</iconset>"), "", "no.png", "no picture" },
    };
    const auto check = [&](Error::Reason reason, const auto &faults) {
        for (const Fault &fault : faults) {
            const Error error = errorOf([&] { form(fault.inside).instantiate(&owner); });
            EXPECT_STREQ(errorOf([&] { form(fault.inside).check(); }).what(), error.what());
            EXPECT_EQ(error.reason(), reason) << qPrintable(fault.inside) << error.what();
            EXPECT_EQ(error.object(), QString::fromUtf8(fault.object)) << error.what();
            EXPECT_EQ(error.name(), QString::fromUtf8(fault.name)) << error.what();
            EXPECT_THAT(error.what(), ::testing::HasSubstr(fault.message));
            EXPECT_EQ(error.line(), 2) << error.what();
            EXPECT_GT(error.column(), 0) << error.what();
        }
    };
    check(Error::unknownObject, strangers);
    check(Error::unknownProperty, misfits);
    check(Error::malformed, malformed);
    check(Error::unknownImage, images);
    const QTemporaryDir folder;
    const auto withResources = [&](const QString &file) {
        return NS::Nib("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"Form\"/>\n<resources>"
                       "<include location=\"icons.qrc\"/></resources></ui>",
                       file);
    };
    const std::unique_ptr<QWidget> root(withResources(folder.filePath(u"Form.ui"_s)).instantiate());
    EXPECT_STREQ(errorOf([&] { withResources(folder.filePath(u"Form.ui"_s)).check(); }).what(),
                 "Form.ui:2:12: there is no resource file \"icons.qrc\"");
    EXPECT_NO_THROW(withResources(u":/Form.ui"_s).check());
    const Error second = errorOf([&] { form("", u"\n<widget class='QWidget' name='other'/>"_s); });
    EXPECT_STREQ(second.what(), "Form.ui:3:1: other: there is a second outermost widget");
}

TEST_F(Nib, what_designer_writes_beside_properties_is_taken)
{
    const auto nib = form(R"(<layout class="QGridLayout" columnstretch="0,1">
        <property name="leftMargin"><number>3</number></property>
        <property name="sizeConstraint"><enum>QLayout::SetMinimumSize</enum></property>
        <item row="0" column="0" colspan="2" alignment="Qt::AlignRight|Qt::AlignTop">
          <widget class="QTabWidget" name="tabs"><widget class="QWidget" name="page">
            <attribute name="title"><string>First</string></attribute></widget></widget></item>
        <item row="1" column="0"><spacer name="gap">
          <property name="orientation"><enum>Qt::Orientation::Vertical</enum></property>
          <property name="sizeHint" stdset="0">
            <size><width>20</width><height>4</height></size></property></spacer></item>
        <item row="2" column="0"><widget class="QTreeWidget" name="tree">
          <attribute name="headerVisible"><bool>false</bool></attribute>
          <column><property name="text"><string>Name</string></property></column>
          <item><property name="text"><string>a</string></property>
            <property name="flags"><set>ItemIsEnabled|ItemIsUserCheckable</set></property>
            <item><property name="text"><string>b</string></property></item></item></widget></item>
        <item row="2" column="1"><widget class="QRadioButton" name="radio">
          <attribute name="buttonGroup"><string>group</string></attribute></widget></item></layout>
        <action name="go"/><addaction name="separator"/><addaction name="go"/>
        <zorder>tabs</zorder>)",
                          "<buttongroups><buttongroup name='group'/></buttongroups>");
    const std::unique_ptr<QWidget> root(nib.instantiate(&owner));
    EXPECT_EQ(root->findChild<QTabWidget *>()->tabText(0), u"First"_s);
    EXPECT_EQ(root->actions().size(), 2);
    EXPECT_TRUE(root->findChild<QRadioButton *>()->group());
}

TEST_F(Nib, a_menu_bar_becomes_that_of_the_window_and_other_bars_need_a_place)
{
    const auto window = [](const QString &inside, const Text &className = "NS::Window") {
        const Markup markup("<ui version='4.0'><widget class='%1' name='Form'>\n%2</widget></ui>");
        return NS::Nib(markup(className, inside).toUtf8(), u"Form.ui"_s);
    };
    const QString menuBar =
            u"<widget class='QMenuBar' name='bar'><widget class='QMenu' name='menu'>"
            "<property name='title'><string>File</string></property></widget>"
            "<addaction name='menu'/></widget>"_s;
    for (const QString &layout :
         { QString(), u"<layout class=\"QVBoxLayout\" name=\"column\"/>"_s }) {
        const std::unique_ptr<QWidget> root(window(layout + menuBar).instantiate());
        root->resize(300, 200);
        root->show();
        QCoreApplication::processEvents();
        const auto *const bar = root->findChild<QMenuBar *>();
        EXPECT_EQ(root->layout()->menuBar(), bar);
        EXPECT_EQ(bar->geometry().topLeft(), root->contentsRect().topLeft()); // below the title bar
        EXPECT_GT(root->contentsRect().top(), 0);
        EXPECT_EQ(bar->width(), root->contentsRect().width());
    }
    for (const QString &name : { u"QToolBar"_s, u"QStatusBar"_s, u"QDockWidget"_s }) {
        const QString bar = u"<widget class=\"%1\" name=\"bar\"/>"_s.arg(name);
        const NS::NibError error = errorOf([&] { window(bar).instantiate(); });
        EXPECT_EQ(error.what(),
                  "Form.ui:2:1: bar: a " + name.toStdString()
                          + " has no place in a NS::Window: put it into a layout, or use a "
                            "QMainWindow");
        const std::unique_ptr<QWidget> laidOut(
                window(u"<layout class=\"QVBoxLayout\"><item>%1</item></layout>"_s.arg(bar))
                        .instantiate());
        const std::unique_ptr<QWidget> main(window(bar, "QMainWindow").instantiate());
    }
}

TEST_F(Nib, what_the_files_own_sections_name_is_checked_too)
{
    using Error = NS::NibError;
    const QString field = u"<widget class='QLineEdit' name='field'/>\n"_s;
    const Markup connection("<connections><connection><sender>%1</sender><signal>%2</signal>"
                            "<receiver>Form</receiver><slot>%3</slot></connection></connections>");
    const std::tuple<Text, Error::Reason, const char *> rows[] = {
        { connection("nobody", "textChanged(QString)", "setWindowTitle(QString)"),
          Error::unknownObject, "nobody" },
        { connection("field", "textUpset(QString)", "setWindowTitle(QString)"),
          Error::unknownMethod, "textUpset(QString)" },
        { connection("field", "textChanged(QString)", "setWindowTytle(QString)"),
          Error::unknownMethod, "setWindowTytle(QString)" },
        { "<tabstops><tabstop>nobody</tabstop></tabstops>", Error::unknownObject, "nobody" },
    };
    for (const auto &[behind, reason, name] : rows) {
        const Error error = errorOf([&, &text = behind] { form(field, text).instantiate(); });
        EXPECT_EQ(error.reason(), reason) << error.what();
        EXPECT_EQ(error.name(), QString::fromUtf8(name)) << error.what();
        EXPECT_EQ(error.line(), 3) << error.what();
    }
}

TEST_F(Nib, a_file_that_is_no_form_is_an_error_where_it_stops_being_one)
{
    const struct
    {
        const char *contents;
        int line;
        int column;
        const char *message;
    } rows[] = {
        { "", 1, 1, "" },
        { "<ui version='4.0'>\n <widget class='QWidget' name='a'>\n </ui>", 3, 7, "" },
        { "<ui version='4.0'>\n <widget", 2, 9, "" },
        { "<svg/>", 1, 1, "<svg>" },
        { "<ui version=\"4.0\"/>", 1, 1, "no widget" },
        { "<ui version=\"4.0\">\n <widget class=\"QWidget\"/></ui>", 2, 2, "has no name" },
        { "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"a\">\n"
          "<widget class=\"QWidget\" name=\"a\"/></widget></ui>",
          2, 1, "two objects" },
    };
    for (const auto &row : rows) {
        const NS::NibError error = errorOf([&] { NS::Nib(row.contents, u"Form.ui"_s); });
        EXPECT_EQ(error.reason(), NS::NibError::malformed);
        EXPECT_EQ(error.line(), row.line) << error.what();
        EXPECT_EQ(error.column(), row.column) << error.what();
        EXPECT_THAT(error.what(), ::testing::HasSubstr(row.message));
    }
    const QByteArray deep = QByteArray("<item>").repeated(100000);
    EXPECT_THROW(form(QString::fromLatin1(deep)), NS::NibError);
    EXPECT_EQ(errorOf([&] {
                  NS::Nib("<ui version=\"3.0\"><widget class=\"QWidget\" name=\"a\"/></ui>",
                          u"Form.ui"_s)
                          .instantiate();
              }).reason(),
              NS::NibError::malformed);
}

TEST_F(Nib, the_first_bytes_tell_the_encoding_of_a_file)
{
    const QString letters = u"aä€😀"_s;
    const QString text = letters.repeated(3000); // more than is read at once
    const Markup markup("<?xml version='1.0' encoding='%1'?><ui version='4.0'>\n"
                        "<widget class='QLabel' name='Form'><property name='text'><string>%2"
                        "</string></property>\n<property name='font'><font><bold>true</bold></font>"
                        "</property><property name='toolTip'><string>%3</string></property>\n"
                        "<!--%3-->%4</widget></ui>");
    const struct
    {
        const char *declared;
        QStringConverter::Encoding encoding;
        QStringConverter::Flags flags;
    } rows[] = {
        { "utf-8", QStringConverter::Utf8, {} },
        { "ISO-8859-1", QStringConverter::Utf8, {} },
        { "UTF-8", QStringConverter::Utf8, QStringConverter::Flag::WriteBom },
        { "UTF-16", QStringConverter::Utf16, QStringConverter::Flag::WriteBom },
        { "UTF-16", QStringConverter::Utf16, {} },
    };
    for (const auto &row : rows) {
        const auto load = [&](const char *behind) {
            QStringEncoder encode(row.encoding, row.flags);
            const QByteArray contents = encode(markup(row.declared, text, letters, behind));
            return std::unique_ptr<QWidget>(NS::Nib(contents, u"Form.ui"_s).instantiate());
        };
        const auto widget = load("");
        EXPECT_EQ(qobject_cast<QLabel *>(widget.get())->text(), text) << row.declared;
        EXPECT_EQ(widget->toolTip(), letters) << row.declared;
        const NS::NibError error =
                errorOf([&] { load("<property name='wrong'><string/></property>"); });
        EXPECT_EQ(error.name(), u"wrong"_s) << error.what();
        EXPECT_EQ(error.line(), 4) << error.what();
        EXPECT_EQ(error.column(), 13) << error.what();
    }
}

TEST_F(Nib, after_an_error_no_object_is_left_and_no_outlet_set)
{
    const QString outlets = property("outlets", "owner.view\nowner.nameField");
    const QString misfit = property("bindings", "maxLength = owner.person.surname");
    const Markup field("<widget class='QLineEdit' name='field'>%1</widget>");
    QWidget parent;
    EXPECT_THROW(form(field(outlets + misfit)).instantiate(&owner, &parent), NS::NibError);
    EXPECT_TRUE(parent.children().isEmpty());
    EXPECT_FALSE(owner.view);

    owner.isStubborn = true;
    EXPECT_THROW(form(field(outlets)).instantiate(&owner, &parent), std::runtime_error);
    EXPECT_TRUE(parent.children().isEmpty());
    EXPECT_FALSE(owner.nameField);
}

TEST_F(Nib, an_owner_may_delete_the_tree)
{
    const QString contents =
            Markup("<ui version='4.0'><widget class='QWidget' name='Form'>%1"
                   "<widget class='QLabel' name='label'>%2</widget></widget></ui>")(
                    property("outlets", "owner.%1"), property("bindings", "text = owner.absent"));
    // Both own what is their view or window, and lose it after the error.
    NS::ViewController controller;
    EXPECT_THROW(NS::Nib(contents.arg(u"view"_s).toUtf8(), {}).instantiate(&controller),
                 NS::NibError);
    NS::WindowController windowController(static_cast<QWidget *>(nullptr));
    EXPECT_THROW(NS::Nib(contents.arg(u"window"_s).toUtf8(), {}).instantiate(&windowController),
                 NS::NibError);
    EXPECT_EQ(windowController.window(), nullptr);

    owner.deletesView = true;
    EXPECT_EQ(form(property("outlets", "owner.view")).instantiate(&owner), nullptr);
}

TEST_F(Nib, an_outlet_may_replace_its_widget)
{
    const QString entries = property("outlets", "owner.placeholder")
                            + property("bindings", "text = field.text")
                            + property("actions", "textChanged -> field.setText")
                            + property("constraints", "width = field.width");
    const Markup inside("<widget class='QLineEdit' name='place'>%1</widget>"
                        "<widget class='QLineEdit' name='field'>%2</widget>");
    Stage stage;
    const std::unique_ptr<QWidget> root(
            form(inside(entries, property("bindings", "text = place.text"))).instantiate(&stage));
    EXPECT_EQ(root->findChildren<QLineEdit *>().size(), 1);
    EXPECT_EQ(stage.view()->parentWidget(), root.get());
}

TEST_F(Nib, a_widget_of_a_form_loads_a_form_or_throws)
{
    NS::registerClass<Card>();
    const NS::Nib nib = form("<layout class='QVBoxLayout' name='column'><item><widget class='Card' "
                             "name='first'/></item><item><widget class='Card' name='second'/>"
                             "</item><item><widget class='QLabel' name='third'/></item></layout>");
    for (int i = 0; i < 2; ++i) {
        QWidget parent;
        const QWidget *const root = nib.instantiate(nullptr, &parent);
        EXPECT_EQ(root->layout()->count(), 3);
        EXPECT_EQ(root->findChildren<QLabel *>(u"label"_s).size(), 2);

        QWidget other;
        Card::isBroken = true;
        EXPECT_THROW(nib.instantiate(nullptr, &other), std::runtime_error);
        Card::isBroken = false;
        EXPECT_TRUE(other.children().isEmpty());
    }
}

TEST_F(Nib, a_form_opens_whatever_the_data_and_its_bindings_have_options)
{
    owner.person()->height = 12.5;
    const Markup markup("<widget class='QSlider' name='slider'>%1</widget>"
                        "<widget class='QLineEdit' name='field'>%2</widget>");
    const QString slider = property("bindings", "value = owner.person.height");
    const QString text = property("bindings", "text = owner.person.name | commit\n"
                                              "enabled = !owner.person.isMember");
    const std::unique_ptr<QWidget> root(form(markup(slider, text)).instantiate(&owner));
    EXPECT_EQ(root->findChild<QSlider *>()->value(), 13);
    EXPECT_EQ(owner.person()->height, 12.5);
    auto *const field = root->findChild<QLineEdit *>(u"field"_s);
    const QString name = owner.person()->name;
    field->setText(u"Emmy"_s);
    EXPECT_EQ(owner.person()->name, name);
    Q_EMIT field->editingFinished();
    EXPECT_EQ(owner.person()->name, u"Emmy"_s);
    EXPECT_TRUE(field->isEnabled());
    owner.person()->setProperty("isMember", true);
    EXPECT_FALSE(field->isEnabled());
}

TEST_F(Nib, a_combo_box_offers_choices_and_a_view_shows_items)
{
    owner.person()->setAge(2);
    owner.person()->note = QVariantList { QVariantMap { { u"name"_s, u"One"_s }, { u"id"_s, 1 } },
                                          QVariantMap { { u"name"_s, u"Two"_s }, { u"id"_s, 2 } } };
    const QString entries = u"choices = owner.person.note | title(\"name\") | tag(\"id\")\n"
                            "selectedTag = owner.person.age"_s;
    const auto formWith = [](const char *className, const QString &bindings) {
        const Markup widget("<widget class='%1' name='box'>%2</widget>");
        return form(widget(className, property("bindings", bindings)));
    };
    const std::unique_ptr<QWidget> root(formWith("QComboBox", entries).instantiate(&owner));
    auto *const box = root->findChild<QComboBox *>();
    EXPECT_EQ(box->currentText(), u"Two"_s);
    box->setCurrentIndex(0);
    EXPECT_EQ(owner.person()->age(), 1);
    const QString items = u"items = owner.person.note | title(\"name\")"_s;
    const std::unique_ptr<QWidget> listed(formWith("QListView", items).instantiate(&owner));
    const QAbstractItemModel *const model = listed->findChild<QListView *>()->model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(1, 0).data(), u"Two"_s);
    for (const auto &[entry, message] : { std::pair(entries, "offered by a QComboBox"),
                                          std::pair(items, "shown by a QListView") }) {
        const NS::NibError error =
                errorOf([&, &entry = entry] { formWith("QLabel", entry).instantiate(&owner); });
        EXPECT_EQ(error.reason(), NS::NibError::unknownKeyPath);
        EXPECT_THAT(error.what(), ::testing::HasSubstr(message));
    }
}

TEST_F(Nib, an_action_between_overloads_asks_for_their_arguments)
{
    const Markup box("<widget class='QComboBox' name='box'>%1</widget>");
    for (const char *const action :
         { "activated -> owner.take", "currentTextChanged(QString) -> owner.take(QString)",
           "currentTextChanged -> owner.take", "activated(int)->owner.save()" }) {
        const std::unique_ptr<QWidget> root(
                form(box(property("actions", action))).instantiate(&owner));
    }
}

TEST_F(Nib, constraints_place_the_widgets_of_a_form)
{
    const Markup markup("<property name='geometry'><rect><x>0</x><y>0</y><width>200</width>"
                        "<height>100</height></rect></property><widget class='QFrame' "
                        "name='panel'>%1</widget><widget class='QFrame' name='side'>%2</widget>");
    const QString panel = property("constraints", "leading = superview.leading + 8\n"
                                                  "width = 0.5 * superview.width - 10.5\n"
                                                  "top == superview.top\nheight = 20");
    const QString side = property("constraints", "left = panel.right\n"
                                                 "bottom = superview.bottom - 4\nheight >= 30\n"
                                                 "height = 10 @ 400\nwidth = self.height");
    const std::unique_ptr<QWidget> root(form(markup(panel, side)).instantiate());
    NS::layoutSubtreeIfNeeded(root.get());
    EXPECT_EQ(root->findChild<QWidget *>(u"panel"_s)->geometry(), QRect(8, 0, 90, 20));
    EXPECT_EQ(root->findChild<QWidget *>(u"side"_s)->geometry(), QRect(98, 66, 30, 30));
}

namespace {

class Shouting : public QTranslator
{
public:
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return QString::fromUtf8(text).toUpper();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

TEST_F(Nib, a_change_of_language_reaches_the_texts_and_leaves_bound_ones_alone)
{
    const std::unique_ptr<QWidget> root(NS::Nib(u"Account"_s).instantiate(&owner));
    const std::unique_ptr<QWidget> other(
            form(R"(<property name="note" stdset="0"><string>Own</string></property>
                <property name="whatsThis"><string notr="true">Name</string></property>
                <action name="go"><property name="text"><string>Go</string></property></action>
                <widget class="QLineEdit" name="field">
                <property name="placeholderText"><string>None</string></property>
                <property name="text"><string>Given</string></property>
                <property name="bindings" stdset="0"><string>value = owner.person.name</string>
                </property></widget><widget class="QTextBrowser" name="list">
                <property name="searchPaths"><stringlist><string>One</string><string>Two</string>
                </stringlist></property></widget><widget class="QTextBrowser" name="fixed">
                <property name="searchPaths"><stringlist notr="true"><string>One</string>
                </stringlist></property></widget>)")
                    .instantiate(&owner));
    Shouting translator;
    QCoreApplication::installTranslator(&translator);
    QCoreApplication::processEvents();
    auto *const field = other->findChild<QLineEdit *>();
    EXPECT_EQ(field->text(), u"Ada"_s);
    EXPECT_EQ(field->placeholderText(), u"NONE"_s);
    EXPECT_EQ(other->findChild<QAction *>(u"go"_s)->text(), u"GO"_s);
    EXPECT_EQ(other->property("note"), u"OWN"_s);
    EXPECT_EQ(other->findChild<QTextBrowser *>(u"list"_s)->searchPaths(),
              QStringList({ u"ONE"_s, u"TWO"_s }));
    EXPECT_EQ(other->findChild<QTextBrowser *>(u"fixed"_s)->searchPaths(), QStringList(u"One"_s));
    EXPECT_EQ(other->whatsThis(), u"Name"_s);
    EXPECT_EQ(root->windowTitle(), u"ACCOUNT"_s);
    EXPECT_EQ(root->findChild<QLabel *>(u"nameLabel"_s)->text(), u"Ada"_s);
    EXPECT_FALSE(root->property("outlets").isValid());
    QCoreApplication::removeTranslator(&translator);
}

#include "NSNibTest.moc"
