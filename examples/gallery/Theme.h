// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

QT_FORWARD_DECLARE_CLASS(QApplication)

/// The gallery's look: Inter, a grid of eight units, one accent, a light and a dark palette.
namespace Theme {

inline constexpr int unit = 8;

enum Scheme {
    light,
    dark,
};

enum Role {
    body,
    strong,
    heading,
    monospace,
};

/// Gives the application its style, font and palette.
void apply(QApplication &application, Scheme scheme);

/// The scheme of the desktop's palette: dark if its windows are darker than their text.
Scheme preferredScheme();

QFont font(Role role);

} // namespace Theme
