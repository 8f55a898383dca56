// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <unistd.h>
#include <utility>

/// An open file descriptor, closed by the destructor.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    { }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    { }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor()
    {
        if (isOpen())
            close(m_descriptor);
    }

    bool isOpen() const { return m_descriptor >= 0; }
    operator int() const { return m_descriptor; }

private:
    int m_descriptor;
};

/// Opens a file for reading; "-" is standard input. Throws CommandError, for a folder too.
FileDescriptor openForReading(const QByteArray &path);
