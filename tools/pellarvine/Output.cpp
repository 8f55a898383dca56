// SPDX-License-Identifier: MIT
#include "Output.h"

#include "Command.h"
#include "FileDescriptor.h"
#include "Place.h"
#include "Progress.h"
#include "Signals.h"
#include "SystemError.h"

#include <pellarvine/Shared/Data+Random.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A file without a name in `folder`, if the file system supports it: it disappears even if the
// process is killed. Otherwise a named one, whose name is in `path`.
struct TemporaryFile
{
    FileDescriptor file;
    QByteArray path;

    explicit TemporaryFile(const QByteArray &folder)
    {
        file = FileDescriptor(open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
        // It gets its name through /proc.
        if (file.isOpen() && access(descriptorPath().constData(), F_OK) == 0)
            return;
        path = folder + "/.pellarvine-XXXXXX";
        file = FileDescriptor(mkostemp(path.data(), O_CLOEXEC));
        if (!file.isOpen())
            path.clear();
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
    ~TemporaryFile()
    {
        if (!path.isEmpty())
            unlink(path.constData());
    }

    // Names the file unless the name exists. Returns false, with errno, if it cannot.
    bool linkAs(const QByteArray &name) const
    {
        if (path.isEmpty()) {
            return linkat(AT_FDCWD, descriptorPath().constData(), AT_FDCWD, name.constData(),
                          AT_SYMLINK_FOLLOW)
                   == 0;
        }
        if (renameat2(AT_FDCWD, path.constData(), AT_FDCWD, name.constData(), RENAME_NOREPLACE)
            == 0)
            return true;
        // Some file systems support neither. The destructor removes the temporary name.
        const bool isUnknown = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
        return isUnknown && link(path.constData(), name.constData()) == 0;
    }

    // Names the file, and replaces an existing one.
    bool replace(const QByteArray &name)
    {
        if (path.isEmpty()) {
            const QByteArray folder = name.first(name.lastIndexOf('/') + 1);
            path = folder + ".pellarvine-" + Pellarvine::secureRandomData(12).toHex();
            if (linkat(AT_FDCWD, descriptorPath().constData(), AT_FDCWD, path.constData(),
                       AT_SYMLINK_FOLLOW)
                != 0) {
                path.clear();
                return false;
            }
        }
        return rename(path.constData(), name.constData()) == 0;
    }

private:
    QByteArray descriptorPath() const { return "/proc/self/fd/" + QByteArray::number(file); }
};

QByteArray folderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? "." : path.first(slash + 1);
}

class FileOutput : public Output
{
public:
    FileOutput(const QByteArray &name, const QByteArray &path, bool replaces,
               std::optional<mode_t> mode)
        : m_name(name)
        , m_path(path)
        , m_replaces(replaces)
        , m_temporary(folderOf(path))
    {
        if (!m_temporary.file.isOpen())
            throwSystemError(name, errno);
        const mode_t mask = umask(0);
        umask(mask);
        m_mode = mode.value_or(0666 & ~mask);
    }

    Stream stream() const override { return { m_temporary.file, m_name }; }

    void commit() override
    {
        // Until it was complete, only the owner could read the file.
        if (fchmod(m_temporary.file, m_mode) != 0)
            throwSystemError(m_name, errno);
        // Some file systems cannot flush. Any other error means lost data.
        if (fsync(m_temporary.file) != 0 && errno != EINVAL && errno != ENOTSUP)
            throwSystemError(m_name, errno);
        if (m_replaces ? m_temporary.replace(m_path) : m_temporary.linkAs(m_path))
            return;
        if (errno == EEXIST)
            throwExists(m_name);
        throwSystemError(m_name, errno);
    }

    [[noreturn]] static void throwExists(const QByteArray &name)
    {
        throw CommandError(ExitStatus::systemError, name + ": exists; --force replaces it");
    }

private:
    QByteArray m_name;
    QByteArray m_path;
    bool m_replaces;
    TemporaryFile m_temporary;
    mode_t m_mode = 0;
};

class StreamOutput : public Output
{
public:
    StreamOutput(FileDescriptor file, Stream stream)
        : m_file(std::move(file))
        , m_stream(std::move(stream))
    { }

    Stream stream() const override { return m_stream; }
    void commit() override { }

private:
    FileDescriptor m_file; // nothing if the stream is one of the process's own
    Stream m_stream;
};

class SpooledOutput : public Output
{
public:
    SpooledOutput(std::unique_ptr<Output> target, const Signals &signals)
        : m_target(std::move(target))
        , m_signals(signals)
    {
        const char *const set = std::getenv("TMPDIR");
        const bool isSet = set && *set;
        const QByteArray folder = isSet ? set : "/tmp";
        TemporaryFile temporary(folder);
        if (!temporary.file.isOpen())
            throwSystemError((isSet ? "TMPDIR " : "") + folder, errno);
        m_name = "temporary file in " + folder;
        m_file = std::move(temporary.file);
    }

    Stream stream() const override { return { m_file, m_name }; }

    void commit() override
    {
        if (lseek(m_file, 0, SEEK_SET) != 0)
            throwSystemError(m_name, errno);
        const Transform copy {
            .feed = [](QByteArrayView data) { return data.toByteArray(); },
            .finalize = [] { return QByteArray(); },
        };
        Progress noProgress(true, -1);
        runPipeline(stream(), m_target->stream(), copy, m_signals, noProgress);
    }

private:
    std::unique_ptr<Output> m_target;
    const Signals &m_signals;
    QByteArray m_name;
    FileDescriptor m_file;
};

} // namespace

std::unique_ptr<Output> openOutput(const QByteArray &path, Release release, bool replaces,
                                   std::optional<mode_t> mode, const Signals &signals)
{
    const bool isStandardOutput = path == "-";
    const QByteArray name = isStandardOutput ? "standard output" : path;
    const Place place = isStandardOutput ? Place { STDOUT_FILENO, {} } : placeOf(path);
    FileDescriptor file;
    if (!place.descriptor) {
        struct stat status = {};
        const bool exists = stat(place.path.constData(), &status) == 0;
        if (exists && S_ISDIR(status.st_mode))
            throwSystemError(name, EISDIR);
        if (!exists || S_ISREG(status.st_mode)) {
            if (!replaces && (exists || place.isLink))
                FileOutput::throwExists(name);
            return std::make_unique<FileOutput>(name, place.path, replaces, mode);
        }
        file = signals.open(path, O_WRONLY | O_NOCTTY);
    }

    const Stream stream { place.descriptor.value_or(file), name };
    auto output = std::make_unique<StreamOutput>(std::move(file), stream);
    if (release == Release::onceCommitted)
        return std::make_unique<SpooledOutput>(std::move(output), signals);
    if (isatty(stream.descriptor)) {
        throw CommandError(ExitStatus::badUsage,
                           name + " is a terminal: name a file, or redirect the output to one");
    }
    return output;
}
