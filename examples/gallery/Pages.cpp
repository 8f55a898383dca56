// SPDX-License-Identifier: MIT
#include "Pages.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

Page *makeContainerPage(QWidget *parent);
Page *makeTicketsPage(QWidget *parent);

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
        { u"tickets"_s, tr("Tickets"), tr("Application"), &makeTicketsPage },
    };
}
