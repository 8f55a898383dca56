// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// The program's ":/Info.plist" for as long as the object lives. A program has one from its .qrc
/// file as a rule; the gallery lets people write it.
class InfoPlist
{
public:
    InfoPlist() = default;
    InfoPlist(const InfoPlist &) = delete;
    InfoPlist &operator=(const InfoPlist &) = delete;
    ~InfoPlist();

    void setContents(const QByteArray &xml);

private:
    void remove();

    QByteArray m_resources;
};
