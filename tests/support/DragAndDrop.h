// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <memory>

/// The data that a file manager drags for these files.
inline std::unique_ptr<QMimeData> filesToDrop(const QStringList &paths)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    data->setUrls(urls);
    return data;
}

/// Drags the data to the middle of the widget. Whether it accepts the drag.
inline bool isWelcome(QWidget &widget, const QMimeData &data)
{
    QDragEnterEvent enter(widget.rect().center(), Qt::CopyAction | Qt::MoveAction, &data,
                          Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &enter);
    return enter.isAccepted();
}

/// Drags the data to the widget and drops it if the drag is accepted. Whether it was dropped as a
/// copy.
inline bool drop(QWidget &widget, const QMimeData &data)
{
    if (!isWelcome(widget, data))
        return false;
    QDropEvent event(widget.rect().center(), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
    return event.isAccepted() && event.dropAction() == Qt::CopyAction;
}
