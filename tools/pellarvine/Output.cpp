// SPDX-License-Identifier: MIT
#include "Output.h"

#include "Command.h"
#include "Progress.h"
#include "SystemError.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString standardOutput = u"standard output"_s;

class FileOutput : public Output
{
public:
    FileOutput(const QString &path, bool replaces, std::optional<mode_t> mode)
        : m_file(path)
        , m_replaces(replaces)
    {
        checkPlace();
        // Nobody but the owner reads the file before it is whole and has its mode.
        const mode_t mask = umask(077);
        const bool isOpen = m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        umask(mask);
        if (!isOpen)
            fail(m_file.errorString());
        m_mode = mode.value_or(0666 & ~mask);
        if (fchmod(m_file.handle(), 0600) != 0)
            throwSystemError(path, errno);
    }

    Stream stream() const override { return { m_file.handle(), m_file.fileName() }; }

    void commit() override
    {
        const int descriptor = m_file.handle();
        if (fchmod(descriptor, m_mode) != 0)
            throwSystemError(m_file.fileName(), errno);
        // Some file systems cannot flush; what they report otherwise is lost data.
        if (fsync(descriptor) != 0 && errno != EINVAL && errno != ENOTSUP)
            throwSystemError(m_file.fileName(), errno);
        checkPlace();
        if (!m_file.commit())
            fail(m_file.errorString());
    }

private:
    void checkPlace() const
    {
        const QFileInfo place(m_file.fileName());
        if (place.isDir())
            fail(u"Is a directory"_s);
        if (!m_replaces && (place.exists() || place.isSymLink()))
            fail(u"exists; --force replaces it"_s);
    }

    [[noreturn]] void fail(const QString &cause) const
    {
        throw CommandError(ExitStatus::systemError, m_file.fileName() + u": "_s + cause);
    }

    mutable QSaveFile m_file; // handle() is not const
    bool m_replaces;
    mode_t m_mode = 0;
};

class StreamOutput : public Output
{
public:
    Stream stream() const override { return { STDOUT_FILENO, standardOutput }; }
    void commit() override { }
};

class SpooledOutput : public Output
{
public:
    explicit SpooledOutput(const Signals &signals)
        : m_folder(QDir::tempPath())
        , m_signals(signals)
    {
        const QByteArray folder = QFile::encodeName(m_folder);
        m_descriptor = open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC | O_EXCL, 0600);
        if (m_descriptor < 0) {
            // A file system without nameless files.
            QByteArray pattern = folder + "/pellarvine-XXXXXX";
            m_descriptor = mkostemp(pattern.data(), O_CLOEXEC);
            if (m_descriptor >= 0)
                unlink(pattern.constData());
        }
        if (m_descriptor < 0)
            throwSystemError(m_folder, errno);
    }
    ~SpooledOutput() override { close(m_descriptor); }

    Stream stream() const override { return { m_descriptor, u"temporary file in "_s + m_folder }; }

    void commit() override
    {
        if (lseek(m_descriptor, 0, SEEK_SET) != 0)
            throwSystemError(stream().name, errno);
        const Transform copy {
            .feed = [](QByteArrayView data) { return data.toByteArray(); },
            .finalize = [] { return QByteArray(); },
        };
        Progress noProgress(true, -1);
        runPipeline(stream(), { STDOUT_FILENO, standardOutput }, copy, m_signals, noProgress);
    }

private:
    QString m_folder;
    const Signals &m_signals;
    int m_descriptor;
};

} // namespace

std::unique_ptr<Output> makeFileOutput(const QString &path, bool replaces,
                                       std::optional<mode_t> mode)
{
    return std::make_unique<FileOutput>(path, replaces, mode);
}

std::unique_ptr<Output> makeStreamOutput()
{
    return std::make_unique<StreamOutput>();
}

std::unique_ptr<Output> makeSpooledOutput(const Signals &signals)
{
    return std::make_unique<SpooledOutput>(signals);
}
