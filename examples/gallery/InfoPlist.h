// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// The program's ":/Info.plist" as long as the object exists. Other programs have it in their .qrc
/// file; in the gallery, the user edits it.
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
