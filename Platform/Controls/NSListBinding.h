// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSObjectListModel.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QList>
#include <QString>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS {

/// Fills `view`, a QListView, QTableView, QTreeView, QColumnView or QComboBox, with the items of a
/// model's list:
///
///     NS::bind(m_table, team, u"members"_s,
///              { { u"name"_s, tr("Name") }, { u"address.city"_s, tr("City") } });
///
/// A QListView and a QComboBox show the first column. What can be shown, and how edits go back, is
/// said at ObjectListModel, which this makes for the view. The view owns it, and shows nothing
/// anymore once it is deleted. Of the selection, `view->selectionModel()` tells from now on: the
/// former one is deleted, and so is the ObjectListModel that a former call has made.
///
/// Throws what the constructor of ObjectListModel throws, and `std::invalid_argument` for a widget
/// without a model to set, such as a QListWidget. The view is what it was then.
PELLARVINE_EXPORT ObjectListModel *bind(QWidget *view, const ObjectReference &observed,
                                        const QString &keyPath,
                                        const QList<ObjectListModel::Column> &columns);

} // namespace NS
