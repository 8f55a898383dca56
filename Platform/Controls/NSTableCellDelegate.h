// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSTableCellView.h>

#include <QStyledItemDelegate>

namespace NS {

/// Draws every item of a view, or of one of its columns, with one and the same cell view:
///
///     table->setItemDelegateForColumn(0, new NS::TableCellDelegate(cell, table));
///
/// So a table of a million rows has one widget and not a million; nobody can click into it. Before
/// an item is drawn, the cell gets the item's value, its font and palette and whether it is
/// selected. Main thread only.
class PELLARVINE_EXPORT TableCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT
    Q_PROPERTY(int role READ role WRITE setRole NOTIFY roleChanged)

public:
    /// Takes the cell, which may not be null and has no parent.
    explicit TableCellDelegate(TableCellView *cell, QObject *parent = nullptr);
    ~TableCellDelegate() override;

    /// The delegate's own. It shows what was last drawn or measured.
    TableCellView *cell() const;

    /// Which data of the item becomes the cell's `objectValue`. Default: `Qt::DisplayRole`.
    int role() const;
    void setRole(int role);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// The cell's, and no less than what the view needs for an empty item.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

Q_SIGNALS:
    void roleChanged(int role);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
