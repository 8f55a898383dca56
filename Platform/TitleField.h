// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QLabel>

namespace NS::TitleField {

/// The field in which a title bar shows the window's title.
using Field = QLabel;

inline Field *make(QWidget *titleBar)
{
    auto *const field = new Field(titleBar);
    field->setAlignment(Qt::AlignCenter);
    field->setAttribute(Qt::WA_TransparentForMouseEvents);
    return field;
}

} // namespace NS::TitleField
