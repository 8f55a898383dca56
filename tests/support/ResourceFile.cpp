// SPDX-License-Identifier: MIT
#include "ResourceFile.h"

#include <QFile>
#include <QProcess>
#include <QResource>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

ResourceFile::ResourceFile(const QString &path, const QByteArray &contents)
{
    const QTemporaryDir folder;
    const auto write = [&](const QString &name, const QByteArray &text) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
    };
    write(u"contents"_s, contents);
    write(u"list.qrc"_s,
          u"<RCC><qresource><file alias=\"%1\" compression-algorithm=\"none\">contents</file>"
          "</qresource></RCC>"_s.arg(path.mid(2))
                  .toUtf8());
    QProcess rcc;
    rcc.start(QStringLiteral(PELLARVINE_RCC), { u"--binary"_s, folder.filePath(u"list.qrc"_s) });
    rcc.waitForFinished();
    m_resources = rcc.readAllStandardOutput();
    if (rcc.exitCode() != 0
        || !QResource::registerResource(reinterpret_cast<const uchar *>(m_resources.constData())))
        qFatal("cannot make a resource: %s", rcc.readAllStandardError().constData());
}

ResourceFile::~ResourceFile()
{
    QResource::unregisterResource(reinterpret_cast<const uchar *>(m_resources.constData()));
}
