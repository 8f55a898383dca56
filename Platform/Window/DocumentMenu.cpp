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
    auto *const menu = new QMenu(icon);
    QFileInfo place(document.toLocalFile());
    while (!place.filePath().isEmpty() && !place.isRoot()) {
        place = QFileInfo(place.absolutePath());
        const QString folder = place.absoluteFilePath();
        QAction *const entry = menu->addAction(place.isRoot() ? QDir::toNativeSeparators(folder)
                                                              : place.fileName());
        QObject::connect(entry, &QAction::triggered, menu,
                         [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
    }
    if (menu->isEmpty())
        return delete menu;
    QObject::connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    menu->popup(icon->mapToGlobal(icon->rect().bottomLeft()));
}

} // namespace Pellarvine::detail
