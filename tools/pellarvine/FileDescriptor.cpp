// SPDX-License-Identifier: MIT
#include "FileDescriptor.h"

#include "SystemError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

FileDescriptor openForReading(const QByteArray &path)
{
    FileDescriptor file(path == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                    : open(path.constData(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen() || fstat(file, &status) != 0)
        throwSystemError(path, errno);
    if (S_ISDIR(status.st_mode))
        throwSystemError(path, EISDIR);
    return file;
}
