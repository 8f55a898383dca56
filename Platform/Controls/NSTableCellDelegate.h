// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSTableCellView.h>

#include <QStyledItemDelegate>

namespace NS {

/// Draws all items of a view, or of one of its columns, with a single cell view:
///
///     table->setItemDelegateForColumn(0, new NS::TableCellDelegate(cell, table));
///
/// A table of a million rows then needs one widget. The user cannot click into it. Before an item
/// is drawn, the cell is given the item's value, font, palette and selection. Main thread only.
class PELLARVINE_EXPORT TableCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT
    Q_PROPERTY(int role READ role WRITE setRole NOTIFY roleChanged)

public:
    /// Takes ownership of the cell, which must not be null or have a parent.
    explicit TableCellDelegate(TableCellView *cell, QObject *parent = nullptr);
    ~TableCellDelegate() override;

    /// Owned by the delegate. It shows the item that was last drawn or measured.
    TableCellView *cell() const;

    /// The role of the item's data for the cell's `objectValue`. Default: `Qt::DisplayRole`.
    int role() const;
    void setRole(int role);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// The size of the cell, at least that of an empty item.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

Q_SIGNALS:
    void roleChanged(int role);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
