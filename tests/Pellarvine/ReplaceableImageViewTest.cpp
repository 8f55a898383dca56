// SPDX-License-Identifier: MIT
#include "DragAndDrop.h"
#include "HugePicture.h"
#include "TemporaryFolder.h"

#include <pellarvine/Pellarvine/ReplaceableImageView.h>
#include <pellarvine/Platform/ClassRegistry.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>

#include <QAccessible>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QImageReader>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using Pellarvine::Data;
using Pellarvine::ReplaceableImageView;

namespace {

// A delegate without the interface: it only has a method of that name.
class Record : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QImage cover MEMBER cover NOTIFY changed)

public:
    Q_INVOKABLE void replaceableImageView(Pellarvine::ReplaceableImageView *view,
                                          const Pellarvine::Data &didLoadImageData)
    {
        teller = view;
        received.append(didLoadImageData);
        shownThen = view->image();
    }

    ReplaceableImageView *teller = nullptr;
    QList<Data> received;
    NS::Image shownThen;
    QImage cover;

Q_SIGNALS:
    void changed();
};

// A delegate that implements the interface.
class Archive : public Pellarvine::ReplaceableImageViewDelegate
{
    Q_OBJECT

public:
    void replaceableImageView(ReplaceableImageView *, const Data &data) override
    {
        received.append(data);
    }

    QList<Data> received;
};

// Has a method of that name with other parameters.
class Stranger : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void replaceableImageView(QObject *, const QString &) { FAIL(); }
};

// Counts the clicks that reach the base class.
class ClickCounter : public ReplaceableImageView
{
public:
    using ReplaceableImageView::ReplaceableImageView;
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        ++presses;
        ReplaceableImageView::mousePressEvent(event);
    }
};

class ReplaceableImageViewTest : public testing::Test
{
protected:
    ReplaceableImageViewTest()
    {
        view.resize(100, 60);
        view.setDelegate(&record);
        window.resize(200, 200);
        window.show();
    }

    // A picture file of `length` bytes. A decoder ignores the bytes after the end of the picture.
    static QByteArray picture(Qt::GlobalColor color, qsizetype length)
    {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(color);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        EXPECT_LE(bytes.size(), length);
        while (bytes.size() < length)
            bytes.append(char(bytes.size() * 7));
        return bytes;
    }

    QFileDialog *panel() { return view.findChild<QFileDialog *>(); }
    void choose(const QString &path)
    {
        view.selectImage();
        ASSERT_TRUE(panel());
        panel()->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path);
        QPushButton *const accept =
                panel()->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open);
        QTest::mouseClick(accept, Qt::LeftButton);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !panel(); }));
    }
    QColor shown() const
    {
        return view.image().isEmpty() ? QColor() : view.image().bitmap().pixelColor(1, 1);
    }

    TemporaryFolder folder;
    Record record;
    QWidget window;
    ClickCounter view { &window };
};

const std::string warning = "Warning: could not fetch image data!\n";

} // namespace

TEST_F(ReplaceableImageViewTest, a_double_click_opens_a_sheet_and_a_single_one_does_not)
{
    QTest::mouseClick(&view, Qt::LeftButton);
    EXPECT_FALSE(panel());
    EXPECT_EQ(view.presses, 1);
    QTest::mouseDClick(&view, Qt::RightButton);
    EXPECT_FALSE(panel());
    view.presses = 0;
    QTest::mouseDClick(&view, Qt::LeftButton);
    ASSERT_TRUE(panel());
    EXPECT_EQ(view.presses, 0);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(panel()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(panel()->labelText(QFileDialog::Accept), u"Choose"_s);
    EXPECT_EQ(panel()->fileMode(), QFileDialog::ExistingFile);
    EXPECT_TRUE(panel()->testOption(QFileDialog::ReadOnly)); // the user cannot create folders
    ASSERT_EQ(panel()->nameFilters().size(), 1);
    const QString filter = panel()->nameFilters().constFirst();
    for (const QByteArray &format : QImageReader::supportedImageFormats())
        EXPECT_TRUE(filter.contains(u"*."_s + QString::fromLatin1(format))) << format.constData();
    EXPECT_TRUE(filter.contains(u"*.jpe ")); // another suffix of a supported format
    view.selectImage();
    EXPECT_EQ(view.findChildren<QFileDialog *>().size(), 1);
}

TEST_F(ReplaceableImageViewTest, keys_the_context_menu_and_screen_readers_open_the_sheet_too)
{
    for (const int key : { Qt::Key_Return, Qt::Key_Space }) {
        QTest::keyClick(&view, Qt::Key(key));
        ASSERT_TRUE(panel());
        delete panel();
    }
    const std::unique_ptr<QMenu> menu(view.createStandardContextMenu());
    menu->actions().constFirst()->trigger();
    ASSERT_TRUE(panel());
    delete panel();
    QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(interface->role(), QAccessible::Graphic);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Image"_s);
    ASSERT_TRUE(interface->actionInterface());
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_TRUE(interface->actionInterface()->actionNames().contains(press));
    interface->actionInterface()->doAction(press);
    EXPECT_TRUE(panel());
    delete panel();
    view.setEnabled(false);
    EXPECT_FALSE(interface->actionInterface()->actionNames().contains(press));
    interface->actionInterface()->doAction(press);
    EXPECT_FALSE(panel());
}

TEST_F(ReplaceableImageViewTest, without_a_window_on_the_screen_there_is_no_sheet)
{
    window.hide();
    view.selectImage();
    EXPECT_FALSE(panel());
}

TEST_F(ReplaceableImageViewTest, the_delegate_gets_a_chosen_file_byte_for_byte)
{
    const QByteArray bytes = picture(Qt::red, 1234);
    choose(folder.file(u"red.png"_s, bytes));
    EXPECT_EQ(shown(), QColor(Qt::red));
    ASSERT_EQ(record.received, QList<Data> { bytes });
    EXPECT_EQ(record.teller, &view);
    EXPECT_EQ(record.shownThen, view.image()); // shown before the call
    EXPECT_EQ(view.imageData(), bytes);
    const QByteArray large = picture(Qt::blue, 20'000'000);
    choose(folder.file(u"blue.png"_s, large));
    EXPECT_EQ(shown(), QColor(Qt::blue));
    EXPECT_TRUE(record.received.constLast() == large);
}

TEST_F(ReplaceableImageViewTest, cancelling_changes_nothing)
{
    view.selectImage();
    ASSERT_TRUE(panel());
    panel()->selectFile(folder.file(u"red.png"_s, picture(Qt::red, 200)));
    QTest::keyClick(panel(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !panel(); }));
    EXPECT_TRUE(view.image().isEmpty());
    EXPECT_TRUE(record.received.isEmpty());
}

TEST_F(ReplaceableImageViewTest,
       a_chosen_file_that_is_no_readable_picture_is_passed_over_in_silence)
{
    const QString fifo = folder.filePath(u"pipe.png"_s);
    ASSERT_EQ(mkfifo(fifo.toLocal8Bit().constData(), 0600), 0);
    testing::internal::CaptureStdout();
    choose(folder.file(u"text.png"_s, "not a picture"));
    choose(folder.file(u"cut.png"_s, picture(Qt::red, 200).first(20)));
    choose(fifo);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(view.image().isEmpty());
    EXPECT_TRUE(record.received.isEmpty());
}

TEST_F(ReplaceableImageViewTest, a_chosen_picture_that_is_too_large_or_incomplete_is_explained)
{
    QSignalSpy refusals(&view, SIGNAL(imageRefused(QString)));
    choose(folder.file(u"huge.jpg"_s, hugePicture()));
    EXPECT_EQ(refusals.count(), 1);
    choose(folder.file(u"cut.png"_s, picture(Qt::red, 200).first(66)));
    EXPECT_EQ(refusals.count(), 2);
    EXPECT_TRUE(view.image().isEmpty());
    EXPECT_TRUE(record.received.isEmpty());
    choose(folder.file(u"text.png"_s, "not a picture")); // only a damaged picture is explained
    EXPECT_EQ(refusals.count(), 2);
}

TEST_F(ReplaceableImageViewTest, a_bound_view_leaves_the_picture_to_its_model)
{
    NS::bind(&view, NS::NSValueBinding, &record, u"cover"_s);
    QSignalSpy changes(&record, &Record::changed);
    choose(folder.file(u"red.png"_s, picture(Qt::red, 300)));
    EXPECT_EQ(record.cover.pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(shown(), QColor(Qt::red)); // through the binding
    EXPECT_EQ(record.received.size(), 1);
}

TEST_F(ReplaceableImageViewTest, a_view_whose_model_is_gone_shows_nothing_but_tells_the_delegate)
{
    auto model = std::make_unique<Record>();
    NS::bind(&view, NS::NSValueBinding, model.get(), u"cover"_s);
    model.reset();
    choose(folder.file(u"red.png"_s, picture(Qt::red, 300)));
    EXPECT_TRUE(view.image().isEmpty());
    EXPECT_EQ(record.received.size(), 1);
}

TEST_F(ReplaceableImageViewTest, the_delegate_gets_the_first_of_several_dropped_files)
{
    const QByteArray first = picture(Qt::red, 321);
    const auto files = filesToDrop({ folder.file(u"1.png"_s, first),
                                     folder.file(u"2.png"_s, picture(Qt::green, 400)),
                                     folder.file(u"3.png"_s, picture(Qt::blue, 500)) });
    EXPECT_TRUE(drop(view, *files));
    EXPECT_EQ(record.received, QList<Data> { first });
    EXPECT_EQ(shown(), QColor(Qt::red));
}

TEST_F(ReplaceableImageViewTest, a_pasted_file_reaches_the_delegate_as_a_dropped_one_does)
{
    const QByteArray bytes = picture(Qt::red, 321);
    QApplication::clipboard()->setMimeData(
            filesToDrop({ folder.file(u"1.png"_s, bytes), folder.file(u"2.png"_s, "2") })
                    .release());
    QTest::keySequence(&view, QKeySequence::Paste);
    EXPECT_EQ(shown(), QColor(Qt::red));
    EXPECT_EQ(record.received, QList<Data> { bytes });
    EXPECT_EQ(record.shownThen, view.image());
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QApplication::clipboard()->setImage(image); // an image without a file
    testing::internal::CaptureStdout();
    QTest::keySequence(&view, QKeySequence::Paste);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(shown(), QColor(Qt::blue));
    EXPECT_EQ(record.received.size(), 1);
}

TEST_F(ReplaceableImageViewTest, a_host_that_stores_what_edits_carry_loses_nothing)
{
    QSignalSpy edits(&view, &ReplaceableImageView::imageEdited);
    const auto stored = [&edits] {
        return edits.isEmpty() ? QByteArray("none") : edits.takeLast().value(1).toByteArray();
    };
    const QByteArray red = picture(Qt::red, 300);
    const QString path = folder.file(u"red.png"_s, red);
    choose(path);
    EXPECT_EQ(stored(), red);
    EXPECT_TRUE(drop(view, *filesToDrop({ path })));
    EXPECT_EQ(stored(), red);
    QApplication::clipboard()->setMimeData(filesToDrop({ path }).release());
    view.paste();
    EXPECT_EQ(stored(), red);
    view.cut();
    EXPECT_EQ(stored(), QByteArray());
    QFile::remove(path);
    view.paste(); // pastes the bytes of the file that was cut
    EXPECT_EQ(stored(), red);
    QApplication::clipboard()->setImage(QImage::fromData(red));
    view.paste();
    EXPECT_EQ(QImage::fromData(stored(), "PNG").pixelColor(1, 1), QColor(Qt::red));
    QTest::keyClick(&view, Qt::Key_Delete);
    EXPECT_EQ(stored(), QByteArray());
}

TEST_F(ReplaceableImageViewTest, a_drop_without_a_readable_file_is_shown_and_warned_of)
{
    const std::pair<QList<QUrl>, bool> rows[] = {
        { {}, true }, // image data only, for example from a browser
        { { QUrl(u"https://example.org/a.png"_s) }, true },
        { { QUrl::fromLocalFile(folder.filePath(u"gone.png"_s)) }, true },
        { { QUrl::fromLocalFile(folder.path()) }, true },
        // The delegate gets the bytes of any file.
        { { QUrl::fromLocalFile(folder.file(u"note.txt"_s, "note")) }, false },
    };
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::green);
    for (const auto &[urls, warns] : rows) {
        QMimeData data;
        data.setImageData(image);
        data.setUrls(urls);
        view.clear();
        testing::internal::CaptureStdout();
        EXPECT_TRUE(drop(view, data));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), warns ? warning : "");
        EXPECT_EQ(shown(), QColor(Qt::green));
    }
    EXPECT_EQ(record.received, QList<Data> { "note" });
}

TEST_F(ReplaceableImageViewTest, what_the_image_view_refuses_does_not_reach_the_delegate)
{
    const QString picturePath = folder.file(u"red.png"_s, picture(Qt::red, 300));
    testing::internal::CaptureStdout();
    EXPECT_FALSE(drop(view, *filesToDrop({ folder.file(u"note.txt"_s, "note"), picturePath })));
    view.setEditable(false);
    EXPECT_FALSE(drop(view, *filesToDrop({ picturePath })));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(record.received.isEmpty());
}

TEST_F(ReplaceableImageViewTest, a_delegate_without_the_method_is_not_called)
{
    Stranger stranger;
    const QString path = folder.file(u"red.png"_s, picture(Qt::red, 300));
    QMimeData data;
    data.setImageData(QImage(path));
    for (QObject *const delegate :
         std::initializer_list<QObject *> { nullptr, &stranger, &window }) {
        view.setDelegate(delegate);
        view.clear();
        choose(path);
        EXPECT_EQ(shown(), QColor(Qt::red));
        view.clear();
        testing::internal::CaptureStdout();
        EXPECT_TRUE(drop(view, data)); // without a warning about a missing file
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(shown(), QColor(Qt::red));
    }
}

TEST_F(ReplaceableImageViewTest, the_delegate_is_not_owned_and_may_go_first)
{
    QSignalSpy changes(&view, &ReplaceableImageView::delegateChanged);
    {
        Archive archive;
        view.setDelegate(&archive);
        const QByteArray bytes = picture(Qt::red, 300);
        choose(folder.file(u"red.png"_s, bytes));
        EXPECT_EQ(archive.received, QList<Data> { bytes });
        view.setDelegate(&archive);
    }
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(view.delegate(), nullptr);
    choose(folder.file(u"blue.png"_s, picture(Qt::blue, 300)));
    EXPECT_EQ(shown(), QColor(Qt::blue));
}

TEST(ReplaceableImageView, interface_files_can_name_it)
{
    const std::unique_ptr<QObject> made(NS::makeObject(u"ReplaceableImageView"_s));
    auto *const view = qobject_cast<ReplaceableImageView *>(made.get());
    ASSERT_TRUE(view);
    EXPECT_EQ(view->delegate(), nullptr);
    EXPECT_TRUE(view->isEditable());
}

#include "ReplaceableImageViewTest.moc"
