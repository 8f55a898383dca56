// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <pellarvine/Platform/NSImageView.h>
#include <pellarvine/Platform/NSTableCellDelegate.h>
#include <pellarvine/Platform/NSTableCellView.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QTest>
#include <QTreeView>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using NS::TableCellDelegate;
using NS::TableCellView;
using Style = TableCellView::BackgroundStyle;

namespace {

class Cell : public TableCellView
{
public:
    explicit Cell(const QString &text = {})
    {
        auto *const layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(label);
        setTextField(label);
        setObjectValue(text);
    }
    QLabel *label = new QLabel;
};

QPalette blackOnWhite()
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, Qt::blue);
    palette.setColor(QPalette::HighlightedText, Qt::yellow);
    return palette;
}

bool containsColor(const QImage &image, const QRect &rect, const QColor &color)
{
    return colorsIn(image.copy(rect)).contains(color.rgb());
}

} // namespace

TEST(TableCellView, plain_values_show_in_the_outlets)
{
    Cell cell;
    cell.setLocale(QLocale(QLocale::German));
    QLabel picture;
    cell.setImageView(&picture);
    for (const auto &[value, text] :
         { std::pair(QVariant(u"Rosa"_s), u"Rosa"_s), std::pair(QVariant(1234), u"1.234"_s),
           std::pair(QVariant(2.5), u"2,5"_s), std::pair(QVariant(), QString()) }) {
        cell.setObjectValue(value);
        EXPECT_EQ(cell.label->text(), text);
    }
    cell.setObjectValue(u"kept"_s);
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    cell.setObjectValue(pixmap);
    EXPECT_EQ(picture.pixmap().size(), QSize(4, 4));
    cell.setObjectValue(QIcon(pixmap));
    EXPECT_FALSE(picture.pixmap().isNull());
    cell.setObjectValue(QVariantMap { { u"name"_s, u"Rosa"_s } });
    EXPECT_EQ(cell.label->text(), u"kept"_s) << "a record is for the program to show";
}

TEST(TableCellView, a_picture_shows_in_views_of_either_kind_and_goes_with_the_value)
{
    TableCellView cell;
    QLabel label;
    NS::ImageView view;
    QPixmap red(4, 4);
    red.fill(Qt::red);
    label.setPixmap(red);
    cell.setImageView(&label);
    cell.setObjectValue(u"Rosa"_s);
    cell.setObjectValue({});
    EXPECT_FALSE(label.pixmap().isNull()) << "the program's own";
    for (const QVariant &nothing : { QVariant(), QVariant(QIcon()), QVariant(QPixmap()) }) {
        cell.setObjectValue(QIcon(red));
        EXPECT_FALSE(label.pixmap().isNull());
        cell.setObjectValue(nothing);
        EXPECT_TRUE(label.pixmap().isNull()) << nothing.typeName();
    }
    cell.setObjectValue(red);
    cell.setImageView(&view);
    EXPECT_EQ(view.image().size(), QSizeF(4, 4));
    cell.setObjectValue(QImage(8, 8, QImage::Format_RGB32));
    EXPECT_EQ(view.image().size(), QSizeF(8, 8));
    cell.setObjectValue({});
    EXPECT_TRUE(view.image().isEmpty());
}

TEST(TableCellView, outlets_may_come_after_the_value_and_go_before_the_cell)
{
    TableCellView cell;
    QSignalSpy values(&cell, &TableCellView::objectValueChanged);
    cell.setObjectValue(7);
    cell.setObjectValue(7);
    EXPECT_EQ(values.count(), 1);
    auto *const field = new QLineEdit;
    cell.setTextField(field);
    EXPECT_EQ(field->text(), u"7"_s);
    cell.setTextField(nullptr);
    cell.setTextField(field);
    delete field;
    EXPECT_EQ(cell.textField(), nullptr);
    cell.setObjectValue(8);
}

TEST(TableCellView, labels_stand_out_on_an_emphasized_background_and_turn_back)
{
    Cell cell(u"text"_s);
    QPalette own = blackOnWhite();
    own.setColor(QPalette::WindowText, Qt::red);
    cell.setPalette(own);
    QSignalSpy changes(&cell, &TableCellView::backgroundStyleChanged);
    cell.setBackgroundStyle(Style::emphasized);
    cell.setBackgroundStyle(Style::emphasized);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(cell.label->palette().color(QPalette::WindowText), QColor(Qt::yellow));
    cell.setBackgroundStyle(Style::normal);
    EXPECT_EQ(cell.label->palette().color(QPalette::WindowText), QColor(Qt::red));
}

TEST(TableCellView, labels_stand_out_below_a_style_sheet_too)
{
    QWidget parent;
    parent.setStyleSheet(u"QLabel#other { color: red }"_s);
    auto *const cell = new Cell(u"text"_s);
    cell->setParent(&parent);
    auto *const dimmed = new QLabel(u"more"_s, cell);
    parent.show();
    const QColor before = cell->label->palette().color(QPalette::WindowText);
    const QColor emphasis = cell->palette().color(QPalette::HighlightedText);
    cell->setBackgroundStyle(Style::emphasized);
    EXPECT_EQ(cell->label->palette().color(QPalette::WindowText), emphasis);
    EXPECT_EQ(dimmed->palette().color(QPalette::PlaceholderText).rgb(), emphasis.rgb());
    QWidget above;
    above.setStyleSheet(u"QFrame#card { color: red }"_s);
    parent.setParent(&above); // styles all widgets again
    EXPECT_EQ(cell->label->palette().color(QPalette::WindowText), emphasis);
    cell->setBackgroundStyle(Style::normal);
    EXPECT_EQ(cell->label->palette().color(QPalette::WindowText), before);
    parent.setParent(nullptr);
}

TEST(TableCellView, the_emphasis_follows_the_palette_above)
{
    QWidget parent;
    auto *const cell = new Cell(u"text"_s);
    cell->setParent(&parent);
    cell->setBackgroundStyle(Style::emphasized);
    parent.setPalette(blackOnWhite());
    EXPECT_EQ(cell->label->palette().color(QPalette::WindowText), QColor(Qt::yellow));
    cell->setBackgroundStyle(Style::normal);
    EXPECT_FALSE(cell->testAttribute(Qt::WA_SetPalette));
    QPalette other = blackOnWhite();
    other.setColor(QPalette::WindowText, Qt::green);
    parent.setPalette(other);
    EXPECT_EQ(cell->label->palette().color(QPalette::WindowText), QColor(Qt::green));
}

TEST(TableCellView, a_cell_in_a_table_follows_its_own_items_selection)
{
    QTableWidget table(3, 2);
    table.setPalette(blackOnWhite());
    auto *const first = new Cell(QString(6, QChar(u'█')));
    auto *const second = new Cell(u"second"_s);
    table.setCellWidget(0, 1, first);
    table.setCellWidget(1, 1, second);
    table.selectionModel()->select(table.model()->index(0, 1), QItemSelectionModel::Select);
    table.show();
    EXPECT_EQ(first->backgroundStyle(), Style::emphasized);
    EXPECT_EQ(second->backgroundStyle(), Style::normal);
    EXPECT_TRUE(containsColor(table.viewport()->grab().toImage(), first->geometry(), Qt::yellow));
    table.selectRow(1);
    EXPECT_EQ(first->backgroundStyle(), Style::normal);
    EXPECT_EQ(second->backgroundStyle(), Style::emphasized);
    table.clearSelection();
    EXPECT_EQ(second->backgroundStyle(), Style::normal);
}

TEST(TableCellView, a_cell_follows_the_selection_in_lists_and_trees_too)
{
    QListWidget list;
    list.addItems({ {}, {} });
    auto *const inList = new Cell(u"in a list"_s);
    list.setItemWidget(list.item(1), inList);
    list.show();
    list.setCurrentRow(1);
    EXPECT_EQ(inList->backgroundStyle(), Style::emphasized);

    QStandardItemModel model;
    model.appendRow(new QStandardItem);
    model.item(0)->appendRow(new QStandardItem);
    QTreeView tree;
    tree.setModel(&model);
    const QModelIndex child = model.index(0, 0, model.index(0, 0));
    auto *const inTree = new Cell(u"in a tree"_s);
    tree.setIndexWidget(child, inTree);
    tree.show();
    tree.setCurrentIndex(child);
    tree.expandAll();
    QTest::qWait(0);
    EXPECT_EQ(inTree->backgroundStyle(), Style::emphasized);
    tree.clearSelection();
    EXPECT_EQ(inTree->backgroundStyle(), Style::normal);
}

TEST(TableCellView, a_click_on_a_label_selects_and_one_on_a_control_reaches_that)
{
    QTableWidget table(2, 1);
    auto *const cell = new Cell(u"name"_s);
    auto *const button = new QPushButton(u"x"_s);
    cell->layout()->addWidget(button);
    table.setCellWidget(1, 0, cell);
    table.show();
    QSignalSpy clicks(button, &QPushButton::clicked);
    QTest::mouseClick(table.windowHandle(), Qt::LeftButton, {},
                      cell->label->mapTo(&table, QPoint(2, 2)));
    EXPECT_EQ(cell->backgroundStyle(), Style::emphasized);
    table.clearSelection();
    QTest::mouseClick(table.windowHandle(), Qt::LeftButton, {},
                      button->mapTo(&table, button->rect().center()));
    EXPECT_EQ(clicks.count(), 1);
}

TEST(TableCellDelegate, one_cell_draws_every_item_with_its_own_value_and_selection)
{
    QStandardItemModel model(3, 1);
    for (int row = 0; row < 3; ++row)
        model.setData(model.index(row, 0), QString(6, QChar(u'█')), Qt::UserRole);
    QListView list;
    list.setPalette(blackOnWhite());
    auto *const cell = new Cell;
    auto *const delegate = new TableCellDelegate(cell, &list);
    delegate->setRole(Qt::UserRole);
    list.setItemDelegate(delegate);
    list.setModel(&model);
    list.resize(200, 120);
    list.show();
    list.selectionModel()->select(model.index(1, 0), QItemSelectionModel::Select);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    const QImage image = list.viewport()->grab().toImage();
    const QRect plain = list.visualRect(model.index(2, 0)); // the pointer hovers over the first
    const QRect selected = list.visualRect(model.index(1, 0));
    EXPECT_GE(plain.height(), cell->sizeHint().height());
    EXPECT_TRUE(containsColor(image, plain, Qt::white));
    EXPECT_FALSE(containsColor(image, plain, Qt::yellow));
    EXPECT_TRUE(containsColor(image, selected, Qt::blue));
    EXPECT_TRUE(containsColor(image, selected, Qt::yellow)) << "the selected text";
}

TEST(TableCellDelegate, a_selected_item_has_the_colours_of_its_windows_state)
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), QString(6, QChar(u'█')));
    TableCellDelegate delegate(new Cell);
    for (const auto state : { QStyle::State_Active, QStyle::State_None }) {
        QStyleOptionViewItem option;
        option.rect = { 0, 0, 100, 40 };
        option.state = QStyle::State_Enabled | QStyle::State_Selected | state;
        option.palette.setColor(QPalette::Active, QPalette::HighlightedText, Qt::yellow);
        option.palette.setColor(QPalette::Inactive, QPalette::HighlightedText, Qt::red);
        QImage image(option.rect.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        delegate.paint(&painter, option, model.index(0, 0));
        painter.end();
        const bool isActive = state == QStyle::State_Active;
        EXPECT_EQ(containsColor(image, option.rect, Qt::yellow), isActive);
        EXPECT_EQ(containsColor(image, option.rect, Qt::red), !isActive);
    }
}

TEST(TableCellDelegate, an_items_own_colour_and_font_reach_the_cell)
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), QString(6, QChar(u'█')));
    model.setData(model.index(0, 0), QColor(Qt::red), Qt::ForegroundRole);
    QFont large;
    large.setPixelSize(40);
    model.setData(model.index(0, 0), large, Qt::FontRole);
    QListView list;
    auto *const cell = new Cell;
    cell->label->setForegroundRole(QPalette::Text);
    list.setItemDelegate(new TableCellDelegate(cell, &list));
    list.setModel(&model);
    list.resize(300, 120);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    const QRect rect = list.visualRect(model.index(0, 0));
    EXPECT_GE(rect.height(), 40);
    EXPECT_TRUE(containsColor(list.viewport()->grab().toImage(), rect, Qt::red));
}
