// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ColorListView.h"

#include "Drawing/ColorExchange.h"
#include "Drawing/NSColorList.h"
#include "Drawing/PixelAlignment.h"
#include "Drawing/Shades.h"
#include "View/FocusRing.h"

#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

namespace Pellarvine::detail {

namespace {

constexpr double gapShare = 0.1; // of the side
constexpr double roundness = 0.15;

class TileDelegate : public QStyledItemDelegate
{
public:
    TileDelegate(int side, QObject *parent)
        : QStyledItemDelegate(parent)
        , m_side(side)
    { }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const int margin = ColorListView::gap(m_side);
        const double radius = roundness * m_side;
        const QRectF tile = QRectF(option.rect).adjusted(margin, margin, -margin, -margin);
        const Outline line = outlineInside(tile, 1, painter->deviceTransform());
        QPainterPath path;
        path.addRoundedRect(line.middle, radius, radius);
        fillWithColor(*painter, path, index.data(Qt::DecorationRole).value<QColor>());
        painter->strokePath(path, QPen(edgeColor(option.palette), line.thickness));
        const bool isSelected = option.state & QStyle::State_Selected;
        const bool hasFocus = option.state & QStyle::State_HasFocus;
        if (isSelected || hasFocus) {
            const auto role = hasFocus ? QPalette::Highlight : QPalette::PlaceholderText;
            drawFocusRing(*painter, QRectF(option.rect).adjusted(1, 1, -1, -1),
                          option.palette.color(role), { .radius = radius + 2 });
        }
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return { m_side, m_side };
    }

private:
    int m_side;
};

} // namespace

ColorListView::ColorListView(int tileSide, QWidget *parent)
    : QListWidget(parent)
{
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setSpacing(0);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setItemDelegate(new TileDelegate(tileSide, this));
    // Not the current item: that is set by the focus as well, which chooses nothing.
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem *> items = selectedItems();
        if (!items.isEmpty())
            Q_EMIT chosen(items.constFirst()->data(Qt::DecorationRole).value<QColor>());
    });
    // The one that is selected already may be chosen again for its colour.
    connect(this, &QListWidget::itemActivated, this, [this](const QListWidgetItem *item) {
        Q_EMIT chosen(item->data(Qt::DecorationRole).value<QColor>());
    });
}

int ColorListView::gap(int tileSide)
{
    return qRound(gapShare * tileSide);
}

void ColorListView::setList(const NS::ColorList &list)
{
    const QSignalBlocker blocker(this);
    clear();
    for (const auto &[name, color] : list.entries) {
        auto *const item = new QListWidgetItem(this);
        const QColor shown = color.toQColor();
        item->setData(Qt::DecorationRole, shown);
        item->setToolTip(name);
        item->setData(Qt::AccessibleTextRole, name);
        item->setData(Qt::AccessibleDescriptionRole, hexText(shown, shown.alpha() < 255));
    }
    setAccessibleName(tr("Colours of %1").arg(list.name));
    setColor(m_color);
}

void ColorListView::setColor(const QColor &color)
{
    m_color = color;
    const QSignalBlocker blocker(this);
    for (int row = 0; row < count(); ++row) {
        if (item(row)->data(Qt::DecorationRole).value<QColor>() == color)
            return setCurrentRow(row);
    }
    clearSelection();
}

} // namespace Pellarvine::detail
