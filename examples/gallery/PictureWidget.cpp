// SPDX-License-Identifier: MIT
#include "PictureWidget.h"

#include <QAccessibleWidget>

PictureWidget::PictureWidget(QWidget *parent)
    : QWidget(parent)
{
    static const bool isMade = [] {
        QAccessible::installFactory([](const QString &name,
                                       QObject *object) -> QAccessibleInterface * {
            if (name != QLatin1StringView(staticMetaObject.className()))
                return nullptr;
            return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Graphic);
        });
        return true;
    }();
    Q_UNUSED(isMade)
}
