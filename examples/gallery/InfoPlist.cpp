// SPDX-License-Identifier: MIT
#include "InfoPlist.h"

#include <QDataStream>
#include <QIODevice>
#include <QLocale>
#include <QResource>
#include <QString>

using namespace Qt::StringLiterals;

namespace {

const QString fileName = u"Info.plist"_s;

// The hash of a name in a resource file.
quint32 hash(const QString &name)
{
    quint32 result = 0;
    for (const QChar character : name) {
        result = (result << 4) + character.unicode();
        result ^= (result & 0xf0000000U) >> 23;
        result &= 0x0fffffffU;
    }
    return result;
}

// A resource file as rcc writes it, version 1: a header, the data, the names, and the tree.
QByteArray resources(const QByteArray &contents)
{
    constexpr quint32 headerSize = 20;
    const auto nameOffset = quint32(headerSize + sizeof(quint32) + contents.size());
    const auto treeOffset =
            quint32(nameOffset + sizeof(quint16) + sizeof(quint32) + 2 * fileName.size());
    constexpr quint16 isFile = 0;
    constexpr quint16 isFolder = 2;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.writeRawData("qres", 4);
    out << quint32(1) << treeOffset << headerSize << nameOffset;
    out << quint32(contents.size());
    out.writeRawData(contents.constData(), int(contents.size()));
    out << quint16(fileName.size()) << hash(fileName);
    for (const QChar character : fileName)
        out << character.unicode();
    out << quint32(0) << isFolder << quint32(1) << quint32(1); // one child, the node numbered 1
    out << quint32(0) << isFile << quint16(QLocale::AnyTerritory) << quint16(QLocale::C)
        << quint32(0);
    return bytes;
}

} // namespace

InfoPlist::~InfoPlist()
{
    remove();
}

void InfoPlist::setContents(const QByteArray &xml)
{
    remove();
    m_resources = resources(xml);
    [[maybe_unused]] const bool isRegistered =
            QResource::registerResource(reinterpret_cast<const uchar *>(m_resources.constData()));
    Q_ASSERT(isRegistered);
}

void InfoPlist::remove()
{
    if (!m_resources.isEmpty())
        QResource::unregisterResource(reinterpret_cast<const uchar *>(m_resources.constData()));
}
