// SPDX-License-Identifier: MIT
#include "Base/FileContents.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <new>

namespace Pellarvine::detail {

QString ordinaryFilePath(const QUrl &url)
{
    if (!url.isLocalFile())
        return {};
    const QString path = url.toLocalFile();
    return QFileInfo(path).isFile() ? path : QString();
}

std::optional<QByteArray> contentsOfFile(const QUrl &url)
{
    const QString path = ordinaryFilePath(url);
    if (path.isEmpty())
        return std::nullopt;
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return std::nullopt;
        QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            return std::nullopt;
        return bytes;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

} // namespace Pellarvine::detail
