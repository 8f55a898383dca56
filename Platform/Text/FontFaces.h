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

/// All faces of the family that `font` is shown in, in no particular order.
QList<FontFace> faces(const QFont &font);

/// The one of them that `font` is shown in. None if the system has no fonts at all.
std::optional<FontFace> shownFace(const QFont &font);

/// `font` in another face of its family.
QFont inFace(QFont font, const FontFace &face);

/// The font of a face by its PostScript name ("Inter-SemiBold") or full name ("Inter Semi Bold"),
/// or of a family's regular face by the family's name, in no particular size. Nothing if there is
/// none of exactly that name but for case.
std::optional<QFont> fontNamed(const QString &name);

} // namespace Pellarvine::detail
