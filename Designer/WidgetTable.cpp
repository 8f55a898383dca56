// SPDX-License-Identifier: MIT
#include "WidgetTable.h"

#include <pellarvine/Pellarvine/BorderView.h>
#include <pellarvine/Pellarvine/ColorPickerButton.h>
#include <pellarvine/Pellarvine/FullWidthSegmentedControl.h>
#include <pellarvine/Pellarvine/HeightForWidthTextField.h>
#include <pellarvine/Pellarvine/InspectorSectionTableCellView.h>
#include <pellarvine/Pellarvine/InspectorSectionView.h>
#include <pellarvine/Pellarvine/MarkupLabel.h>
#include <pellarvine/Pellarvine/ReplaceableImageView.h>
#include <pellarvine/Pellarvine/SolidView.h>
#include <pellarvine/Pellarvine/ToolBarView.h>
#include <pellarvine/Pellarvine/Window.h>
#include <pellarvine/Platform/NSImageView.h>
#include <pellarvine/Platform/NSSegmentedControl.h>
#include <pellarvine/Platform/NSTableCellView.h>
#include <pellarvine/Platform/NSTextField.h>
#include <pellarvine/Platform/NSWindow.h>

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("WidgetTable", text);
}

template <typename View>
QWidget *make(QWidget *parent)
{
    return new View(parent);
}

template <>
QWidget *make<Pellarvine::Window>(QWidget *parent)
{
    auto *const window = new Pellarvine::Window(parent);
    // The first call makes a window lower. Designer would save a form lower each time.
    window->setTitleBarHeight(0);
    return window;
}

// Sets the class, its header and the function that makes a widget, so that these three agree.
template <typename View>
WidgetEntry entry(const QString &folder, const QString &file, Glyph glyph, const QSize &size)
{
    WidgetEntry entry {};
    entry.className = QString::fromLatin1(View::staticMetaObject.className());
    entry.header = u"pellarvine/%1/%2.h"_s.arg(folder, file);
    entry.glyph = glyph;
    entry.size = size;
    entry.make = &make<View>;
    return entry;
}

WidgetEntry described(WidgetEntry entry, const QString &group, const QString &toolTip,
                      const QString &whatsThis, const QVariantMap &properties = {})
{
    entry.group = group;
    entry.toolTip = toolTip;
    entry.whatsThis = whatsThis;
    entry.properties = properties;
    return entry;
}

WidgetEntry container(WidgetEntry entry)
{
    entry.isContainer = true;
    return entry;
}

WidgetEntry form(WidgetEntry entry)
{
    entry.isContainer = true;
    entry.isInWidgetBox = false;
    return entry;
}

} // namespace

QList<WidgetEntry> widgetTable()
{
    using namespace Pellarvine;
    const QString views = tr("Pellarvine Views");
    const QString controls = tr("Pellarvine Controls");
    const QString library = u"Pellarvine"_s;
    const QString platform = u"Platform"_s;
    const QStringList days { tr("Day"), tr("Week"), tr("Month") };
    return {
        container(
                described(entry<BorderView>(library, u"BorderView"_s, Glyph::border, { 200, 120 }),
                          views, tr("A filled view with lines along its edges"),
                          tr("A filled view that can draw a line along each of its edges."),
                          { { u"hasBottomBorder"_s, true } })),
        container(described(entry<SolidView>(library, u"SolidView"_s, Glyph::solid, { 200, 120 }),
                            views, tr("A filled view with round corners"),
                            tr("A view that is filled with a colour and can have round corners."))),
        container(described(
                entry<ToolBarView>(library, u"ToolBarView"_s, Glyph::toolBar, { 320, 40 }), views,
                tr("A strip for tools above a window's content"),
                tr("A white strip with a separator along its lower edge, or the separator "
                   "alone."))),
        container(described(
                entry<InspectorSectionView>(library, u"InspectorSectionView"_s,
                                            Glyph::inspectorSection, { 220, 80 }),
                views, tr("A section of an inspector"),
                tr("Contains the controls of a section and draws a separator below them."))),
        container(described(entry<InspectorSectionTableCellView>(library,
                                                                 u"InspectorSectionTableCellView"_s,
                                                                 Glyph::tableCell, { 220, 40 }),
                            views, tr("A table cell with the separator of an inspector"),
                            tr("A table cell that draws the separator of an inspector section."))),
        container(
                described(entry<NS::TableCellView>(platform, u"NSTableCellView"_s, Glyph::tableCell,
                                                   { 220, 24 }),
                          views, tr("A table cell that is made of views"),
                          tr("A cell for tables and lists with a text field and an image view."))),
        described(entry<NS::ImageView>(platform, u"NSImageView"_s, Glyph::image, { 120, 120 }),
                  views, tr("A picture"),
                  tr("Shows a picture, scaled and aligned. An editable one accepts dropped "
                     "pictures.")),
        described(entry<ReplaceableImageView>(library, u"ReplaceableImageView"_s,
                                              Glyph::replaceableImage, { 120, 120 }),
                  views, tr("A picture that the user can replace"),
                  tr("The user replaces the picture by a drop or a double click. The program gets "
                     "the file."),
                  { { u"editable"_s, true } }),
        described(entry<NS::SegmentedControl>(platform, u"NSSegmentedControl"_s, Glyph::segments,
                                              { 180, 24 }),
                  controls, tr("A row of joined segments"),
                  tr("The user selects one of the segments, or any number of them."),
                  { { u"labels"_s, days } }),
        described(entry<FullWidthSegmentedControl>(library, u"FullWidthSegmentedControl"_s,
                                                   Glyph::fullWidthSegments, { 280, 24 }),
                  controls, tr("A row of segments over the whole width"),
                  tr("A segmented control whose segments fill its width."),
                  { { u"labels"_s, days } }),
        described(entry<NS::TextField>(platform, u"NSTextField"_s, Glyph::textField, { 160, 24 }),
                  controls, tr("A plain or styled text, to read or to edit"),
                  tr("Shows a text that can wrap and can be selected and edited."),
                  { { u"stringValue"_s, tr("Text") } }),
        described(
                entry<HeightForWidthTextField>(library, u"HeightForWidthTextField"_s,
                                               Glyph::wrappedText, { 200, 48 }),
                controls, tr("A wrapping text with the height that it needs"),
                tr("Wraps the text at its width and asks the layout for the height that it needs."),
                { { u"stringValue"_s, tr("A text that wraps to its width") },
                  { u"wraps"_s, true } }),
        described(entry<MarkupLabel>(library, u"MarkupLabel"_s, Glyph::markup, { 200, 48 }),
                  controls, tr("A label that shows inline markup"),
                  tr("Its text can contain markup, such as **bold** and //italic//."),
                  { { u"markup"_s, tr("Saved **12** files") }, { u"wraps"_s, true } }),
        described(
                entry<ColorPickerButton>(library, u"ColorPickerButton"_s, Glyph::color, { 56, 28 }),
                controls, tr("A button with a colour to choose"),
                tr("Shows its colour and opens a colour picker.")),
        form(described(
                entry<Window>(library, u"Window"_s, Glyph::window, { 640, 400 }), views,
                tr("A window with a tall title bar"),
                tr("A window whose title bar can contain views beside and below its buttons."))),
        form(described(entry<NS::Window>(platform, u"NSWindow"_s, Glyph::window, { 640, 400 }),
                       views, tr("A window that draws its title bar"),
                       tr("A window with a title bar of its own that behaves like the desktop's "
                          "windows."))),
    };
}
