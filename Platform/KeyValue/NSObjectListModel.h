// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QAbstractTableModel>
#include <QList>
#include <QString>

#include <memory>

namespace NS {

/// A property that is a list, as a model for Qt's views and combo boxes: a row for each item, a
/// column for each key path.
///
///     const QList<NS::ObjectListModel::Column> columns { { u"name"_s, tr("Name") },
///                                                        { u"address.city"_s, tr("City") } };
///     m_table->setModel(new NS::ObjectListModel(team, u"members"_s, columns, m_table));
///
/// The items are QObjects, gadgets, maps or plain values (an empty key path is the item itself).
/// The list has to report its changes or be constant. Rows that come, go or move are told to the
/// views as such, so that selections and scroll positions stay. Of QObjects, the columns follow
/// their properties, and the row of an object that is destroyed goes.
///
/// An edit is written to the item's property, or, of gadgets and maps, back into the list; the view
/// shows the old value again if it does not fit. Main thread only.
class PELLARVINE_EXPORT ObjectListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Column ///< one property of the items
    {
        QString keyPath; ///< from the item; one key, of gadgets and maps
        QString title = {}; ///< for the header
        bool isEditable = true; ///< if the property can be written
    };

    /// Throws `KeyValueException` for a list that `observed` lacks or that changes without saying
    /// so, and for keys that the first items lack. Items that come later and lack one are shown
    /// empty, with a warning.
    ObjectListModel(const ObjectReference &observed, const QString &keyPath,
                    const QList<Column> &columns, QObject *parent = nullptr);
    ~ObjectListModel() override;

    QVariant item(int row) const; ///< no value for a row that there is not
    int rowOf(const QVariant &item) const; ///< of an equal item (NS::isEqual); -1 if there is none

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
