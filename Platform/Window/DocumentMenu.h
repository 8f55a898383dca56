// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <QtGlobal>

QT_FORWARD_DECLARE_CLASS(QUrl)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Shows a menu below `icon` with the folders that contain the document, the nearest first, and
/// opens the chosen one in the file manager. Does nothing for a document that is not a local file.
void showDocumentMenu(QWidget *icon, const QUrl &document);

} // namespace Pellarvine::detail
