// SPDX-License-Identifier: MIT
#pragma once

#include <QTextOption>

namespace NS {

/// The format of a paragraph. A plain value, for any thread. Lengths are in device-independent
/// pixels.
///
///     NS::ParagraphStyle style;
///     style.alignment = Qt::AlignHCenter;
///     style.paragraphSpacing = 6;
///     text.addAttributes({ { NS::ParagraphStyleAttributeName, QVariant::fromValue(style) } },
///                        0, 9);
struct ParagraphStyle
{
    /// AlignLeft aligns to the leading side, which is at the right in right-to-left text. Add
    /// AlignAbsolute for the left side in every direction.
    Qt::Alignment alignment = Qt::AlignLeft;
    /// Where a line may end. Text fields and documents distinguish only `NoWrap` from the others.
    QTextOption::WrapMode wrapMode = QTextOption::WordWrap;
    /// LayoutDirectionAuto takes it from the text.
    Qt::LayoutDirection baseWritingDirection = Qt::LayoutDirectionAuto;
    /// Between the leading edge and the first line.
    double firstLineHeadIndent = 0.0;
    /// Between the leading edge and the lines below the first.
    double headIndent = 0.0;
    /// Space between two lines.
    double lineSpacing = 0.0;
    /// Space above the paragraph.
    double paragraphSpacingBefore = 0.0;
    /// Space below the paragraph.
    double paragraphSpacing = 0.0;

    friend bool operator==(const ParagraphStyle &, const ParagraphStyle &) = default;
};

} // namespace NS

Q_DECLARE_METATYPE(NS::ParagraphStyle)
