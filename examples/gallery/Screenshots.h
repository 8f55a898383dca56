// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Renders each page of the gallery to `folder`/NAME.png, and creates the folder. Returns an error
/// message, or an empty text.
QString writeScreenshots(const QString &folder);
