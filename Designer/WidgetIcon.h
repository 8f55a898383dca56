// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

/// The picture of a class in the widget box.
enum class Glyph {
    border,
    solid,
    toolBar,
    inspectorSection,
    tableCell,
    segments,
    fullWidthSegments,
    textField,
    wrappedText,
    markup,
    image,
    replaceableImage,
    color,
    button,
    window,
};

/// The icon, drawn in the colours of the palette, at any size and scale. Main thread only.
QIcon widgetIcon(Glyph glyph);
