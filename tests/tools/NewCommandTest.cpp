// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

class NewCommand : public testing::Test
{
public:
    NewCommand() { QDir::setCurrent(m_folder.path()); }
    ~NewCommand() override { QDir::setCurrent(m_before); }

private:
    QString m_before = QDir::currentPath();
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(NewCommand, writes_files_under_the_names_of_the_program)
{
    const Outcome outcome = runProgram(
            u"pellarvine"_s, { u"new"_s, u"letters"_s, u"--identifier"_s, u"org.lab.letters"_s });
    ASSERT_EQ(outcome.status, 0) << outcome.errors.constData();
    EXPECT_THAT(outcome.output.toStdString(), testing::HasSubstr("cmake -S letters"));
    EXPECT_TRUE(contents(u"letters/org.lab.letters.desktop"_s).contains("Exec=letters\n"_L1));
    EXPECT_TRUE(contents(u"letters/org.lab.letters.metainfo.xml"_s)
                        .contains("<id>org.lab.letters</id>"_L1));
    EXPECT_TRUE(contents(u"letters/letters_de.ts"_s).contains(u"Begrüßung"_s));
    EXPECT_TRUE(contents(u"letters/Info.plist"_s).contains("<string>Letters</string>"_L1));

    // Existing files are not changed.
    const Outcome again = runProgram(u"pellarvine"_s, { u"new"_s, u"letters"_s });
    EXPECT_EQ(again.status, 6);
    EXPECT_FALSE(QFile::exists(u"letters/org.example.letters.desktop"_s));
}

TEST_F(NewCommand, refuses_names_that_cannot_be_built)
{
    const QStringList rows[] = {
        {},
        { u"one"_s, u"two"_s },
        { u"../letters"_s },
        { u"1letter"_s },
        { u"le tters"_s },
        { u"test"_s },
        { u"edit_cache"_s },
        { u"letters"_s, u"-i"_s, u"letters"_s },
        { u"letters"_s, u"-i"_s, u"org/example.letters"_s },
        { u"letters\n"_s },
    };
    for (const QStringList &row : rows) {
        const Outcome outcome = runProgram(u"pellarvine"_s, QStringList(u"new"_s) + row);
        EXPECT_EQ(outcome.status, 2) << row.join(u' ').toStdString();
        EXPECT_EQ(outcome.errors.count('\n'), 1) << outcome.errors.constData();
    }
    EXPECT_TRUE(QDir().isEmpty());
}
