// SPDX-License-Identifier: MIT
#include "Controls/NSTableCellDelegate.h"

#include "Base/Assign.h"

#include <QPainter>

#include <limits>

namespace NS {

struct TableCellDelegate::Private
{
    std::unique_ptr<TableCellView> cell;
    int role = Qt::DisplayRole;

    void prepare(const QStyleOptionViewItem &option, const QModelIndex &index) const
    {
        cell->setBackgroundStyle(TableCellView::BackgroundStyle::normal);
        // All of them, whether they are the application's or the view's own.
        QFont font = option.font;
        font.setResolveMask(QFont::AllPropertiesResolved);
        cell->setFont(font);
        QPalette palette = option.palette;
        // The cell is in no window, and looks as in the active one.
        for (int i = 0; i < QPalette::NColorRoles && !(option.state & QStyle::State_Active); ++i) {
            const auto color = QPalette::ColorRole(i);
            palette.setBrush(QPalette::Active, color, palette.brush(QPalette::Inactive, color));
        }
        palette.setResolveMask(std::numeric_limits<QPalette::ResolveMask>::max());
        cell->setPalette(palette);
        cell->setLayoutDirection(option.direction);
        cell->setEnabled(option.state.testFlag(QStyle::State_Enabled));
        cell->setObjectValue(index.data(role));
        if (option.state.testFlag(QStyle::State_Selected))
            cell->setBackgroundStyle(TableCellView::BackgroundStyle::emphasized);
    }
};

TableCellDelegate::TableCellDelegate(TableCellView *cell, QObject *parent)
    : QStyledItemDelegate(parent)
    , d(std::make_unique<Private>())
{
    d->cell.reset(cell);
}

TableCellDelegate::~TableCellDelegate() = default;

TableCellView *TableCellDelegate::cell() const
{
    return d->cell.get();
}

int TableCellDelegate::role() const
{
    return d->role;
}

void TableCellDelegate::setRole(int role)
{
    if (detail::assign(d->role, role))
        Q_EMIT roleChanged(role);
}

void TableCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    background.icon = QIcon();
    background.features &= ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration
                             | QStyleOptionViewItem::HasCheckIndicator);
    const QWidget *const view = option.widget;
    const QStyle *const style = view ? view->style() : d->cell->style();
    style->drawControl(QStyle::CE_ItemViewItem, &background, painter, view);

    d->prepare(background, index);
    d->cell->resize(option.rect.size());
    painter->save();
    painter->translate(option.rect.topLeft());
    d->cell->render(painter, QPoint(), QRegion(), QWidget::DrawChildren);
    painter->restore();
}

QSize TableCellDelegate::sizeHint(const QStyleOptionViewItem &option,
                                  const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    d->prepare(item, index);
    return d->cell->sizeHint().expandedTo(
            { 0, QStyledItemDelegate::sizeHint(option, QModelIndex()).height() });
}

} // namespace NS
