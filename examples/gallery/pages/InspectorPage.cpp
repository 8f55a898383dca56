// SPDX-License-Identifier: MIT
// A small drawing program: a tool bar, a drawing, a table of its layers, and an inspector with the
// properties of the selected one.
#include "../FlatStyle.h"
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/BorderView.h>
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Pellarvine/InspectorSectionTableCellView.h>
#include <pellarvine/Pellarvine/InspectorSectionView.h>
#include <pellarvine/Pellarvine/ToolBarView.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace Pellarvine;

namespace {

constexpr int inspectorWidth = 32 * Theme::unit;
constexpr int rowHeight = 4 * Theme::unit + Theme::unit / 2;
constexpr int swatchSide = 10;

QString tr(const char *text)
{
    return QCoreApplication::translate("InspectorPage", text);
}

enum Kind {
    rectangle,
    ellipse,
    triangle,
};

struct Shape
{
    QString name;
    Kind kind;
    QRectF frame; // in a drawing of 320 x 240 units, y downwards
    QColor color;
    double lineWidth;
    Qt::PenStyle line;
};

class Drawing : public PictureWidget
{
public:
    Drawing()
    {
        setMinimumSize(20 * Theme::unit, 20 * Theme::unit);
        setAccessibleName(::tr("Drawing"));
    }

    QList<Shape> shapes {
        { ::tr("Sky"), rectangle, { 10, 10, 300, 220 }, { 0xbf, 0xdc, 0xf5 }, 0, Qt::SolidLine },
        { ::tr("Sun"), ellipse, { 222, 34, 56, 56 }, { 0xf4, 0xb9, 0x42 }, 3, Qt::DotLine },
        { ::tr("Wall"), rectangle, { 90, 120, 120, 90 }, { 0xf3, 0xe6, 0xd0 }, 2, Qt::SolidLine },
        { ::tr("Roof"), triangle, { 70, 62, 160, 58 }, { 0xb2, 0x4a, 0x3a }, 2, Qt::SolidLine },
        { ::tr("Door"), rectangle, { 138, 154, 30, 56 }, { 0x5a, 0x7d, 0x5c }, 2, Qt::SolidLine },
    };
    int selected = 3;
    bool isOutlined = false;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double scale = std::min(width() / 320.0, height() / 240.0);
        painter.translate((width() - 320 * scale) / 2, (height() - 240 * scale) / 2);
        painter.scale(scale, scale);
        const QColor ink = palette().color(QPalette::WindowText);
        for (const Shape &shape : std::as_const(shapes)) {
            painter.setBrush(isOutlined ? QBrush() : QBrush(shape.color));
            painter.setPen(isOutlined ? QPen(ink, 1) : pen(shape));
            draw(painter, shape);
        }
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        const QRectF frame = shapes[selected].frame.adjusted(-3, -3, 3, 3);
        painter.drawRect(frame);
        painter.setBrush(palette().color(QPalette::Base));
        for (const QPointF corner :
             { frame.topLeft(), frame.topRight(), frame.bottomLeft(), frame.bottomRight() })
            painter.drawRect(QRectF(corner - QPointF(2.5, 2.5), QSizeF(5, 5)));
    }

private:
    static QPen pen(const Shape &shape)
    {
        if (shape.lineWidth <= 0)
            return Qt::NoPen;
        return QPen(shape.color.darker(170), shape.lineWidth, shape.line, Qt::FlatCap,
                    Qt::MiterJoin);
    }
    static void draw(QPainter &painter, const Shape &shape)
    {
        const QRectF &frame = shape.frame;
        switch (shape.kind) {
        case rectangle:
            painter.drawRect(frame);
            break;
        case ellipse:
            painter.drawEllipse(frame);
            break;
        case triangle:
            painter.drawPolygon(QPolygonF { QPointF(frame.center().x(), frame.top()),
                                            frame.bottomRight(), frame.bottomLeft() });
            break;
        }
    }
};

class InspectorPage : public Page
{
public:
    explicit InspectorPage(QWidget *parent);
    void showExample() override { m_layers->setFocus(); }

protected:
    void changeEvent(QEvent *event) override;

private:
    ToolBarView *makeTools();
    QWidget *makeInspector();
    InspectorSectionView *makeSection(const QString &title, QGridLayout *&grid);
    void addFrame();
    void addFillAndLine();
    QTableWidget *makeLayers();
    QWidget *makeKnobs();
    void placeLine();
    QPixmap swatchOf(const QColor &color) const;
    void fillLayers();
    void showSelected();
    void arrange(int by);
    Shape &shape() { return m_drawing->shapes[m_drawing->selected]; }

    Drawing *m_drawing = new Drawing;
    ToolBarView *m_tools = new ToolBarView;
    BorderView *m_panel = new BorderView;
    QVBoxLayout *m_inspector = new QVBoxLayout;
    QList<InspectorSectionView *> m_sections;
    QList<QSpinBox *> m_frame; // x, y, width, height
    QSlider *m_opacity = new QSlider(Qt::Horizontal);
    QSpinBox *m_lineWidth = new QSpinBox;
    FullWidthSegmentedControl *m_line = new FullWidthSegmentedControl;
    QTableWidget *m_layers = new QTableWidget(0, 1);
    bool m_usesPalette = true;
};

InspectorPage::InspectorPage(QWidget *parent)
    : Page(::tr("Inspector"),
           ::tr("The window of a drawing program, with a tool bar at the top and an inspector. "
                "Thin lines separate its sections. Select a layer and change its shape."),
           parent)
{
    auto *const program = new BorderView;
    program->setUsesPaletteColors(true);
    program->setHasLeftBorder(true);
    program->setHasRightBorder(true);
    program->setHasTopBorder(true);
    program->setHasBottomBorder(true);
    auto *const grid = new QGridLayout(program);
    grid->setContentsMargins(1, 1, 1, 1); // beside the lines
    grid->setSpacing(0);
    grid->addWidget(makeTools(), 0, 0, 1, 2);
    grid->addWidget(m_drawing, 1, 0);
    grid->addWidget(makeInspector(), 1, 1);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(0, 1);
    content()->addWidget(program, 1);
    content()->addWidget(makeKnobs());
    fillLayers();
}

ToolBarView *InspectorPage::makeTools()
{
    auto *const mode = new NS::SegmentedControl;
    mode->setLabels({ ::tr("Colour"), ::tr("Outline") });
    mode->setSelectedSegment(0);
    mode->setAccessibleName(::tr("Show shapes in"));
    connect(mode, &NS::SegmentedControl::selectedSegmentChanged, this, [this](int segment) {
        m_drawing->isOutlined = segment == 1;
        m_drawing->update();
    });
    auto *const order = new NS::SegmentedControl;
    order->setTrackingMode(NS::SegmentedControl::SwitchTracking::momentary);
    order->setLabels({ ::tr("Backward"), ::tr("Forward") });
    order->setToolTip(::tr("Behind the shape below it"), 0);
    order->setToolTip(::tr("Before the shape above it"), 1);
    order->setAccessibleName(::tr("Arrange"));
    connect(order, &NS::SegmentedControl::triggered, this,
            [this](int segment) { arrange(segment == 0 ? -1 : 1); });
    auto *const name = new QLabel(::tr("Cottage.drawing"));
    name->setFont(Theme::font(Theme::strong));
    m_tools->setUsesPaletteColors(true);
    m_tools->setAccessibleName(::tr("Tools"));
    m_tools->setFixedHeight(6 * Theme::unit);
    auto *const row = new QHBoxLayout(m_tools);
    row->setContentsMargins(2 * Theme::unit, 0, 2 * Theme::unit, 1);
    row->setSpacing(2 * Theme::unit);
    row->addWidget(name);
    row->addStretch();
    row->addWidget(order);
    row->addWidget(mode);
    return m_tools;
}

QWidget *InspectorPage::makeInspector()
{
    m_panel->setUsesPaletteColors(true);
    m_panel->setFixedWidth(inspectorWidth);
    m_panel->setLayout(m_inspector);
    m_inspector->setSpacing(0);
    placeLine();
    addFrame();
    addFillAndLine();
    m_inspector->addWidget(makeLayers(), 1);
    return m_panel;
}

// Puts the panel's line on the side of the drawing.
void InspectorPage::placeLine()
{
    m_panel->setHasLeftBorder(!isRightToLeft());
    m_panel->setHasRightBorder(isRightToLeft());
    m_inspector->setContentsMargins(isRightToLeft() ? 0 : 1, 0, isRightToLeft() ? 1 : 0, 0);
}

void InspectorPage::changeEvent(QEvent *event)
{
    Page::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        placeLine();
}

InspectorSectionView *InspectorPage::makeSection(const QString &title, QGridLayout *&grid)
{
    auto *const section = new InspectorSectionView;
    section->setAccessibleName(title);
    section->setUsesPaletteColors(true);
    auto *const column = new QVBoxLayout(section);
    column->setContentsMargins(2 * Theme::unit, Theme::unit, 2 * Theme::unit, Theme::unit + 1);
    column->setSpacing(Theme::unit);
    auto *const heading = new QLabel(title);
    heading->setFont(Theme::font(Theme::strong));
    column->addWidget(heading);
    grid = new QGridLayout;
    grid->setSpacing(Theme::unit);
    column->addLayout(grid);
    m_sections.append(section);
    m_inspector->addWidget(section);
    return section;
}

void InspectorPage::addFrame()
{
    QGridLayout *grid = nullptr;
    makeSection(::tr("Frame"), grid);
    const QString names[] = { ::tr("X"), ::tr("Y"), ::tr("W"), ::tr("H") };
    const QString spoken[] = { ::tr("X"), ::tr("Y"), ::tr("Width"), ::tr("Height") };
    for (int i = 0; i < 4; ++i) {
        auto *const box = new QSpinBox;
        box->setRange(i < 2 ? 0 : 8, 320);
        box->setAccessibleName(spoken[i]);
        grid->addWidget(new QLabel(names[i]), i / 2, 2 * (i % 2));
        grid->addWidget(box, i / 2, 2 * (i % 2) + 1);
        grid->setColumnStretch(2 * (i % 2) + 1, 1);
        m_frame.append(box);
        connect(box, &QSpinBox::valueChanged, this, [this] {
            shape().frame = { qreal(m_frame[0]->value()), qreal(m_frame[1]->value()),
                              qreal(m_frame[2]->value()), qreal(m_frame[3]->value()) };
            m_drawing->update();
        });
    }
}

void InspectorPage::addFillAndLine()
{
    QGridLayout *grid = nullptr;
    makeSection(::tr("Fill and line"), grid);
    m_opacity->setRange(0, 255);
    m_opacity->setAccessibleName(::tr("Opacity"));
    m_lineWidth->setRange(0, 12);
    m_lineWidth->setAccessibleName(::tr("Width of the line"));
    m_line->setLabels({ ::tr("Solid"), ::tr("Dashed"), ::tr("Dotted") });
    m_line->setTag(int(Qt::SolidLine), 0);
    m_line->setTag(int(Qt::DashLine), 1);
    m_line->setTag(int(Qt::DotLine), 2);
    m_line->setAccessibleName(::tr("Line"));
    grid->addWidget(new QLabel(::tr("Opacity")), 0, 0);
    grid->addWidget(m_opacity, 0, 1);
    grid->addWidget(new QLabel(::tr("Width")), 1, 0);
    grid->addWidget(m_lineWidth, 1, 1);
    grid->addWidget(m_line, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    connect(m_opacity, &QSlider::valueChanged, this, [this](int alpha) {
        shape().color.setAlpha(alpha);
        m_drawing->update();
    });
    connect(m_lineWidth, &QSpinBox::valueChanged, this, [this](int width) {
        shape().lineWidth = width;
        m_drawing->update();
    });
    connect(m_line, &NS::SegmentedControl::triggered, this, [this](int segment) {
        shape().line = Qt::PenStyle(m_line->tagForSegment(segment));
        m_drawing->update();
    });
}

QTableWidget *InspectorPage::makeLayers()
{
    m_layers->setAccessibleName(::tr("Layers"));
    m_layers->horizontalHeader()->hide();
    m_layers->horizontalHeader()->setStretchLastSection(true);
    m_layers->verticalHeader()->hide();
    m_layers->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_layers->setShowGrid(false);
    m_layers->setFrameShape(QFrame::NoFrame);
    m_layers->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_layers->setSelectionMode(QAbstractItemView::SingleSelection);
    m_layers->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_layers->setTabKeyNavigation(false);
    m_layers->setMinimumHeight(3 * rowHeight);
    connect(m_layers, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (row < 0)
            return;
        m_drawing->selected = int(m_drawing->shapes.size()) - 1 - row;
        showSelected();
    });
    return m_layers;
}

QWidget *InspectorPage::makeKnobs()
{
    auto *const row = new QWidget;
    auto *const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3 * Theme::unit);
    auto *const opaque = new QCheckBox(::tr("&Opaque tool bar"));
    opaque->setChecked(m_tools->opaqueBackground());
    connect(opaque, &QCheckBox::toggled, m_tools, &ToolBarView::setOpaqueBackground);
    auto *const palette = new QCheckBox(::tr("Lines in the &palette’s colours"));
    palette->setChecked(true);
    connect(palette, &QCheckBox::toggled, this, [this](bool usesPalette) {
        m_usesPalette = usesPalette;
        m_tools->setUsesPaletteColors(usesPalette);
        // The default white is for dark text.
        QPalette onWhite;
        onWhite.setColor(QPalette::WindowText, QColor(0x1d, 0x21, 0x29));
        for (QLabel *const label : m_tools->findChildren<QLabel *>())
            label->setPalette(usesPalette ? QPalette() : onWhite);
        for (InspectorSectionView *const section : std::as_const(m_sections))
            section->setUsesPaletteColors(usesPalette);
        fillLayers();
    });
    layout->addWidget(opaque);
    layout->addWidget(palette);
    layout->addStretch();
    return row;
}

// With a rim, so that white and light colours are visible.
QPixmap InspectorPage::swatchOf(const QColor &color) const
{
    const double ratio = devicePixelRatio();
    QPixmap swatch(QSize(swatchSide, swatchSide) * ratio);
    swatch.setDevicePixelRatio(ratio);
    swatch.fill(FlatStyle::edge(palette()));
    QPainter painter(&swatch);
    painter.fillRect(QRect(1, 1, swatchSide - 2, swatchSide - 2), color);
    return swatch;
}

// The frontmost layer comes first.
void InspectorPage::fillLayers()
{
    const QSignalBlocker blocker(m_layers);
    m_layers->setRowCount(0);
    m_layers->setRowCount(int(m_drawing->shapes.size()));
    for (int row = 0; row < m_layers->rowCount(); ++row) {
        const Shape &shape = m_drawing->shapes[m_layers->rowCount() - 1 - row];
        auto *const cell = new InspectorSectionTableCellView;
        cell->setUsesPaletteColors(m_usesPalette);
        auto *const swatch = new QLabel;
        swatch->setPixmap(swatchOf(shape.color));
        auto *const name = new QLabel;
        auto *const kind = new QLabel(shape.kind == rectangle ? ::tr("Rectangle")
                                      : shape.kind == ellipse ? ::tr("Ellipse")
                                                              : ::tr("Triangle"));
        kind->setForegroundRole(QPalette::PlaceholderText);
        auto *const layout = new QHBoxLayout(cell);
        layout->setContentsMargins(2 * Theme::unit, 0, 2 * Theme::unit, 1);
        layout->setSpacing(Theme::unit);
        layout->addWidget(swatch);
        layout->addWidget(name, 1);
        layout->addWidget(kind);
        cell->setTextField(name);
        cell->setObjectValue(shape.name);
        auto *const item = new QTableWidgetItem;
        item->setData(Qt::AccessibleTextRole, shape.name);
        m_layers->setItem(row, 0, item);
        m_layers->setCellWidget(row, 0, cell);
    }
    m_layers->setCurrentCell(m_layers->rowCount() - 1 - m_drawing->selected, 0);
    showSelected();
}

void InspectorPage::showSelected()
{
    const Shape shown = shape();
    const double values[] = { shown.frame.x(), shown.frame.y(), shown.frame.width(),
                              shown.frame.height() };
    for (int i = 0; i < 4; ++i) {
        const QSignalBlocker blocker(m_frame[i]);
        m_frame[i]->setValue(qRound(values[i]));
    }
    m_opacity->setValue(shown.color.alpha());
    m_lineWidth->setValue(qRound(shown.lineWidth));
    m_line->selectSegmentWithTag(int(shown.line));
    m_drawing->update();
}

void InspectorPage::arrange(int by)
{
    const int target = m_drawing->selected + by;
    if (target < 0 || target >= m_drawing->shapes.size())
        return;
    m_drawing->shapes.swapItemsAt(m_drawing->selected, target);
    m_drawing->selected = target;
    fillLayers();
}

} // namespace

Page *makeInspectorPage(QWidget *parent)
{
    return new InspectorPage(parent);
}
