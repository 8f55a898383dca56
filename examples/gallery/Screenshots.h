// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Renders every page of the gallery to `folder`/NAME.png, creating the folder. Returns an empty
/// text, or what went wrong.
QString writeScreenshots(const QString &folder);
