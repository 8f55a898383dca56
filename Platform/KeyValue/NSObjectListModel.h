// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QAbstractTableModel>
#include <QList>
#include <QString>

#include <memory>

namespace NS {

/// A model for Qt's item views and combo boxes that shows a list property: it has a row for each
/// item and a column for each key path.
///
///     const QList<NS::ObjectListModel::Column> columns { { u"name"_s, tr("Name") },
///                                                        { u"address.city"_s, tr("City") } };
///     m_table->setModel(new NS::ObjectListModel(team, u"members"_s, columns, m_table));
///
/// The items are QObjects, gadgets, maps or plain values. An empty key path stands for the item
/// itself. The list property has to be constant or report its changes. When the list changes, the
/// model inserts, removes and moves single rows, so views keep their selection and scroll position.
/// The columns of a QObject follow its properties, and its row is removed when it is destroyed.
///
/// An edit of a QObject is written to its property, and an edit of another item to the list. If the
/// value does not fit, setData() returns false and the view shows the old value again.
///
/// The model does not own the items, nor `observed` unless it is given by a shared pointer. Main
/// thread only: a debug build of the library aborts the process if `observed` lives in another
/// thread.
class PELLARVINE_EXPORT ObjectListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// One property of the items.
    struct Column
    {
        QString keyPath; ///< from the item; a single key for gadgets and maps
        QString title = {}; ///< the text in the header
        bool isEditable = true; ///< false: read-only, even if the property can be written
    };

    /// Throws `KeyValueException` if `observed` lacks the list, if the list does not report its
    /// changes, and if one of its present items lacks a key. A later item that lacks a key is shown
    /// empty, and a warning is printed.
    ObjectListModel(const ObjectReference &observed, const QString &keyPath,
                    const QList<Column> &columns, QObject *parent = nullptr);
    ~ObjectListModel() override;

    /// The item of a row. An invalid QVariant if there is no such row.
    QVariant item(int row) const;
    /// The first row whose item equals `item` (NS::isEqual); -1 if there is none.
    int rowOf(const QVariant &item) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace NS
