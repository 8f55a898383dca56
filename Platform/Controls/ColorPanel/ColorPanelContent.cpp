// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/ColorPanelContent.h"

#include "Controls/ColorPanel/ColorComponentRow.h"
#include "Controls/ColorPanel/ColorListView.h"
#include "Controls/ColorPanel/ColorPanelIcons.h"
#include "Controls/ColorPanel/ColorSwatch.h"
#include "Controls/ColorPanel/ColorWheel.h"
#include "Controls/ColorPanel/HexField.h"
#include "Controls/ColorPanel/NSColorPanel.h"
#include "Controls/ColorPanel/PageToolBar.h"
#include "Controls/ColorPanel/PortalColorPicker.h"
#include "Controls/ColorPanel/ScreenColorPicker.h"
#include "Drawing/ColorExchange.h"
#include "Drawing/DrawnIcon.h"
#include "Drawing/NSColor.h"
#include "Drawing/NSColorList.h"
#include "View/DesktopPortal.h"

#include <QAbstractItemView>
#include <QActionGroup>
#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStackedWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

using Pellarvine::HSBA;

constexpr int unit = 8;
constexpr int hueSteps = 360;
constexpr int percents = 100;
constexpr int bytes = 255;
constexpr int recentTile = 28; // units

QColor opaque(const HSBA &components)
{
    return NS::Color(HSBA { components.hue, components.saturation, components.brightness, 1 })
            .toQColor();
}

// The nearest colour of 8 bits a component, so that the hex text says all of what was chosen.
QColor writable(const HSBA &components)
{
    const auto [red, green, blue, alpha] = NS::Color(components).rgba();
    const auto byte = [](double component) {
        return int(std::lround(component * bytes));
    };
    return { byte(red), byte(green), byte(blue), byte(alpha) };
}

QGradientStops between(const QColor &first, const QColor &last)
{
    return { { 0, first }, { 1, last } };
}

// The colours of every sixth of the circle, between which a gradient runs straight as they do.
QGradientStops hueStops(const HSBA &components)
{
    QGradientStops stops;
    for (int i = 0; i <= 6; ++i)
        stops.append(
                { i / 6.0, opaque({ i / 6.0, components.saturation, components.brightness }) });
    return stops;
}

QColor withRed(QColor color, int value)
{
    color.setRed(value);
    return color;
}

QColor withGreen(QColor color, int value)
{
    color.setGreen(value);
    return color;
}

QColor withBlue(QColor color, int value)
{
    color.setBlue(value);
    return color;
}

int rounded(double component, int steps)
{
    return int(std::lround(component * steps));
}

} // namespace

ColorPanelContent::ColorPanelContent(NS::ColorPanel *panel)
    : m_panel(panel)
    , m_toolbar(new PageToolBar)
    , m_items(new QActionGroup(this))
    , m_pages(new QStackedWidget)
{
    m_toolbar->setAccessibleName(tr("Pages"));
    addPage(drawnIcon(&drawWheel), tr("Wheel"), makeWheelPage(),
            [this] { m_panel->setMode(NS::ColorPanel::wheelMode); });
    addPage(drawnIcon(&drawSliders), tr("Sliders"), makeSlidersPage(), [this] {
        m_panel->setMode(NS::ColorPanel::Mode(
                std::max(int(NS::ColorPanel::rgbMode), m_modelButtons->checkedId())));
    });
    addPage(drawnIcon(&drawTiles), tr("Palette"), makeListsPage(),
            [this] { m_panel->setMode(NS::ColorPanel::colorListMode); });
    m_opacity = makeRow(tr("Opacity"), percents, u" %"_s, [this](int value) {
        QColor color = m_panel->color();
        color.setAlpha(int(std::lround(double(value) * bytes / percents)));
        m_panel->setColor(color);
    });

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * unit, unit, 2 * unit, 2 * unit);
    layout->setSpacing(unit);
    layout->addWidget(m_toolbar, 0, Qt::AlignHCenter);
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_opacity);
    layout->addLayout(makeFooter());
    auto *const recent = new QHBoxLayout; // whose tiles line up with what is above them
    recent->setContentsMargins(-ColorListView::gap(recentTile), 0, 0, 0);
    recent->addWidget(makeRecentColors());
    layout->addLayout(recent);

    alignColumns();
    alignFields();

    connect(panel, &NS::ColorPanel::colorChanged, this, &ColorPanelContent::showColor);
    connect(panel, &NS::ColorPanel::modeChanged, this, &ColorPanelContent::showMode);
    connect(panel, &NS::ColorPanel::showsAlphaChanged, this, &ColorPanelContent::showColor);
    connect(panel, &NS::ColorPanel::defaultColorChanged, this, &ColorPanelContent::showDefault);
    connect(panel, &NS::ColorPanel::recentColorsChanged, this, &ColorPanelContent::showRecent);
    m_components = NS::Color(panel->color()).hsba();
    fillLists();
    showMode();
    showDefault();
    showRecent();
    showColor();
}

void ColorPanelContent::addPage(const QIcon &icon, const QString &name, QWidget *page,
                                std::function<void()> choose)
{
    QAction *const item = m_toolbar->addAction(icon, name);
    item->setCheckable(true);
    m_items->addAction(item);
    m_pages->addWidget(page);
    connect(item, &QAction::triggered, this, std::move(choose));
}

ColorComponentRow *ColorPanelContent::makeRow(const QString &name, int maximum,
                                              const QString &suffix,
                                              std::function<void(int)> change)
{
    auto *const row = new ColorComponentRow(name, maximum, suffix);
    connect(row, &ColorComponentRow::edited, this, std::move(change));
    m_rows.append(row);
    return row;
}

QWidget *ColorPanelContent::makeWheelPage()
{
    m_wheel = new ColorWheel;
    connect(m_wheel, &ColorWheel::chosen, this, [this](double hue, double saturation) {
        // Every place of a black wheel is black. Makes the chosen hue visible.
        const double brightness = m_components.brightness > 0 ? m_components.brightness : 1;
        choose({ hue, saturation, brightness, m_components.alpha });
    });
    m_wheelBrightness = makeRow(tr("Brightness"), percents, u" %"_s, [this](int value) {
        changeComponents(&HSBA::brightness, double(value) / percents);
    });
    auto *const page = new QWidget;
    auto *const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(unit);
    layout->addWidget(m_wheel, 1);
    layout->addWidget(m_wheelBrightness);
    return page;
}

QWidget *ColorPanelContent::makeSlidersPage()
{
    const auto makeChange = [this](QColor (*change)(QColor, int)) {
        return [this, change](int value) {
            m_panel->setColor(change(m_panel->color(), value));
        };
    };
    m_red = makeRow(tr("Red"), bytes, {}, makeChange(&withRed));
    m_green = makeRow(tr("Green"), bytes, {}, makeChange(&withGreen));
    m_blue = makeRow(tr("Blue"), bytes, {}, makeChange(&withBlue));
    m_hue = makeRow(tr("Hue"), hueSteps, u"°"_s,
                    [this](int value) { changeComponents(&HSBA::hue, double(value) / hueSteps); });
    m_saturation = makeRow(tr("Saturation"), percents, u" %"_s, [this](int value) {
        changeComponents(&HSBA::saturation, double(value) / percents);
    });
    m_brightness = makeRow(tr("Brightness"), percents, u" %"_s, [this](int value) {
        changeComponents(&HSBA::brightness, double(value) / percents);
    });

    m_models = new QStackedWidget;
    m_modelButtons = new QButtonGroup(this);
    auto *const buttons = new QHBoxLayout;
    buttons->setSpacing(unit / 2);
    const auto addModel = [&](const QString &name, NS::ColorPanel::Mode mode,
                              const QList<ColorComponentRow *> &rows) {
        auto *const button = new QPushButton(name);
        button->setCheckable(true);
        button->setAutoExclusive(true); // which screen readers announce as one of several
        button->setFocusPolicy(Qt::StrongFocus);
        button->setAutoDefault(false);
        m_modelButtons->addButton(button, mode);
        buttons->addWidget(button, 1);
        auto *const sliders = new QWidget;
        auto *const layout = new QVBoxLayout(sliders);
        layout->setContentsMargins(0, unit, 0, 0);
        layout->setSpacing(unit);
        for (ColorComponentRow *const row : rows)
            layout->addWidget(row);
        layout->addStretch();
        m_models->addWidget(sliders);
    };
    addModel(tr("RGB"), NS::ColorPanel::rgbMode, { m_red, m_green, m_blue });
    addModel(tr("HSB"), NS::ColorPanel::hsbMode, { m_hue, m_saturation, m_brightness });
    m_modelButtons->button(NS::ColorPanel::rgbMode)->setChecked(true);
    connect(m_modelButtons, &QButtonGroup::idClicked, this,
            [this](int id) { m_panel->setMode(NS::ColorPanel::Mode(id)); });

    auto *const page = new QWidget;
    auto *const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(unit);
    layout->addLayout(buttons);
    layout->addWidget(m_models, 1);
    return page;
}

QWidget *ColorPanelContent::makeListsPage()
{
    m_listRow = new QWidget;
    auto *const label = new QLabel(tr("List"));
    m_listNames = new QComboBox;
    label->setBuddy(m_listNames);
    m_listNames->view()->setAccessibleName(label->text()); // it takes the focus when it drops down
    auto *const row = new QHBoxLayout(m_listRow);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(unit);
    row->addWidget(label);
    row->addWidget(m_listNames, 1);
    m_list = new ColorListView;
    connect(m_listNames, &QComboBox::currentIndexChanged, this, [this](int index) {
        const QList<NS::ColorList> &lists = NS::ColorList::availableColorLists();
        if (index >= 0 && index < lists.size())
            m_list->setList(lists.at(index));
    });
    connect(m_list, &ColorListView::chosen, this, [this](QColor color) {
        // A list of opaque colours says nothing of opacity.
        if (color.alpha() == bytes)
            color.setAlphaF(m_panel->color().alphaF());
        m_panel->setColor(color);
    });
    auto *const page = new QWidget;
    auto *const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(unit);
    layout->addWidget(m_listRow);
    layout->addWidget(m_list, 1);
    return page;
}

QLayout *ColorPanelContent::makeFooter()
{
    m_swatch = new ColorSwatch;
    connect(m_swatch, &ColorSwatch::dropped, m_panel, &NS::ColorPanel::setColor);
    m_hex = new HexField;
    connect(m_hex, &HexField::entered, m_panel, &NS::ColorPanel::setColor);
    auto *const layout = new QHBoxLayout;
    layout->setSpacing(unit);
    layout->addWidget(m_swatch);
    layout->addWidget(m_hex, 1);
    m_default = new QPushButton(tr("Default"));
    m_default->setAutoDefault(false);
    connect(m_default, &QPushButton::clicked, m_panel,
            [this] { m_panel->setColor(m_panel->defaultColor()); });
    layout->addWidget(m_default);
    layout->addWidget(makeScreenPicker());
    return layout;
}

QWidget *ColorPanelContent::makeRecentColors()
{
    m_recent = new ColorListView(recentTile);
    m_recent->setFixedHeight(recentTile);
    connect(m_recent, &ColorListView::chosen, m_panel, &NS::ColorPanel::setColor);
    return m_recent;
}

QWidget *ColorPanelContent::makeScreenPicker()
{
    auto *const picker = new QToolButton;
    picker->setIcon(drawnIcon(&drawPipette));
    picker->setIconSize({ 2 * unit, 2 * unit });
    picker->setAutoRaise(true);
    picker->setFocusPolicy(Qt::StrongFocus);
    picker->setText(tr("Pick a colour from the screen"));
    picker->setToolTip(picker->text());
    const auto take = [this](QColor color) {
        color.setAlphaF(m_panel->color().alphaF());
        m_panel->setColor(color);
        if (!isVisible())
            m_panel->addRecentColor(color); // what it was for has closed meanwhile
    };
    if (ScreenColorPicker::isAvailable()) {
        connect(picker, &QToolButton::clicked, this,
                [this, take] { ScreenColorPicker::pick(this, take); });
        return picker;
    }
    picker->hide();
    if (const std::optional<QDBusConnection> bus = portalBus()) {
        auto *const portal = new PortalColorPicker(*bus, this);
        connect(portal, &PortalColorPicker::found, picker, &QWidget::show);
        connect(portal, &PortalColorPicker::picked, this, take);
        connect(picker, &QToolButton::clicked, portal, &PortalColorPicker::pick);
    }
    return picker;
}

void ColorPanelContent::changeComponents(double HSBA::*component, double value)
{
    HSBA components = m_components;
    components.*component = value;
    choose(components);
}

void ColorPanelContent::choose(const HSBA &components)
{
    m_components = components;
    const QColor before = m_panel->color();
    m_panel->setColor(writable(components));
    if (m_panel->color() == before)
        showColor(); // such as the hue of a grey, which the panel does not have
}

// The rows of all pages have columns of the same widths.
void ColorPanelContent::alignColumns()
{
    int nameWidth = 0;
    int fieldWidth = 0;
    for (const ColorComponentRow *const row : std::as_const(m_rows)) {
        nameWidth = std::max(nameWidth, row->nameWidth());
        fieldWidth = std::max(fieldWidth, row->fieldWidth());
    }
    for (ColorComponentRow *const row : std::as_const(m_rows))
        row->setColumns(nameWidth, fieldWidth);
}

// A field aligns its text by the direction of the text, and digits run from left to right in every
// language.
void ColorPanelContent::alignFields()
{
    const Qt::Alignment left = Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter;
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
    for (const ColorComponentRow *const row : std::as_const(m_rows))
        row->field()->setAlignment(isRightToLeft() ? left : right);
    m_hex->setAlignment(isRightToLeft() ? right : left);
}

void ColorPanelContent::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        alignFields();
    else if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        alignColumns();
}

void ColorPanelContent::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        m_opened = m_panel->color();
}

void ColorPanelContent::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous() && m_panel->color() != m_opened)
        m_panel->addRecentColor(m_panel->color());
}

void ColorPanelContent::showDefault()
{
    const QColor color = m_panel->defaultColor();
    m_default->setVisible(color.isValid());
    m_default->setToolTip(color.isValid() ? colorDescription(color) : QString());
}

void ColorPanelContent::showRecent()
{
    NS::ColorList list;
    const QList<QColor> colors = m_panel->recentColors();
    for (const QColor &color : colors)
        list.entries.append({ colorDescription(color), NS::Color(color) });
    m_recent->setList(list);
    m_recent->setAccessibleName(tr("Recent colours"));
    m_recent->setVisible(!colors.isEmpty());
}

void ColorPanelContent::showMode()
{
    switch (m_panel->mode()) {
    case NS::ColorPanel::wheelMode:
        m_pages->setCurrentIndex(0);
        break;
    case NS::ColorPanel::rgbMode:
    case NS::ColorPanel::hsbMode:
        m_pages->setCurrentIndex(1);
        m_modelButtons->button(m_panel->mode())->setChecked(true);
        m_models->setCurrentIndex(m_panel->mode() == NS::ColorPanel::hsbMode);
        break;
    case NS::ColorPanel::colorListMode:
        m_pages->setCurrentIndex(2);
        fillLists();
        break;
    }
    m_items->actions().at(m_pages->currentIndex())->setChecked(true);
}

void ColorPanelContent::fillLists()
{
    const QList<NS::ColorList> &lists = NS::ColorList::availableColorLists();
    const QString shown = m_listNames->currentText();
    {
        const QSignalBlocker blocker(m_listNames);
        m_listNames->clear();
        for (const NS::ColorList &list : lists)
            m_listNames->addItem(list.name);
        m_listNames->setCurrentIndex(std::max(0, m_listNames->findText(shown)));
    }
    m_listRow->setVisible(lists.size() > 1);
    if (!lists.isEmpty())
        m_list->setList(lists.at(m_listNames->currentIndex()));
}

void ColorPanelContent::showColor()
{
    const QColor color = m_panel->color();
    if (writable(m_components) != color) {
        // A grey has no hue, and black no saturation: keeps the previous ones.
        HSBA components = NS::Color(color).hsba();
        if (components.saturation == 0)
            components.hue = m_components.hue;
        if (components.brightness == 0)
            components.saturation = m_components.saturation;
        m_components = components;
    }
    const auto &[hue, saturation, brightness, alpha] = m_components;
    const QColor shown = opaque(m_components);
    m_wheel->setComponents(hue, saturation, brightness);
    const QGradientStops brightnessStops = between(Qt::black, opaque({ hue, saturation, 1 }));
    for (ColorComponentRow *const row : { m_wheelBrightness, m_brightness })
        row->setState(rounded(brightness, percents), brightnessStops, shown);
    const auto show = [&](ColorComponentRow *row, int value, QColor (*change)(QColor, int)) {
        row->setState(value, between(change(shown, 0), change(shown, bytes)), shown);
    };
    show(m_red, color.red(), &withRed);
    show(m_green, color.green(), &withGreen);
    show(m_blue, color.blue(), &withBlue);
    m_hue->setState(rounded(hue, hueSteps), hueStops(m_components), opaque({ hue, 1, 1 }));
    m_saturation->setState(rounded(saturation, percents),
                           between(opaque({ hue, 0, brightness }), opaque({ hue, 1, brightness })),
                           shown);
    QColor clear = shown;
    clear.setAlpha(0);
    m_opacity->setState(rounded(alpha, percents), between(clear, shown), color);
    m_opacity->setVisible(m_panel->showsAlpha());
    m_list->setColor(color);
    m_recent->setColor(color);
    m_swatch->setColor(color);
    m_hex->setColor(color, m_panel->showsAlpha());
}

} // namespace Pellarvine::detail
