// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QDate>
#include <QList>
#include <QMap>
#include <QString>
#include <QUrl>

namespace NS {

/// The contents of a program's AppStream metainfo file, as `Bundle::metainfo()` reads it:
///
///     const NS::Metainfo metainfo = NS::Bundle::main().metainfo();
///     if (!metainfo.releases.isEmpty())
///         label->setText(metainfo.releases.first().version);
///
/// A member is empty if the file lacks its element. Texts are in the first language of
/// `QLocale().uiLanguages()` that the file has, otherwise untranslated. A plain value: it holds no
/// file open, and any thread may read a copy of its own.
struct Metainfo
{
    /// A version of the program and its changes.
    struct Release
    {
        QString version; ///< "1.4"
        QDate date; ///< invalid if the file has none
        /// One line for each paragraph and list item. Items begin with "• ".
        QString description;

        bool operator==(const Release &) const = default;
    };

    QString projectLicense; ///< an SPDX expression: "GPL-3.0-or-later"
    QString developer; ///< the name in `<developer>`, or `<developer_name>`
    QMap<QString, QUrl> urls; ///< by type: "homepage", "bugtracker", "vcs-browser"
    QList<Release> releases; ///< in the order of the file
    QMap<QString, QString> custom; ///< the values in `<custom>`, by key

    bool operator==(const Metainfo &) const = default;
};

} // namespace NS
