// SPDX-License-Identifier: MIT
#include "Pellarvine/ReplaceableImageView.h"

#include "Base/Assign.h"
#include "Base/Failure.h"
#include "Base/FileContents.h"
#include "Base/MethodLookup.h"
#include "Controls/AccessibleImageView.h"
#include "Drawing/ImageDecoding.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/NSKeyValueBinding.h"
#include "View/BusyCursor.h"

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QImageReader>
#include <QKeyEvent>
#include <QMenu>
#include <QMetaMethod>
#include <QMimeData>
#include <QMimeDatabase>
#include <QPointer>
#include <QUrl>

#include <optional>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

// The delegate's operation; invalid if it does not have it.
QMetaMethod operation(const QObject *delegate)
{
    if (!delegate)
        return {};
    QMetaMethod found;
    const QList<QMetaMethod> overloads = detail::methodsNamed(delegate, "replaceableImageView");
    for (const QMetaMethod &method : overloads) {
        // By type: a class may spell them in several ways. The last is the most derived class's.
        if (method.parameterCount() == 2
            && method.parameterMetaType(0) == QMetaType::fromType<ReplaceableImageView *>()
            && method.parameterMetaType(1) == QMetaType::fromType<Data>())
            found = method;
    }
    return found;
}

void tell(QObject *delegate, ReplaceableImageView *view, const Data &bytes)
{
    const QMetaMethod method = operation(delegate);
    if (!method.isValid())
        return;
    void *arguments[] = { nullptr, &view, const_cast<Data *>(&bytes) };
    QMetaObject::metacall(delegate, QMetaObject::InvokeMetaMethod, method.methodIndex(), arguments);
}

// One filter for all that can be read, in every spelling: "Images (*.jpe *.jpeg *.jpg *.png …)".
QString imageFilter()
{
    QStringList patterns;
    const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    for (const QByteArray &format : formats)
        patterns.append(u"*."_s + QString::fromLatin1(format));
    const QMimeDatabase database;
    const QList<QByteArray> types = QImageReader::supportedMimeTypes();
    for (const QByteArray &type : types)
        patterns.append(database.mimeTypeForName(QString::fromLatin1(type)).globPatterns());
    patterns.removeDuplicates();
    patterns.sort();
    return ReplaceableImageView::tr("Images") + u" ("_s + patterns.join(u' ') + u')';
}

// Passes the image to the model that the view is bound to. The view shows it through the binding.
void showThroughBinding(const NS::Image &image, const QVariantMap &info)
{
    auto *const model = info.value(NS::NSObservedObjectKey).value<QObject *>();
    const QVariant keyPath = info.value(NS::NSObservedKeyPathKey);
    if (!model || keyPath.metaType() != QMetaType::fromType<QString>())
        return;
    try {
        NS::setValueForKeyPath(model, keyPath.toString(), QVariant::fromValue(image));
    } catch (const NS::KeyValueException &error) {
        detail::printWarning(error);
    }
}

class AccessibleReplaceableImageView : public detail::AccessibleImageView
{
public:
    using AccessibleImageView::AccessibleImageView;

    QStringList actionNames() const override
    {
        const QStringList own(pressAction());
        return (widget()->isEnabled() ? own : QStringList()) + AccessibleImageView::actionNames();
    }
    void doAction(const QString &name) override
    {
        if (name != pressAction())
            AccessibleImageView::doAction(name);
        else if (widget()->isEnabled())
            static_cast<ReplaceableImageView *>(widget())->selectImage();
    }
};

} // namespace

struct ReplaceableImageView::Private
{
    QPointer<QObject> delegate;
    QPointer<QFileDialog> panel;
    bool isTold = false; // of the file that is being dropped
};

ReplaceableImageView::ReplaceableImageView(QWidget *parent)
    : ImageView(parent)
    , d(std::make_unique<Private>())
{
    detail::makeAccessible<ReplaceableImageView, AccessibleReplaceableImageView>();
    setEditable(true);
}

ReplaceableImageView::~ReplaceableImageView() = default;

QObject *ReplaceableImageView::delegate() const
{
    return d->delegate;
}

void ReplaceableImageView::setDelegate(QObject *delegate)
{
    if (detail::assign(d->delegate, delegate))
        Q_EMIT delegateChanged(delegate);
}

QMenu *ReplaceableImageView::createStandardContextMenu()
{
    QMenu *const menu = ImageView::createStandardContextMenu();
    QAction *const before = menu->actions().value(0);
    auto *const choose = new QAction(tr("C&hoose Image…"), menu);
    connect(choose, &QAction::triggered, this, &ReplaceableImageView::selectImage);
    menu->insertAction(before, choose);
    menu->insertSeparator(before);
    return menu;
}

void ReplaceableImageView::selectImage()
{
    if (!window()->isVisible() || d->panel)
        return;
    d->panel = new QFileDialog(this, tr("Choose Image"));
    QFileDialog *const panel = d->panel;
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setLabelText(QFileDialog::Accept, tr("Choose"));
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setOption(QFileDialog::ReadOnly); // which takes away the creation of folders
    panel->setNameFilter(imageFilter());
    connect(panel, &QDialog::accepted, this, [this, panel] {
        const QList<QUrl> urls = panel->selectedUrls();
        if (urls.isEmpty())
            return;
        // Reads after the dialog is hidden, because reading would delay that.
        QMetaObject::invokeMethod(
                this, [this, url = urls.constFirst()] { loadImage(url); }, Qt::QueuedConnection);
    });
    panel->open();
}

void ReplaceableImageView::loadImage(const QUrl &url)
{
    detail::ImageFile file;
    const QPointer<ReplaceableImageView> guard(this);
    detail::runWithBusyCursor(this, [&] { file = detail::readImageFile(url); });
    if (!guard)
        return;
    if (file.image.fault == detail::ImageFault::unreadable)
        return;
    if (file.image.fault != detail::ImageFault::none)
        return refuseImage(detail::explanation(file.image.fault));
    const Data bytes = *file.contents;
    const NS::Image chosen(file.image.bitmap, file.image.size);
    const QVariantMap binding = NS::infoForBinding(this, NS::NSValueBinding);
    if (binding.isEmpty())
        setImageFile(chosen, bytes, url.fileName());
    else
        showThroughBinding(chosen, binding);
    if (guard)
        rememberFile(chosen, bytes, url.fileName());
    if (guard)
        tell(d->delegate, this, bytes);
    if (guard)
        Q_EMIT imageEdited(chosen, bytes);
}

void ReplaceableImageView::didTakeFile(const QByteArray &contents)
{
    d->isTold = true;
    tell(d->delegate, this, contents);
}

bool ReplaceableImageView::performDragOperation(QDropEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    const QPointer<ReplaceableImageView> guard(this);
    d->isTold = false;
    if (!ImageView::performDragOperation(event))
        return false;
    if (!guard || d->isTold || !operation(d->delegate).isValid())
        return true;
    // Image data beside a file that is no image or cannot be read.
    std::optional<Data> bytes;
    detail::runWithBusyCursor(this, [&] { bytes = detail::contentsOfFile(urls.value(0)); });
    if (!bytes)
        detail::printWarning("Warning: could not fetch image data!");
    else if (guard)
        tell(d->delegate, this, *bytes);
    return true;
}

void ReplaceableImageView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return selectImage();
    default:
        ImageView::keyPressEvent(event);
    }
}

void ReplaceableImageView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return ImageView::mouseDoubleClickEvent(event);
    selectImage();
}

} // namespace Pellarvine
