// SPDX-License-Identifier: MIT
#include "Pages.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

Page *makeBindingsPage(QWidget *parent);
Page *makeContainerPage(QWidget *parent);

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
    };
}
