// SPDX-License-Identifier: MIT
#include "Window/DocumentMenu.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QUrl>

namespace Pellarvine::detail {

void showDocumentMenu(QWidget *icon, const QUrl &document)
{
    QMenu menu(icon);
    QFileInfo place(document.toLocalFile());
    while (!place.filePath().isEmpty() && !place.isRoot()) {
        place = QFileInfo(place.absolutePath());
        const QString folder = place.absoluteFilePath();
        QAction *const entry = menu.addAction(place.isRoot() ? QDir::toNativeSeparators(folder)
                                                             : place.fileName());
        QObject::connect(entry, &QAction::triggered, &menu,
                         [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
    }
    if (!menu.isEmpty())
        menu.exec(icon->mapToGlobal(icon->rect().bottomLeft()));
}

} // namespace Pellarvine::detail
