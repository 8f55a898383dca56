// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// A file in the program's resources as long as the object exists.
class ResourceFile
{
public:
    /// `path` has the form ":/Info.plist".
    ResourceFile(const QString &path, const QByteArray &contents);
    ResourceFile(const ResourceFile &) = delete;
    ResourceFile &operator=(const ResourceFile &) = delete;
    ~ResourceFile();

private:
    QByteArray m_resources;
};
