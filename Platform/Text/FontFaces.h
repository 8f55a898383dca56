// SPDX-License-Identifier: MIT
// Not API: the faces that the system really has, as Qt and fontconfig know them.
#pragma once

#include <QFont>
#include <QList>
#include <QStringList>

#include <optional>

namespace Pellarvine::detail {

/// One face of a family.
struct FontFace
{
    QStringList styleNames; ///< "Semi Bold Italic"; first as the family's, then by other families
    int weight = 0; ///< 1…1000
    QFont::Style style = QFont::StyleNormal;
    int width = 100; ///< percent of the normal width

    bool isSlanted() const { return style != QFont::StyleNormal; }
};

/// All faces of the family in which `font` is displayed, in no particular order.
QList<FontFace> faces(const QFont &font);

/// The face in which `font` is displayed. Nothing if the system has no fonts.
std::optional<FontFace> shownFace(const QFont &font);

/// `font` in another face of its family.
QFont inFace(QFont font, const FontFace &face);

/// The font of a face by its PostScript name ("Inter-SemiBold") or full name ("Inter Semi Bold"),
/// or the regular face by the name of its family, without a particular size. Ignores case. Nothing
/// if there is no such font.
std::optional<QFont> fontNamed(const QString &name);

} // namespace Pellarvine::detail
