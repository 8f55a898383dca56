// SPDX-License-Identifier: MIT
#include "SealFolder.h"
#include "Terminal.h"

#include <QProcess>

#include <csignal>

using SealSignals = SealFolder;
using SealSignalsOnTerminal = SealFolderOnTerminal;

namespace {

// Whether the process keeps the signal for itself, which it does before it opens anything.
bool holdsBack(qint64 process, int signal)
{
    QFile status(u"/proc/%1/status"_s.arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = status.readAll();
    const QByteArray key = "\nSigBlk:\t";
    return (text.sliced(text.indexOf(key) + key.size(), 16).toULongLong(nullptr, 16) >> (signal - 1)
            & 1)
           != 0;
}

} // namespace

TEST_F(SealSignals, a_signal_ends_it_and_leaves_nothing)
{
    for (const int signal : { SIGINT, SIGTERM, SIGHUP, SIGQUIT }) {
        QProcess process;
        startSealing(process);
        const pid_t pid = pid_t(process.processId());
        ASSERT_GT(pid, 0); // 0 is this process's own group
        ASSERT_EQ(kill(pid, signal), 0);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(process.exitCode(), signal);
        EXPECT_EQ(names(), namesAtFirst);
    }
}

TEST_F(SealSignals, a_signal_ends_it_while_it_waits_for_the_other_end_of_a_fifo)
{
    ASSERT_EQ(mkfifo(qPrintable(path(u"fifo"_s)), 0600), 0);
    const QList<QStringList> cases {
        { u"passphrase"_s, u"fifo"_s, u"new"_s },
        { u"passphrase"_s, u"plain"_s, u"fifo"_s },
        { u"fifo"_s, u"plain"_s, u"new"_s },
    };
    for (const QStringList &files : cases) {
        QProcess process;
        process.start(programPath(u"pellarvine"_s),
                      { u"seal"_s, u"--passphrase-file"_s, path(files[0]), path(files[1]),
                        path(files[2]) });
        ASSERT_TRUE(process.waitForStarted());
        while (!holdsBack(process.processId(), SIGTERM))
            ASSERT_NE(process.state(), QProcess::NotRunning);
        process.terminate();
        ASSERT_TRUE(process.waitForFinished()) << qPrintable(files.join(u' '));
        EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(process.exitCode(), SIGTERM);
    }
    EXPECT_EQ(names(), QStringList { u"fifo"_s } + namesAtFirst);
}

TEST_F(SealSignalsOnTerminal, an_interrupted_question_leaves_the_terminal_as_it_was)
{
    const std::pair<QByteArray, int> keys[] = { { "\x03", SIGINT }, { "\x1c", SIGQUIT } };
    for (const auto &[key, signal] : keys) {
        Terminal seal({ u"seal"_s, path(u"plain"_s), path(u"new"_s) });
        ASSERT_TRUE(seal.sees("Passphrase: "));
        EXPECT_FALSE(seal.hasEcho());
        seal.type("half" + key);
        EXPECT_EQ(seal.finish(), 128 + signal);
        EXPECT_TRUE(seal.hasEcho());
        EXPECT_EQ(names(), namesAtFirst);
    }
}

TEST_F(SealSignalsOnTerminal, a_stopped_question_gives_the_terminal_back_and_asks_again)
{
    // The shell goes on when the command is stopped, and then continues it.
    const QString script = u"set -m; '%1' open '%2' '%3'; stty -a; fg"_s.arg(
            programPath(u"pellarvine"_s), path(u"sealed"_s), path(u"new"_s));
    Terminal shell({ u"-c"_s, script }, u"/bin/bash"_s);
    ASSERT_TRUE(shell.sees("Passphrase: "));
    shell.type("half\x1a"); // Ctrl+Z
    ASSERT_TRUE(shell.sees(" echo "));
    ASSERT_TRUE(shell.sees("pellarvine' open '" + path(u"sealed"_s).toUtf8())); // by fg
    ASSERT_TRUE(shell.sees("Passphrase: ", 2));
    shell.type("correct horse\n");
    EXPECT_EQ(shell.finish(), 0) << shell.shown().constData();
    EXPECT_FALSE(shell.shown().contains("correct horse"));
    EXPECT_EQ(read(u"new"_s), content);
}
