// SPDX-License-Identifier: MIT
// Not API: what the colour panel shows, in its window or elsewhere.
#pragma once

#include "Drawing/ColorComponents.h"

#include <QColor>
#include <QList>
#include <QWidget>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QActionGroup)
QT_FORWARD_DECLARE_CLASS(QButtonGroup)
QT_FORWARD_DECLARE_CLASS(QComboBox)
QT_FORWARD_DECLARE_CLASS(QPushButton)
QT_FORWARD_DECLARE_CLASS(QStackedWidget)
QT_FORWARD_DECLARE_CLASS(QToolBar)

namespace NS {
class ColorPanel;
}

namespace Pellarvine::detail {

class ColorComponentRow;
class ColorListView;
class ColorSwatch;
class ColorWheel;
class HexField;

/// Has no state of its own but the hue and the saturation that a grey or a black does not show: it
/// follows the panel's properties and sets them.
class ColorPanelContent : public QWidget
{
    Q_OBJECT

public:
    explicit ColorPanelContent(NS::ColorPanel *panel);

    QToolBar *toolbar() const { return m_toolbar; }

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    ColorComponentRow *makeRow(const QString &name, int maximum, const QString &suffix,
                               std::function<void(int)> change);
    QWidget *makeWheelPage();
    QWidget *makeSlidersPage();
    QWidget *makeListsPage();
    QLayout *makeFooter();
    void alignColumns();
    void alignFields();
    void addPage(const QIcon &icon, const QString &name, QWidget *page,
                 std::function<void()> choose);
    void changeComponents(double Pellarvine::HSBA::*component, double value);
    void choose(const Pellarvine::HSBA &components);
    void fillLists();
    QWidget *makeRecentColors();
    QWidget *makeScreenPicker();
    void showColor();
    void showDefault();
    void showMode();
    void showRecent();

    NS::ColorPanel *m_panel;
    Pellarvine::HSBA m_components;
    QToolBar *m_toolbar;
    QActionGroup *m_items;
    QStackedWidget *m_pages;
    QList<ColorComponentRow *> m_rows;
    ColorWheel *m_wheel = nullptr;
    ColorComponentRow *m_wheelBrightness = nullptr;
    QStackedWidget *m_models = nullptr; // RGB, HSB
    QButtonGroup *m_modelButtons = nullptr; // their numbers are modes of the panel
    ColorComponentRow *m_red = nullptr;
    ColorComponentRow *m_green = nullptr;
    ColorComponentRow *m_blue = nullptr;
    ColorComponentRow *m_hue = nullptr;
    ColorComponentRow *m_saturation = nullptr;
    ColorComponentRow *m_brightness = nullptr;
    QWidget *m_listRow = nullptr;
    QComboBox *m_listNames = nullptr;
    ColorListView *m_list = nullptr;
    ColorComponentRow *m_opacity = nullptr;
    ColorSwatch *m_swatch = nullptr;
    HexField *m_hex = nullptr;
    QPushButton *m_default = nullptr;
    ColorListView *m_recent = nullptr;
    QColor m_opened; // what the panel had when this was shown
};

} // namespace Pellarvine::detail
