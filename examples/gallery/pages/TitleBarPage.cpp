// SPDX-License-Identifier: MIT
// A picture of a window with the chosen settings of its title bar. The window itself can be opened,
// and follows the settings.
#include "../Page.h"
#include "../PictureWidget.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/ToolBarView.h>
#include <pellarvine/Pellarvine/Window.h>
#include <pellarvine/Platform/NSTitleBar.h>
#include <pellarvine/Platform/NSView.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QTextEdit>
#include <QVBoxLayout>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using Pellarvine::Window;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("TitleBarPage", text);
}

// A picture of the window, which cannot be a child of another window.
class Picture : public PictureWidget
{
public:
    Picture() { setAccessibleName(::tr("Picture of the window")); }

    void show(QWidget *window)
    {
        m_picture = window->grab();
        update();
    }
    QSize sizeHint() const override { return { 52 * Theme::unit, 38 * Theme::unit }; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QSizeF size = m_picture.deviceIndependentSize();
        painter.drawPixmap(QPointF(width() - size.width(), height() - size.height()) / 2.0,
                           m_picture);
    }

private:
    QPixmap m_picture;
};

class TitleBarPage : public Page
{
public:
    explicit TitleBarPage(QWidget *parent);
    void showExample() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    using Length = std::function<void(Window &, double)>;
    using Switch = std::function<void(Window &, bool)>;

    QSlider *addLength(const QString &name, int value, int largest, const Length &apply);
    QCheckBox *addSwitch(const QString &name, bool isOn, const Switch &apply);
    void makeWindow();
    void change(const std::function<void(Window &)> &apply);
    void showPicture();
    void askWhetherToSend();

    std::unique_ptr<Window> m_window;
    Picture *m_picture = new Picture;
    QLabel *m_frame = new QLabel;
    QGridLayout *m_lengths = new QGridLayout;
    QGridLayout *m_switches = new QGridLayout;
    QCheckBox *m_hasInnerView = nullptr;
    QCheckBox *m_hasToolBar = nullptr;
    QSlider *m_height = nullptr;
    QList<std::function<void(Window &)>> m_settings; // applied to the next window
};

TitleBarPage::TitleBarPage(QWidget *parent)
    : Page(::tr("Title bar"),
           ::tr("A window whose title bar has any height, its buttons at any place, and two views "
                "of the program. Resize it, snap it, double-click its bar: it behaves like other "
                "windows of your desktop."),
           parent)
{
    auto *const open = new QPushButton(::tr("&Open this window"));
    connect(open, &QPushButton::clicked, this, [this] {
        m_window->show();
        m_window->raise();
        m_window->activateWindow();
    });
    QFont code = Theme::font(Theme::monospace);
    code.setPointSizeF(code.pointSizeF() * 0.9);
    m_frame->setFont(code);
    m_frame->setForegroundRole(QPalette::PlaceholderText);
    auto *const below = new QHBoxLayout;
    auto *const ask = new QPushButton(::tr("Open a message &box"));
    connect(ask, &QPushButton::clicked, this, &TitleBarPage::askWhetherToSend);
    below->addStretch();
    below->addWidget(ask);
    below->addWidget(open);
    QFrame *const stage = makeCard({});
    auto *const stageLayout = static_cast<QVBoxLayout *>(stage->layout());
    stageLayout->addWidget(m_picture, 1);
    stageLayout->addWidget(m_frame);
    stageLayout->addLayout(below);

    QFrame *const lengths = makeCard(::tr("Lengths"));
    m_lengths->setSpacing(Theme::unit);
    m_lengths->setColumnStretch(1, 1);
    static_cast<QVBoxLayout *>(lengths->layout())->addLayout(m_lengths);
    QFrame *const switches = makeCard(::tr("Buttons, title and views"));
    m_switches->setHorizontalSpacing(2 * Theme::unit);
    m_switches->setVerticalSpacing(Theme::unit);
    static_cast<QVBoxLayout *>(switches->layout())->addLayout(m_switches);

    m_height = addLength(::tr("&Height"), 72, 96,
                         [](Window &window, double value) { window.setTitleBarHeight(value); });
    addLength(::tr("&Margin at the side"), 14, 48,
              [](Window &window, double value) { window.setTrafficLightHorizontalMargin(value); });
    addLength(::tr("Margin at the &top"), 8, 24,
              [](Window &window, double value) { window.setTrafficLightVerticalMargin(value); });
    addLength(::tr("&Gap"), 6, 24,
              [](Window &window, double value) { window.setTrafficLightGap(value); });

    addSwitch(::tr("&Centre the buttons"), false,
              [](Window &window, bool isOn) { window.setCenterTrafficLightButtons(isOn); });
    addSwitch(::tr("Hide the title"), false,
              [](Window &window, bool isOn) { window.setHidesTitle(isOn); });
    addSwitch(::tr("Document"), true, [](Window &window, bool isOn) {
        window.setRepresentedURL(isOn ? QUrl::fromLocalFile(u"/home/ada/Letters/To Charles.txt"_s)
                                      : QUrl());
    });
    addSwitch(::tr("Unsaved changes"), false,
              [](Window &window, bool isOn) { window.setWindowModified(isOn); });
    const auto addStyle = [this](const QString &name, NS::Window::StyleMaskFlag flag, bool isOn) {
        addSwitch(name, isOn, [flag](Window &window, bool has) {
            NS::Window::StyleMask style = window.styleMask();
            window.setStyleMask(style.setFlag(flag, has));
        });
    };
    addStyle(::tr("Can be closed"), NS::Window::closable, true);
    addStyle(::tr("Can be minimised"), NS::Window::miniaturizable, true);
    addStyle(::tr("Can be resized"), NS::Window::resizable, true);
    addStyle(::tr("Content behind the bar"), NS::Window::fullSizeContentView, false);
    addSwitch(::tr("Background moves it"), false,
              [](Window &window, bool isOn) { window.setMovableByWindowBackground(isOn); });
    addSwitch(::tr("Tab reaches buttons"), false,
              [](Window &window, bool isOn) { window.setFullKeyboardAccess(isOn); });
    addSwitch(::tr("Desktop's own frame"), false,
              [](Window &window, bool isOn) { window.setNativeDecorations(isOn); });
    // A window places its views in awakeFromNib(), so other views need a new window.
    m_hasInnerView = addSwitch(::tr("View across the bar"), false, {});
    m_hasToolBar = addSwitch(::tr("Tool bar view"), true, {});
    for (QCheckBox *const box : { m_hasInnerView, m_hasToolBar })
        connect(box, &QCheckBox::toggled, this, [this] { makeWindow(); });

    auto *const columns = new QHBoxLayout;
    columns->setSpacing(2 * Theme::unit);
    auto *const knobs = new QVBoxLayout;
    knobs->setSpacing(2 * Theme::unit);
    knobs->addWidget(lengths);
    knobs->addWidget(switches);
    knobs->addStretch();
    columns->addWidget(stage, 1);
    columns->addLayout(knobs);
    content()->addLayout(columns, 1);
    makeWindow();
}

QSlider *TitleBarPage::addLength(const QString &name, int value, int largest, const Length &apply)
{
    auto *const slider = new QSlider(Qt::Horizontal);
    slider->setRange(0, largest);
    slider->setValue(value);
    auto *const label = new QLabel(name);
    label->setBuddy(slider);
    auto *const number = new QLabel(QString::number(value));
    number->setFont(Theme::font(Theme::monospace));
    number->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    number->setMinimumWidth(3 * Theme::unit);
    const int row = m_lengths->rowCount();
    m_lengths->addWidget(label, row, 0);
    m_lengths->addWidget(slider, row, 1);
    m_lengths->addWidget(number, row, 2);
    const auto set = [slider, apply](Window &window) {
        apply(window, slider->value());
    };
    m_settings.append(set);
    connect(slider, &QSlider::valueChanged, this, [this, number, set](int length) {
        number->setText(QString::number(length));
        change(set);
    });
    return slider;
}

QCheckBox *TitleBarPage::addSwitch(const QString &name, bool isOn, const Switch &apply)
{
    auto *const box = new QCheckBox(name);
    box->setChecked(isOn);
    const int index = m_switches->count();
    m_switches->addWidget(box, index / 2, index % 2);
    if (apply) {
        const auto set = [box, apply](Window &window) {
            apply(window, box->isChecked());
        };
        m_settings.append(set);
        connect(box, &QCheckBox::toggled, this, [this, set] { change(set); });
    }
    return box;
}

void TitleBarPage::makeWindow()
{
    const bool wasVisible = m_window && m_window->isVisible();
    const QRectF frame = m_window ? m_window->frame() : QRectF();
    m_window =
            std::make_unique<Window>(QRectF(120, 160, 39 * Theme::unit, 40 * Theme::unit),
                                     NS::Window::titled | NS::Window::closable
                                             | NS::Window::miniaturizable | NS::Window::resizable);
    m_window->setWindowTitle(::tr("To Charles[*]"));
    auto *const letter = new QTextEdit;
    letter->setFrameShape(QFrame::NoFrame);
    letter->setAccessibleName(::tr("Letter"));
    letter->setPlainText(::tr("Dear Charles,\n\nI am working very hard for you, like the Devil in "
                              "fact, which perhaps I am. I think you will be pleased.\n\nAda"));
    m_window->setContentView(letter);
    for (const auto &apply : std::as_const(m_settings))
        apply(*m_window);
    if (m_hasInnerView->isChecked()) {
        auto *const search = new QLineEdit;
        search->setPlaceholderText(::tr("Search letters"));
        m_window->setInnerTitleBarView(search);
    }
    if (m_hasToolBar->isChecked()) {
        auto *const tools = new Pellarvine::ToolBarView;
        tools->setOpaqueBackground(false);
        tools->setUsesPaletteColors(true);
        auto *const layout = new QHBoxLayout(tools);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(Theme::unit);
        for (const QString &name : { ::tr("Reply"), ::tr("Send") }) {
            auto *const tool = new QPushButton(name);
            tool->setFocusPolicy(Qt::TabFocus);
            tool->setMinimumHeight(0);
            tool->setFixedHeight(3 * Theme::unit);
            layout->addWidget(tool);
        }
        layout->addStretch();
        m_window->setToolbarView(tools);
    }
    m_window->awakeFromNib();
    if (!frame.isNull())
        m_window->setFrame(frame);
    // grab() lays out the window, which may change its frame again.
    connect(
            m_window.get(), &NS::Window::frameChanged, this, [this] { showPicture(); },
            Qt::QueuedConnection);
    if (wasVisible)
        m_window->show();
    showPicture();
}

void TitleBarPage::change(const std::function<void(Window &)> &apply)
{
    if (!m_window)
        return;
    apply(*m_window);
    NS::setNeedsLayout(m_window.get());
    showPicture();
}

void TitleBarPage::showPicture()
{
    m_picture->show(m_window.get());
    const QRectF frame = m_window->frame();
    m_frame->setText(::tr("%1 × %2 at (%3, %4)")
                             .arg(frame.width())
                             .arg(frame.height())
                             .arg(frame.x())
                             .arg(frame.y()));
}

// Qt's own message box in the same frame.
void TitleBarPage::askWhetherToSend()
{
    auto *const box =
            new QMessageBox(QMessageBox::Question, ::tr("To Charles"), ::tr("Send the letter now?"),
                            QMessageBox::Yes | QMessageBox::No, window());
    box->setAttribute(Qt::WA_DeleteOnClose);
    NS::TitleBar::install(box);
    box->open();
}

void TitleBarPage::changeEvent(QEvent *event)
{
    Page::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_window)
        showPicture();
}

void TitleBarPage::showExample()
{
    showPicture();
}

} // namespace

Page *makeTitleBarPage(QWidget *parent)
{
    return new TitleBarPage(parent);
}
