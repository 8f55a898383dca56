// SPDX-License-Identifier: MIT
#include "Controls/PictureTransfer.h"

#include "Base/Failure.h"
#include "Base/FileContents.h"
#include "View/BusyCursor.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QMimeData>
#include <QMimeDatabase>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

bool isPictureFile(const QUrl &url)
{
    const QString path = ordinaryFilePath(url);
    if (path.isEmpty())
        return false;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    return reader.canRead();
}

QByteArray pngFile(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// The path of a new file with that name and these contents; empty if it cannot be written.
QString writtenFile(const PictureFile &file)
{
    static const QTemporaryDir folder; // of all files that this program has given away
    static int count = 0;
    const QString place = folder.filePath(QString::number(++count));
    QFile copy(place + u'/' + file.name);
    const bool isWritten = folder.isValid() && QDir().mkpath(place)
                           && copy.open(QIODevice::WriteOnly)
                           && copy.write(file.contents) == file.contents.size() && copy.flush();
    if (!isWritten)
        printWarning("Warning: cannot write a copy of " + file.name.toStdString());
    return isWritten ? copy.fileName() : QString();
}

} // namespace

bool holdsPicture(const QMimeData *data)
{
    return data && (isPictureFile(data->urls().value(0)) || data->hasImage());
}

TakenPicture takenPicture(const QMimeData *source, QWidget *view)
{
    const QUrl url = source->urls().value(0);
    const QImage attached = source->hasImage() ? source->imageData().value<QImage>() : QImage();
    const bool isFile = isPictureFile(url);
    TakenPicture taken;
    runWithBusyCursor(view, [&] {
        const ImageFile file = isFile ? readImageFile(url) : ImageFile();
        if (!file.image.bitmap.isNull())
            taken = { NS::Image(file.image.bitmap, file.image.size),
                      *file.contents,
                      { *file.contents, url.fileName() },
                      ImageFault::none };
        else if (!attached.isNull())
            taken = { NS::Image(attached), pngFile(attached), {}, ImageFault::none };
        else
            taken.fault = file.image.fault;
    });
    return taken;
}

std::unique_ptr<QMimeData> mimeDataForPicture(const QImage &bitmap, const PictureFile &file)
{
    auto data = std::make_unique<QMimeData>();
    data->setImageData(bitmap);
    if (file.contents.isEmpty())
        return data;
    const QMimeType type = QMimeDatabase().mimeTypeForData(file.contents);
    if (type.name().startsWith("image/"_L1))
        data->setData(type.name(), file.contents);
    const QString path =
            writtenFile({ file.contents,
                          file.name.isEmpty() ? u"image."_s + type.preferredSuffix() : file.name });
    if (!path.isEmpty())
        data->setUrls({ QUrl::fromLocalFile(path) });
    return data;
}

} // namespace Pellarvine::detail
