// SPDX-License-Identifier: MIT
#include "Controls/NSListBinding.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QItemSelectionModel>
#include <QListWidget>
#include <QPointer>
#include <QTableWidget>
#include <QTreeWidget>

#include <memory>
#include <stdexcept>

namespace NS {

namespace {

// The widgets of items hold their own.
bool hasItems(const QAbstractItemView *view)
{
    return qobject_cast<const QListWidget *>(view) || qobject_cast<const QTableWidget *>(view)
           || qobject_cast<const QTreeWidget *>(view);
}

} // namespace

ObjectListModel *bind(QWidget *view, const ObjectReference &observed, const QString &keyPath,
                      const QList<ObjectListModel::Column> &columns)
{
    auto *const box = qobject_cast<QComboBox *>(view);
    auto *const items = qobject_cast<QAbstractItemView *>(view);
    if (!box && (!items || hasItems(items)))
        throw std::invalid_argument("a list is shown by a QListView, QTableView, QTreeView, "
                                    "QColumnView or QComboBox");
    auto made = std::make_unique<ObjectListModel>(observed, keyPath, columns, view);
    ObjectListModel *const model = made.release();
    const QPointer former = qobject_cast<ObjectListModel *>(box ? box->model() : items->model());
    const bool isOurs = former && former->parent() == view;
    if (box) {
        box->setModel(model);
    } else {
        const QPointer selection = items->selectionModel();
        items->setModel(model);
        if (selection && selection->parent() == view)
            delete selection;
    }
    if (isOurs)
        delete former; // which a combo box has done by itself
    return model;
}

} // namespace NS
