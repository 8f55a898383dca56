// SPDX-License-Identifier: MIT
#include "Program.h"
#include "TemporaryFolder.h"

#include <QFile>
#include <gmock/gmock.h>

using ::testing::HasSubstr;
using namespace Qt::StringLiterals;

namespace {

class CheckCommand : public ::testing::Test
{
protected:
    // Copies the forms into a folder, with `before` in one of them replaced.
    void change(const QString &name, const QByteArray &before, const QByteArray &after)
    {
        for (const QString &each : { u"Form.ui"_s, u"Form.storyboard"_s }) {
            QFile original(u"" CHECKED_FORMS "/"_s + each);
            ASSERT_TRUE(original.open(QIODevice::ReadOnly));
            QByteArray contents = original.readAll();
            if (each == name) {
                ASSERT_TRUE(contents.contains(before)) << before.constData();
                contents.replace(before, after);
            }
            m_folder.file(each, contents);
        }
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    Outcome run(const QString &name, bool hasPlugin = true) const
    {
        QStringList arguments { u"check"_s, path(name) };
        if (hasPlugin)
            arguments << u"--plugin"_s << u"" CHECK_PLUGIN ""_s;
        return runProgram(u"pellarvine"_s, arguments);
    }

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST_F(CheckCommand, says_where_each_mistake_is)
{
    const struct
    {
        QString file; // the file to change
        QByteArray before;
        QByteArray after;
        QString checked;
        QByteArray problem; // after the folder; empty if there is none
    } rows[] = {
        { u"Form.ui"_s, "form", "form", u"Form.ui"_s, "" },
        { u"Form.ui"_s, "form", "form", u"Form.storyboard"_s, "" },
        { u"Form.ui"_s, "\"number\"", "\"numbr\"", u"Form.ui"_s,
          "/Form.ui:22:40: error: badge: Badge has no property \"numbr\"" },
        { u"Form.ui"_s, "returnPressed", "returnPresed", u"Form.ui"_s,
          "/Form.ui:10:50: error: nameField: QLineEdit has no signal \"returnPresed\"" },
        // A program that loads such a form only gets a warning.
        { u"Form.ui"_s, "outlets\" stdset=\"0\"><string>owner.field",
          "constraints\" stdset=\"0\"><string>width = 10\nwidth = 20", u"Form.ui"_s,
          "/Form.ui:9:1: error: nameField: the constraint \"width = 20\" contradicts others" },
        // Qt Designer drops such a widget when it saves the form.
        { u"Form.ui"_s, "<item>\n    <widget class=\"Badge\" name=\"badge\">",
          "<item>\n    <widget class=\"QWidget\" name=\"box\"><property name=\"enabled\">"
          "<bool>false</bool></property><layout class=\"QVBoxLayout\"/></widget></item>\n"
          "   <item>\n    <widget class=\"Badge\" name=\"badge\">",
          u"Form.ui"_s,
          "/Form.ui:22:5: error: box: Qt Designer would save nothing of this QWidget" },
        // A property of the program's own.
        { u"Form.ui"_s, "outlets\" stdset=\"0\"><string>owner.field",
          "action\" stdset=\"0\"><string>delete", u"Form.ui"_s, "" },
        // The owner's class is known only from a storyboard.
        { u"Form.ui"_s, "owner.name", "owner.nmae", u"Form.ui"_s, "" },
        { u"Form.ui"_s, "owner.name", "owner.nmae", u"Form.storyboard"_s,
          "/Form.ui:9:51: error: nameField: FormController has no key \"nmae\"" },
        { u"Form.ui"_s, "owner.name", "owner.field.txet", u"Form.storyboard"_s,
          "/Form.ui:9:51: error: nameField: QLineEdit has no key \"txet\"" },
        { u"Form.ui"_s, "owner.name", "owner.field.nickname", u"Form.storyboard"_s, "" },
        { u"Form.ui"_s, "text = owner.name", "text = owner.nickname", u"Form.storyboard"_s,
          "/Form.ui:9:51: error: nameField: FormController does not report changes of its key "
          "\"nickname\"" },
        { u"Form.ui"_s, "owner.mailboxes", "owner.badges | title(\"numbr\")", u"Form.storyboard"_s,
          "/Form.ui:16:15: error: mailboxBox: Badge has no key \"numbr\": did you mean "
          "\"number\"?" },
        { u"Form.ui"_s, "owner.mailboxes", "owner.badges | title(\"number\") | tag(\"motto\")",
          u"Form.storyboard"_s, "" },
        { u"Form.ui"_s, "owner.save", "owner.sav", u"Form.storyboard"_s,
          "/Form.ui:10:50: error: nameField: FormController has no slot \"sav\"" },
        { u"Form.ui"_s, "owner.field", "owner.name", u"Form.storyboard"_s,
          "/Form.ui:8:50: error: nameField: the property \"name\" of FormController cannot take a "
          "QLineEdit" },
        { u"Form.storyboard"_s, "object=\"nameField\"/>", "object=\"nameFeld\"/>",
          u"Form.storyboard"_s,
          "/Form.storyboard:4:5: error: the scene \"form\" has no object \"nameFeld\"" },
        { u"Form.storyboard"_s, "property=\"field\"", "property=\"feld\"", u"Form.storyboard"_s,
          "/Form.storyboard:4:5: error: FormController has no property \"feld\"" },
        { u"Form.storyboard"_s, "returnPressed", "clicked", u"Form.storyboard"_s,
          "/Form.storyboard:6:3: error: QLineEdit has no signal \"clicked\"" },
        { u"Form.storyboard"_s, "destination=\"form\"", "destination=\"from\"",
          u"Form.storyboard"_s, "/Form.storyboard:6:3: error: there is no scene \"from\" (form)" },
    };
    for (const auto &row : rows) {
        change(row.file, row.before, row.after);
        const Outcome result = run(row.checked);
        EXPECT_EQ(result.status, row.problem.isEmpty() ? 0 : 3) << row.after.constData();
        EXPECT_THAT(result.errors.toStdString(), HasSubstr(row.problem.toStdString()));
        EXPECT_EQ(result.errors.count('\n'), row.problem.isEmpty() ? 0 : 2)
                << result.errors.constData();
    }
}

TEST_F(CheckCommand, prints_a_mistake_of_a_form_and_its_storyboard_once)
{
    change(u"Form.ui"_s, "returnPressed", "returnPresed");
    const Outcome result =
            runProgram(u"pellarvine"_s, { u"check"_s, u"--plugin"_s, u"" CHECK_PLUGIN ""_s,
                                          path(u"Form.ui"_s), path(u"Form.storyboard"_s) });
    EXPECT_EQ(result.errors.count("returnPresed"), 1) << result.errors.constData();
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("problems in 2 of 2 files"));
}

TEST_F(CheckCommand, knows_the_classes_of_plugins_alone)
{
    change(u"Form.ui"_s, "form", "form");
    const Outcome result = run(u"Form.ui"_s, false);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors.toStdString(),
                HasSubstr("Form.ui:22:5: error: badge: there is no class \"Badge\""));
    EXPECT_EQ(runProgram(u"pellarvine"_s, { u"check"_s }).status, 2);
    EXPECT_EQ(run(u"Absent.ui"_s).status, 3);
    EXPECT_EQ(runProgram(u"pellarvine"_s,
                         { u"check"_s, u"--plugin"_s, u"/absent.so"_s, path(u"Form.ui"_s) })
                      .status,
              6);
}
