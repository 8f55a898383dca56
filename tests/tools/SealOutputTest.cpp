// SPDX-License-Identifier: MIT
#include "SealFolder.h"

#include <QProcess>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>

using SealOutput = SealFolder;

TEST_F(SealOutput, a_fifo_gets_the_bytes)
{
    for (const QString &force : { u""_s, u"--force"_s }) {
        const Outcome outcome =
                shell(u"rm -f fifo; mkfifo fifo; cat fifo >got &"
                      "pellarvine seal $key %1 plain fifo && wait &&"
                      "{ cat fifo >text & } &&"
                      "pellarvine open $key %1 got fifo && wait; test -p fifo"_s.arg(force));
        EXPECT_EQ(outcome.status, 0) << outcome.errors.constData();
        EXPECT_TRUE(holds(u"got"_s, content));
        EXPECT_EQ(read(u"text"_s), content);
    }
}

TEST_F(SealOutput, a_fifo_gets_nothing_unverified)
{
    QByteArray damaged = read(u"sealed"_s);
    damaged.back() = char(damaged.back() ^ 1);
    write(u"sealed"_s, damaged);
    const Outcome outcome =
            shell(u"mkfifo fifo; cat fifo >got &"
                  "pellarvine open $key sealed fifo; status=$?; wait; exit $status"_s);
    EXPECT_EQ(outcome.status, 4);
    EXPECT_EQ(read(u"got"_s), "");
}

TEST_F(SealOutput, a_device_stays_a_device)
{
    const QString null = path(u"null"_s);
    if (mknod(qPrintable(null), S_IFCHR | 0600, makedev(1, 3)) != 0)
        GTEST_SKIP() << "no device node can be made: " << std::strerror(errno);
    for (const QString &force : { u""_s, u"--force"_s }) {
        for (const QString &files :
             { u"seal $key %1 plain null"_s, u"open $key %1 sealed null"_s }) {
            const Outcome outcome = shell(u"pellarvine "_s + files.arg(force));
            EXPECT_EQ(outcome.status, 0) << outcome.errors.constData();
            struct stat status = {};
            ASSERT_EQ(stat(qPrintable(null), &status), 0);
            EXPECT_TRUE(S_ISCHR(status.st_mode));
        }
    }
}

TEST_F(SealOutput, the_processs_own_descriptors_have_names)
{
    EXPECT_EQ(shell(u"{ printf 12; pellarvine seal $key plain /dev/stdout; } >got"_s).status, 0);
    EXPECT_TRUE(read(u"got"_s).startsWith("12:-)"));
    EXPECT_EQ(shell(u"pellarvine open $key sealed /proc/self/fd/3 3>text"_s).status, 0);
    EXPECT_EQ(read(u"text"_s), content);
    EXPECT_EQ(shell(u"ln -s /dev/fd/1 link; pellarvine open $key sealed link | cat"_s).output,
              content);
}

TEST_F(SealOutput, a_file_is_not_sealed_into_itself_while_it_is_read)
{
    write(u"both"_s, content);
    for (const QString &redirected :
         { u"seal $key both - >>both"_s, u"seal $key - /dev/stdout <both 1<>both"_s }) {
        const Outcome outcome = shell(u"ulimit -f 10000; pellarvine "_s + redirected);
        EXPECT_EQ(outcome.status, 2) << outcome.errors.constData();
        EXPECT_TRUE(outcome.errors.contains(" writes into IN")) << outcome.errors.constData();
        EXPECT_TRUE(read(u"both"_s) == content);
    }
}

TEST_F(SealOutput, names_are_bytes)
{
    const Outcome outcome = shell(uR"(
        e=$'\xe9' a=$'\xe1'
        cp plain $e && pellarvine seal $key $e $e.sealed && echo other >$a &&
        pellarvine seal $key $a $a.sealed && pellarvine open $key $e.sealed text &&
        pellarvine digest $e && pellarvine open $key $e.sealed $a; ls | LC_ALL=C sort
        rm $a* $e*)"_s);
    EXPECT_TRUE(outcome.output.contains("  \xe9\n")) << outcome.output.constData();
    EXPECT_TRUE(outcome.output.endsWith(
            "passphrase\nplain\nsealed\ntext\n\xe1\n\xe1.sealed\n\xe9\n\xe9.sealed\n"))
            << outcome.output.constData();
    EXPECT_EQ(outcome.errors, "pellarvine: \xe1: exists; --force replaces it\n");
    EXPECT_EQ(read(u"text"_s), content);
}

TEST_F(SealOutput, a_name_may_be_as_long_as_the_file_system_has_it)
{
    const QString longest(255, u'n');
    for (const QString &force : { u"--quiet"_s, u"--force"_s }) {
        const Outcome outcome = run(u"seal"_s, { force, u"plain"_s, longest });
        EXPECT_EQ(outcome.status, 0) << outcome.errors.constData();
        EXPECT_TRUE(holds(longest, content));
    }
}

TEST_F(SealOutput, a_link_is_followed_by_force_and_refused_without)
{
    for (const QString &target : { u"absent"_s, u"plain"_s }) {
        ASSERT_TRUE(QFile::link(target, path(u"link"_s)));
        EXPECT_EQ(run(u"open"_s, { u"sealed"_s, u"link"_s }).status, 6);
        EXPECT_EQ(QFile::exists(path(u"absent"_s)), target == u"plain"_s);
        EXPECT_EQ(run(u"open"_s, { u"--force"_s, u"sealed"_s, u"link"_s }).status, 0);
        EXPECT_EQ(QFile::symLinkTarget(path(u"link"_s)), path(target));
        EXPECT_EQ(read(target), content);
        ASSERT_TRUE(QFile::remove(path(u"link"_s)));
    }
}

namespace {

// Disables the system calls that some file systems lack: files without a name, and renaming without
// replacing. For the calling process and the program that it executes.
bool refuseNewerCalls()
{
    const auto load = [](std::size_t offset) {
        return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, __u32(offset));
    };
    const __u32 nameless = O_TMPFILE & ~O_DIRECTORY;
    std::array filter {
        load(offsetof(seccomp_data, nr)),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat2, 3, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
        load(offsetof(seccomp_data, args[2])),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, nameless, 0, 1),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program { filter.size(), filter.data() };
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
           && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

TEST_F(SealOutput, no_file_of_another_is_replaced_without_force)
{
    for (const bool refuses : { false, true }) {
        for (const bool appears : { false, true }) {
            QProcess process;
            if (refuses) {
                process.setChildProcessModifier([] {
                    if (!refuseNewerCalls())
                        _exit(127);
                });
            }
            startSealing(process);
            if (appears)
                write(u"new"_s, "precious");
            process.closeWriteChannel();
            ASSERT_TRUE(process.waitForFinished());
            if (process.exitCode() == 127)
                GTEST_SKIP() << "no filter of system calls can be set";
            EXPECT_EQ(process.exitCode(), appears ? 6 : 0)
                    << process.readAllStandardError().constData();
            if (appears)
                EXPECT_EQ(read(u"new"_s), "precious");
            else
                EXPECT_TRUE(holds(u"new"_s, content));
            EXPECT_EQ(names(), QStringList { u"new"_s } + namesAtFirst);
            ASSERT_TRUE(QFile::remove(path(u"new"_s)));
        }
    }
}
