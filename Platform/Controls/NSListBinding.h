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
/// A QListView and a QComboBox show the first column. See ObjectListModel for the values that can
/// be shown and for editing. The view owns the returned model; deleting the model empties the view.
/// The view gets a new selection model. The previous one is deleted, and so is the model of an
/// earlier call.
///
/// Throws the exceptions of ObjectListModel's constructor, and `std::invalid_argument` for a widget
/// without a settable model, such as a QListWidget. The view stays as it was then. Main thread
/// only.
PELLARVINE_EXPORT ObjectListModel *bind(QWidget *view, const ObjectReference &observed,
                                        const QString &keyPath,
                                        const QList<ObjectListModel::Column> &columns);

} // namespace NS
