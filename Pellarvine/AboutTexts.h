// SPDX-License-Identifier: MIT
// Not API: the texts of the about window that come from the program's metainfo.
#pragma once

#include <pellarvine/Platform/NSMetainfo.h>

#include <QColor>

namespace Pellarvine::detail {

/// "By Ada and Grace": the key Pellarvine::Authors of `<custom>`, a name a line, else the
/// developer. Of more than twelve, "others" stands for the rest.
QString aboutAuthors(const NS::Metainfo &metainfo);

/// Links to the website, the bug tracker and the source code, as rich text.
QString aboutLinks(const NS::Metainfo &metainfo, const QColor &color);

/// A text that the about window shows on demand.
struct AboutDocument
{
    QString link; ///< what its link refers to: "about:license"
    QString title; ///< also the link's text
    QString text;
};

/// Authors (if they are too many for the window), license, credits, libraries and release notes;
/// without those that are empty.
QList<AboutDocument> aboutDocuments(const NS::Metainfo &metainfo);

/// The texts of the licenses in an SPDX expression, of those that are found: LICENSES/ID.txt in the
/// program's resources, else beside the executable; else in the system's folder of licenses.
QString licenseText(const QString &expression);

/// Links to the documents, as rich text.
QString documentLinks(const QList<AboutDocument> &documents, const QColor &color);

} // namespace Pellarvine::detail
