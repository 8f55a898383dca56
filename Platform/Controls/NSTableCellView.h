// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QVariant>
#include <QWidget>

#include <memory>

namespace NS {

/// A cell of a table, list or tree that consists of widgets:
///
///     auto *const cell = new NS::TableCellView;
///     auto *const layout = new QHBoxLayout(cell);
///     layout->addWidget(icon);
///     layout->addWidget(name);
///     cell->setImageView(icon);
///     cell->setTextField(name);
///     cell->setObjectValue(u"Rosa damascena"_s); // name's text
///     table->setCellWidget(row, column, cell);
///
/// If `setCellWidget`, `setItemWidget` or `setIndexWidget` has placed the cell, it follows the
/// selection. `NS::TableCellDelegate` paints a whole column with a single cell. The cell draws
/// nothing itself: the table's background and selection show behind it. Main thread only.
class PELLARVINE_EXPORT TableCellView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QVariant objectValue READ objectValue WRITE setObjectValue NOTIFY objectValueChanged
                       USER true)
    Q_PROPERTY(QWidget *textField READ textField WRITE setTextField NOTIFY textFieldChanged
                       DESIGNABLE false)
    Q_PROPERTY(QWidget *imageView READ imageView WRITE setImageView NOTIFY imageViewChanged
                       DESIGNABLE false)
    Q_PROPERTY(BackgroundStyle backgroundStyle READ backgroundStyle WRITE setBackgroundStyle NOTIFY
                       backgroundStyleChanged)

public:
    /// The background behind the cell.
    enum class BackgroundStyle {
        normal, ///< the background of a row that is not selected
        emphasized, ///< the highlight colour of a selected row
    };
    Q_ENUM(BackgroundStyle)

    explicit TableCellView(QWidget *parent = nullptr);
    ~TableCellView() override;

    /// The value that the cell shows; default: invalid. The setter writes text and numbers to the
    /// text field's property `text`, and a QIcon, QPixmap or QImage to the image view's `pixmap` or
    /// `image`. For anything else, connect to `objectValueChanged` or bind to the value.
    QVariant objectValue() const;
    void setObjectValue(const QVariant &value);

    /// @{
    /// Any widgets, usually children of the cell; the setters take no ownership. Null by default,
    /// and after the widget has been deleted.
    QWidget *textField() const;
    void setTextField(QWidget *textField);
    QWidget *imageView() const;
    void setImageView(QWidget *imageView);
    /// @}

    /// On an emphasized background, the text field and all QLabels in the cell have the palette's
    /// highlighted text colour, also those dimmed by `QPalette::PlaceholderText`. A cell that a
    /// view has placed follows the selection. Default: `normal`.
    BackgroundStyle backgroundStyle() const;
    void setBackgroundStyle(BackgroundStyle style);

Q_SIGNALS:
    void objectValueChanged(const QVariant &value);
    void textFieldChanged(QWidget *textField);
    void imageViewChanged(QWidget *imageView);
    void backgroundStyleChanged(NS::TableCellView::BackgroundStyle style);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
