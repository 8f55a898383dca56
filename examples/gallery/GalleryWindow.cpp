// SPDX-License-Identifier: MIT
#include "GalleryWindow.h"

#include "Page.h"
#include "Pages.h"
#include "Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

GalleryWindow::GalleryWindow(QWidget *parent)
    : QWidget(parent)
    , m_list(new QListWidget)
    , m_stack(new QStackedWidget)
{
    setWindowTitle(tr("Pellarvine Gallery"));
    resize(1000, 680);

    auto *const sidebar = new QWidget;
    sidebar->setObjectName(u"sidebar"_s);
    sidebar->setAttribute(Qt::WA_StyledBackground);
    sidebar->setFixedWidth(26 * Theme::unit);
    auto *const name = new QLabel(tr("Pellarvine"));
    name->setFont(Theme::font(Theme::strong));
    name->setContentsMargins(2 * Theme::unit + 4, 2 * Theme::unit, 0, 0);
    m_list->setObjectName(u"pages"_s);
    m_list->setAccessibleName(tr("Pages"));
    m_list->setFrameShape(QFrame::NoFrame);
    auto *const sidebarLayout = new QVBoxLayout(sidebar);
    sidebarLayout->setContentsMargins(0, 0, 0, 0);
    sidebarLayout->addWidget(name);
    sidebarLayout->addWidget(m_list);

    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(sidebar);
    layout->addWidget(m_stack, 1);

    QString group;
    for (const PageEntry &page : pages()) {
        if (page.group != group) {
            group = page.group;
            auto *const heading = new QListWidgetItem(group, m_list);
            heading->setFlags(Qt::NoItemFlags);
        }
        auto *const item = new QListWidgetItem(page.title, m_list);
        item->setData(Qt::UserRole, page.name);
    }
    connect(m_list, &QListWidget::currentItemChanged, this, &GalleryWindow::showItem);
    showPage(pages().constFirst().name);
}

Page *GalleryWindow::showPage(const QString &name)
{
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->data(Qt::UserRole).toString() == name) {
            m_list->setCurrentRow(row);
            return m_made.value(name);
        }
    }
    return nullptr;
}

void GalleryWindow::showItem(QListWidgetItem *item)
{
    if (!item)
        return;
    const QString name = item->data(Qt::UserRole).toString();
    if (!m_made.contains(name)) {
        const QList<PageEntry> all = pages();
        const auto entry = std::find_if(all.begin(), all.end(), [&](const PageEntry &candidate) {
            return candidate.name == name;
        });
        m_made[name] = entry->make(nullptr);
        // Small screens and large fonts scroll the page instead of squeezing it.
        auto *const scroller = new QScrollArea;
        scroller->setFrameShape(QFrame::NoFrame);
        scroller->setWidgetResizable(true);
        scroller->setWidget(m_made[name]);
        m_stack->addWidget(scroller);
        m_scrollers[name] = scroller;
    }
    m_stack->setCurrentWidget(m_scrollers[name]);
}
