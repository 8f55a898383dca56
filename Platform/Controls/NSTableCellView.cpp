// SPDX-License-Identifier: MIT
#include "Controls/NSTableCellView.h"

#include "Base/Assign.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QIcon>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPointer>
#include <QStyle>
#include <QStyledItemDelegate>

#include <algorithm>
#include <optional>
#include <utility>

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

// Nothing if the value is no picture.
std::optional<QPixmap> pictureOf(const QVariant &value, const QWidget &widget)
{
    if (value.typeId() == QMetaType::QIcon) {
        const int side = widget.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &widget);
        return value.value<QIcon>().pixmap(QSize(side, side), widget.devicePixelRatioF());
    }
    return value.canConvert<QPixmap>() ? std::optional(value.value<QPixmap>()) : std::nullopt;
}

// The palette set on the widget itself, without inherited colours.
QPalette ownPaletteOf(const QWidget &widget)
{
    QPalette palette = widget.palette();
    if (!widget.testAttribute(Qt::WA_SetPalette))
        palette.setResolveMask(0);
    return palette;
}

} // namespace

struct TableCellView::Private
{
    QVariant objectValue;
    QPointer<QWidget> textField;
    QPointer<QWidget> imageView;
    bool showsPicture = false; // of a value
    BackgroundStyle backgroundStyle = BackgroundStyle::normal;
    // The own palettes of widgets that have another one while the background is emphasized.
    QList<std::pair<QPointer<QWidget>, QPalette>> ownPalettes;
    QPointer<QItemSelectionModel> selection;

    void show();
    void showPicture();
    void applyPalette(TableCellView &cell);
    void followSelection(TableCellView &cell);
};

void TableCellView::Private::show()
{
    if (textField)
        showAsText(textField, objectValue);
    if (imageView)
        showPicture();
}

// A picture that the program has set itself stays until the value is a picture.
void TableCellView::Private::showPicture()
{
    const std::optional<QPixmap> picture = pictureOf(objectValue, *imageView);
    if (!picture && (objectValue.isValid() || !showsPicture))
        return;
    showsPicture = picture.has_value();
    for (const char *const name : { "pixmap", "image" })
        write(imageView, name, picture.value_or(QPixmap()));
}

// Sets it for each label, because below a style sheet Qt does not pass palettes to children.
void TableCellView::Private::applyPalette(TableCellView &cell)
{
    if (backgroundStyle == BackgroundStyle::normal) {
        for (const auto &[widget, own] : std::exchange(ownPalettes, {})) {
            if (!widget)
                continue;
            widget->removeEventFilter(&cell);
            widget->setPalette(own);
        }
        return;
    }
    QList<QWidget *> shown;
    for (QLabel *const label : cell.findChildren<QLabel *>())
        shown.append(label);
    // A line edit has a background of its own.
    if (textField && !qobject_cast<QLineEdit *>(textField) && !shown.contains(textField))
        shown.append(textField);
    for (QWidget *const widget : std::as_const(shown)) {
        const bool isKnown = std::any_of(ownPalettes.cbegin(), ownPalettes.cend(),
                                         [&](const auto &known) { return known.first == widget; });
        if (isKnown)
            continue;
        ownPalettes.emplaceBack(widget, ownPaletteOf(*widget));
        widget->installEventFilter(&cell);
    }
    const QPalette current = cell.palette();
    for (const auto &[widget, own] : std::as_const(ownPalettes)) {
        if (!widget)
            continue;
        QPalette emphasized = own;
        for (const auto group : { QPalette::Active, QPalette::Inactive, QPalette::Disabled }) {
            QColor color = current.color(group, QPalette::HighlightedText);
            emphasized.setColor(group, QPalette::WindowText, color);
            emphasized.setColor(group, QPalette::Text, color); // what labels on a table's base use
            color.setAlphaF(dimmedOpacity);
            emphasized.setColor(group, QPalette::PlaceholderText, color);
        }
        widget->setPalette(emphasized);
    }
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
    if (!detail::assign(d->objectValue, value))
        return;
    d->show();
    Q_EMIT objectValueChanged(value);
}

QWidget *TableCellView::textField() const
{
    return d->textField;
}

void TableCellView::setTextField(QWidget *textField)
{
    if (!detail::assign(d->textField, textField))
        return;
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
    if (!detail::assign(d->imageView, imageView))
        return;
    d->showsPicture = false;
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
    if (!detail::assign(d->backgroundStyle, style))
        return;
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

bool TableCellView::eventFilter(QObject *watched, QEvent *event)
{
    // A change of style sheets takes back palettes that were set.
    if (event->type() == QEvent::StyleChange)
        d->applyPalette(*this);
    return QWidget::eventFilter(watched, event);
}

} // namespace NS
