// SPDX-License-Identifier: MIT
#include "Pages.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

Page *makeAboutPage(QWidget *parent);
Page *makeBindingsPage(QWidget *parent);
Page *makeBordersPage(QWidget *parent);
Page *makeColorPickerPage(QWidget *parent);
Page *makeColorsPage(QWidget *parent);
Page *makeContainerPage(QWidget *parent);
Page *makeDrawingPage(QWidget *parent);
Page *makeFontsPage(QWidget *parent);
Page *makeImagesPage(QWidget *parent);
Page *makeInspectorPage(QWidget *parent);
Page *makeLabelsPage(QWidget *parent);
Page *makeLayoutPage(QWidget *parent);
Page *makeMarkupPage(QWidget *parent);
Page *makeNavigationPage(QWidget *parent);
Page *makePopoversPage(QWidget *parent);
Page *makeSegmentsPage(QWidget *parent);
Page *makeTicketsPage(QWidget *parent);
Page *makeTitleBarPage(QWidget *parent);

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Pages", text);
}

} // namespace

QList<PageEntry> pages()
{
    return {
        { u"container"_s, tr("Container"), tr("Data"), &makeContainerPage },
        { u"bindings"_s, tr("Bindings"), tr("Data"), &makeBindingsPage },
        { u"colours"_s, tr("Colours"), tr("Colour and text"), &makeColorsPage },
        { u"fonts"_s, tr("Fonts"), tr("Colour and text"), &makeFontsPage },
        { u"markup"_s, tr("Markup"), tr("Colour and text"), &makeMarkupPage },
        { u"drawing"_s, tr("Drawing"), tr("Colour and text"), &makeDrawingPage },
        { u"layout"_s, tr("Layout"), tr("Views"), &makeLayoutPage },
        { u"borders"_s, tr("Borders"), tr("Views"), &makeBordersPage },
        { u"inspector"_s, tr("Inspector"), tr("Views"), &makeInspectorPage },
        { u"segments"_s, tr("Segments"), tr("Views"), &makeSegmentsPage },
        { u"labels"_s, tr("Labels"), tr("Views"), &makeLabelsPage },
        { u"popovers"_s, tr("Popovers"), tr("Views"), &makePopoversPage },
        { u"images"_s, tr("Images"), tr("Views"), &makeImagesPage },
        { u"colour-picker"_s, tr("Colour picker"), tr("Views"), &makeColorPickerPage },
        { u"titlebar"_s, tr("Title bar"), tr("Views"), &makeTitleBarPage },
        { u"navigation"_s, tr("Navigation"), tr("Views"), &makeNavigationPage },
        { u"about"_s, tr("About"), tr("Application"), &makeAboutPage },
        { u"tickets"_s, tr("Tickets"), tr("Application"), &makeTicketsPage },
    };
}
