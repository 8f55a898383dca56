// SPDX-License-Identifier: MIT
#include "Pages.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

Page *makeContainerPage(QWidget *parent);
Page *makeLayoutPage(QWidget *parent);

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
        { u"layout"_s, tr("Layout"), tr("Views"), &makeLayoutPage },
    };
}
