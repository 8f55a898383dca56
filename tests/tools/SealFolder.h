// SPDX-License-Identifier: MIT
#pragma once

#include "Program.h"
#include "TemporaryFolder.h"

#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

/// A folder with a passphrase file, a plain and a sealed file, in which the command runs.
class SealFolder : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        write(u"passphrase"_s, "correct horse\n");
        write(u"plain"_s, content);
        write(u"sealed"_s, Pellarvine::Encryptor::encrypt(content, u"correct horse"_s));
    }

    QString path(const QString &name) const { return m_folder.filePath(name); }

    void write(const QString &name, const QByteArray &bytes) const { m_folder.file(name, bytes); }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        return file.readAll();
    }

    mode_t mode(const QString &name) const
    {
        struct stat status = {};
        EXPECT_EQ(stat(qPrintable(path(name)), &status), 0);
        return status.st_mode & 07777;
    }

    QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    // Runs "pellarvine COMMAND --passphrase-file passphrase ARGUMENTS..." in the folder; names of
    // files are resolved there.
    Outcome run(const QString &command, QStringList arguments, const QByteArray &input = {}) const
    {
        for (QString &argument : arguments) {
            if (!argument.startsWith(u'-'))
                argument = path(argument);
        }
        return runProgram(u"pellarvine"_s,
                          QStringList { command, u"--passphrase-file"_s, path(u"passphrase"_s) }
                                  + arguments,
                          input);
    }

    // Starts "pellarvine seal --passphrase-file passphrase - new" and gives it the content. A pipe
    // holds 64 KiB: once the command has taken a MiB, it has looked for its output and waits for
    // more.
    void startSealing(QProcess &process) const
    {
        process.start(programPath(u"pellarvine"_s),
                      { u"seal"_s, u"--passphrase-file"_s, path(u"passphrase"_s), u"-"_s,
                        path(u"new"_s) });
        ASSERT_TRUE(process.waitForStarted());
        process.write(content);
        while (process.bytesToWrite() > 0)
            ASSERT_TRUE(process.waitForBytesWritten());
    }

    // Runs a script of bash in the folder. `pellarvine` is the command, and $key its option for the
    // passphrase.
    Outcome shell(const QString &script, const QByteArray &input = {}) const
    {
        QProcess bash;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString folder = QFileInfo(programPath(u"pellarvine"_s)).path();
        environment.insert(u"PATH"_s, folder + u':' + environment.value(u"PATH"_s));
        environment.insert(u"key"_s, u"--passphrase-file=passphrase"_s);
        bash.setProcessEnvironment(environment);
        bash.setWorkingDirectory(m_folder.path());
        bash.start(u"bash"_s, { u"-c"_s, script });
        bash.write(input);
        bash.closeWriteChannel();
        EXPECT_TRUE(bash.waitForFinished()) << qPrintable(script);
        return { bash.exitCode(), bash.readAllStandardOutput(), bash.readAllStandardError() };
    }

    // Whether the file is a container of that text.
    bool holds(const QString &name, const QByteArray &text) const
    {
        return Pellarvine::Decryptor::decrypt(read(name), u"correct horse"_s) == text;
    }

    const QByteArray content = QByteArray("All of it. ").repeated(100000);
    const QStringList namesAtFirst { u"passphrase"_s, u"plain"_s, u"sealed"_s };

private:
    TemporaryFolder m_folder;
};
