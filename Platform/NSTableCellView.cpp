// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/NSTableCellView.h>

#include <QAbstractItemView>
#include <QEvent>
#include <QIcon>
#include <QItemSelectionModel>
#include <QMetaProperty>
#include <QPointer>
#include <QStyle>
#include <QStyledItemDelegate>

#include <optional>

namespace NS {

namespace {

constexpr float dimmedOpacity = 0.8F;

// Does nothing if the widget's class has no such property.
void write(QWidget *widget, const char *name, const QVariant &value)
{
    const QMetaObject *const type = widget->metaObject();
    const QMetaProperty property = type->property(type->indexOfProperty(name));
    if (property.isWritable())
        property.write(widget, value);
}

void showAsText(QWidget *widget, const QVariant &value)
{
    if (!value.isValid())
        write(widget, "text", QString());
    else if (value.canConvert<QString>())
        write(widget, "text", QStyledItemDelegate().displayText(value, widget->locale()));
}

void showAsPicture(QWidget *widget, const QVariant &value)
{
    if (value.typeId() == QMetaType::QIcon) {
        const int side = widget->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, widget);
        write(widget, "pixmap",
              value.value<QIcon>().pixmap(QSize(side, side), widget->devicePixelRatioF()));
    } else if (value.canConvert<QPixmap>()) {
        write(widget, "pixmap", value.value<QPixmap>());
    }
}

} // namespace

struct TableCellView::Private
{
    QVariant objectValue;
    QPointer<QWidget> textField;
    QPointer<QWidget> imageView;
    BackgroundStyle backgroundStyle = BackgroundStyle::normal;
    std::optional<QPalette> ownPalette; // while another one is shown in its place
    QPointer<QItemSelectionModel> selection;

    void show() const
    {
        if (textField)
            showAsText(textField, objectValue);
        if (imageView)
            showAsPicture(imageView, objectValue);
    }
    void applyPalette(TableCellView &cell);
    void followSelection(TableCellView &cell);
};

void TableCellView::Private::applyPalette(TableCellView &cell)
{
    if (backgroundStyle == BackgroundStyle::normal) {
        if (ownPalette) {
            cell.setPalette(*ownPalette);
            ownPalette.reset();
        }
        return;
    }
    if (!ownPalette) {
        ownPalette = cell.palette();
        ownPalette->setResolveMask(
                cell.testAttribute(Qt::WA_SetPalette) ? cell.palette().resolveMask() : 0);
    }
    QPalette shown = *ownPalette;
    for (const auto group : { QPalette::Active, QPalette::Inactive, QPalette::Disabled }) {
        QColor color = cell.palette().color(group, QPalette::HighlightedText);
        shown.setColor(group, QPalette::WindowText, color);
        color.setAlphaF(dimmedOpacity);
        shown.setColor(group, QPalette::PlaceholderText, color);
    }
    cell.setPalette(shown);
}

// The view knows which cell lies where; a cell does not know its index.
void TableCellView::Private::followSelection(TableCellView &cell)
{
    const QWidget *const viewport = cell.parentWidget();
    const auto *const view =
            viewport ? qobject_cast<QAbstractItemView *>(viewport->parentWidget()) : nullptr;
    QItemSelectionModel *const current =
            view && view->viewport() == viewport ? view->selectionModel() : nullptr;
    if (selection != current) {
        if (selection)
            QObject::disconnect(selection, nullptr, &cell, nullptr);
        selection = current;
        if (current) {
            QObject::connect(current, &QItemSelectionModel::selectionChanged, &cell,
                             [this, &cell] { followSelection(cell); });
        }
    }
    if (!current)
        return;
    const QModelIndex index = view->indexAt(cell.geometry().center());
    if (index.isValid() && view->indexWidget(index) == &cell) {
        cell.setBackgroundStyle(current->isSelected(index) ? BackgroundStyle::emphasized
                                                           : BackgroundStyle::normal);
    }
}

TableCellView::TableCellView(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{ }

TableCellView::~TableCellView() = default;

QVariant TableCellView::objectValue() const
{
    return d->objectValue;
}

void TableCellView::setObjectValue(const QVariant &value)
{
    if (value == d->objectValue)
        return;
    d->objectValue = value;
    d->show();
    Q_EMIT objectValueChanged(value);
}

QWidget *TableCellView::textField() const
{
    return d->textField;
}

void TableCellView::setTextField(QWidget *textField)
{
    if (textField == d->textField)
        return;
    d->textField = textField;
    if (d->objectValue.isValid())
        d->show();
    Q_EMIT textFieldChanged(textField);
}

QWidget *TableCellView::imageView() const
{
    return d->imageView;
}

void TableCellView::setImageView(QWidget *imageView)
{
    if (imageView == d->imageView)
        return;
    d->imageView = imageView;
    if (d->objectValue.isValid())
        d->show();
    Q_EMIT imageViewChanged(imageView);
}

TableCellView::BackgroundStyle TableCellView::backgroundStyle() const
{
    return d->backgroundStyle;
}

void TableCellView::setBackgroundStyle(BackgroundStyle style)
{
    if (style == d->backgroundStyle)
        return;
    d->backgroundStyle = style;
    d->applyPalette(*this);
    Q_EMIT backgroundStyleChanged(style);
}

bool TableCellView::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::ParentChange:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
        d->followSelection(*this);
        break;
    case QEvent::PaletteChange: // of the application, say; setting the same palette again ends it
        if (d->backgroundStyle == BackgroundStyle::emphasized)
            d->applyPalette(*this);
        break;
    default:
        break;
    }
    return isHandled;
}

} // namespace NS
