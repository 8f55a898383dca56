// SPDX-License-Identifier: MIT
#include "DragAndDrop.h"
#include "Drawing/Shades.h"
#include "HugePicture.h"
#include "Pictures.h"
#include "TemporaryFolder.h"
#include "View/BusyCursor.h"

#include <pellarvine/Platform/NSImageView.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>

#include <QAccessible>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QColorSpace>
#include <QColorTransform>
#include <QDrag>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QMenu>
#include <QSemaphore>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QImage filled(QSize size, Qt::GlobalColor color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

class Record : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QImage portrait MEMBER portrait NOTIFY changed)
    Q_PROPERTY(QByteArray photo MEMBER photo NOTIFY changed)

public:
    QImage portrait;
    QByteArray photo;

Q_SIGNALS:
    void changed();
};

class ImageViewTest : public testing::Test
{
protected:
    ImageViewTest()
    {
        view.resize(100, 60);
        view.setEditable(true);
    }

    QString imageFile(const QString &name, Qt::GlobalColor color) const
    {
        QString path = folder.filePath(name);
        EXPECT_TRUE(filled({ 4, 4 }, color).save(path, "PNG"));
        return path;
    }
    struct Drag
    {
        int count = 0;
        QByteArray contents; // of the file
        QSize picture;
    };
    // The data that another program gets from a drag by that distance with that button.
    Drag draggedOut(int distance = 40, Qt::MouseButton button = Qt::LeftButton)
    {
        Drag seen;
        const auto look = [&] {
            if (const auto *const drag = view.findChild<QDrag *>()) {
                ++seen.count;
                QFile file(drag->mimeData()->urls().value(0).toLocalFile());
                if (!file.fileName().isEmpty() && file.open(QIODevice::ReadOnly))
                    seen.contents = file.readAll();
                EXPECT_TRUE(drag->mimeData()->hasImage());
                EXPECT_EQ(drag->supportedActions(), Qt::CopyAction);
                seen.picture = drag->pixmap().size();
            }
            QDrag::cancel();
        };
        view.show();
        QTimer::singleShot(0, &view, look); // in the drag's own event loop
        const QPoint from(20, 20);
        QTest::mousePress(&view, button, {}, from);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(distance, 0),
                         view.mapToGlobal(from + QPoint(distance, 0)), Qt::NoButton, button, {});
        QApplication::sendEvent(&view, &move);
        QCoreApplication::processEvents();
        QTest::mouseRelease(&view, button, {}, from);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return seen;
    }
    QColor shown() const { return view.image().bitmap().pixelColor(0, 0); }

    TemporaryFolder folder;
    NS::ImageView view;
};

} // namespace

TEST_F(ImageViewTest, an_image_lies_where_scaling_and_alignment_put_it)
{
    using View = NS::ImageView;
    struct Row
    {
        QSize image;
        View::ImageScaling scaling;
        Qt::Alignment alignment;
        QRectF place;
    };
    const Row rows[] = {
        { { 20, 10 }, View::scaleProportionallyDown, Qt::AlignCenter, { 40, 25, 20, 10 } },
        { { 200, 60 }, View::scaleProportionallyDown, Qt::AlignCenter, { 0, 15, 100, 30 } },
        { { 20, 10 }, View::scaleProportionallyUpOrDown, Qt::AlignCenter, { 0, 5, 100, 50 } },
        { { 10, 20 }, View::scaleProportionallyUpOrDown, Qt::AlignLeft, { 0, 0, 30, 60 } },
        { { 20, 10 }, View::scaleAxesIndependently, Qt::AlignCenter, { 0, 0, 100, 60 } },
        { { 120, 80 }, View::scaleNone, Qt::AlignCenter, { -10, -10, 120, 80 } },
        { { 20, 10 }, View::scaleNone, Qt::AlignLeft | Qt::AlignTop, { 0, 0, 20, 10 } },
        { { 20, 10 }, View::scaleNone, Qt::AlignRight | Qt::AlignBottom, { 80, 50, 20, 10 } },
    };
    for (const auto &[image, scaling, alignment, place] : rows) {
        view.setImage(NS::Image(filled(image, Qt::red)));
        view.setImageScaling(scaling);
        view.setImageAlignment(alignment);
        EXPECT_EQ(view.imageRect(), place) << qPrintable(QDebug::toString(place));
    }
    view.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(view.imageRect(), QRectF(0, 50, 20, 10));
    view.setImageAlignment(Qt::AlignRight | Qt::AlignTop | Qt::AlignAbsolute);
    EXPECT_EQ(view.imageRect(), QRectF(80, 0, 20, 10));
    view.setFrameStyle(QFrame::Box | QFrame::Plain);
    view.setLineWidth(3);
    EXPECT_EQ(view.imageRect(), QRectF(77, 3, 20, 10));
}

TEST_F(ImageViewTest, every_pixel_of_a_dense_image_shows_on_a_dense_screen)
{
    QImage pixels = filled({ 200, 120 }, Qt::white);
    for (int x = 0; x < 200; x += 2) {
        for (int y = 0; y < 120; ++y)
            pixels.setPixelColor(x, y, Qt::black);
    }
    view.setImage(NS::Image(pixels, { 100, 60 }));
    QImage screen(200, 120, QImage::Format_RGB32);
    screen.setDevicePixelRatio(2);
    view.render(&screen);
    EXPECT_EQ(screen.pixelColor(100, 60), QColor(Qt::black));
    EXPECT_EQ(screen.pixelColor(101, 60), QColor(Qt::white));
    // On a screen of scale 1, the pixel is the mean of both columns.
    const QColor mixed = view.grab().toImage().pixelColor(50, 30);
    EXPECT_NEAR(mixed.red(), 127, 8);
}

TEST_F(ImageViewTest, an_editable_view_takes_images_and_refuses_the_rest)
{
    const QString fifo = folder.filePath(u"pipe.png"_s);
    ASSERT_EQ(mkfifo(fifo.toLocal8Bit().constData(), 0600), 0);
    QMimeData remote;
    remote.setUrls({ QUrl(u"https://example.org/a.png"_s) });
    QMimeData text;
    text.setText(u"a picture"_s);
    const auto refused = {
        filesToDrop({ folder.file(u"notes.txt"_s, "notes") }),
        filesToDrop({ folder.file(u"fake.png"_s, "no picture") }),
        filesToDrop({ folder.path() }),
        filesToDrop({ fifo }), // reading it would never end
        filesToDrop({ folder.filePath(u"gone.png"_s) }),
        filesToDrop({ folder.file(u"first.txt"_s, "first"), imageFile(u"second.png"_s, Qt::red) }),
    };
    QSignalSpy edits(&view, &NS::ImageView::imageEdited);
    for (const auto &data : refused)
        EXPECT_FALSE(isWelcome(view, *data)) << data->urls().constFirst().toString().toStdString();
    EXPECT_FALSE(isWelcome(view, remote));
    EXPECT_FALSE(isWelcome(view, text));

    EXPECT_TRUE(drop(
            view, *filesToDrop({ imageFile(u"a"_s, Qt::red), imageFile(u"b.png"_s, Qt::blue) })));
    EXPECT_EQ(shown(), QColor(Qt::red)); // the first file, recognised by its contents
    remote.setImageData(filled({ 2, 2 }, Qt::green));
    EXPECT_TRUE(drop(view, remote));
    EXPECT_EQ(shown(), QColor(Qt::green));
    EXPECT_EQ(edits.count(), 2);
    view.setEditable(false);
    EXPECT_FALSE(isWelcome(view, remote));
}

TEST_F(ImageViewTest, keys_cut_copy_paste_and_delete_in_an_editable_view)
{
    QSignalSpy edits(&view, &NS::ImageView::imageEdited);
    view.setImage(NS::Image(filled({ 4, 4 }, Qt::red)));
    EXPECT_EQ(edits.count(), 0); // a change by the program is no edit
    QTest::keySequence(&view, QKeySequence::Cut);
    EXPECT_TRUE(view.image().isEmpty());
    EXPECT_EQ(QApplication::clipboard()->image().pixelColor(1, 1), QColor(Qt::red));
    QTest::keySequence(&view, QKeySequence::Paste);
    EXPECT_EQ(shown(), QColor(Qt::red));
    QTest::keyClick(&view, Qt::Key_Delete);
    EXPECT_TRUE(view.image().isEmpty());
    QTest::keyClick(&view, Qt::Key_Delete); // the view is already empty
    EXPECT_EQ(edits.count(), 3);

    QApplication::clipboard()->setText(u"words"_s);
    QTest::keySequence(&view, QKeySequence::Paste);
    EXPECT_TRUE(view.image().isEmpty());
    view.setImage(NS::Image(filled({ 4, 4 }, Qt::blue)));
    QTest::keySequence(&view, QKeySequence::Copy);
    view.setEditable(false);
    QTest::keyClick(&view, Qt::Key_Delete);
    QTest::keySequence(&view, QKeySequence::Cut);
    EXPECT_EQ(shown(), QColor(Qt::blue));
    EXPECT_EQ(view.focusPolicy(), Qt::NoFocus);
}

TEST_F(ImageViewTest, copies_give_the_very_file_that_the_image_came_from)
{
    const QString path = folder.filePath(u"portrait.jpg"_s);
    ASSERT_TRUE(filled({ 4, 4 }, Qt::red).save(path, "JPG"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const auto copied = [this] {
        view.copy();
        const QMimeData *const data = QApplication::clipboard()->mimeData();
        EXPECT_TRUE(data->hasImage());
        QFile given(data->urls().value(0).toLocalFile());
        QByteArray contents;
        if (!given.fileName().isEmpty()) {
            EXPECT_TRUE(given.open(QIODevice::ReadOnly));
            contents = given.readAll();
        }
        EXPECT_EQ(data->data(u"image/jpeg"_s), contents);
        return std::pair(QFileInfo(given).fileName(), contents);
    };
    ASSERT_TRUE(drop(view, *filesToDrop({ path })));
    EXPECT_EQ(view.imageData(), bytes);
    EXPECT_EQ(copied(), std::pair(u"portrait.jpg"_s, bytes));
    EXPECT_EQ(draggedOut().contents, bytes);
    view.setImage(NS::Image(filled({ 4, 4 }, Qt::blue))); // an image without a file
    EXPECT_EQ(view.imageData(), QByteArray());
    EXPECT_EQ(copied(), std::pair(QString(), QByteArray()));
    EXPECT_FALSE(view.setImageData("no picture"));
    EXPECT_EQ(shown(), QColor(Qt::blue));
    EXPECT_TRUE(view.setImageData(bytes)); // the stored bytes of a file
    EXPECT_NEAR(shown().red(), 255, 2);
    EXPECT_EQ(copied(), std::pair(u"image.jpg"_s, bytes));
}

TEST_F(ImageViewTest, an_image_is_dragged_out_of_an_editable_view)
{
    EXPECT_EQ(draggedOut().count, 0) << "there is nothing to drag";
    view.setImage(NS::Image(filled({ 40, 20 }, Qt::red)));
    const Drag drag = draggedOut();
    EXPECT_EQ(drag.count, 1);
    EXPECT_EQ(drag.picture, QSize(64, 32));
    EXPECT_EQ(drag.contents, QByteArray()) << "it came without a file";
    EXPECT_EQ(draggedOut(1).count, 0) << "a click moves a little";
    EXPECT_EQ(draggedOut(40, Qt::RightButton).count, 0);
    view.setImage(NS::Image(filled({ 5000, 1 }, Qt::red)));
    EXPECT_EQ(draggedOut().picture, QSize(64, 1));
    view.setEditable(false);
    EXPECT_EQ(draggedOut().count, 0);
    EXPECT_EQ(shown(), QColor(Qt::red)) << "the image is copied";
}

TEST_F(ImageViewTest, a_long_thin_image_is_seen)
{
    using View = NS::ImageView;
    for (const QSize size : { QSize(5000, 1), QSize(1, 5000) }) {
        for (const auto scaling : { View::scaleProportionallyDown, View::scaleAxesIndependently,
                                    View::scaleProportionallyUpOrDown }) {
            view.setImage(NS::Image(filled(size, Qt::red)));
            view.setImageScaling(scaling);
            const QImage seen = view.grab().toImage();
            int inked = 0;
            for (int y = 0; y < seen.height(); ++y) {
                for (int x = 0; x < seen.width(); ++x)
                    inked += seen.pixelColor(x, y) == QColor(Qt::red);
            }
            const int length = size.width() > 1 ? seen.width() : seen.height();
            if (scaling == View::scaleAxesIndependently)
                EXPECT_EQ(inked, seen.width() * seen.height());
            else
                EXPECT_EQ(inked, length);
        }
    }
}

TEST_F(ImageViewTest, colours_of_another_profile_look_as_they_should)
{
    const QColor wanted(200, 100, 50);
    const QColorTransform toWide =
            QColorSpace(QColorSpace::SRgb).transformationToColorSpace(QColorSpace::DisplayP3);
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(toWide.map(wanted.rgb()));
    picture.setColorSpace(QColorSpace::DisplayP3);
    EXPECT_GT(std::abs(picture.pixelColor(0, 0).red() - wanted.red()), 5);
    const QString path = folder.filePath(u"wide.png"_s);
    ASSERT_TRUE(picture.save(path));
    ASSERT_TRUE(drop(view, *filesToDrop({ path })));
    EXPECT_NEAR(shown().red(), wanted.red(), 2);
    EXPECT_NEAR(shown().green(), wanted.green(), 2);
    EXPECT_NEAR(shown().blue(), wanted.blue(), 2);
}

TEST_F(ImageViewTest, an_empty_well_has_an_outline_and_says_what_to_do)
{
    view.resize(200, 80);
    view.setEditable(false);
    const auto seen = [this](const QRect &rect) {
        return colorsIn(view.grab(rect).toImage()).size() > 1;
    };
    const QRect edge(20, 0, 160, 1);
    const QRect middle = view.rect().adjusted(10, 10, -10, -10);
    EXPECT_FALSE(seen(edge));
    EXPECT_FALSE(seen(middle));
    view.setEditable(true);
    EXPECT_TRUE(seen(edge));
    EXPECT_TRUE(seen(middle));
    view.resize(30, 30); // too small for the text
    EXPECT_FALSE(seen(view.rect().adjusted(5, 5, -5, -5)));
    view.resize(200, 80);
    view.setImage(NS::Image(filled({ 4, 4 }, Qt::red)));
    EXPECT_FALSE(seen(edge));
}

TEST_F(ImageViewTest, its_outlines_are_sharp_and_equally_thick_at_every_scale_and_place)
{
    QMimeData picture;
    picture.setImageData(filled({ 2, 2 }, Qt::red));
    for (const double scale : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
        for (int place = 5; place < 9; ++place) {
            SCOPED_TRACE(QString::number(scale).toStdString() + " at " + std::to_string(place));
            QWidget window;
            window.resize(100, 80);
            auto *const well = new NS::ImageView(&window);
            well->setEditable(true);
            well->setGeometry(place, place, 70 + place, 50 + place);
            const QRect pixels = pixelsOf(well->geometry(), scale);
            expectOutline(::picture(window, scale), pixels,
                          Pellarvine::detail::edgeColor(well->palette()), int(scale), true);
            ASSERT_TRUE(isWelcome(*well, picture));
            expectOutline(::picture(window, scale), pixels,
                          well->palette().color(QPalette::Highlight), int(2 * scale));
        }
    }
}

TEST_F(ImageViewTest, style_sheets_apply_as_to_a_frame)
{
    view.setEditable(false);
    view.setStyleSheet(u"background: yellow; border: 3px solid blue; padding: 10px; color: red"_s);
    view.setImageScaling(NS::ImageView::scaleAxesIndependently);
    view.setPlaceholderText(QString(20, QChar(u'█')));
    QImage seen = view.grab().toImage();
    EXPECT_EQ(seen.pixelColor(1, 30), QColor(Qt::blue));
    EXPECT_EQ(seen.pixelColor(5, 5), QColor(Qt::yellow));
    const QColor ink = seen.pixelColor(50, 30);
    EXPECT_GT(ink.red() - ink.green(), 60) << ink.name().toStdString(); // over the yellow
    view.setImage(NS::Image(filled({ 10, 10 }, Qt::green)));
    EXPECT_EQ(view.imageRect(), QRectF(13, 13, 74, 34));
    seen = view.grab().toImage();
    EXPECT_EQ(seen.pixelColor(14, 14), QColor(Qt::green));
    EXPECT_EQ(seen.pixelColor(11, 30), QColor(Qt::yellow));
}

TEST_F(ImageViewTest, the_context_menu_offers_what_is_possible)
{
    QApplication::clipboard()->setText(u"words"_s);
    const auto enabled = [this] {
        const std::unique_ptr<QMenu> menu(view.createStandardContextMenu());
        std::string states;
        for (const QAction *const action : menu->actions())
            states += action->isEnabled() ? 'y' : 'n';
        return states;
    };
    EXPECT_EQ(enabled(), "nnnn");
    view.setImage(NS::Image(filled({ 4, 4 }, Qt::red)));
    EXPECT_EQ(enabled(), "yyny");
    view.copy();
    EXPECT_EQ(enabled(), "yyyy");
    const std::unique_ptr<QMenu> menu(view.createStandardContextMenu());
    menu->actions().constLast()->trigger();
    EXPECT_TRUE(view.image().isEmpty());
}

TEST_F(ImageViewTest, an_animation_shows_its_first_frame)
{
    // One pixel, red and then green.
    const QByteArray animation =
            QByteArray::fromHex("474946383961010001008000 00ff000000ff00"
                                "2c00000000010001000002024401002c000000000100010000"
                                "02024c01003b");
    ASSERT_TRUE(drop(view, *filesToDrop({ folder.file(u"blink.gif"_s, animation) })));
    EXPECT_EQ(shown(), QColor(Qt::red));
}

TEST_F(ImageViewTest, a_photograph_of_many_pixels_is_shown_with_as_many_as_a_screen_has)
{
    QImage photograph(7000, 5000, QImage::Format_RGB32);
    photograph.fill(Qt::red);
    for (const char *const format : { "JPG", "PNG" }) {
        const QString path = folder.filePath(QString::fromLatin1(format));
        ASSERT_TRUE(photograph.save(path, format, 90));
        const int limit = QImageReader::allocationLimit();
        view.clear();
        EXPECT_TRUE(drop(view, *filesToDrop({ path }))) << format;
        EXPECT_EQ(view.image().size(), QSizeF(7000, 5000));
        EXPECT_NEAR(view.image().bitmap().width(), 7 * view.image().bitmap().height() / 5.0, 2);
        EXPECT_LE(view.image().bitmap().width(), 5000);
        EXPECT_NEAR(shown().red(), 255, 2);
        EXPECT_EQ(QImageReader::allocationLimit(), limit);
    }
}

TEST_F(ImageViewTest, a_refused_picture_is_explained_in_the_view_and_to_the_program)
{
    QFile sparse(folder.file(u"sparse.png"_s, "\x89PNG\r\n\x1a\n"));
    ASSERT_TRUE(sparse.resize(qint64(2) << 30));
    const QByteArray picture = [this] {
        QFile file(imageFile(u"whole.png"_s, Qt::red));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }();
    const std::pair<QString, QString> rows[] = {
        { sparse.fileName(), u"large"_s },
        { folder.file(u"huge.jpg"_s, hugePicture()), u"large"_s },
        { folder.file(u"cut.png"_s, picture.first(40)), u"damaged"_s },
    };
    view.setImage(NS::Image(filled({ 100, 60 }, Qt::blue)));
    const QImage before = view.grab().toImage();
    QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(&view);
    QSignalSpy refusals(&view, SIGNAL(imageRefused(QString)));
    QSignalSpy edits(&view, &NS::ImageView::imageEdited);
    for (const auto &[path, reason] : rows) {
        EXPECT_FALSE(drop(view, *filesToDrop({ path })));
        ASSERT_EQ(refusals.count(), 1) << path.toStdString();
        const QString told = refusals.takeFirst().constFirst().toString();
        EXPECT_TRUE(told.contains(reason)) << told.toStdString();
        EXPECT_EQ(interface->text(QAccessible::Description), told);
        EXPECT_NE(view.grab().toImage(), before);
        QTest::mouseClick(&view, Qt::LeftButton); // the user has seen it
        EXPECT_EQ(view.grab().toImage(), before);
        EXPECT_EQ(interface->text(QAccessible::Description), QString());
    }
    EXPECT_EQ(edits.count(), 0);
    view.resize(60, 60); // too small for the reason, which is in a tool tip
    view.show();
    EXPECT_FALSE(drop(view, *filesToDrop({ rows[2].first })));
    EXPECT_EQ(QToolTip::text(), view.refusal());
    QToolTip::hideText();
    EXPECT_FALSE(drop(view, *filesToDrop({ rows[0].first })));
    view.clear(); // the reason is no longer shown
    EXPECT_TRUE(interface->text(QAccessible::Description).contains(u"Drop"));
}

TEST_F(ImageViewTest, a_picture_that_was_cut_is_refused_in_every_format)
{
    QImage image(90, 60, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor::fromHsv((x * 31 + y * 17) % 360, 255, 200));
    }
    const auto encoded = [&image](const char *format, bool isProgressive) {
        QBuffer buffer;
        QImageWriter writer(&buffer, format);
        writer.setProgressiveScanWrite(isProgressive);
        EXPECT_TRUE(writer.write(image));
        return buffer.data();
    };
    // The end of a thumbnail, in a segment of its own, is not the picture's end.
    QByteArray withThumbnail = encoded("JPG", false);
    withThumbnail.insert(2, QByteArray::fromHex("ffe10006ffd8ffd9"));
    const QByteArray gif = QByteArray::fromHex("474946383961010001008000 00ff000000ff00"
                                               "2c00000000010001000002024401003b");
    const std::pair<QByteArray, qsizetype> files[] = {
        { encoded("JPG", false), 20 }, { encoded("JPG", true), 20 },  { withThumbnail, 20 },
        { encoded("PNG", false), 20 }, { encoded("BMP", false), 20 }, { gif, 2 },
    };
    for (const auto &[file, missing] : files) {
        EXPECT_TRUE(view.setImageData(file + "trailing data"));
        EXPECT_FALSE(view.setImageData(file.chopped(missing))) << file.first(4).toHex().data();
        EXPECT_FALSE(view.setImageData(file.first(file.size() * 2 / 3)));
    }
}

TEST_F(ImageViewTest, its_value_binding_shows_the_model_and_carries_edits_back)
{
    Record record;
    record.portrait = filled({ 3, 3 }, Qt::blue);
    NS::bind(&view, NS::NSValueBinding, &record, u"portrait"_s);
    EXPECT_EQ(shown(), QColor(Qt::blue));
    ASSERT_TRUE(drop(view, *filesToDrop({ imageFile(u"new.png"_s, Qt::red) })));
    EXPECT_EQ(record.portrait.pixelColor(0, 0), QColor(Qt::red));
    QTest::keyClick(&view, Qt::Key_Backspace);
    EXPECT_TRUE(record.portrait.isNull());
}

TEST_F(ImageViewTest, its_data_is_bound_to_the_bytes_that_a_model_stores)
{
    const auto png = [](Qt::GlobalColor color) {
        QBuffer buffer;
        EXPECT_TRUE(filled({ 3, 3 }, color).save(&buffer, "PNG"));
        return buffer.data();
    };
    Record model;
    const QByteArray &stored = model.photo;
    model.photo = png(Qt::blue);
    NS::bind(&view, u"imageData"_s, &model, u"photo"_s);
    EXPECT_EQ(shown(), QColor(Qt::blue));
    EXPECT_EQ(stored, png(Qt::blue));
    ASSERT_TRUE(drop(view, *filesToDrop({ folder.file(u"red.png"_s, png(Qt::red)) })));
    EXPECT_EQ(stored, png(Qt::red));
    QMimeData image; // without a file
    image.setImageData(filled({ 3, 3 }, Qt::green));
    ASSERT_TRUE(drop(view, image));
    EXPECT_EQ(QImage::fromData(stored).pixelColor(0, 0), QColor(Qt::green));
    QTest::keyClick(&view, Qt::Key_Delete);
    EXPECT_EQ(stored, QByteArray());
    view.setImageData(png(Qt::red));
    QSignalSpy refusals(&view, &NS::ImageView::imageRefused);
    model.setProperty("photo", QByteArray("no picture")); // kept, and not shown as the last one
    EXPECT_TRUE(view.image().isEmpty());
    EXPECT_EQ(refusals.count(), 1);
    EXPECT_EQ(stored, "no picture");
    model.setProperty("photo", QByteArray());
    EXPECT_EQ(view.imageData(), QByteArray());
    EXPECT_TRUE(view.refusal().isEmpty());
}

TEST_F(ImageViewTest, a_setter_that_changes_nothing_says_nothing)
{
    QSignalSpy images(&view, &NS::ImageView::imageChanged);
    view.setImage(NS::Image(filled({ 4, 4 }, Qt::red)));
    view.setImage(NS::Image(filled({ 4, 4 }, Qt::red)));
    view.clear();
    view.clear();
    EXPECT_EQ(images.count(), 2);
    EXPECT_EQ(view.setProperty("image", QPixmap::fromImage(filled({ 7, 5 }, Qt::red))), true);
    EXPECT_EQ(view.image().size(), QSizeF(7, 5));
}

TEST_F(ImageViewTest, a_screen_reader_finds_a_graphic_with_a_name)
{
    QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(interface->role(), QAccessible::Graphic);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Image"_s);
    view.setPlaceholderText(u"Drop a portrait here"_s);
    view.setAccessibleName(u"Portrait"_s);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Portrait"_s);
    EXPECT_EQ(interface->text(QAccessible::Description), u"Drop a portrait here"_s);
    view.setImage(NS::Image(filled({ 20, 10 }, Qt::red)));
    ASSERT_TRUE(interface->imageInterface());
    EXPECT_EQ(interface->imageInterface()->imageSize(), QSize(20, 10));
}

TEST_F(ImageViewTest, the_main_thread_goes_on_under_a_busy_pointer_and_a_spinner)
{
    view.setFocusPolicy(Qt::NoFocus); // no focus ring
    QMimeData another;
    another.setImageData(filled({ 4, 4 }, Qt::blue));
    view.setImage(NS::Image(filled({ 100, 60 }, Qt::red)));
    view.show();
    const QImage before = view.grab().toImage();
    QSemaphore mayEnd;
    bool wasBusy = false;
    QSet<QByteArray> frames;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, qApp, [&] {
        wasBusy = QApplication::overrideCursor()
                  && QApplication::overrideCursor()->shape() == Qt::BusyCursor;
        const QImage frame = view.grab().toImage();
        EXPECT_FALSE(isWelcome(view, another)) << "what comes later would be replaced";
        frames.insert(
                QByteArray(reinterpret_cast<const char *>(frame.constBits()), frame.sizeInBytes()));
        if (frames.size() < 3)
            return;
        timer.stop();
        mayEnd.release();
    });
    timer.start(10);
    Pellarvine::detail::runWithBusyCursor(&view, [&] { mayEnd.acquire(); });
    EXPECT_TRUE(wasBusy);
    EXPECT_FALSE(QApplication::overrideCursor());
    EXPECT_EQ(view.grab().toImage(), before);
    // The view may be destroyed while it waits.
    auto other = std::make_unique<NS::ImageView>();
    QTimer::singleShot(0, &timer, [&] {
        other.reset();
        mayEnd.release();
    });
    Pellarvine::detail::runWithBusyCursor(other.get(), [&] { mayEnd.acquire(); });
    EXPECT_FALSE(other);
}

TEST_F(ImageViewTest, a_spinner_turns_in_place_of_the_hint)
{
    view.resize(400, 60);
    view.setFocusPolicy(Qt::NoFocus);
    view.setPlaceholderText(u"Far longer than the spinner in the middle is wide"_s);
    view.show();
    const auto colorsBesideTheMiddle = [this] {
        return colorsIn(view.grab(QRect(50, 10, 100, 40)).toImage()).size();
    };
    EXPECT_GT(colorsBesideTheMiddle(), 1);
    QSemaphore mayEnd;
    QTimer::singleShot(0, &view, [&] {
        EXPECT_EQ(colorsBesideTheMiddle(), 1);
        mayEnd.release();
    });
    Pellarvine::detail::runWithBusyCursor(&view, [&] { mayEnd.acquire(); });
}

#include "NSImageViewTest.moc"
