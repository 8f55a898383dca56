// SPDX-License-Identifier: MIT
// The edges of all controls have a contrast of 3:1 in the gallery's palettes (WCAG 1.4.11).
#include "FlatStyle.h"
#include "Named.h"
#include "Pictures.h"
#include "Theme.h"

#include <pellarvine/Pellarvine/ColorPickerButton.h>
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Pellarvine/ReplaceableImageView.h>
#include <pellarvine/Platform/NSColorPanel.h>
#include <pellarvine/Shared/Contrast.h>
#include <pellarvine/Shared/NSColor+Color.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double least = 3;
constexpr int margin = 10;
constexpr int reach = 4; // pixels of an edge and its smoothing

// The contrast of the control's left edge, at half of its height.
double edgeContrast(QWidget &window, const QWidget &control)
{
    const QImage image = window.grab().toImage();
    const QPoint start = control.mapTo(&window, QPoint(-2, control.height() / 2));
    const NS::Color paper(image.pixelColor(start));
    double contrast = 1;
    int seen = 0;
    for (int x = start.x(); x < image.width() && seen < reach; ++x) {
        const NS::Color ink(image.pixelColor(x, start.y()));
        contrast = std::max(contrast, Pellarvine::contrastRatio(ink, paper));
        seen += ink == paper ? 0 : 1;
    }
    return contrast;
}

class GalleryTheme : public testing::TestWithParam<Theme::Scheme>
{
protected:
    GalleryTheme() { Theme::apply(*qApp, GetParam()); }
};

} // namespace

TEST_P(GalleryTheme, edges_of_controls_are_seen_on_windows_and_on_cards)
{
    for (const auto role : { QPalette::Window, QPalette::Base }) {
        QWidget window;
        window.setBackgroundRole(role);
        window.setAutoFillBackground(true);
        auto *const segments = new Pellarvine::FullWidthSegmentedControl;
        segments->setLabels({ u"Day"_s, u"Week"_s });
        auto *const color = new Pellarvine::ColorPickerButton;
        color->setColor(window.palette().color(role));
        auto *const slider = new QSlider(Qt::Horizontal);
        slider->setValue(50);
        const QList<QWidget *> controls {
            new QCheckBox(u"Check"_s),
            new QRadioButton(u"Radio"_s),
            new QLineEdit,
            new QSpinBox,
            new QComboBox,
            new QPushButton(u"Push"_s),
            new QPlainTextEdit,
            new QListWidget,
            slider,
            segments,
            color,
            new Pellarvine::ReplaceableImageView,
        };
        int y = margin;
        for (QWidget *const control : controls) {
            control->setParent(&window);
            control->setFocusPolicy(Qt::NoFocus);
            control->setGeometry(margin, y, 200, control->sizeHint().height());
            y += control->height() + margin;
        }
        window.resize(220, y);
        window.show();
        for (const QWidget *const control : controls)
            EXPECT_GE(edgeContrast(window, *control), least)
                    << control->metaObject()->className() << " on " << role;
    }
}

TEST_P(GalleryTheme, edges_of_the_colour_panel_are_seen_whatever_colour_they_hold)
{
    auto *const panel = NS::ColorPanel::sharedColorPanel();
    panel->setRecentColors({ panel->palette().color(QPalette::Window) });
    panel->setColor(panel->palette().color(QPalette::Window));
    panel->orderFront();
    QWidget *const content = panel->contentView();
    for (const QString &name : { u"Chosen colour"_s, u"Brightness"_s, u"Hexadecimal colour"_s })
        EXPECT_GE(edgeContrast(*panel, *named<QWidget>(content, name)), least)
                << name.toStdString();
    auto *const recent = named<QListWidget>(content, u"Recent colours"_s);
    recent->clearSelection();
    EXPECT_GE(edgeContrast(*panel, *recent->viewport()), least);
    delete panel;
}

TEST_P(GalleryTheme, edges_are_sharp_and_equally_thick_at_every_scale_and_place)
{
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        for (int place = 3; place < 7; ++place) {
            QWidget window;
            const QList<QWidget *> views { new QLineEdit,      new QPushButton, new QComboBox,
                                           new QPlainTextEdit, new QSpinBox,    new QFrame };
            views.constLast()->setObjectName(u"card"_s);
            for (int i = 0; i < views.size(); ++i) {
                views[i]->setParent(&window);
                views[i]->setFocusPolicy(Qt::NoFocus);
                views[i]->setGeometry(place, place + 50 * i, 90 + place, 32 + place);
            }
            window.resize(110, 310);
            window.show();
            const QImage image = picture(window, scale);
            for (const QWidget *const view : views) {
                SCOPED_TRACE(std::string(view->metaObject()->className()) + " at "
                             + std::to_string(place) + " of " + std::to_string(scale));
                const QColor edge = view == views.constLast() ? view->palette().color(QPalette::Mid)
                                                              : FlatStyle::edge(view->palette());
                expectOutline(image, pixelsOf(view->geometry(), scale), edge, int(scale));
            }
        }
    }
}

TEST_P(GalleryTheme, controls_on_a_row_have_one_height)
{
    QSpinBox box;
    QComboBox choice;
    QLineEdit line;
    QPushButton button(u"Push"_s);
    for (QWidget *const control :
         std::initializer_list<QWidget *> { &box, &choice, &line, &button }) {
        control->ensurePolished();
        EXPECT_EQ(std::max(control->sizeHint().height(), control->minimumHeight()), 4 * Theme::unit)
                << control->metaObject()->className();
    }
}

TEST_P(GalleryTheme, headings_of_the_list_of_pages_can_be_read_also_after_a_change_of_theme)
{
    Theme::apply(*qApp, GetParam() == Theme::dark ? Theme::light : Theme::dark);
    QListWidget list;
    list.setObjectName(u"pages"_s);
    list.setBackgroundRole(QPalette::AlternateBase); // like the sidebar
    list.setAutoFillBackground(true);
    QFont large;
    large.setPointSize(60); // its strokes have pixels that are not smoothed
    auto *const heading = new QListWidgetItem(u"H"_s, &list);
    heading->setFont(large);
    heading->setFlags(Qt::NoItemFlags);
    list.resize(200, 200);
    list.show();
    Theme::apply(*qApp, GetParam());

    const QImage image = list.grab().toImage();
    const NS::Color paper(list.palette().color(QPalette::AlternateBase));
    ASSERT_EQ(NS::Color(image.pixelColor(150, 190)), paper);
    double contrast = 1;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y)
            contrast = std::max(
                    contrast, Pellarvine::contrastRatio(NS::Color(image.pixelColor(x, y)), paper));
    }
    EXPECT_GE(contrast, 4.5); // WCAG 1.4.3
    EXPECT_LT(contrast, 10) << "it looks like a page";
}

INSTANTIATE_TEST_SUITE_P(, GalleryTheme, testing::Values(Theme::light, Theme::dark),
                         [](const auto &scheme) {
                             return scheme.param == Theme::dark ? "dark" : "light";
                         });
