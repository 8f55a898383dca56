// SPDX-License-Identifier: MIT
#include "Drawing/ImageDecoding.h"

#include "Base/FileContents.h"
#include "Drawing/PictureEnd.h"

#include <QBuffer>
#include <QColorSpace>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QMutex>
#include <QPixelFormat>
#include <QUrl>

#include <algorithm>
#include <cmath>

namespace Pellarvine::detail {

namespace {

constexpr double mostPixels = 1 << 28;
constexpr double shownPixels = 1 << 24; // a 5K screen has somewhat fewer
constexpr int mostMegabytes = 512; // of a decoded picture, and of a file
constexpr int usualMegabytes = 128; // Qt's own limit

constexpr qint64 megabyte = 1 << 20;

// While an object exists, Qt decodes pictures of this size. A lower or removed limit of the program
// is kept.
class AllocationLimit
{
public:
    AllocationLimit()
    {
        const QMutexLocker locker(&mutex);
        if (users++ > 0)
            return;
        before = QImageReader::allocationLimit();
        if (before >= usualMegabytes && before < mostMegabytes)
            QImageReader::setAllocationLimit(mostMegabytes);
    }
    ~AllocationLimit()
    {
        const QMutexLocker locker(&mutex);
        if (--users == 0)
            QImageReader::setAllocationLimit(before);
    }
    Q_DISABLE_COPY_MOVE(AllocationLimit)

private:
    inline static QMutex mutex;
    inline static int users = 0;
    inline static int before = 0;
};

double pixelCount(const QSize &size)
{
    return size.isValid() ? double(size.width()) * size.height() : 0;
}

DecodedImage faulty(ImageFault fault)
{
    return { {}, {}, fault };
}

} // namespace

DecodedImage decodedImage(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    QSize size = reader.size();
    const double pixels = pixelCount(size);
    if (pixels > mostPixels)
        return faulty(ImageFault::tooLarge);
    if (pixels > 0 && !hasPictureEnd(reader.format(), bytes))
        return faulty(ImageFault::damaged);
    const int depth = std::max<int>(32, QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel());
    if (pixels > shownPixels) {
        const double scale = std::sqrt(shownPixels / pixels);
        reader.setScaledSize({ std::max(1, int(size.width() * scale)),
                               std::max(1, int(size.height() * scale)) });
    }
    QImage bitmap;
    {
        const AllocationLimit limit;
        bitmap = reader.read();
    }
    if (bitmap.isNull()) {
        if (pixels * depth / 8 > double(mostMegabytes * megabyte))
            return faulty(ImageFault::tooLarge);
        return faulty(pixels > 0 ? ImageFault::damaged : ImageFault::unreadable);
    }
    // Pixels are drawn as they are, which is right for sRGB. Null if the profile cannot be read.
    const QImage converted = bitmap.convertedToColorSpace(QColorSpace::SRgb);
    if (!converted.isNull())
        bitmap = converted;
    if (reader.transformation() & QImageIOHandler::TransformationRotate90)
        size.transpose();
    return { bitmap, pixels > shownPixels ? QSizeF(size) : bitmap.deviceIndependentSize() };
}

ImageFile readImageFile(const QUrl &url)
{
    const QString path = ordinaryFilePath(url);
    if (!path.isEmpty() && QFileInfo(path).size() > mostMegabytes * megabyte)
        return { faulty(ImageFault::tooLarge), std::nullopt };
    std::optional<QByteArray> contents = contentsOfFile(url);
    if (!contents)
        return { faulty(ImageFault::unreadable), std::nullopt };
    return { decodedImage(*contents), contents };
}

QString explanation(ImageFault fault)
{
    switch (fault) {
    case ImageFault::none:
        return {};
    case ImageFault::unreadable:
    case ImageFault::damaged:
        return QCoreApplication::translate("NS::ImageView",
                                           "This picture cannot be read. The file may be damaged.");
    case ImageFault::tooLarge:
        return QCoreApplication::translate("NS::ImageView",
                                           "This picture is too large to be shown.");
    }
    return {};
}

} // namespace Pellarvine::detail
