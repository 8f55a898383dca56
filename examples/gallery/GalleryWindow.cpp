// SPDX-License-Identifier: MIT
#include "GalleryWindow.h"

#include "Page.h"
#include "Pages.h"
#include "Theme.h"

#include <pellarvine/Pellarvine/Application.h>
#include <pellarvine/Pellarvine/BorderView.h>

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The heights of the title bar's rows: the search field, and below it the tools.
constexpr int titleBarHeight = 10 * Theme::unit;
constexpr int horizontalMargin = 2 * Theme::unit;
constexpr int verticalMargin = Theme::unit;
constexpr int searchHeight = 3 * Theme::unit;
constexpr int searchWidth = 30 * Theme::unit;

constexpr int nameRole = Qt::UserRole;

// A flat button that draws its strokes in the palette's colour, mirrored from right to left.
class ToolButton : public QToolButton
{
public:
    ToolButton(const QString &name, const QPolygonF &strokes)
        : m_strokes(strokes)
    {
        setAutoRaise(true);
        setFixedSize(4 * Theme::unit, 28);
        setAccessibleName(name);
        setToolTip(name);
        setFocusPolicy(Qt::TabFocus);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QToolButton::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::ButtonText), 1.6, Qt::SolidLine, Qt::RoundCap,
                            Qt::RoundJoin));
        painter.translate(rect().toRectF().center());
        painter.scale(isRightToLeft() ? -1 : 1, 1);
        for (int i = 0; i + 1 < m_strokes.size(); i += 2)
            painter.drawLine(m_strokes[i], m_strokes[i + 1]);
    }

private:
    QPolygonF m_strokes; // pairs of points; the origin is the middle
};

} // namespace

GalleryWindow::GalleryWindow(QWidget *parent)
    : Pellarvine::Window(parent)
{
    setHidesTitle(true); // the view in the title bar shows it
    setWindowTitle(tr("Pellarvine Gallery"));
    setContentView(new QWidget);
    setTitleBarHeight(::titleBarHeight);
    setTrafficLightHorizontalMargin(horizontalMargin);
    setTrafficLightVerticalMargin(verticalMargin);
    resize(1000, 680 + ::titleBarHeight);
}

void GalleryWindow::fill()
{
    if (m_stack)
        return;
    m_list = new QListWidget;
    m_nothing = new QLabel(tr("No page has this text in its name."));
    m_search = new QLineEdit;
    m_place = new QLabel;
    m_back = new ToolButton(tr("Previous page"), { { 2, -5 }, { -3, 0 }, { -3, 0 }, { 2, 5 } });
    m_forward = new ToolButton(tr("Next page"), { { -2, -5 }, { 3, 0 }, { 3, 0 }, { -2, 5 } });
    m_stack = new QStackedWidget;
    auto *const layout = new QHBoxLayout(contentView());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    makeSidebar();
    layout->addWidget(m_sidebar);
    layout->addWidget(m_stack, 1);
    m_sidebar->show(); // now, because its list gets the focus

    setInnerTitleBarView(makeInnerTitleBar());
    setToolbarView(makeToolBar());
    awakeFromNib();
    keepClearOfButtons();

    connect(m_list, &QListWidget::currentItemChanged, this, &GalleryWindow::showItem);
    connect(m_search, &QLineEdit::textChanged, this, &GalleryWindow::filterPages);
    connect(m_search, &QLineEdit::returnPressed, m_list, [this] { m_list->setFocus(); });
    connect(m_back, &QToolButton::clicked, this, [this] { step(-1); });
    connect(m_forward, &QToolButton::clicked, this, [this] { step(1); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    m_list->setFocus();
}

void GalleryWindow::makeSidebar()
{
    m_sidebar = new Pellarvine::BorderView;
    m_sidebar->setFixedWidth(26 * Theme::unit);
    styleSidebar();
    m_list->setObjectName(u"pages"_s);
    m_list->setAccessibleName(tr("Pages"));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->ensurePolished(); // applies the item heights of the style sheet
    m_nothing->setForegroundRole(QPalette::PlaceholderText);
    m_nothing->setWordWrap(true);
    m_nothing->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    m_nothing->setContentsMargins(2 * Theme::unit, Theme::unit, 2 * Theme::unit, 0);
    m_nothing->hide();
    auto *const layout = new QVBoxLayout(m_sidebar);
    layout->setContentsMargins(1, 0, 1, 0); // beside the line
    layout->setSpacing(0);
    layout->addWidget(m_nothing);
    layout->addWidget(m_list);

    QString group;
    for (const PageEntry &page : pages()) {
        if (page.group != group) {
            group = page.group;
            auto *const heading = new QListWidgetItem(group, m_list);
            heading->setFlags(Qt::NoItemFlags);
        }
        auto *const item = new QListWidgetItem(page.title, m_list);
        item->setData(nameRole, page.name);
    }
}

// The line is on the side of the pages.
void GalleryWindow::styleSidebar()
{
    m_sidebar->setBackgroundColor(palette().color(QPalette::AlternateBase));
    m_sidebar->setBorderColor(palette().color(QPalette::Mid));
    m_sidebar->setHasLeftBorder(isRightToLeft());
    m_sidebar->setHasRightBorder(!isRightToLeft());
}

QWidget *GalleryWindow::makeInnerTitleBar()
{
    auto *const view = new QWidget;
    auto *const name = new QLabel(tr("Pellarvine Gallery"));
    name->setFont(Theme::font(Theme::strong));
    m_search->setPlaceholderText(tr("Search pages"));
    m_search->setAccessibleName(tr("Search pages"));
    m_search->setFixedSize(searchWidth, searchHeight);
    m_search->setTextMargins(Theme::unit / 2, 0, 0, 0);
    m_innerLayout = new QHBoxLayout(view);
    m_innerLayout->addWidget(name, 0, Qt::AlignTop);
    m_innerLayout->addStretch(1);
    m_innerLayout->addWidget(m_search, 0, Qt::AlignTop);
    name->setFixedHeight(searchHeight);
    return view;
}

QWidget *GalleryWindow::makeToolBar()
{
    auto *const tools = new QWidget; // without a line: the title bar has one
    m_place->setForegroundRole(QPalette::PlaceholderText);
    auto *const menuButton = new ToolButton(
            tr("Menu"), { { -5, -4 }, { 5, -4 }, { -5, 0 }, { 5, 0 }, { -5, 4 }, { 5, 4 } });
    auto *const menu = new QMenu(menuButton);
    fillMenu(menu);
    menuButton->setMenu(menu);
    menuButton->setPopupMode(QToolButton::InstantPopup);
    menuButton->setObjectName(u"menuButton"_s);
    m_toolLayout = new QHBoxLayout(tools);
    m_toolLayout->setSpacing(Theme::unit / 2);
    m_toolLayout->addWidget(m_back);
    m_toolLayout->addWidget(m_forward);
    m_toolLayout->addSpacing(Theme::unit);
    m_toolLayout->addWidget(m_place);
    m_toolLayout->addStretch(1);
    m_toolLayout->addWidget(menuButton);
    return tools;
}

void GalleryWindow::fillMenu(QMenu *menu)
{
    QAction *const dark = menu->addAction(tr("&Dark colours"));
    dark->setCheckable(true);
    dark->setChecked(Theme::preferredScheme() == Theme::dark);
    connect(dark, &QAction::toggled, this,
            [](bool isDark) { Theme::apply(*qApp, isDark ? Theme::dark : Theme::light); });
    QAction *const rightToLeft = menu->addAction(tr("&Right to left"));
    rightToLeft->setCheckable(true);
    rightToLeft->setChecked(QApplication::isRightToLeft());
    connect(rightToLeft, &QAction::toggled, this, [](bool isOn) {
        QApplication::setLayoutDirection(isOn ? Qt::RightToLeft : Qt::LeftToRight);
    });
    menu->addAction(tr("&Full screen"), QKeySequence(Qt::Key_F11), this,
                    &GalleryWindow::toggleFullScreen);
    menu->addSeparator();
    if (auto *const application = qobject_cast<Pellarvine::Application *>(qApp))
        menu->addAction(application->aboutAction());
    menu->addAction(tr("&Quit"), QKeySequence::Quit, qApp, &QApplication::closeAllWindows);
    addActions(menu->actions()); // so that their shortcuts work
}

// Makes the contents after the empty window is on the screen: they take as long as the window.
void GalleryWindow::paintEvent(QPaintEvent *event)
{
    Pellarvine::Window::paintEvent(event);
    if (m_stack)
        return;
    QTimer::singleShot(0, this, [this] {
        if (!m_stack)
            showPage(pages().constFirst().name);
    });
}

void GalleryWindow::changeEvent(QEvent *event)
{
    Pellarvine::Window::changeEvent(event);
    if (m_sidebar
        && (event->type() == QEvent::LayoutDirectionChange
            || event->type() == QEvent::PaletteChange))
        styleSidebar();
    if (event->type() != QEvent::LayoutDirectionChange)
        return;
    keepClearOfButtons();
    for (Page *const page : std::as_const(m_made))
        page->alignTexts();
}

// The inner view covers the buttons, which are always at the left, and extends beyond the window on
// the other side. Margins keep its content clear of both; a right-to-left layout swaps its edges.
void GalleryWindow::keepClearOfButtons()
{
    if (!m_innerLayout || !m_toolLayout)
        return;
    const int clear = horizontalMargin + 3 * 14 + 2 * int(trafficLightGap()) + 2 * Theme::unit;
    constexpr int inset = 2 * horizontalMargin;
    const int left = isRightToLeft() ? clear + inset : clear - inset;
    const int right = isRightToLeft() ? 0 : inset + horizontalMargin;
    m_innerLayout->setContentsMargins(left, 0, right, 0);
    m_toolLayout->setContentsMargins(clear - horizontalMargin, 0, 0, 0);
}

Page *GalleryWindow::showPage(const QString &name)
{
    fill();
    const int row = rowOf(name);
    if (row < 0)
        return nullptr;
    m_list->setCurrentRow(row);
    return m_made.value(name);
}

// The row of a page, or -1.
int GalleryWindow::rowOf(const QString &name) const
{
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->data(nameRole).toString() == name)
            return row;
    }
    return -1;
}

// The heading of a group is shown if one of its pages is.
void GalleryWindow::filterPages(const QString &text)
{
    // The clear button is made late: loading its icon takes longer than making the list of pages.
    setClearButton(m_search, !text.isEmpty());
    QListWidgetItem *heading = nullptr;
    bool hasAny = false;
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem *const item = m_list->item(row);
        if (item->data(nameRole).isNull()) {
            heading = item;
            heading->setHidden(true);
            continue;
        }
        const bool isMatch = item->text().contains(text, Qt::CaseInsensitive)
                             || (heading && heading->text().contains(text, Qt::CaseInsensitive));
        item->setHidden(!isMatch);
        if (isMatch && heading)
            heading->setHidden(false);
        if (isMatch && !std::exchange(hasAny, true) && !text.isEmpty())
            m_list->setCurrentItem(item);
    }
    m_nothing->setVisible(!hasAny);
}

void GalleryWindow::step(int by)
{
    for (int row = m_list->currentRow() + by; row >= 0 && row < m_list->count(); row += by) {
        const QListWidgetItem *const item = m_list->item(row);
        if (!item->data(nameRole).isNull() && !item->isHidden())
            return m_list->setCurrentRow(row);
    }
}

void GalleryWindow::showItem(QListWidgetItem *item)
{
    if (!item)
        return;
    const QString name = item->data(nameRole).toString();
    const QList<PageEntry> all = pages();
    const auto entry = std::find_if(all.begin(), all.end(), [&](const PageEntry &candidate) {
        return candidate.name == name;
    });
    if (!m_made.contains(name)) {
        m_made[name] = entry->make(nullptr);
        m_made[name]->alignTexts();
        // On a small screen or with a large font, the page can be scrolled.
        auto *const scroller = new QScrollArea;
        scroller->setAccessibleName(entry->title);
        scroller->setFrameShape(QFrame::NoFrame);
        scroller->setWidgetResizable(true);
        scroller->setWidget(m_made[name]);
        m_stack->addWidget(scroller);
        m_scrollers[name] = scroller;
    }
    m_stack->setCurrentWidget(m_scrollers[name]);
    m_place->setText(tr("%1  ›  %2").arg(entry->group, entry->title));
    m_back->setEnabled(entry != all.begin());
    m_forward->setEnabled(entry + 1 != all.end());
}
