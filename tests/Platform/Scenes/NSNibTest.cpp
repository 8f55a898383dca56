// SPDX-License-Identifier: MIT
#include "FormsSticker.h"
#include "Person.h"
#include "ui_Account.h"

#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Platform/NSNib.h>
#include <pellarvine/Platform/NSView.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    }

    QPointer<QWidget> view;
    QPointer<QLineEdit> nameField;
    QPointer<QAction> renameAction;
    QList<bool> saves;
    bool isStubborn = false;

private:
    Person *m_person = new Person(u"Ada"_s, this);
};

class Nib : public ::testing::Test
{
protected:
    void SetUp() override
    {
        NS::registerClass<Forms::Sticker>();
        Forms::Sticker::calls.clear();
    }

    // A form around `inside`, which begins on line 2.
    static NS::Nib form(const QString &inside, const QString &behind = {})
    {
        const QString text = u"<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" "
                             "name=\"Form\">\n%1</widget>%2</ui>"_s.arg(inside, behind);
        return NS::Nib(text.toUtf8(), u"Form.ui"_s);
    }

    static QString property(const QString &name, const QString &value)
    {
        return u"<property name=\"%1\" stdset=\"0\"><string>%2</string></property>"_s.arg(
                name, value.toHtmlEscaped());
    }

    Owner owner;
};

// What is thrown, as one text: "reason object name".
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

    // Nor without the namespace.
    const QString page =
            u"<widget class=\"Sticker\" name=\"a\"><widget class=\"QLabel\" name=\"b\"/>"
            "</widget>"_s;
    const QString custom = u"<customwidgets><customwidget><class>Sticker</class><extends>QFrame"
                           "</extends><container>1</container><addpagemethod>%1</addpagemethod>"
                           "</customwidget></customwidgets>"_s;
    const std::unique_ptr<QWidget> other(form(page, custom.arg(u"addPage"_s)).instantiate());
    EXPECT_EQ(other->findChild<Forms::Sticker *>()->pages, QStringList(u"b"_s));
    EXPECT_EQ(errorOf([&] { form(page, custom.arg(u"addPgae"_s)).instantiate(); }).name(),
              u"addPgae"_s);
}

TEST_F(Nib, everything_is_awakened_once_with_its_outlets_set_and_children_first)
{
    const NS::Nib nib =
            form(u"<widget class=\"Sticker\" name=\"a\"><widget class=\"Sticker\" "
                 "name=\"b\"/><widget class=\"Sticker\" name=\"c\"/></widget><widget "
                 "class=\"Sticker\" name=\"d\"/><widget class=\"QLineEdit\" name=\"e\">"_s
                 + property(u"outlets"_s, u"a.field\nd.field"_s) + u"</widget>"_s);
    const std::unique_ptr<QWidget> root(nib.instantiate(&owner));
    EXPECT_EQ(Forms::Sticker::calls.join(u' '), u"b c a d owner"_s);
    EXPECT_TRUE(root->findChild<Forms::Sticker *>(u"a"_s)->hadField);
    EXPECT_TRUE(root->findChild<Forms::Sticker *>(u"d"_s)->hadField);

    // Neither by an outer tree that it becomes part of.
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
    const struct
    {
        QString name;
        QString path;
    } rows[] = {
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
    for (const auto &row : rows)
        EXPECT_EQ(NS::Nib::path(row.name), row.path) << qPrintable(row.name);
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
    const QString field = u"<widget class=\"QLineEdit\" name=\"field\">%1</widget>"_s;
    const auto entry = [&](const QString &name, const QString &value) {
        return field.arg(property(name, value));
    };
    const struct
    {
        QString inside;
        Error::Reason reason;
        const char *object;
        const char *name;
        const char *message;
        int column;
    } rows[] = {
        { u"<widget class=\"Bdge\" name=\"field\"/>"_s, Error::unknownClass, "field", "Bdge",
          "there is no class \"Bdge\"", 1 },
        { u"<widget class=\"NS::ViewController\" name=\"field\"/>"_s, Error::unknownClass, "field",
          "NS::ViewController", "is no widget", 1 },
        { u"<layout class=\"QFlowLayout\" name=\"field\"/>"_s, Error::unknownClass, "field",
          "QFlowLayout", "no layout class", 1 },
        { field.arg(u"<property name=\"texture\"><string>x</string></property>"_s),
          Error::unknownProperty, "field", "texture", "QLineEdit has no property \"texture\"", 40 },
        { field.arg(u"<property name=\"maxLength\"><string>x</string></property>"_s),
          Error::unknownProperty, "field", "maxLength", "cannot be \"x\"", 40 },
        { field.arg(u"<property name=\"alignment\"><set>Qt::AlignLeft|Qt::AlignDown</set>"
                    "</property>"_s),
          Error::unknownProperty, "field", "alignment", "cannot be", 40 },
        { field.arg(u"<property name=\"displayText\"><string>x</string></property>"_s),
          Error::unknownProperty, "field", "displayText", "cannot be", 40 },
        { u"<widget class=\"QLabel\" name=\"field\"><property name=\"buddy\"><cstring>x</cstring>"
          "</property></widget>"_s,
          Error::unknownObject, "field", "x", "buddy", 37 },
        { u"<widget class=\"QLabel\" name=\"field\"><property name=\"pixmap\"><pixmap>no.png"
          "</pixmap></property></widget>"_s,
          Error::unknownImage, "", "no.png", "no picture", 69 },
        { entry(u"outlets"_s, u"owner.nobody"_s), Error::unknownKeyPath, "field", "nobody",
          "Owner has no key \"nobody\"", 84 },
        { entry(u"outlets"_s, u"owner.renameAction"_s), Error::unknownKeyPath, "field",
          "renameAction", "cannot take this value", 84 },
        { entry(u"outlets"_s, u"owner.fixed"_s), Error::unknownKeyPath, "field", "fixed",
          "cannot write", 84 },
        { entry(u"outlets"_s, u"owner.person.partner.name"_s), Error::unknownKeyPath, "field",
          "person.partner.name", "there is no object at \"person.partner\"", 84 },
        { entry(u"outlets"_s, u"  nobody.field"_s), Error::unknownObject, "field", "nobody",
          "no object \"nobody\"", 86 },
        { entry(u"outlets"_s, u"field"_s), Error::malformed, "field", "field", "has the form", 84 },
        { entry(u"bindings"_s, u"text = owner.person.nmae"_s), Error::unknownKeyPath, "field",
          "person.nmae", "Person has no key \"nmae\"", 85 },
        { entry(u"bindings"_s, u"txet = owner.person.name"_s), Error::unknownKeyPath, "field",
          "txet", "QLineEdit has no key \"txet\"", 85 },
        { entry(u"bindings"_s, u"text = owner.person.secret"_s), Error::unknownKeyPath, "field",
          "person.secret", "key \"secret\"", 85 },
        { entry(u"actions"_s, u"clicked -> owner.save"_s), Error::unknownMethod, "field", "clicked",
          "QLineEdit has no signal \"clicked\"", 84 },
        { entry(u"actions"_s, u"textChanged -> owner.sav"_s), Error::unknownMethod, "field", "sav",
          "Owner has no slot \"sav\"", 84 },
        { entry(u"actions"_s, u"textChanged -> owner.save(bool)"_s), Error::unknownMethod, "field",
          "save(bool)", "other arguments", 84 },
        { entry(u"actions"_s, u"returnPressed -> owner.person.partner.deleteLater"_s),
          Error::unknownKeyPath, "field", "person.partner", "no object at", 84 },
        { entry(u"constraints"_s, u"leading = nobody.leading"_s), Error::unknownObject, "field",
          "nobody", "no widget \"nobody\"", 88 },
    };
    for (const auto &row : rows) {
        const Error error = errorOf([&] { form(row.inside).instantiate(&owner); });
        EXPECT_EQ(error.reason(), row.reason) << error.what();
        EXPECT_EQ(error.object(), QString::fromUtf8(row.object)) << error.what();
        EXPECT_EQ(error.name(), QString::fromUtf8(row.name)) << error.what();
        EXPECT_THAT(error.what(), ::testing::HasSubstr(row.message));
        EXPECT_EQ(error.line(), 2) << error.what();
        EXPECT_EQ(error.column(), row.column) << error.what();
        EXPECT_EQ(error.file(), u"Form.ui"_s);
    }
    EXPECT_THAT(
            errorOf([&] {
                form(entry(u"bindings"_s, u"enabled = owner.person.isMember\n  text = owner.x"_s))
                        .instantiate(&owner);
            }).what(),
            ::testing::StartsWith("Form.ui:3:3: field: Owner has no key \"x\""));
    EXPECT_EQ(errorOf([&] { form(entry(u"outlets"_s, u"owner.view"_s)).instantiate(); }).reason(),
              Error::unknownObject);
}

TEST_F(Nib, no_misspelling_is_left_out_in_silence)
{
    using Error = NS::NibError;
    const QString value = u"<widget class=\"QSpinBox\" name=\"box\"><property name=\"%1\">%2"
                          "</property></widget>"_s;
    const QString page = u"<widget class=\"QTabWidget\" name=\"tabs\"><widget class=\"QWidget\" "
                         "name=\"page\"><attribute name=\"%1\">%2</attribute></widget></widget>"_s;
    const QString item = u"<widget class=\"QListWidget\" name=\"list\"><item><property "
                         "name=\"%1\"%3>%2</property></item></widget>"_s;
    const QString layout = u"<layout class=\"QFormLayout\"><property name=\"%1\"%3>%2</property>"
                           "</layout>"_s;
    const QString spacer = u"<layout class=\"QVBoxLayout\"><item><spacer name=\"gap\"><property "
                           "name=\"%1\"%3>%2</property></spacer></item></layout>"_s;
    const QString dynamic = u" stdset=\"0\""_s;
    const QString entry = u"<string>owner.view</string>"_s;
    const QString button = u"<widget class=\"QPushButton\" name=\"button\">%1</widget>"_s;
    const QString twice = u"<widget class=\"%1\" name=\"area\"><widget class=\"%2\" name=\"a\"/>"
                          "<widget class=\"%2\" name=\"b\"/></widget>"_s;
    const QString inForm = u"<layout class=\"QFormLayout\"><item row=\"3\" column=\"1\"><widget "
                           "class=\"QLabel\" name=\"a\"/></item><item %1><widget class=\"QLabel\" "
                           "name=\"b\"/></item></layout>"_s;
    const QString table = u"<widget class=\"QTableWidget\" name=\"table\"><row/><column/><item "
                          "%1><property name=\"text\"><string>a</string></property></item>"
                          "</widget>"_s;
    const QString laidOut = u"<layout class=\"QGridLayout\" %1><item %2><widget class=\"QLabel\" "
                            "name=\"label\"/></item></layout>"_s;
    const struct
    {
        QString inside;
        Error::Reason reason;
        const char *object;
        const char *name;
        const char *message;
    } rows[] = {
        { u"<addaction name=\"nosuch\"/>"_s, Error::unknownObject, "Form", "nosuch",
          "no action or menu \"nosuch\"" },
        { u"<widget class=\"QLabel\" name=\"label\"/><addaction name=\"label\"/>"_s,
          Error::unknownObject, "Form", "label", "no action or menu" },
        { u"<zorder>nosuch</zorder>"_s, Error::unknownObject, "Form", "nosuch", "no widget" },
        { button.arg(u"<attribute name=\"buttonGroup\"><string>nosuch</string></attribute>"_s),
          Error::unknownObject, "button", "nosuch", "no button group" },
        { button.arg(u"<attribute name=\"buttonGruop\"><string>a</string></attribute>"_s),
          Error::unknownProperty, "button", "buttonGruop", "no attribute \"buttonGruop\"" },
        { page.arg(u"ttle"_s, u"<string>a</string>"_s), Error::unknownProperty, "page", "ttle",
          "no attribute" },
        { page.arg(u"title"_s, u"<number>1</number>"_s), Error::unknownProperty, "page", "title",
          "cannot be \"1\"" },
        { page.arg(u"icon"_s, u"<iconset>no.png</iconset>"_s), Error::unknownImage, "", "no.png",
          "no picture" },
        { item.arg(u"txet"_s, u"<string>a</string>"_s, QString()), Error::unknownProperty, "",
          "txet", "an item has no property \"txet\"" },
        { item.arg(u"checkState"_s, u"<enum>Qt::Chequed</enum>"_s, QString()),
          Error::unknownProperty, "", "checkState", "Qt::Chequed" },
        { item.arg(u"outlets"_s, entry, dynamic), Error::unknownObject, "", "outlets", "an item" },
        { layout.arg(u"outlets"_s, entry, dynamic), Error::unknownObject, "", "outlets",
          "QFormLayout has no object" },
        { layout.arg(u"topMragin"_s, u"<number>1</number>"_s, QString()), Error::unknownProperty,
          "", "topMragin", "QFormLayout has no property" },
        { layout.arg(u"rowWrapPolicy"_s, u"<enum>QFormLayout::WrapNone</enum>"_s, QString()),
          Error::unknownProperty, "", "rowWrapPolicy", "WrapNone" },
        { spacer.arg(u"outlets"_s, entry, dynamic), Error::unknownObject, "gap", "outlets",
          "a spacer" },
        { spacer.arg(u"sizeTyp"_s, u"<enum>Fixed</enum>"_s, QString()), Error::unknownProperty,
          "gap", "sizeTyp", "a spacer has no property" },
        { spacer.arg(u"orientation"_s, u"<enum>Qt::Upwards</enum>"_s, QString()),
          Error::unknownProperty, "gap", "orientation", "Qt::Upwards" },
        { laidOut.arg(QString(), u"row=\"x\""_s), Error::unknownProperty, "", "row",
          "no whole number" },
        { laidOut.arg(QString(), u"row=\"0\" column=\"0\" alignment=\"Qt::AlignLeff\""_s),
          Error::unknownProperty, "", "Qt::AlignLeff", "alignment" },
        { laidOut.arg(u"columnstretch=\"0,x\""_s, u"row=\"0\" column=\"0\""_s),
          Error::unknownProperty, "", "columnstretch", "\"x\"" },
        { value.arg(u"maximum"_s, u"<number>abc</number>"_s), Error::unknownProperty, "box",
          "maximum", "\"abc\" is no whole number" },
        { value.arg(u"maximum"_s, u"<number>99999999999</number>"_s), Error::unknownProperty, "box",
          "maximum", "out of range" },
        { value.arg(u"font"_s, u"<font><pointsize>-3</pointsize></font>"_s), Error::unknownProperty,
          "box", "font", "out of range" },
        { button.arg(property(u"binding"_s, u"text = box.value"_s)), Error::unknownProperty,
          "button", "binding", "is the name misspelt?" },
        { button.arg(property(u"Action"_s, u"delete\nclicked -> box.hide"_s)),
          Error::unknownProperty, "button", "Action", "has the entries of \"actions\"" },
        { value.arg(u"enabled"_s, u"<bool>maybe</bool>"_s), Error::unknownProperty, "box",
          "enabled", "\"maybe\" is neither true nor false" },
        { value.arg(u"suffix"_s,
                    u"<rect><x>0</x><y>0</y><width>1</width><height>1</height></rect>"_s),
          Error::unknownProperty, "box", "suffix", "cannot be \"<rect>\"" },
        { value.arg(u"geometry"_s, u"<rect><x>0</x><y>O</y></rect>"_s), Error::unknownProperty,
          "box", "geometry", "\"O\" is no whole number" },
        { value.arg(u"sizePolicy"_s, u"<sizepolicy hsizetype=\"Fxied\" vsizetype=\"Fixed\"/>"_s),
          Error::unknownProperty, "box", "sizePolicy", "cannot be" },
        { value.arg(u"cursor"_s, u"<cursorShape>Arow</cursorShape>"_s), Error::unknownProperty,
          "box", "cursor", "Arow" },
        { value.arg(u"maximum"_s, u"<enum>Qt::AlignLeft</enum>"_s), Error::unknownProperty, "box",
          "maximum", "Qt::AlignLeft" },
        { button.arg(property(u"constraints"_s, u"width = 4 @ 0"_s)), Error::malformed, "button",
          "width = 4 @ 0", "not from 1 to 1000" },
        { button.arg(property(u"constraints"_s, u"width = 4 @ 5000"_s)), Error::malformed, "button",
          "width = 4 @ 5000", "not from 1 to 1000" },
        { u"<layout class=\"QVBoxLayout\">stray</layout>"_s, Error::malformed, "", "",
          "text between the elements" },
        { u"<property name=\"enabled\">stray<bool>true</bool></property>"_s, Error::malformed, "",
          "", "text between the elements" },
        { value.arg(u"palette"_s,
                    u"<palette><active><colorrole role=\"WindowTxet\"><brush><color/></brush>"
                    "</colorrole></active><inactive/><disabled/></palette>"_s),
          Error::unknownProperty, "box", "palette", "there is no role \"WindowTxet\"" },
        { value.arg(u"palette"_s,
                    u"<palette><active><colorrole role=\"Window\"><brush brushstyle=\"Solid\">"
                    "<color/></brush></colorrole></active></palette>"_s),
          Error::unknownProperty, "box", "palette", "there is no brushstyle \"Solid\"" },
        { value.arg(u"palette"_s,
                    u"<palette><active><colorrole role=\"Window\"><brush><color alpha=\"300\"/>"
                    "</brush></colorrole></active></palette>"_s),
          Error::unknownProperty, "box", "palette", "\"300\" is no whole number" },
        { value.arg(u"font"_s, u"<font><stylestrategy>PreferAlias</stylestrategy></font>"_s),
          Error::unknownProperty, "box", "font", "there is no stylestrategy \"PreferAlias\"" },
        { value.arg(u"locale"_s, u"<locale language=\"Germn\" country=\"Germany\"/>"_s),
          Error::unknownProperty, "box", "locale", "there is no language \"Germn\"" },
        { value.arg(u"locale"_s, u"<locale language=\"German\" country=\"Germny\"/>"_s),
          Error::unknownProperty, "box", "locale", "there is no country \"Germny\"" },
        { u"<action name=\"go\"><property name=\"shortcut\"><string notr=\"true\">Strg+S</string>"
          "</property></action>"_s,
          Error::unknownProperty, "go", "shortcut", "cannot be \"Strg+S\"" },
        { u"<action name=\"go\"><property name=\"shortcut\"><string>Ctrl+K, Ctrl+</string>"
          "</property></action>"_s,
          Error::unknownProperty, "go", "shortcut", "cannot be \"Ctrl+K, Ctrl+\"" },
        { value.arg(u"suffix"_s, QString()), Error::unknownProperty, "box", "suffix",
          "there is no value" },
        { button.arg(u"<property name=\"outlets\" stdset=\"0\"/>"_s), Error::unknownProperty,
          "button", "outlets", "there is no value" },
        { page.arg(u"title"_s, QString()), Error::unknownProperty, "page", "title",
          "there is no value" },
        { value.arg(u"suffix"_s, u"<string>a</string><string>b</string>"_s), Error::unknownProperty,
          "box", "suffix", "there is a second value" },
        { button.arg(u"<property name=\"mood\" stdset=\"0\"><enum>Mood::glad</enum></property>"_s),
          Error::unknownProperty, "button", "mood", "no property \"mood\"" },
        { u"<widget class=\"QDateEdit\" name=\"box\"><property name=\"date\"><date><year>2024"
          "</year><month>2</month><day>31</day></date></property></widget>"_s,
          Error::unknownProperty, "box", "date", "there is no date 2024-2-31" },
        { u"<layout class=\"QVBoxLayout\" name=\"a\"/><layout class=\"QVBoxLayout\" name=\"b\"/>"_s,
          Error::malformed, "b", "b", "has a layout already" },
        { u"<layout class=\"QVBoxLayout\"><item><widget class=\"QLabel\" name=\"a\"/><spacer "
          "name=\"b\"/></item></layout>"_s,
          Error::malformed, "b", "b", "has an object already" },
        { twice.arg(u"QScrollArea"_s, u"QLabel"_s), Error::malformed, "b", "QLabel",
          "the QScrollArea \"area\" has a widget already" },
        { twice.arg(u"QMainWindow"_s, u"QLabel"_s), Error::malformed, "b", "QLabel",
          "has a central widget already" },
        { twice.arg(u"QMainWindow"_s, u"QMenuBar"_s), Error::malformed, "b", "QMenuBar",
          "has a menu bar already" },
        { u"<widget class=\"QMenuBar\" name=\"a\"/><widget class=\"QMenuBar\" name=\"b\"/>"_s,
          Error::malformed, "b", "QMenuBar", "has a menu bar already" },
        { laidOut.arg(QString(), u"row=\"-1\" column=\"0\""_s), Error::unknownProperty, "", "row",
          "out of range" },
        { laidOut.arg(QString(), u"row=\"0\" column=\"99999999\""_s), Error::unknownProperty, "",
          "column", "out of range" },
        { laidOut.arg(QString(), u"row=\"0\" column=\"0\" colspan=\"0\""_s), Error::unknownProperty,
          "", "colspan", "out of range" },
        { laidOut.arg(u"rowstretch=\"-1\""_s, u"row=\"0\" column=\"0\""_s), Error::unknownProperty,
          "", "rowstretch", "out of range" },
        { inForm.arg(u"row=\"0\" column=\"2\""_s), Error::unknownProperty, "", "column",
          "column 0, 1 or both" },
        { inForm.arg(u"row=\"3\" column=\"0\" colspan=\"2\""_s), Error::malformed, "", "",
          "an item in row 3, column 1 already" },
        { table.arg(u"row=\"1\" column=\"0\""_s), Error::malformed, "table", "QTableWidget",
          "no cell in row 1, column 0" },
        { table.arg(u"row=\"0\""_s), Error::malformed, "table", "QTableWidget",
          "no cell in row 0, column -1" },
        { u"<nosuch/>"_s, Error::malformed, "", "", "Form.ui:2:1: Unexpected element nosuch" },
        { value.arg(u"font"_s, u"<font><sizee>3</sizee></font>"_s), Error::malformed, "", "",
          "Form.ui:2:65: Unexpected element sizee" },
        { u"<layout class=\"QVBoxLayout\" xstretch=\"1\"/>"_s, Error::malformed, "", "",
          "Form.ui:2:1: Unexpected attribute xstretch" },
        { u"<Widget class=\"QLabel\" name=\"label\"/>"_s, Error::malformed, "", "",
          "there is no element <Widget>" },
    };
    for (const auto &row : rows) {
        const Error error = errorOf([&] { form(row.inside).instantiate(&owner); });
        EXPECT_STREQ(errorOf([&] { form(row.inside).check(); }).what(), error.what());
        EXPECT_EQ(error.reason(), row.reason) << qPrintable(row.inside) << error.what();
        EXPECT_EQ(error.object(), QString::fromUtf8(row.object)) << error.what();
        EXPECT_EQ(error.name(), QString::fromUtf8(row.name)) << error.what();
        EXPECT_THAT(error.what(), ::testing::HasSubstr(row.message)) << qPrintable(row.inside);
        EXPECT_EQ(error.line(), 2) << error.what();
        EXPECT_GT(error.column(), 0) << error.what();
    }
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
    const Error second =
            errorOf([&] { form({}, u"\n<widget class=\"QWidget\" name=\"other\"/>"_s); });
    EXPECT_STREQ(second.what(), "Form.ui:3:1: other: there is a second outermost widget");
}

TEST_F(Nib, what_designer_writes_beside_properties_is_taken)
{
    const std::unique_ptr<QWidget> root(
            form(u"<layout class=\"QGridLayout\" columnstretch=\"0,1\"><property "
                 u"name=\"leftMargin\">"
                 "<number>3</number></property><property name=\"sizeConstraint\"><enum>QLayout::"
                 "SetMinimumSize</enum></property>"
                 "<item row=\"0\" column=\"0\" colspan=\"2\" alignment=\"Qt::AlignRight|"
                 "Qt::AlignTop\"><widget class=\"QTabWidget\" name=\"tabs\"><widget "
                 "class=\"QWidget\" "
                 "name=\"page\"><attribute "
                 "name=\"title\"><string>First</string></attribute></widget>"
                 "</widget></item><item row=\"1\" column=\"0\"><spacer name=\"gap\"><property "
                 "name=\"orientation\"><enum>Qt::Orientation::Vertical</enum></property><property "
                 "name=\"sizeHint\" stdset=\"0\"><size><width>20</width><height>4</height></size>"
                 "</property></spacer></item><item row=\"2\" column=\"0\"><widget "
                 "class=\"QTreeWidget\" name=\"tree\"><attribute name=\"headerVisible\"><bool>false"
                 "</bool></attribute><column><property "
                 "name=\"text\"><string>Name</string></property>"
                 "</column><item><property name=\"text\"><string>a</string></property><property "
                 "name=\"flags\"><set>ItemIsEnabled|ItemIsUserCheckable</set></property><item>"
                 "<property "
                 "name=\"text\"><string>b</string></property></item></item></widget></item>"
                 "<item row=\"2\" column=\"1\"><widget class=\"QRadioButton\" name=\"radio\">"
                 "<attribute "
                 "name=\"buttonGroup\"><string>group</string></attribute></widget></item>"
                 "</layout><action name=\"go\"/><addaction name=\"separator\"/><addaction "
                 "name=\"go\"/><zorder>tabs</zorder>"_s,
                 u"<buttongroups><buttongroup name=\"group\"/></buttongroups>"_s)
                    .instantiate(&owner));
    EXPECT_EQ(root->findChild<QTabWidget *>()->tabText(0), u"First"_s);
    EXPECT_EQ(root->actions().size(), 2);
    EXPECT_TRUE(root->findChild<QRadioButton *>()->group());
}

TEST_F(Nib, a_menu_bar_becomes_that_of_the_window_and_other_bars_need_a_place)
{
    const auto window = [](const QString &inside, const QString &className = u"NS::Window"_s) {
        return NS::Nib(
                u"<ui version=\"4.0\"><widget class=\"%1\" name=\"Form\">\n%2</widget></ui>"_s
                        .arg(className, inside)
                        .toUtf8(),
                u"Form.ui"_s);
    };
    const QString menuBar =
            u"<widget class=\"QMenuBar\" name=\"bar\"><widget class=\"QMenu\" "
            "name=\"menu\"><property name=\"title\"><string>File</string></property>"
            "</widget><addaction name=\"menu\"/></widget>"_s;
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
        const std::unique_ptr<QWidget> main(window(bar, u"QMainWindow"_s).instantiate());
    }
}

TEST_F(Nib, what_the_files_own_sections_name_is_checked_too)
{
    using Error = NS::NibError;
    const QString field = u"<widget class=\"QLineEdit\" name=\"field\"/>\n"_s;
    const QString connection =
            u"<connections><connection><sender>%1</sender><signal>%2</signal><receiver>Form"
            "</receiver><slot>%3</slot></connection></connections>"_s;
    const struct
    {
        QString behind;
        Error::Reason reason;
        const char *name;
    } rows[] = {
        { connection.arg(u"nobody"_s, u"textChanged(QString)"_s, u"setWindowTitle(QString)"_s),
          Error::unknownObject, "nobody" },
        { connection.arg(u"field"_s, u"textUpset(QString)"_s, u"setWindowTitle(QString)"_s),
          Error::unknownMethod, "textUpset(QString)" },
        { connection.arg(u"field"_s, u"textChanged(QString)"_s, u"setWindowTytle(QString)"_s),
          Error::unknownMethod, "setWindowTytle(QString)" },
        { u"<tabstops><tabstop>nobody</tabstop></tabstops>"_s, Error::unknownObject, "nobody" },
    };
    for (const auto &row : rows) {
        const Error error = errorOf([&] { form(field, row.behind).instantiate(); });
        EXPECT_EQ(error.reason(), row.reason) << error.what();
        EXPECT_EQ(error.name(), QString::fromUtf8(row.name)) << error.what();
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
        { "<ui version=\"4.0\">\n <widget class=\"QWidget\" name=\"a\">\n </ui>", 3, 7, "" },
        { "<ui version=\"4.0\">\n <widget", 2, 9, "" },
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

TEST_F(Nib, after_an_error_no_object_is_left_and_no_outlet_set)
{
    const QString outlets = property(u"outlets"_s, u"owner.view\nowner.nameField"_s);
    const QString field = u"<widget class=\"QLineEdit\" name=\"field\">%1</widget>"_s;
    QWidget parent;
    EXPECT_THROW(form(field.arg(outlets
                                + property(u"bindings"_s, u"maxLength = owner.person.surname"_s)))
                         .instantiate(&owner, &parent),
                 NS::NibError);
    EXPECT_TRUE(parent.children().isEmpty());
    EXPECT_FALSE(owner.view);

    owner.isStubborn = true;
    EXPECT_THROW(form(field.arg(outlets)).instantiate(&owner, &parent), std::runtime_error);
    EXPECT_TRUE(parent.children().isEmpty());
    EXPECT_FALSE(owner.nameField);
}

TEST_F(Nib, a_form_opens_whatever_the_data_and_its_bindings_have_options)
{
    owner.person()->height = 12.5;
    const std::unique_ptr<QWidget> root(
            form(u"<widget class=\"QSlider\" name=\"slider\">%1</widget>"
                 "<widget class=\"QLineEdit\" name=\"field\">%2</widget>"_s.arg(
                         property(u"bindings"_s, u"value = owner.person.height"_s),
                         property(u"bindings"_s, u"text = owner.person.name | commit\n"
                                                 "enabled = !owner.person.isMember"_s)))
                    .instantiate(&owner));
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
    const QString widget = u"<widget class=\"%1\" name=\"box\">%2</widget>"_s;
    const std::unique_ptr<QWidget> root(
            form(widget.arg(u"QComboBox"_s, property(u"bindings"_s, entries))).instantiate(&owner));
    auto *const box = root->findChild<QComboBox *>();
    EXPECT_EQ(box->currentText(), u"Two"_s);
    box->setCurrentIndex(0);
    EXPECT_EQ(owner.person()->age(), 1);
    const QString items = u"items = owner.person.note | title(\"name\")"_s;
    const std::unique_ptr<QWidget> listed(
            form(widget.arg(u"QListView"_s, property(u"bindings"_s, items))).instantiate(&owner));
    const QAbstractItemModel *const model = listed->findChild<QListView *>()->model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(1, 0).data(), u"Two"_s);
    for (const auto &[entry, message] : { std::pair(entries, "offered by a QComboBox"),
                                          std::pair(items, "shown by a QListView") }) {
        const NS::NibError error = errorOf([&, &entry = entry] {
            form(widget.arg(u"QLabel"_s, property(u"bindings"_s, entry))).instantiate(&owner);
        });
        EXPECT_EQ(error.reason(), NS::NibError::unknownKeyPath);
        EXPECT_THAT(error.what(), ::testing::HasSubstr(message));
    }
}

TEST_F(Nib, an_action_between_overloads_asks_for_their_arguments)
{
    const QString box = u"<widget class=\"QComboBox\" name=\"box\">%1</widget>"_s;
    const auto load = [&](const QString &action) {
        const std::unique_ptr<QWidget> root(
                form(box.arg(property(u"actions"_s, action))).instantiate(&owner));
    };
    load(u"activated -> owner.take"_s);
    load(u"currentTextChanged(QString) -> owner.take(QString)"_s);
    load(u"currentTextChanged -> owner.take"_s);
    load(u"activated(int)->owner.save()"_s);
}

TEST_F(Nib, constraints_place_the_widgets_of_a_form)
{
    const QString text =
            u"<property name=\"geometry\"><rect><x>0</x><y>0</y><width>200</width><height>"
            "100</height></rect></property><widget class=\"QFrame\" name=\"panel\">"_s
            + property(u"constraints"_s,
                       u"leading = superview.leading + 8\nwidth = 0.5 * superview.width - 10.5\n"
                       "top == superview.top\nheight = 20"_s)
            + u"</widget><widget class=\"QFrame\" name=\"side\">"_s
            + property(u"constraints"_s,
                       u"left = panel.right\nbottom = superview.bottom - 4\nheight >= 30\n"
                       "height = 10 @ 400\nwidth = self.height"_s)
            + u"</widget>"_s;
    const std::unique_ptr<QWidget> root(form(text).instantiate());
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
            form(u"<property name=\"note\" stdset=\"0\"><string>Own</string></property><property "
                 "name=\"whatsThis\"><string notr=\"true\">Name</string></property><action "
                 "name=\"go\"><property name=\"text\"><string>Go</string></property></action>"
                 "<widget class=\"QLineEdit\" name=\"field\"><property name=\"placeholderText\">"
                 "<string>None</string></property><property name=\"text\"><string>Given</string>"
                 "</property>"_s
                 + property(u"bindings"_s, u"value = owner.person.name"_s) + u"</widget>"_s)
                    .instantiate(&owner));
    Shouting translator;
    QCoreApplication::installTranslator(&translator);
    QCoreApplication::processEvents();
    auto *const field = other->findChild<QLineEdit *>();
    EXPECT_EQ(field->text(), u"Ada"_s);
    EXPECT_EQ(field->placeholderText(), u"NONE"_s);
    EXPECT_EQ(other->findChild<QAction *>(u"go"_s)->text(), u"GO"_s);
    EXPECT_EQ(other->property("note"), u"OWN"_s);
    EXPECT_EQ(other->whatsThis(), u"Name"_s);
    EXPECT_EQ(root->windowTitle(), u"ACCOUNT"_s);
    EXPECT_EQ(root->findChild<QLabel *>(u"nameLabel"_s)->text(), u"Ada"_s);
    EXPECT_FALSE(root->property("outlets").isValid());
    QCoreApplication::removeTranslator(&translator);
}

#include "NSNibTest.moc"
