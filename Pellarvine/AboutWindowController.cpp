// SPDX-License-Identifier: MIT
#include "Pellarvine/AboutWindowController.h"

#include "Base/Assign.h"
#include "Base/NSBundle.h"
#include "Drawing/Shades.h"
#include "Ostrevane/App.h"
#include "Ostrevane/SystemDetails.h"
#include "Pellarvine/AboutTexts.h"
#include "Window/NSTitleBar.h"
#include "Window/WindowFrame.h"
#include "Window/WindowPlace.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QIcon>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QShortcut>
#include <QStringList>
#include <QThread>
#include <QUrl>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine {

struct AboutWindowController::Private
{
    QString name = App::name();
    QString version = tr("Version %1").arg(App::version());
    QString copyright = App::copyright();
    NS::Metainfo metainfo = NS::Bundle::main().metainfo();
    QList<detail::AboutDocument> documents = detail::aboutDocuments(metainfo);
    QColor linkColor = detail::linkColor(QGuiApplication::palette());
};

namespace {

constexpr int iconSize = 64;

struct Shared
{
    std::mutex mutex;
    QPointer<AboutWindowController> controller;
};

Shared &shared()
{
    static Shared all;
    return all;
}

// The window needs the application object, and so has to go before it.
void deleteShared()
{
    const std::lock_guard lock(shared().mutex);
    delete shared().controller;
}

// For a program without an icon.
QPixmap tile(const QString &name, qreal scale)
{
    QPixmap pixmap(QSize(iconSize, iconSize) * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QGuiApplication::palette().highlight());
    painter.drawRoundedRect(QRectF(2, 2, iconSize - 4, iconSize - 4), 14, 14);
    QFont font = QGuiApplication::font();
    font.setPixelSize(34);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(QGuiApplication::palette().color(QPalette::HighlightedText));
    painter.drawText(QRectF(0, 0, iconSize, iconSize), Qt::AlignCenter, name.left(1).toUpper());
    return pixmap;
}

// Calls a function after each change of a window's palette.
class PaletteWatch : public QObject
{
public:
    PaletteWatch(QWidget *window, std::function<void()> changed, QObject *parent)
        : QObject(parent)
        , m_changed(std::move(changed))
    {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange)
            m_changed();
        return false;
    }

private:
    std::function<void()> m_changed;
};

void showText(const QString &title, const QString &text, QWidget *parent)
{
    auto *const dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    auto *const view = new QPlainTextEdit(text);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setTabChangesFocus(true);
    view->setAccessibleName(title);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    QObject::connect(new QShortcut(Qt::CTRL | Qt::Key_W, dialog), &QShortcut::activated, dialog,
                     &QDialog::reject);
    auto *const layout = new QVBoxLayout(dialog);
    layout->addWidget(view);
    layout->addWidget(buttons);
    const QFontMetrics metrics = view->fontMetrics();
    dialog->resize(metrics.averageCharWidth() * 80, metrics.lineSpacing() * 24);
    const detail::WindowFrame *const frame = parent ? detail::WindowFrame::of(parent) : nullptr;
    if (frame && !frame->isNative())
        NS::TitleBar::install(dialog);
    dialog->open();
}

} // namespace

AboutWindowController::AboutWindowController()
    : NS::WindowController(u"AboutWindowController"_s)
    , d(std::make_unique<Private>())
{ }

AboutWindowController::AboutWindowController(QWidget *window, QObject *parent)
    : NS::WindowController(window, parent)
    , d(std::make_unique<Private>())
{ }

AboutWindowController::~AboutWindowController() = default;

AboutWindowController *AboutWindowController::instance()
{
    const std::lock_guard lock(shared().mutex);
    if (!shared().controller) {
        shared().controller = new AboutWindowController;
        // The window lives in the main thread, whichever thread makes the first call.
        shared().controller->moveToThread(QCoreApplication::instance()->thread());
        qAddPostRoutine(deleteShared);
    }
    return shared().controller;
}

void AboutWindowController::setInstance(AboutWindowController *controller)
{
    const std::lock_guard lock(shared().mutex);
    if (controller == shared().controller)
        return;
    if (shared().controller)
        shared().controller->deleteLater();
    shared().controller = controller;
    if (controller)
        qAddPostRoutine(deleteShared);
}

void AboutWindowController::show()
{
    instance()->showWindow();
}

QString AboutWindowController::applicationName() const
{
    return d->name;
}

void AboutWindowController::setApplicationName(const QString &name)
{
    if (!detail::assign(d->name, name))
        return;
    Q_EMIT applicationNameChanged(name);
    Q_EMIT detailsChanged();
}

QString AboutWindowController::applicationVersion() const
{
    return d->version;
}

void AboutWindowController::setApplicationVersion(const QString &version)
{
    if (!detail::assign(d->version, version))
        return;
    Q_EMIT applicationVersionChanged(version);
    Q_EMIT detailsChanged();
}

QString AboutWindowController::applicationCopyright() const
{
    return d->copyright;
}

void AboutWindowController::setApplicationCopyright(const QString &copyright)
{
    if (detail::assign(d->copyright, copyright))
        Q_EMIT applicationCopyrightChanged(copyright);
}

QString AboutWindowController::applicationAuthors() const
{
    return detail::aboutAuthors(d->metainfo);
}

QString AboutWindowController::applicationLinks() const
{
    return detail::aboutLinks(d->metainfo, d->linkColor);
}

QString AboutWindowController::applicationDocuments() const
{
    return detail::documentLinks(d->documents, d->linkColor);
}

void AboutWindowController::openLink(const QString &link)
{
    const auto document =
            std::find_if(d->documents.cbegin(), d->documents.cend(),
                         [&](const detail::AboutDocument &each) { return each.link == link; });
    if (document != d->documents.cend())
        showText(document->title, document->text, window());
    else
        QDesktopServices::openUrl(QUrl(link));
}

QPixmap AboutWindowController::applicationIcon() const
{
    const qreal scale = qApp->devicePixelRatio();
    const QIcon icon = QGuiApplication::windowIcon();
    return icon.isNull() ? tile(d->name, scale) : icon.pixmap(QSize(iconSize, iconSize), scale);
}

QString AboutWindowController::details() const
{
    return (QStringList(u"%1, %2"_s.arg(d->name, d->version)) + detail::systemDetails())
            .join(u'\n');
}

void AboutWindowController::copyDetails() const
{
    QGuiApplication::clipboard()->setText(details());
}

void AboutWindowController::showWindow(const QVariant &sender)
{
    QWidget *const about = window();
    if (about && !about->isVisible() && !about->testAttribute(Qt::WA_Moved)) {
        about->adjustSize();
        detail::moveToCentre(about, QApplication::activeWindow());
    }
    NS::WindowController::showWindow(sender);
}

void AboutWindowController::windowDidLoad()
{
    NS::WindowController::windowDidLoad();
    QWidget *const about = window();
    if (!about)
        return;
    about->setAttribute(Qt::WA_QuitOnClose, false); // it keeps no program running
    const auto colorLinks = [this, about] {
        if (detail::assign(d->linkColor, detail::linkColor(about->palette())))
            Q_EMIT linkColorChanged();
    };
    new PaletteWatch(about, colorLinks, this);
    colorLinks();
    // An NS::Window has it; a window of another class would only get a property that means nothing.
    if (about->metaObject()->indexOfProperty("movableByWindowBackground") >= 0)
        about->setProperty("movableByWindowBackground", true);
    if (about->windowTitle().isEmpty())
        about->setWindowTitle(tr("About %1").arg(d->name));
    // Otherwise the name has the focus, and shows a text cursor.
    if (auto *const button = about->findChild<QWidget *>(u"copyButton"_s))
        button->setFocus();
}

} // namespace Pellarvine
